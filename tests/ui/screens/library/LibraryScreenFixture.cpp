// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/screens/library/LibraryScreenFixture.h"

#include "base/language/L10n.h"
#include "ui/icons/Symbols.h"
#include "ui/screens/library/LibraryForQml.h"
#include "ui/theme/ThemeForQml.h"

#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_IconsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_LibraryPlugin)

namespace quelto::test {

namespace {

QPointF cornerOf(const QQuickItem* item)
{
    return item->mapToScene({0, 0});
}

} // namespace

void LibraryScreenFixture::SetUp()
{
    L10n::use(QStringLiteral("tr"));
    settings.setLanguage(QStringLiteral("tr"));
    thumbnails = std::make_unique<ThumbnailCache>(mainQueue);
    commands = std::make_unique<ClipCommands>(
        ClipCommands::Dependencies{.library = library,
                                   .files = files,
                                   .pasteboard = pasteboard,
                                   .settings = settings,
                                   .navigation = navigation,
                                   .drag = [this](const QString& path, const QImage& picture) {
                                       dragged.append(path);
                                       draggedPicture = picture;
                                   }});
    NavigationForQml::instance = &navigation;
    ThemeForQml::instance = &theme;
    AppSettingsForQml::instance = &settings;
    HotKeyManagerForQml::instance = &hotKeys;
    ClipLibraryForQml::instance = &library;
    ClipCommandsForQml::instance = commands.get();
    ThumbnailsForQml::instance = thumbnails.get();
}

void LibraryScreenFixture::TearDown()
{
    engine.reset();
    // Deferred deletions must run before the objects that the items use are destroyed.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ThumbnailsForQml::instance = nullptr;
    thumbnails.reset();
    L10n::use(QStringLiteral("tr"));
}

void LibraryScreenFixture::setClipReader(const std::function<ClipPreview(const QString& path)>& read,
                                         const std::function<void(Task)>& work)
{
    thumbnails = std::make_unique<ThumbnailCache>(
        ThumbnailCache::Dependencies{.main = mainQueue,
                                     .work = work,
                                     .read = [read](const QString& path, const std::stop_token&) { return read(path); },
                                     .byteLimit = 1 << 24});
    ThumbnailsForQml::instance = thumbnails.get();
}

void LibraryScreenFixture::show(const QString& properties)
{
    showItems(QStringLiteral("LibraryView { anchors.fill: parent; focus: true; %1 }").arg(properties));
}

void LibraryScreenFixture::showItems(const QString& items)
{
    engine = std::make_unique<QQmlApplicationEngine>();
    engine->addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    engine->addImportPath(QStringLiteral("qrc:/"));
    engine->loadData(
        QStringLiteral("import QtQuick\nimport QtQuick.Templates\nimport Quelto.Library\nimport Quelto.Theme\n"
                       "ApplicationWindow { visible: true; width: %1; height: %2; color: Theme.bg\n"
                       "Backdrop { anchors.fill: parent }\n%3 }\n")
            .arg(size.width())
            .arg(size.height())
            .arg(items)
            .toUtf8());
    ASSERT_FALSE(engine->rootObjects().isEmpty());
    window = qobject_cast<QQuickWindow*>(engine->rootObjects().first());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    window->requestActivate();
    settle(50);
}

void LibraryScreenFixture::reload()
{
    library.reload();
    libraryTime.settle();
}

void LibraryScreenFixture::settle(int milliseconds) const
{
    // Animations advance with frames, and a slow machine may draw none for a while: the first frames start them, the
    // last frames complete them.
    drawFrames();
    QTest::qWait(milliseconds);
    drawFrames();
}

void LibraryScreenFixture::drawFrames() const
{
    for (int i = 0; i < 3; ++i) {
        QSignalSpy drawn(window, &QQuickWindow::frameSwapped);
        window->update();
        drawn.wait();
    }
}

QQuickItem* LibraryScreenFixture::item(const QString& accessibleName) const
{
    auto* found = find(accessibleName);
    EXPECT_NE(found, nullptr) << "no visible item has the name " << accessibleName.toStdString();
    return found;
}

QList<QQuickItem*> LibraryScreenFixture::itemsOf(const char* qmlType) const
{
    QList<QQuickItem*> items;
    visitVisible(window->contentItem(), [&](QQuickItem* each) {
        if (QByteArray(each->metaObject()->className()).startsWith(QByteArray(qmlType) + "_QMLTYPE")) {
            items.append(each);
        }
    });
    return items;
}

QStringList LibraryScreenFixture::cardTitles() const
{
    auto cards = itemsOf("ClipCard");
    std::ranges::sort(cards, [](const QQuickItem* a, const QQuickItem* b) {
        return std::pair(cornerOf(a).y(), cornerOf(a).x()) < std::pair(cornerOf(b).y(), cornerOf(b).x());
    });
    QStringList titles;
    for (const auto* each : cards) {
        titles.append(each->property("title").toString());
    }
    return titles;
}

QQuickItem* LibraryScreenFixture::card(const QString& title) const
{
    for (auto* each : itemsOf("ClipCard")) {
        if (each->property("title").toString() == title) {
            return each;
        }
    }
    ADD_FAILURE() << "no card has the title " << title.toStdString();
    return nullptr;
}

void LibraryScreenFixture::click(QQuickItem* item, Qt::MouseButton button)
{
    QTest::mouseClick(window, button, {}, middleOf(item));
}

void LibraryScreenFixture::key(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window, static_cast<Qt::Key>(key), modifiers);
}

} // namespace quelto::test

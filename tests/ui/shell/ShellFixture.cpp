// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/shell/ShellFixture.h"

#include "app/language/L10n.h"
#include "ui/screens/library/LibraryForQml.h"
#include "ui/shell/ShellForQml.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/ThemeForQml.h"

#include <QAccessible>
#include <QDir>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_LibraryPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ShellPlugin)

namespace quelto::test {

namespace {

template <typename Predicate> QQuickItem* tryFind(QQuickItem* root, const Predicate& isWanted)
{
    if (!root->isVisible()) {
        return nullptr;
    }
    if (isWanted(root)) {
        return root;
    }
    for (auto* child : root->childItems()) {
        if (auto* found = tryFind(child, isWanted)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

void ShellFixture::SetUp()
{
    RecorderFixture::SetUp();
    settings.setLanguage(QStringLiteral("tr"));
    settings.setSaveFolder(folder.filePath(QStringLiteral("clips")));
    theme = std::make_unique<Theme>(settings);
    const auto ask = [this](const char* what) { return [this, what] { asked.append(QLatin1String(what)); }; };
    commands = std::make_unique<WindowCommands>(
        WindowCommands::Actions{.openFolder = ask("openFolder"),
                                .play = [this](const QString& path) { asked.append(QStringLiteral("play ") + path); },
                                .hide = ask("hide"),
                                .minimize = ask("minimize"),
                                .close = ask("close"),
                                .quit = ask("quit")},
        QStringLiteral("/home/me/.config/Quelto/Quelto.conf"));
    library = std::make_unique<ClipLibrary>(ClipLibrary::Parts{
        .settings = settings, .trash = trash, .files = files, .pasteboard = pasteboard, .main = main, .work = main});
    matches = std::make_unique<MatchTracker>(MatchTracker::Parts{
        .library = *library, .main = main, .store = MatchStore(folder.filePath(QStringLiteral("matches.json")))});
    navigation = std::make_unique<Navigation>(main);
    shownMatch = std::make_unique<ShownMatch>(*matches, *navigation);
    overview = std::make_unique<LibraryOverview>(*library, *matches);
    clipCommands = std::make_unique<ClipCommands>(ClipCommands::Parts{
        .library = *library, .files = files, .settings = settings, .navigation = *navigation, .drag = {}});
    ClipCommandsForQml::instance = clipCommands.get();
    LibraryOverviewForQml::instance = overview.get();
    ClipLibraryForQml::instance = library.get();
    NavigationForQml::instance = navigation.get();
    ShownMatchForQml::instance = shownMatch.get();
    ThemeForQml::instance = theme.get();
    RecorderForQml::instance = recorder.get();
    AppSettingsForQml::instance = &settings;
    WindowCommandsForQml::instance = commands.get();
    engine = std::make_unique<QQmlApplicationEngine>();
    engine->addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    engine->addImportPath(QStringLiteral("qrc:/"));
    engine->loadData("import Quelto.Shell\nMainWindow { visible: true }\n");
    ASSERT_FALSE(engine->rootObjects().isEmpty());
    window = qobject_cast<QQuickWindow*>(engine->rootObjects().first());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
}

void ShellFixture::TearDown()
{
    L10n::use(QStringLiteral("tr"));
    engine.reset();
    // What Qt deletes later is to be gone before the objects that it looks at.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QQuickItem* ShellFixture::item(const QString& accessibleName) const
{
    auto* found = tryFind(window->contentItem(), [&](QQuickItem* each) {
        const auto* interface = QAccessible::queryAccessibleInterface(each);
        return interface != nullptr && interface->text(QAccessible::Name) == accessibleName;
    });
    EXPECT_NE(found, nullptr) << "nothing visible is called " << accessibleName.toStdString();
    return found;
}

QString ShellFixture::descriptionOf(const QString& accessibleName) const
{
    auto* const found = item(accessibleName);
    return found == nullptr ? QString() : QAccessible::queryAccessibleInterface(found)->text(QAccessible::Description);
}

QQuickItem* ShellFixture::textItem(const QString& text) const
{
    // A control and the label within it have the same text; the label is what is seen.
    return tryFind(window->contentItem(), [&](QQuickItem* each) {
        return each->property("text").toString() == text && each->property("lineCount").isValid();
    });
}

void ShellFixture::makeClips(const QList<QByteArray>& names)
{
    QDir().mkpath(settings.saveFolder());
    for (const auto& name : names) {
        QFile file(QDir(settings.saveFolder()).filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    library->reload();
    time.settle();
    QTest::qWait(20);
}

QStringList ShellFixture::cutTexts() const
{
    QStringList cut;
    tryFind(window->contentItem(), [&](QQuickItem* each) {
        if (each->property("truncated").toBool()) {
            cut.append(each->property("text").toString());
        }
        return false;
    });
    return cut;
}

void ShellFixture::click(const QString& accessibleName)
{
    if (auto* target = item(accessibleName)) {
        const auto middle = target->mapToScene({target->width() / 2, target->height() / 2});
        QTest::mouseClick(window, Qt::LeftButton, {}, middle.toPoint());
    }
}

QImage ShellFixture::picture(const QString& name)
{
    // Colours and switches move for a moment after a change.
    QTest::qWait(400);
    auto image = window->grabWindow();
    const QDir pictures(QStringLiteral(QUELTO_PICTURES));
    pictures.mkpath(QStringLiteral("."));
    image.save(pictures.filePath(name + QStringLiteral(".png")));
    return image;
}

} // namespace quelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/theme/ThemeFixture.h"

#include "base/language/L10n.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/ThemeForQml.h"

#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)

namespace quelto::test {

namespace {

template <typename Predicate> QQuickItem* tryFind(QQuickItem* root, const Predicate& isWanted)
{
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

void ThemeFixture::SetUp()
{
    L10n::use(QStringLiteral("tr"));
    theme = std::make_unique<Theme>(settings);
    ThemeForQml::instance = theme.get();
    engine = std::make_unique<QQmlApplicationEngine>();
    engine->addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    engine->addImportPath(QStringLiteral("qrc:/"));
}

void ThemeFixture::TearDown()
{
    L10n::use(QStringLiteral("tr"));
    engine.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ThemeFixture::show(const QString& qml, QSize size)
{
    const auto source =
        QStringLiteral("import QtQuick\nimport QtQuick.Layouts\nimport QtQuick.Templates\nimport Quelto.Theme\n"
                       "Window { width: %1; height: %2; visible: true; color: Theme.bg\n%3\n}\n")
            .arg(size.width())
            .arg(size.height())
            .arg(qml);
    engine->loadData(source.toUtf8());
    takeWindow();
}

void ThemeFixture::showFile(const QString& path)
{
    engine->load(QUrl::fromLocalFile(path));
    takeWindow();
}

void ThemeFixture::takeWindow()
{
    ASSERT_FALSE(engine->rootObjects().isEmpty());
    window = qobject_cast<QQuickWindow*>(engine->rootObjects().last());
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    // The pointer stays where the last window had it.
    QTest::mouseMove(window, QPoint(window->width() - 1, window->height() - 1));
}

QObject* ThemeFixture::object(const QString& name) const
{
    auto* found = window->findChild<QObject*>(name);
    if (found == nullptr) {
        found = tryFind(window->contentItem(), [&](QQuickItem* each) { return each->objectName() == name; });
    }
    EXPECT_NE(found, nullptr) << "nothing is called " << name.toStdString();
    return found;
}

QQuickItem* ThemeFixture::item(const QString& name) const
{
    return qobject_cast<QQuickItem*>(object(name));
}

QQuickItem* ThemeFixture::background(const QString& name) const
{
    return read(name, "background").value<QQuickItem*>();
}

void ThemeFixture::click(const QQuickItem* target)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(target));
}

void ThemeFixture::hover(const QQuickItem* target)
{
    QTest::mouseMove(window, middleOf(target));
}

} // namespace quelto::test

int main(int argc, char* argv[])
{
    // Drawn without a display and without a GPU, the same on every machine.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

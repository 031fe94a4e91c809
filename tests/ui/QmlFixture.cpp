// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include "base/language/L10n.h"
#include "ui/icons/Symbols.h"
#include "ui/theme/ThemeForQml.h"

#include <QCoreApplication>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_IconsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ControlsPlugin)

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

void QmlFixture::SetUp()
{
    L10n::use(QStringLiteral("tr"));
    theme = std::make_unique<Theme>(settings);
    ThemeForQml::instance = theme.get();
    engine = std::make_unique<QQmlApplicationEngine>();
    engine->addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    engine->addImportPath(QStringLiteral("qrc:/"));
}

void QmlFixture::TearDown()
{
    L10n::use(QStringLiteral("tr"));
    engine.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QmlFixture::show(const QString& qml, QSize size)
{
    const auto source = QStringLiteral("import QtQuick\nimport QtQuick.Layouts\nimport QtQuick.Templates\n"
                                       "import Quelto.Controls\nimport Quelto.Icons\nimport Quelto.Theme\n%4\n"
                                       "Window { width: %1; height: %2; visible: true; color: Theme.bg\n%3\n}\n")
                            .arg(size.width())
                            .arg(size.height())
                            .arg(qml, imports);
    engine->loadData(source.toUtf8());
    takeWindow();
}

void QmlFixture::showFile(const QString& path)
{
    engine->load(QUrl::fromLocalFile(path));
    takeWindow();
}

void QmlFixture::takeWindow()
{
    ASSERT_FALSE(engine->rootObjects().isEmpty());
    window = qobject_cast<QQuickWindow*>(engine->rootObjects().last());
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    // Moves the pointer away, because it keeps its place from the previous window.
    QTest::mouseMove(window, QPoint(window->width() - 1, window->height() - 1));
}

QObject* QmlFixture::object(const QString& name) const
{
    auto* found = window->findChild<QObject*>(name);
    if (found == nullptr) {
        found = tryFind(window->contentItem(), [&](QQuickItem* each) { return each->objectName() == name; });
    }
    EXPECT_NE(found, nullptr) << "no object is named " << name.toStdString();
    return found;
}

QQuickItem* QmlFixture::item(const QString& name) const
{
    return qobject_cast<QQuickItem*>(object(name));
}

QQuickItem* QmlFixture::background(const QString& name) const
{
    return read(name, "background").value<QQuickItem*>();
}

void QmlFixture::click(const QQuickItem* target)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(target));
}

void QmlFixture::hover(const QQuickItem* target)
{
    QTest::mouseMove(window, middleOf(target));
}

} // namespace quelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/player/PlayerFixture.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_PlayerPlugin)

namespace quelto::test {

void PlayerFixture::SetUp()
{
    QmlFixture::SetUp();
    imports = QStringLiteral("import Quelto.Player");
    PlaybackForQml::instance.emplace(PlaybackForQml::Parts{
        .model = {.main = queue, .work = [](const Task& task) { task(); }}, .createPlayer = [this] {
            auto created = std::make_unique<FakePlayer>();
            player = created.get();
            players.append(player);
            return created;
        }});
}

void PlayerFixture::showPlayer(const QList<ClipMeta::Event>& events, QSize size)
{
    show(QStringLiteral("ClipPlayer { id: model; objectName: 'model' }\n"
                        "ClipPlayerView { objectName: 'view'; anchors.fill: parent; model: model; focus: true }"),
         size);
    const auto path = folder.filePath(QStringLiteral("X.mp4"));
    ClipMeta meta;
    meta.events = events;
    meta.save(path);
    model().load(path);
    time.settle();
    player->opened(10);
    player->takeCalls();
}

QQuickItem* PlayerFixture::named(const QString& name) const
{
    auto* const found = itemNamed(window, name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
}

QPoint PlayerFixture::onTimeline(double seconds, int y) const
{
    const auto* line = timeline();
    return line->mapToScene({seconds / 10 * line->width(), static_cast<qreal>(y)}).toPoint();
}

} // namespace quelto::test

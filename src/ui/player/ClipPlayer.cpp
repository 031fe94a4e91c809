// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/player/ClipPlayer.h"

#include "playback/rules/PlaybackRules.h"
#include "ui/player/EventStyle.h"
#include "ui/theme/ThemeForQml.h"

namespace quelto {

ClipPlayer::ClipPlayer(QObject* parent)
    : ClipPlayerModel(PlaybackForQml::instance->createPlayer(), PlaybackForQml::instance->model, parent)
{
}

QVariantList ClipPlayer::markers() const
{
    QVariantList list;
    for (const auto& event : events()) {
        list.append(QVariantMap{{QStringLiteral("time"), event.t},
                                {QStringLiteral("icon"), EventStyle::icon(event.name)},
                                {QStringLiteral("color"), EventStyle::color(event.name, *ThemeForQml::instance)},
                                {QStringLiteral("title"), EventStyle::title(event.name)}});
    }
    return list;
}

QVariantList ClipPlayer::rates()
{
    return {0.25, 0.5, 1.0, 1.5, 2.0};
}

QString ClipPlayer::positionText(double seconds)
{
    return quelto::positionText(seconds);
}

QString ClipPlayer::rateText(double rate)
{
    return QString::number(rate) + u'×';
}

} // namespace quelto

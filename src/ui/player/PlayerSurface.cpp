// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/player/PlayerSurface.h"

#include "playback/mpv/MpvPlayer.h"

namespace quelto {

void PlayerSurface::setModel(ClipPlayer* model)
{
    if (model == m_model) {
        return;
    }
    m_model = model;
    setPlayer(model == nullptr ? nullptr : qobject_cast<MpvPlayer*>(&model->player()));
    Q_EMIT modelChanged();
}

} // namespace quelto

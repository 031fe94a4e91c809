// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/surface/VideoSurface.h"
#include "ui/player/ClipPlayer.h"

namespace quelto {

/// Shows the pictures of a ClipPlayer.
// Qt 6.4 finds the properties of a base class for QML by its full name only.
class PlayerSurface : public quelto::VideoSurface {
    Q_OBJECT
    QML_NAMED_ELEMENT(VideoSurface)
    Q_PROPERTY(quelto::ClipPlayer* model READ model WRITE setModel NOTIFY modelChanged)

public:
    using VideoSurface::VideoSurface;

    ClipPlayer* model() const { return m_model; }
    void setModel(ClipPlayer* model);

Q_SIGNALS:
    void modelChanged();

private:
    QPointer<ClipPlayer> m_model;
};

} // namespace quelto

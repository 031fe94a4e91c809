// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace quelto {

/// Holds the enumeration for QML, which requires a class and upper-case enumerators.
class CaptureStates : public QObject {
    Q_OBJECT

public:
    enum class Kind { Idle, Starting, Recording, Error };
    Q_ENUM(Kind)
};

/// The state of a capture session.
using CaptureState = CaptureStates::Kind;

struct RecorderState {
    CaptureState kind = CaptureState::Idle;
    /// For Error: the translated message for the user.
    QString message;

    bool operator==(const RecorderState&) const = default;
};

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace quelto {

/// Holds the enumeration for QML, which takes it from a class only, and only with upper-case enumerators.
class CaptureStates : public QObject {
    Q_OBJECT

public:
    enum class Kind { Idle, Starting, Recording, Error };
    Q_ENUM(Kind)
};

/// Where a capture session stands.
using CaptureState = CaptureStates::Kind;

struct RecorderState {
    CaptureState kind = CaptureState::Idle;
    /// Of an error: a translated text for the user.
    QString message;

    bool operator==(const RecorderState&) const = default;
};

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QVariantMap>

/// The token by which the desktop permits a program to raise a window, because the user has just started it or clicked
/// something of it. Without one a Wayland compositor refuses, and at most marks the window.
///
/// A token is valid for one activation.
namespace quelto::activationToken {

/// The token in the environment; empty if none. At first, the token that this process was started with: for that, call
/// it before the application object is created, which may remove it.
QByteArray present();

/// The token in the platform data of org.freedesktop.Application, and platform data with a token; both may be empty.
QByteArray fromPlatformData(const QVariantMap& data);
QVariantMap toPlatformData(const QByteArray& token);

/// Puts a token into the environment while it exists: Qt reads it there when it activates a window. Then removes every
/// token from it, so that programs that are started later do not inherit a used one.
///
/// Thread: main.
class Scope {
public:
    /// The token may be empty.
    explicit Scope(const QByteArray& token);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
};

} // namespace quelto::activationToken

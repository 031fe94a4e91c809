// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QList>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <functional>

namespace quelto {

/// Tells the portal which application this connection belongs to, before the connection calls anything else there.
///
/// Without it, the portal guesses the application from the process, finds none for a program that a terminal started,
/// and then some desktops refuse global shortcuts. Portals without the interface know no other way.
///
/// Thread: main. Errors: none; a portal that refuses is used without a name.
class PortalRegistry final : public QObject {
    Q_OBJECT

public:
    explicit PortalRegistry(const QDBusConnection& bus);

    /// Calls back once the portal has answered, at once if it has already. Not at all if the context is destroyed
    /// before. The time limit is for the portal's answer; the one of the first caller that waits for it applies.
    void whenRegistered(QObject* context, std::chrono::milliseconds timeLimit, std::function<void()> callback);
    /// The portal is gone. The next one has to be told again.
    void reset();

private:
    enum class State { unregistered, registering, done };

    struct Waiting {
        QPointer<QObject> context;
        std::function<void()> callback;
    };

    void sendRegistration();
    void finish(State state);

    QDBusConnection m_bus;
    State m_state = State::unregistered;
    bool m_isSecondAttempt = false;
    /// For both attempts.
    QDeadlineTimer m_limit;
    QList<Waiting> m_waiting;
};

} // namespace quelto

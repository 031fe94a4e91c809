// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

#include <sys/types.h>

namespace quelto::test {

/// Limits the wait for a change on the screen or of the focus.
constexpr int ChangeMilliseconds = 10'000;

/// A compositor without a screen, in a folder of its own. It uses the session bus of the test.
class Compositor {
public:
    enum class Kind { sway, kwin };

    class Pause {
    public:
        explicit Pause(qint64 process);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        pid_t m_process;
    };

    static QString programOf(Kind kind)
    {
        return kind == Kind::sway ? QStringLiteral("sway") : QStringLiteral("kwin_wayland");
    }
    static bool isInstalled(Kind kind);

    explicit Compositor(Kind kind);
    ~Compositor();
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;

    /// The path of its socket, for $WAYLAND_DISPLAY. Empty if it did not start.
    QString display() const { return m_display; }
    /// What it has written.
    QByteArray log();
    /// Ends it without a farewell, like a crash.
    void kill();
    /// Stops it until the result is destroyed, as if it hung.
    std::unique_ptr<Pause> pause() const { return std::make_unique<Pause>(m_process.processId()); }
    /// What sway shows on the screen.
    QImage screenshot() const;
    /// The application id of the window that has sway's focus.
    QString focusedApplication() const;
    /// Sends a command to sway. True if it succeeds.
    bool command(const QString& text) const;

private:
    QString ipcSocket() const;
    void startSway();
    void startKWin();
    /// Starts a command with options of setpriv in front.
    void start(const QStringList& arguments, QProcessEnvironment environment);

    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_display;
};

/// A window of another program.
class ForeignWindow {
public:
    ForeignWindow(const Compositor& compositor, const QString& applicationID, const QString& title);
    ~ForeignWindow();
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    /// Waits until the window is shown. False if that takes too long.
    bool isShown();
    void setTitle(const QString& title);

private:
    QProcess m_process;
};

} // namespace quelto::test

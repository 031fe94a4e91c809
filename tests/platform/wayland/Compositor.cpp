// SPDX-License-Identifier: GPL-3.0-or-later
#include "Compositor.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTest>

#include <csignal>
#include <functional>

#include <unistd.h>

namespace quelto::test {

namespace {

constexpr int StartMilliseconds = 30'000;
constexpr int EndMilliseconds = 5000;
constexpr uid_t Nobody = 65534;

/// In a folder that every user may enter.
QString folderTemplate()
{
    return QStringLiteral("/tmp/quelto-compositor-XXXXXX");
}

} // namespace

Compositor::Pause::Pause(qint64 process)
    : m_process(static_cast<pid_t>(process))
{
    ::kill(m_process, SIGSTOP);
}

Compositor::Pause::~Pause()
{
    ::kill(m_process, SIGCONT);
}

bool Compositor::isInstalled(Kind kind)
{
    return !QStandardPaths::findExecutable(programOf(kind)).isEmpty();
}

Compositor::Compositor(Kind kind)
    : m_folder(folderTemplate())
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    if (kind == Kind::sway) {
        startSway();
    } else {
        startKWin();
    }
}

Compositor::~Compositor()
{
    m_process.terminate();
    if (!m_process.waitForFinished(EndMilliseconds)) {
        kill();
    }
}

QByteArray Compositor::log()
{
    return m_process.readAll();
}

void Compositor::kill()
{
    m_process.kill();
    m_process.waitForFinished(EndMilliseconds);
}

QString Compositor::ipcSocket() const
{
    const QDir folder(m_folder.path());
    return folder.filePath(folder.entryList({QStringLiteral("sway-ipc.*.sock")}, QDir::System | QDir::Files).value(0));
}

bool Compositor::command(const QString& text) const
{
    return QProcess::execute(QStringLiteral("swaymsg"),
                             {QStringLiteral("-q"), QStringLiteral("-s"), ipcSocket(), text}) == 0;
}

QImage Compositor::screenshot() const
{
    QProcess grim;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("WAYLAND_DISPLAY"), m_display);
    grim.setProcessEnvironment(environment);
    grim.start(QStringLiteral("grim"), {QStringLiteral("-t"), QStringLiteral("ppm"), QStringLiteral("-")});
    grim.waitForFinished(StartMilliseconds);
    return QImage::fromData(grim.readAllStandardOutput());
}

QString Compositor::focusedApplication() const
{
    QProcess tree;
    tree.start(
        QStringLiteral("swaymsg"),
        {QStringLiteral("-r"), QStringLiteral("-s"), ipcSocket(), QStringLiteral("-t"), QStringLiteral("get_tree")});
    tree.waitForFinished(StartMilliseconds);
    const std::function<QString(const QJsonObject&)> find = [&](const QJsonObject& node) -> QString {
        if (node[QStringLiteral("focused")].toBool()) {
            return node[QStringLiteral("app_id")].toString();
        }
        for (const auto& child : node[QStringLiteral("nodes")].toArray()) {
            if (const auto found = find(child.toObject()); !found.isEmpty()) {
                return found;
            }
        }
        return {};
    };
    return find(QJsonDocument::fromJson(tree.readAllStandardOutput()).object());
}

void Compositor::startSway()
{
    const auto configuration = m_folder.filePath(QStringLiteral("config"));
    QFile file(configuration);
    if (file.open(QIODevice::WriteOnly)) {
        file.write("xwayland disable\n");
    }
    file.close();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    environment.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    environment.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    QStringList arguments{QStringLiteral("sway"), QStringLiteral("-c"), configuration};
    if (geteuid() == 0) {
        // It refuses to run as root.
        if (chown(QFile::encodeName(m_folder.path()).constData(), Nobody, Nobody) != 0) {
            return;
        }
        arguments = QStringList{QStringLiteral("--reuid=%1").arg(Nobody), QStringLiteral("--regid=%1").arg(Nobody),
                                QStringLiteral("--clear-groups")} +
            arguments;
    }
    start(arguments, environment);
}

void Compositor::startKWin()
{
    // The copy lacks the file's capability, with which the loader would ignore parts of the environment.
    const auto program = m_folder.filePath(QStringLiteral("kwin_wayland"));
    QFile::copy(QStandardPaths::findExecutable(programOf(Kind::kwin)), program);
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_NO_XDG_DESKTOP_PORTAL"), QStringLiteral("1"));
    environment.insert(QStringLiteral("KWIN_COMPOSE"), QStringLiteral("Q"));
    for (const auto* name : {"QT_QPA_PLATFORM", "KDE_FULL_SESSION", "XDG_CURRENT_DESKTOP"}) {
        environment.remove(QString::fromLatin1(name));
    }
    start({program, QStringLiteral("--virtual"), QStringLiteral("--width"), QStringLiteral("640"),
           QStringLiteral("--height"), QStringLiteral("360"), QStringLiteral("--no-lockscreen"),
           QStringLiteral("--socket"), QStringLiteral("wayland-test")},
          environment);
}

void Compositor::start(const QStringList& arguments, QProcessEnvironment environment)
{
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("DISPLAY"));
    m_process.setProcessEnvironment(environment);
    // It must not outlive the test.
    m_process.start(QStringLiteral("setpriv"),
                    QStringList{QStringLiteral("--pdeathsig"), QStringLiteral("KILL")} + arguments);
    const QDir folder(m_folder.path());
    QString socket;
    const auto hasStarted = [&] {
        // With a lock file beside it.
        for (const auto& name : folder.entryList({QStringLiteral("wayland-*")}, QDir::System | QDir::Files)) {
            socket = name.endsWith(u".lock") ? socket : name;
        }
        return !socket.isEmpty();
    };
    if (QTest::qWaitFor([&] { return hasStarted() || m_process.state() == QProcess::NotRunning; }, StartMilliseconds) &&
        hasStarted()) {
        m_display = folder.filePath(socket);
    }
}

ForeignWindow::ForeignWindow(const Compositor& compositor, const QString& applicationID, const QString& title)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("WAYLAND_DISPLAY"), compositor.display());
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-B"), QStringLiteral(WAYLAND_WINDOW), QStringLiteral("wayland"), applicationID, title});
}

ForeignWindow::~ForeignWindow()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(EndMilliseconds)) {
        m_process.kill();
        m_process.waitForFinished(EndMilliseconds);
    }
}

bool ForeignWindow::isShown()
{
    return QTest::qWaitFor([this] { return m_process.canReadLine() && m_process.readLine() == "shown\n"; },
                           StartMilliseconds);
}

void ForeignWindow::setTitle(const QString& title)
{
    m_process.write(title.toUtf8() + '\n');
}

} // namespace quelto::test

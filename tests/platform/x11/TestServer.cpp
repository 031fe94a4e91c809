// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <stdexcept>

namespace quelto::test {

TestServer::TestServer(const QString& size, const QStringList& further)
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(QStringLiteral("Xvfb"),
                    QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                QStringLiteral("0"), size + QStringLiteral("x24"), QStringLiteral("-nolisten"),
                                QStringLiteral("tcp"), QStringLiteral("-noreset")} +
                        further);
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(20000)) {
            throw std::runtime_error("the X server does not start");
        }
    }
    m_name = QStringLiteral(":") + QString::fromLatin1(m_process.readLine().trimmed());
}

TestServer::~TestServer()
{
    m_process.terminate();
    if (!m_process.waitForFinished(5000)) {
        kill();
    }
}

void TestServer::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool TestServer::run(const QString& program, const QStringList& arguments) const
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    return process.waitForFinished(20000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

Painter::Painter(const QString& displayName)
    : m_connection(X11Connection::tryOpen(displayName).value())
    , m_graphics(xcb_generate_id(m_connection.get()))
{
    const std::uint32_t includeInferiors = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
    xcb_create_gc(server(), m_graphics, m_connection.root(), XCB_GC_SUBWINDOW_MODE, &includeInferiors);
}

void Painter::fill(const QRect& area, std::uint32_t rgb)
{
    xcb_change_gc(server(), m_graphics, XCB_GC_FOREGROUND, &rgb);
    const xcb_rectangle_t rectangle{.x = static_cast<std::int16_t>(area.x()),
                                    .y = static_cast<std::int16_t>(area.y()),
                                    .width = static_cast<std::uint16_t>(area.width()),
                                    .height = static_cast<std::uint16_t>(area.height())};
    xcb_poly_fill_rectangle(server(), m_connection.root(), m_graphics, 1, &rectangle);
    xcb_flush(server());
}

void Painter::warpPointer(QPoint position)
{
    xcb_warp_pointer(server(), XCB_NONE, m_connection.root(), 0, 0, 0, 0, static_cast<std::int16_t>(position.x()),
                     static_cast<std::int16_t>(position.y()));
    xcb_flush(server());
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds atMost)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > atMost.count()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(2);
    }
    return true;
}

} // namespace quelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/RestoreToken.h"

#include "base/files/FileName.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>

namespace quelto {

namespace {

/// A longer file is not ours.
constexpr qint64 MaxTokenSize = 1024;

/// How long the destructor waits for a disk.
constexpr std::chrono::seconds ExitTimeout{2};

bool isToken(const QByteArray& content)
{
    return content.size() <= MaxTokenSize &&
        std::ranges::all_of(content, [](char each) { return each > ' ' && each < '\x7f'; });
}

QString readToken(const QString& path)
{
    QFile file;
    // A pipe under that name must not block the program.
    const auto descriptor = ::open(encodeFileName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        return {};
    }
    const auto content = file.read(MaxTokenSize + 2).trimmed();
    return isToken(content) ? QString::fromLatin1(content) : QString();
}

void writeToken(const QString& path, const QByteArray& token)
{
    // In either case, the old one is used up.
    if (token.isEmpty() || !isToken(token)) {
        QFile::remove(path);
        return;
    }
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        // Before there is anything to read in it.
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) && file.write(token) == token.size()) {
        file.commit();
    }
}

} // namespace

QString RestoreToken::defaultPath()
{
    // QStandardPaths knows this folder since Qt 6.7.
    const auto states = qEnvironmentVariable("XDG_STATE_HOME");
    const auto folder = QDir::isAbsolutePath(states) ? states : QDir::homePath() + QStringLiteral("/.local/state");
    return folder + QStringLiteral("/Quelto/screen.token");
}

RestoreToken::RestoreToken(QString path)
    : m_path(std::move(path))
{
}

RestoreToken::~RestoreToken()
{
    if (m_queue) {
        m_queue->finish(ExitTimeout);
    }
}

QString RestoreToken::load()
{
    if (!m_token) {
        m_token = readToken(m_path);
    }
    return *m_token;
}

void RestoreToken::save(const QString& token)
{
    m_token = token;
    if (!m_queue) {
        m_queue = std::make_unique<SerialQueue>(QStringLiteral("quelto.token"));
    }
    m_queue->post([path = m_path, content = token.toUtf8()] { writeToken(path, content); });
}

} // namespace quelto

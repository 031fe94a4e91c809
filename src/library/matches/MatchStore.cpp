// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/matches/MatchStore.h"

#include "base/files/RenameToFreeName.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTimeZone>

#include <cerrno>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>

namespace quelto {

namespace {

/// A field has the wrong type, or a required field is missing.
struct InvalidEntry : std::runtime_error {
    InvalidEntry()
        : std::runtime_error("invalid match")
    {
    }
};

QDateTime referenceDate()
{
    return QDateTime(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc()).toUTC();
}

double encoded(const QDateTime& date)
{
    return static_cast<double>(referenceDate().msecsTo(date)) / 1000.0;
}

QDateTime date(const QJsonValue& value)
{
    // About 30,000 years in both directions, which QDateTime can represent.
    constexpr double MaxSeconds = 1e12;
    const double seconds = value.isDouble() ? value.toDouble() : throw InvalidEntry();
    if (std::abs(seconds) > MaxSeconds) {
        throw InvalidEntry();
    }
    return referenceDate().addMSecs(std::llround(seconds * 1000.0));
}

QString text(const QJsonValue& value)
{
    return value.isString() ? value.toString() : throw InvalidEntry();
}

QUuid uuid(const QJsonValue& value)
{
    const auto id = QUuid::fromString(text(value));
    return id.isNull() ? throw InvalidEntry() : id;
}

QStringList texts(const QJsonValue& value)
{
    QStringList list;
    const auto array = value.isArray() ? value.toArray() : throw InvalidEntry();
    std::ranges::transform(array, std::back_inserter(list), [](const QJsonValue& each) { return text(each); });
    return list;
}

bool hasValue(const QJsonValue& value)
{
    return !value.isUndefined() && !value.isNull();
}

MatchSession session(const QJsonValue& value)
{
    const auto object = value.isObject() ? value.toObject() : throw InvalidEntry();
    MatchSession session{.id = uuid(object.value(QStringLiteral("id"))),
                         .game = text(object.value(QStringLiteral("game"))),
                         .hero = text(object.value(QStringLiteral("hero"))),
                         .start = date(object.value(QStringLiteral("start"))),
                         .end = std::nullopt,
                         .clips = texts(object.value(QStringLiteral("clips"))),
                         .trashed = {},
                         .montage = std::nullopt};
    if (const auto end = object.value(QStringLiteral("end")); hasValue(end)) {
        session.end = date(end);
    }
    if (const auto trashed = object.value(QStringLiteral("trashed")); hasValue(trashed)) {
        session.trashed = texts(trashed);
    }
    if (const auto montage = object.value(QStringLiteral("montage")); hasValue(montage)) {
        session.montage = text(montage);
    }
    return session;
}

QJsonObject object(const MatchSession& session)
{
    QJsonObject object{{QStringLiteral("id"), matchIdText(session.id)},
                       {QStringLiteral("game"), session.game},
                       {QStringLiteral("hero"), session.hero},
                       {QStringLiteral("start"), encoded(session.start)},
                       {QStringLiteral("clips"), QJsonArray::fromStringList(session.clips)}};
    if (session.end) {
        object.insert(QStringLiteral("end"), encoded(*session.end));
    }
    if (!session.trashed.isEmpty()) {
        object.insert(QStringLiteral("trashed"), QJsonArray::fromStringList(session.trashed));
    }
    if (session.montage) {
        object.insert(QStringLiteral("montage"), *session.montage);
    }
    return object;
}

enum class FileState {
    missing,
    readable,
    /// The content is lost for this program: no permission, not a regular file, or too large.
    unreadable,
    /// The system cannot read it at present.
    failed,
};

struct FileContent {
    FileState state;
    QByteArray bytes;
};

FileState stateAfterOpenError(int error)
{
    switch (error) {
    case ENOENT:
        return FileState::missing;
    case EACCES:
    case ENXIO: // A socket, or a device that does not exist.
        return FileState::unreadable;
    default:
        return FileState::failed;
    }
}

FileContent readFile(const QString& path)
{
    // Opening a pipe must not wait for its writer.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0) {
        return {.state = stateAfterOpenError(errno), .bytes = {}};
    }
    QFile file;
    file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    struct stat status { };
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > MatchStore::MaxSize) {
        return {.state = FileState::unreadable, .bytes = {}};
    }
    const auto bytes = file.read(MatchStore::MaxSize);
    const bool isRead = file.error() == QFileDevice::NoError;
    return {.state = isRead ? FileState::readable : FileState::failed, .bytes = bytes};
}

/// Gives the file a free name, so that files that were set aside earlier are kept.
bool setAside(const QString& path)
{
    constexpr int MaxNumber = 100;
    const auto from = QFile::encodeName(path);
    for (int number = 1; number <= MaxNumber; ++number) {
        const auto suffix = number == 1 ? QString() : QStringLiteral("-%1").arg(number);
        const auto to = QFile::encodeName(path + QStringLiteral(".unreadable") + suffix);
        if (const auto error = renameToFreeName(AT_FDCWD, from.constData(), to.constData()); error != EEXIST) {
            return error == 0;
        }
    }
    return false;
}

} // namespace

QByteArray encodedMatches(const QList<MatchSession>& sessions)
{
    QJsonArray array;
    for (const auto& each : sessions) {
        array.append(object(each));
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<MatchSession>> decodedMatches(const QByteArray& json)
{
    const auto document = QJsonDocument::fromJson(json);
    if (!document.isArray()) {
        return std::nullopt;
    }
    try {
        QList<MatchSession> sessions;
        const auto array = document.array();
        std::ranges::transform(array, std::back_inserter(sessions), session);
        return sessions;
    } catch (const InvalidEntry&) {
        return std::nullopt;
    }
}

QString MatchStore::defaultPath()
{
    const auto name = QStringLiteral("/matches.json");
    const auto folder = qEnvironmentVariable("QUELTO_DATA_DIR");
    return folder.isEmpty()
        ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Quelto") + name
        : folder + name;
}

MatchStore::MatchStore(QString path)
    : m_path(std::move(path))
{
}

QList<MatchSession> MatchStore::load()
{
    const auto content = readFile(m_path);
    if (content.state == FileState::readable) {
        if (const auto sessions = decodedMatches(content.bytes)) {
            return *sessions;
        }
    }
    m_isWritable = content.state == FileState::missing || (content.state != FileState::failed && setAside(m_path));
    return {};
}

void MatchStore::save(const QList<MatchSession>& sessions) const
{
    if (!m_isWritable) {
        return;
    }
    QDir().mkpath(QFileInfo(m_path).path());
    QSaveFile file(m_path);
    const auto json = encodedMatches(sessions.first(std::min(sessions.size(), MaxSessions)));
    // Commit only a complete write. QSaveFile does not treat a short write on a full disk as an error, and buffering
    // would hide it here as well.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(json) == json.size()) {
        file.commit();
    }
}

} // namespace quelto

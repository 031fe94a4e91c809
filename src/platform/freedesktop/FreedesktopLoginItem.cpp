// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopLoginItem.h"

#include "base/files/AtomicFile.h"
#include "base/files/FileName.h"
#include "base/language/T.h"
#include "platform/freedesktop/AutostartEntry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace quelto {

namespace {

constexpr std::chrono::seconds ExitTimeout{3};
/// Units: bytes. An entry is far smaller.
constexpr qint64 MaxSize = 1 << 20;

QString entryIn(const QString& configFolder)
{
    return configFolder + QStringLiteral("/autostart/app.quelto.Quelto.desktop");
}

struct StoredEntry {
    AutostartEntry entry;
    /// Whether a change of the entry loses something that the user's file has.
    bool needsBackup = false;
};

/// The lines that are not cut off.
QByteArray wholeLines(const QByteArray& contents)
{
    return contents.size() < MaxSize ? contents : contents.left(contents.lastIndexOf('\n') + 1);
}

/// The entry that the desktop reads: of several the user's. An empty one if there is none.
StoredEntry readEntry(const FreedesktopLoginItem::Options& options)
{
    bool isUnreadable = false;
    for (const auto& folder : options.configFolders) {
        const bool isOfUser = folder == options.configFolders.first();
        QFile file(entryIn(folder));
        // A pipe would block.
        if (!QFileInfo(file).isFile()) {
            continue;
        }
        if (file.open(QFile::ReadOnly)) {
            const auto contents = file.read(MaxSize);
            const AutostartEntry entry(wholeLines(contents), options.desktops);
            return {.entry = entry,
                    .needsBackup = isUnreadable || (isOfUser && (contents.size() == MaxSize || entry.isDamaged()))};
        }
        isUnreadable = isUnreadable || isOfUser;
    }
    return {.entry = AutostartEntry({}, options.desktops), .needsBackup = isUnreadable};
}

bool readsAsEnabled(const FreedesktopLoginItem::Options& options)
{
    return readEntry(options).entry.isEnabled();
}

/// Gives the file a second name that is free. Desktops read files with the ending ".desktop" only.
void backUp(const std::string& path)
{
    for (int number = 1;; ++number) {
        const auto backup = path + ".damaged" + (number == 1 ? std::string() : '-' + std::to_string(number));
        std::error_code error;
        std::filesystem::create_hard_link(path, backup, error);
        if (error == std::errc::operation_not_permitted || error == std::errc::operation_not_supported) {
            // The disk has no links, or the file belongs to somebody else.
            std::filesystem::rename(path, backup);
            return;
        }
        if (error != std::errc::file_exists) {
            if (error) {
                throw std::system_error(error);
            }
            return;
        }
    }
}

void write(const QString& path, const QByteArray& contents, bool needsBackup)
{
    // The file that a link points to, and not the link, is replaced.
    const QFileInfo link(path);
    const QFileInfo target(link.isSymLink() && link.exists() ? link.canonicalFilePath() : path);
    std::filesystem::create_directories(encodeFileName(target.path()).toStdString());
    AtomicFile file(target.path());
    file.write(std::as_bytes(std::span(contents)));
    file.flush();
    if (needsBackup) {
        backUp(encodeFileName(target.filePath()).toStdString());
    }
    file.publish(target.fileName());
}

void change(const FreedesktopLoginItem::Options& options, bool isEnabled)
{
    const auto [entry, needsBackup] = readEntry(options);
    const auto path = entryIn(options.configFolders.first());
    if (isEnabled) {
        write(path, entry.enabled(options.program), needsBackup);
    } else if (entry.isEnabled()) {
        // Not removed: the file may have settings of the user, or hide one of the system.
        write(path, entry.disabled(), needsBackup);
    }
}

/// The path as the user writes it.
QString shortPath(const QString& path)
{
    const auto home = QDir::homePath();
    return displayFileName(path.startsWith(home + u'/') ? u'~' + path.mid(home.size()) : path);
}

/// The folder, or the file that stands in its way.
QString obstacleIn(QString folder)
{
    while (!QFileInfo::exists(folder) && folder.size() > 1) {
        folder = QFileInfo(folder).path();
    }
    return folder;
}

QString failureText(int code, const QString& configFolder)
{
    const auto folder = QFileInfo(entryIn(configFolder)).path();
    switch (code) {
    case ENOSPC:
    case EDQUOT:
        return T("Ev klasörünüzün diskinde yer kalmadı. Yer açıp yeniden deneyin.");
    case EACCES:
    case EPERM:
    case EROFS:
        return T("{0} klasörüne yazılamıyor. İzinlerini düzeltip yeniden deneyin.", shortPath(folder));
    case ENOTDIR:
    case EEXIST:
        return T("{0} bir klasör değil, dosya. Dosyayı taşıyıp yeniden deneyin.", shortPath(obstacleIn(folder)));
    default:
        return QString::fromStdString(std::generic_category().message(code));
    }
}

/// The AppImage that has this program; empty if it is not in one. A program that an AppImage starts inherits the
/// variables, so the program must also be in the folder where that AppImage is mounted.
QByteArray appImageOf(const QByteArray& program)
{
    const auto image = qgetenv("APPIMAGE");
    const auto folder = qgetenv("APPDIR");
    std::error_code ignored;
    const auto mounted = std::filesystem::canonical(folder.toStdString(), ignored).string();
    const bool isInside = !mounted.empty() && program.startsWith(QByteArray::fromStdString(mounted) + '/');
    const bool isFile = image.startsWith('/') && std::filesystem::is_regular_file(image.toStdString(), ignored);
    return isInside && isFile ? image : QByteArray();
}

} // namespace

FreedesktopLoginItem::Options FreedesktopLoginItem::ofThisProgram()
{
    QByteArray program(PATH_MAX, Qt::Uninitialized);
    program.truncate(std::max<ssize_t>(0, ::readlink("/proc/self/exe", program.data(), PATH_MAX)));
    // The program's own path in an AppImage exists only while it runs.
    if (const auto image = appImageOf(program); !image.isEmpty()) {
        program = image;
    }
    return {.configFolders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation),
            .program = program,
            .desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':')};
}

FreedesktopLoginItem::FreedesktopLoginItem(Options options)
    : m_options(std::move(options))
{
}

FreedesktopLoginItem::~FreedesktopLoginItem()
{
    m_replies->detach();
    if (m_queue) {
        m_queue->finish(ExitTimeout);
    }
}

void FreedesktopLoginItem::read(Reply reply)
{
    post([options = m_options] { return Result{.isEnabled = readsAsEnabled(options)}; }, std::move(reply));
}

void FreedesktopLoginItem::setEnabled(bool isEnabled, Reply reply)
{
    post(
        [options = m_options, isWanted = isEnabled] {
            QString failure;
            try {
                change(options, isWanted);
            } catch (const std::system_error& error) {
                failure = failureText(error.code().value(), options.configFolders.first());
            }
            return Result{.isEnabled = readsAsEnabled(options), .failure = failure};
        },
        std::move(reply));
}

void FreedesktopLoginItem::post(std::function<Result()> work, Reply reply)
{
    if (!m_queue) {
        m_queue = std::make_unique<SerialQueue>(QStringLiteral("quelto.login"));
    }
    m_queue->post([replies = m_replies, work = std::move(work), reply = std::move(reply)] {
        const auto result = work();
        replies->post([reply, result] { reply(result); });
    });
}

} // namespace quelto

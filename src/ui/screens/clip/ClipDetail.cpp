// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/clip/ClipDetail.h"

#include "base/files/FileName.h"
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "ui/screens/clip/ClipPageForQml.h"

#include <fcntl.h>

namespace quelto {

namespace {

constexpr qint64 Megabyte = 1'000'000;

QString textOrDash(bool isKnown, const QString& text)
{
    return isKnown ? text : QStringLiteral("—");
}

} // namespace

ClipDetail::ClipDetail(QObject* parent)
    : ClipDetail(ClipPageForQml::instance.value(), parent)
{
}

ClipDetail::ClipDetail(const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
    , m_clip(QString(), std::nullopt)
{
    connect(&m_dependencies.exports, &ClipExports::runChanged, this, [this](const QString& path) {
        if (path == m_path) {
            Q_EMIT runChanged();
        }
    });
    connect(&m_dependencies.exports, &ClipExports::shrunk, this, [this](const QString& path, const QString& copy) {
        if (path == m_path) {
            setDiscordPath(copy);
        }
    });
    connect(&m_dependencies.frames, &ClipFrames::savingChanged, this, [this](const QString& path) {
        if (path == m_path) {
            Q_EMIT savingFrameChanged();
        }
    });
    connect(&m_dependencies.settings, &AppSettings::discordLimitMBChanged, this, [this] {
        Q_EMIT limitChanged();
        Q_EMIT aboveLimitChanged();
    });
}

void ClipDetail::setPath(const QString& path)
{
    if (!m_path.isEmpty() || path.isEmpty()) {
        return;
    }
    m_path = path;
    m_clip = Clip(path);
    Q_EMIT pathChanged();
    Q_EMIT runChanged();
    Q_EMIT savingFrameChanged();
    Q_EMIT sharedChanged();
    Q_EMIT aboveLimitChanged();
    // Destroying the ticket cancels the callback, so `this` outlives it.
    m_ticket = m_dependencies.thumbnails.load(path, [this](const QImage& /*picture*/, const ClipInfo& info) {
        m_info = info;
        Q_EMIT infoChanged();
    });
}

QString ClipDetail::dateText() const
{
    return L10n::date(m_clip.date, QStringLiteral("dMMMyyyyHHmm"));
}

QString ClipDetail::durationText() const
{
    return textOrDash(m_info.duration > 0, m_info.durationText());
}

QString ClipDetail::resolutionText() const
{
    return textOrDash(m_info.width > 0 && m_info.height > 0,
                      QString::number(m_info.width) + u'×' + QString::number(m_info.height));
}

QString ClipDetail::fpsText() const
{
    return textOrDash(m_info.fps > 0, QString::number(m_info.fps, 'f', 0));
}

bool ClipDetail::isAboveLimit() const
{
    return m_discordPath.isEmpty() && m_clip.size > limitMB() * Megabyte;
}

QStringList ClipDetail::aspects()
{
    QStringList values;
    for (const auto aspect : allAspectRatios()) {
        values.append(rawValue(aspect));
    }
    return values;
}

QStringList ClipDetail::fills()
{
    QStringList values;
    for (const auto fill : allFillModes()) {
        values.append(rawValue(fill));
    }
    return values;
}

QString ClipDetail::fillLabel(const QString& fill)
{
    const auto mode = fillModeFromRawValue(fill);
    return mode ? label(*mode) : QString();
}

void ClipDetail::trim(double start, double end)
{
    m_dependencies.exports.trim(m_path, {.start = start, .end = end});
}

void ClipDetail::exportAspect(const QString& aspect, const QString& fill)
{
    const auto ratio = aspectRatioFromRawValue(aspect);
    const auto mode = fillModeFromRawValue(fill);
    if (ratio && mode) {
        m_dependencies.exports.exportAspect(m_path, *ratio, *mode);
    }
}

void ClipDetail::shrink()
{
    // A file that is gone has no size, so it would pass for one that is small enough.
    if (requireFile(m_path)) {
        m_dependencies.exports.shrink(m_path, limitMB());
    }
}

void ClipDetail::saveFrame(double seconds)
{
    m_dependencies.frames.save(m_path, seconds);
}

void ClipDetail::rename(const QString& title)
{
    std::optional<Clip> renamed;
    m_dependencies.exports.renameClip(m_path, [&] {
        renamed = m_dependencies.library.rename(m_clip, title);
        return renamed ? renamed->path : QString();
    });
    if (!renamed) {
        m_dependencies.navigation.showToast(T("Yeniden adlandırılamadı"));
        return;
    }
    // Last, because the page may delete this object.
    m_dependencies.navigation.setSelected(renamed);
}

void ClipDetail::trash()
{
    m_dependencies.library.trash(m_clip);
    // Last, because the page may delete this object.
    m_dependencies.navigation.closeClip();
}

void ClipDetail::copy()
{
    if (requireFile(sharedPath())) {
        m_dependencies.commands.copy(sharedPath());
    }
}

void ClipDetail::reveal()
{
    if (requireFile(m_path)) {
        m_dependencies.commands.reveal(m_path);
    }
}

void ClipDetail::setDiscordPath(const QString& path)
{
    m_discordPath = path;
    m_discordSizeText = Clip(path).sizeText();
    Q_EMIT sharedChanged();
    Q_EMIT aboveLimitChanged();
}

bool ClipDetail::requireFile(const QString& path) const
{
    const bool exists = tryFileStat(AT_FDCWD, encodeFileName(path).constData()).has_value();
    if (!exists) {
        m_dependencies.navigation.showToast(T("Klip bulunamadı. Silinmiş veya taşınmış olabilir."));
    }
    return exists;
}

} // namespace quelto

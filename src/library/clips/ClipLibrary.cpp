// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/ClipLibrary.h"

#include "library/naming/ClipMeta.h"

#include <QCoreApplication>
#include <QDir>
#include <QPointer>

namespace quelto {

const QStringList ClipLibrary::videoExtensions{QStringLiteral("mp4"), QStringLiteral("mov"), QStringLiteral("m4v")};

ClipLibrary::ClipLibrary(const AppSettings& settings, Trash& trash, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_trash(trash)
{
    connect(&settings, &AppSettings::saveFolderChanged, this, &ClipLibrary::reload);
}

void ClipLibrary::reload()
{
    const QDir folder(m_settings.saveFolder());
    folder.mkpath(QStringLiteral("."));
    QList<Clip> clips;
    for (const auto& file : folder.entryInfoList(QDir::Files, QDir::Unsorted)) {
        if (videoExtensions.contains(file.suffix().toLower())) {
            clips.append(Clip(file.absoluteFilePath()));
        }
    }
    std::ranges::stable_sort(clips, std::ranges::greater(), &Clip::date);
    m_clips = clips;
    Q_EMIT clipsChanged();
}

void ClipLibrary::trash(const QStringList& paths, const std::function<void()>& completion)
{
    if (paths.isEmpty()) {
        if (completion) {
            completion();
        }
        return;
    }
    for (const auto& path : paths) {
        ClipMeta::remove(path);
    }
    m_trash.recycle(paths, [self = QPointer(this), completion] {
        // The trash answers on a thread of its own.
        QMetaObject::invokeMethod(
            qApp,
            [self, completion] {
                if (self) {
                    self->reload();
                }
                if (completion) {
                    completion();
                }
            },
            Qt::QueuedConnection);
    });
}

} // namespace quelto

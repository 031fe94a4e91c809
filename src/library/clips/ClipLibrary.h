// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/settings/AppSettings.h"
#include "library/naming/Clip.h"
#include "platform/Trash.h"

#include <QList>
#include <QObject>

#include <functional>

namespace quelto {

/// The clips in the save folder. It has no store of its own: the folder is the database, and a reload rebuilds the list
/// from the names in it.
///
/// Thread: main.
class ClipLibrary : public QObject {
    Q_OBJECT

public:
    /// What the list takes up; compared in lower case.
    static const QStringList videoExtensions;

    ClipLibrary(const AppSettings& settings, Trash& trash, QObject* parent = nullptr);

    /// Newest first.
    const QList<Clip>& clips() const { return m_clips; }

    /// Makes the folder if it is missing. A folder that cannot be read is like an empty one.
    void reload();
    /// Moves files to the trash, all in one go, without their sidecars. The completion runs on the main thread after
    /// the list was rebuilt; at once where there is nothing to do. What fails stays where it is.
    void trash(const QStringList& paths, const std::function<void()>& completion = {});

Q_SIGNALS:
    void clipsChanged();

private:
    const AppSettings& m_settings;
    Trash& m_trash;
    QList<Clip> m_clips;
};

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/SerialQueue.h"

#include <QSettings>
#include <QVariant>

#include <memory>
#include <mutex>

namespace quelto {

/// A settings file. It is read when this object is created, and written on a thread of its own, so that a slider does
/// not wait for the disk. A burst of values is written at once.
///
/// Thread: one at a time.
class SettingsFile {
public:
    explicit SettingsFile(const QString& path);
    /// Waits until everything is written.
    ~SettingsFile();
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    /// The contents at the time of creation.
    const QSettings& stored() const noexcept { return m_stored; }

    void setValue(const QString& key, const QVariant& value);
    /// False if the disk needs longer than the timeout.
    bool finishWriting(std::chrono::milliseconds timeout);

private:
    struct Pending {
        std::mutex lock;
        QVariantMap values;
    };

    static void write(const QString& path, Pending& pending);

    QSettings m_stored;
    std::shared_ptr<Pending> m_pending = std::make_shared<Pending>();
    /// Nothing before the first value.
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/SettingsFile.h"

namespace quelto {

SettingsFile::SettingsFile(const QString& path)
    : m_stored(path, QSettings::IniFormat)
{
}

SettingsFile::~SettingsFile()
{
    if (m_queue) {
        m_queue->sync([] {});
    }
}

void SettingsFile::setValue(const QString& key, const QVariant& value)
{
    {
        const std::scoped_lock guard(m_pending->lock);
        const bool isScheduled = !m_pending->values.isEmpty();
        m_pending->values[key] = value;
        if (isScheduled) {
            return;
        }
    }
    if (!m_queue) {
        m_queue = std::make_unique<SerialQueue>(QStringLiteral("quelto.settings"));
    }
    m_queue->post([pending = m_pending, path = m_stored.fileName()] { write(path, *pending); });
}

bool SettingsFile::finishWriting(std::chrono::milliseconds timeout)
{
    return !m_queue || m_queue->drain(timeout);
}

void SettingsFile::write(const QString& path, Pending& pending)
{
    QVariantMap values;
    {
        const std::scoped_lock guard(pending.lock);
        values = std::exchange(pending.values, {});
    }
    QSettings file(path, QSettings::IniFormat);
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        file.setValue(value.key(), value.value());
    }
    file.sync();
}

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailLru.h"

namespace quelto {

QImage ThumbnailLru::find(const QString& path)
{
    const auto found = m_entryByPath.constFind(path);
    if (found == m_entryByPath.cend()) {
        return {};
    }
    m_entries.splice(m_entries.begin(), m_entries, *found);
    return m_entries.front().picture;
}

void ThumbnailLru::put(const QString& path, const QImage& picture)
{
    if (const auto found = m_entryByPath.constFind(path); found != m_entryByPath.cend()) {
        m_bytes -= (*found)->picture.sizeInBytes();
        m_entries.erase(*found);
    }
    m_entries.push_front({path, picture});
    m_entryByPath.insert(path, m_entries.begin());
    m_bytes += picture.sizeInBytes();
    evict();
}

void ThumbnailLru::pin(const QString& path)
{
    ++m_pins[path];
}

void ThumbnailLru::unpin(const QString& path)
{
    const auto pins = m_pins.find(path);
    if (pins == m_pins.end() || --*pins > 0) {
        return;
    }
    m_pins.erase(pins);
    evict();
}

void ThumbnailLru::evict()
{
    auto entry = m_entries.end();
    while (m_bytes > m_byteLimit && entry != m_entries.begin()) {
        --entry;
        if (!m_pins.contains(entry->path)) {
            m_bytes -= entry->picture.sizeInBytes();
            m_entryByPath.remove(entry->path);
            entry = m_entries.erase(entry);
        }
    }
}

} // namespace quelto

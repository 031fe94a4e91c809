// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailLru.h"

namespace quelto {

QImage ThumbnailLru::find(const QString& path)
{
    const auto found = m_placeOf.constFind(path);
    if (found == m_placeOf.cend()) {
        return {};
    }
    m_places.splice(m_places.begin(), m_places, *found);
    return m_places.front().picture;
}

void ThumbnailLru::put(const QString& path, const QImage& picture)
{
    if (const auto found = m_placeOf.constFind(path); found != m_placeOf.cend()) {
        m_bytes -= (*found)->picture.sizeInBytes();
        m_places.erase(*found);
    }
    m_places.push_front({path, picture});
    m_placeOf.insert(path, m_places.begin());
    m_bytes += picture.sizeInBytes();
    makeRoom();
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
    makeRoom();
}

void ThumbnailLru::makeRoom()
{
    auto place = m_places.end();
    while (m_bytes > m_byteLimit && place != m_places.begin()) {
        --place;
        if (!m_pins.contains(place->path)) {
            m_bytes -= place->picture.sizeInBytes();
            m_placeOf.remove(place->path);
            place = m_places.erase(place);
        }
    }
}

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QImage>
#include <QString>

#include <list>

namespace quelto {

/// Pictures by path, up to a number of bytes. When there is no more room, those go that nobody asked for the longest;
/// pinned ones stay whatever room they take.
///
/// Thread: one at a time; it has no lock.
class ThumbnailLru {
public:
    explicit ThumbnailLru(qsizetype byteLimit)
        : m_byteLimit(byteLimit)
    {
    }

    /// Null if it is not there.
    QImage find(const QString& path);
    void put(const QString& path, const QImage& picture);

    /// Pins count, and need no picture to be there yet.
    void pin(const QString& path);
    void unpin(const QString& path);

    qsizetype bytes() const noexcept { return m_bytes; }

private:
    struct Place {
        QString path;
        QImage picture;
    };

    void makeRoom();

    qsizetype m_byteLimit;
    qsizetype m_bytes = 0;
    /// The last one that was asked for stands in front.
    std::list<Place> m_places;
    QHash<QString, std::list<Place>::iterator> m_placeOf;
    QHash<QString, int> m_pins;
};

} // namespace quelto

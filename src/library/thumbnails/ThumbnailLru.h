// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QImage>
#include <QString>

#include <list>

namespace quelto {

/// A cache of pictures by path with a byte limit. Evicts the least recently used pictures first, never pinned ones,
/// even if those exceed the limit.
///
/// Thread: one at a time; it has no lock.
class ThumbnailLru {
public:
    explicit ThumbnailLru(qsizetype byteLimit)
        : m_byteLimit(byteLimit)
    {
    }

    /// Null if the picture is not cached. Marks it as the most recently used.
    QImage find(const QString& path);
    void put(const QString& path, const QImage& picture);

    /// Pins are counted, and may precede the picture.
    void pin(const QString& path);
    void unpin(const QString& path);

    qsizetype bytes() const noexcept { return m_bytes; }

private:
    struct Entry {
        QString path;
        QImage picture;
    };

    void evict();

    qsizetype m_byteLimit;
    qsizetype m_bytes = 0;
    /// Most recently used first.
    std::list<Entry> m_entries;
    QHash<QString, std::list<Entry>::iterator> m_entryByPath;
    QHash<QString, int> m_pins;
};

} // namespace quelto

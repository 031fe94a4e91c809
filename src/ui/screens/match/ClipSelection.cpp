// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/match/ClipSelection.h"

#include <algorithm>

namespace quelto {

void ClipSelection::setClips(const QStringList& paths)
{
    m_clips = paths;
    m_selected.intersect(QSet<QString>(paths.begin(), paths.end()));
}

void ClipSelection::rename(const QString& from, const QString& to)
{
    std::ranges::replace(m_clips, from, to);
    if (m_selected.remove(from)) {
        m_selected.insert(to);
    }
}

QStringList ClipSelection::selected() const
{
    QStringList paths;
    std::ranges::copy_if(m_clips, std::back_inserter(paths), [this](const QString& path) { return contains(path); });
    return paths;
}

void ClipSelection::toggle(const QString& path)
{
    if (!m_selected.remove(path) && m_clips.contains(path)) {
        m_selected.insert(path);
    }
}

void ClipSelection::toggleAll()
{
    if (isAll()) {
        clear();
    } else {
        selectAll();
    }
}

void ClipSelection::selectAll()
{
    m_selected = QSet<QString>(m_clips.begin(), m_clips.end());
}

} // namespace quelto

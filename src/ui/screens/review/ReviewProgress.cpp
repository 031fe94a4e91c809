// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/review/ReviewProgress.h"

namespace quelto {

void ReviewProgress::setClips(const QList<Clip>& clips)
{
    m_clips = clips;
    if (clips.isEmpty()) {
        return;
    }
    QStringList paths;
    std::ranges::transform(clips, std::back_inserter(paths), &Clip::path);
    const auto left = std::find_if(m_order.cbegin() + m_index, m_order.cend(),
                                   [&](const QString& path) { return paths.contains(path); });
    const auto first = m_order.isEmpty() ? 0 : paths.size() - 1;
    m_index = left == m_order.cend() ? first : paths.indexOf(*left);
    m_order = paths;
}

bool ReviewProgress::go(qsizetype index)
{
    const bool exists = index >= 0 && index < count();
    if (exists) {
        m_index = index;
    }
    return exists;
}

bool ReviewProgress::mark(Answer answer)
{
    if (m_clips.isEmpty()) {
        return false;
    }
    if (answer == Answer::remove) {
        m_marks.insert(currentPath());
    } else {
        m_marks.remove(currentPath());
    }
    return go(m_index + 1);
}

QStringList ReviewProgress::marked() const
{
    QStringList paths;
    for (const auto& clip : m_clips) {
        if (m_marks.contains(clip.path)) {
            paths.append(clip.path);
        }
    }
    return paths;
}

QString ReviewProgress::pathAt(qsizetype index) const
{
    return index < count() ? m_clips.at(index).path : QString();
}

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/review/ReviewProgress.h"

namespace quelto {

void ReviewProgress::setClips(const QList<Clip>& clips)
{
    const auto shown = std::ranges::find(clips, currentPath(), &Clip::path);
    const auto last = std::max<qsizetype>(clips.size() - 1, 0);
    m_index = shown != clips.end() ? std::distance(clips.begin(), shown) : std::min(m_index, last);
    m_clips = clips;
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ClipArranger.h"

namespace quelto {

ClipArranger::ClipArranger(std::optional<Queues> queues, OnArranged onArranged)
    : m_queues(queues)
    , m_onArranged(std::move(onArranged))
{
}

ClipArranger::~ClipArranger()
{
    // Drops the running request, too.
    ++*m_newest;
}

void ClipArranger::setClips(const QList<Clip>& clips)
{
    m_clips = std::make_shared<SearchableClips>(clips);
}

void ClipArranger::arrange(const ClipFilter& filter)
{
    const auto number = ++*m_newest;
    if (!m_queues || m_clips->clips().size() <= MaxClipsAtOnce) {
        m_onArranged(arrangedClips(*m_clips, filter));
        return;
    }
    m_queues->work.post([this, main = &m_queues->main, clips = m_clips, filter, number, newest = m_newest] {
        if (*newest != number) {
            return;
        }
        main->post(
            [this, arranged = std::make_shared<const ArrangedClips>(arrangedClips(*clips, filter)), number, newest] {
                // Otherwise the arranger may no longer exist.
                if (*newest == number) {
                    m_onArranged(*arranged);
                }
            });
    });
}

} // namespace quelto

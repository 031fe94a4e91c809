// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/CaptureRule.h"
#include "platform/pipewire/core/PipeWireHandles.h"

namespace quelto::pipewire {

/// The links that this program made in the server's graph. They go with it.
///
/// Thread: the loop's lock held.
class LinkSet {
public:
    explicit LinkSet(LinkWeight weight);

    /// Removes what is not in the plan, then makes what is missing. A link that failed is not tried again until it was
    /// forgotten or left the plan.
    void apply(pw_core* core, const LinkPlan& plan);
    void clear();

    bool hasFailures() const;
    void forgetFailures();

private:
    struct MadeLink {
        ProxyPtr proxy;
        Hook hook;
        bool hasFailed = false;
    };

    std::unique_ptr<MadeLink> make(pw_core* core, const LinkEnds& ends) const;

    static const pw_proxy_events ProxyEvents;

    LinkWeight m_weight;
    std::map<LinkEnds, std::unique_ptr<MadeLink>> m_links;
};

} // namespace quelto::pipewire

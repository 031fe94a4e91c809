// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/audio/AudioTargetRule.h"
#include "platform/pipewire/core/PipeWireHandles.h"

namespace quelto::pipewire {

/// Owns the links that this program created in the server's graph, and removes them when it is destroyed.
///
/// Thread: the loop's lock held.
class LinkSet {
public:
    explicit LinkSet(LinkMode weight);

    /// Removes links that are not in the plan, then creates the missing ones. A failed link is not retried until
    /// discardFailures() is called or it leaves the plan.
    void apply(pw_core* core, const LinkPlan& plan);
    void clear();

    bool hasFailures() const;
    void discardFailures();

private:
    struct OwnedLink {
        ProxyPtr proxy;
        Hook hook;
        bool hasFailed = false;
    };

    std::unique_ptr<OwnedLink> createLink(pw_core* core, const LinkEnds& ends) const;

    static const pw_proxy_events ProxyEvents;

    LinkMode m_mode;
    std::map<LinkEnds, std::unique_ptr<OwnedLink>> m_links;
};

} // namespace quelto::pipewire

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/LinkSet.h"

namespace quelto::pipewire {

struct PropertiesDeleter {
    void operator()(pw_properties* properties) const noexcept { pw_properties_free(properties); }
};

const pw_proxy_events LinkSet::ProxyEvents = {
    .version = PW_VERSION_PROXY_EVENTS,
    .removed = [](void* data) { static_cast<OwnedLink*>(data)->hasFailed = true; },
    .error = [](void* data, int, int, const char*) { static_cast<OwnedLink*>(data)->hasFailed = true; },
};

LinkSet::LinkSet(LinkMode weight)
    : m_mode(weight)
{
}

void LinkSet::apply(pw_core* core, const LinkPlan& plan)
{
    // Removal first: links from the old and the new device at the same time would couple the two devices.
    std::erase_if(m_links, [&](const auto& link) { return !plan.contains(link.first); });
    for (const LinkEnds& ends : plan) {
        if (!m_links.contains(ends)) {
            m_links[ends] = createLink(core, ends);
        }
    }
}

void LinkSet::clear()
{
    m_links.clear();
}

bool LinkSet::hasFailures() const
{
    return std::ranges::any_of(m_links, [](const auto& link) { return link.second->hasFailed; });
}

void LinkSet::discardFailures()
{
    std::erase_if(m_links, [](const auto& link) { return link.second->hasFailed; });
}

std::unique_ptr<LinkSet::OwnedLink> LinkSet::createLink(pw_core* core, const LinkEnds& ends) const
{
    const std::unique_ptr<pw_properties, PropertiesDeleter> properties(pw_properties_new(
        PW_KEY_OBJECT_LINGER, "false", PW_KEY_LINK_PASSIVE, m_mode == LinkMode::passive ? "true" : "false", nullptr));
    pw_properties_setf(properties.get(), PW_KEY_LINK_OUTPUT_PORT, "%u", ends.output);
    pw_properties_setf(properties.get(), PW_KEY_LINK_INPUT_PORT, "%u", ends.input);
    auto link = std::make_unique<OwnedLink>();
    link->proxy.reset(static_cast<pw_proxy*>(
        pw_core_create_object(core, "link-factory", PW_TYPE_INTERFACE_Link, PW_VERSION_LINK, &properties->dict, 0)));
    if (link->proxy) {
        pw_proxy_add_listener(link->proxy.get(), link->hook.get(), &ProxyEvents, link.get());
    } else {
        link->hasFailed = true;
    }
    return link;
}

} // namespace quelto::pipewire

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/core/Graph.h"

namespace quelto::pipewire {

std::optional<ObjectId> Graph::findNode(const QString& name) const
{
    if (name.isEmpty()) {
        return std::nullopt;
    }
    for (const auto& [id, node] : nodes) {
        if (node.name == name) {
            return id;
        }
    }
    return std::nullopt;
}

std::vector<ObjectId> Graph::portsOf(ObjectId node, PortDirection direction) const
{
    std::vector<ObjectId> found;
    for (const auto& [id, port] : ports) {
        if (port.node == node && port.direction == direction) {
            found.push_back(id);
        }
    }
    std::ranges::stable_sort(found, {}, [this](ObjectId id) { return ports.at(id).index; });
    return found;
}

std::optional<ObjectId> Graph::findInput(ObjectId node, const QString& channel) const
{
    for (const auto& [id, port] : ports) {
        if (port.node == node && port.direction == PortDirection::input && port.channel == channel) {
            return id;
        }
    }
    return std::nullopt;
}

Owner ownerOf(const Graph& graph, ObjectId node)
{
    const auto found = graph.nodes.find(node);
    if (found == graph.nodes.end()) {
        return Owner::unknown;
    }
    if (!found->second.client) {
        return Owner::otherProgram;
    }
    const auto client = graph.clients.find(*found->second.client);
    if (client == graph.clients.end() || !client->second.isComplete) {
        return Owner::unknown;
    }
    const bool isOurs = client->second.processId == graph.ownProcessId ||
        (graph.ownSocketProcessId && client->second.socketProcessId == graph.ownSocketProcessId);
    return isOurs ? Owner::thisProgram : Owner::otherProgram;
}

} // namespace quelto::pipewire

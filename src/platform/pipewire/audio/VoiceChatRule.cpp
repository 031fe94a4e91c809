// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/VoiceChatRule.h"

#include "base/language/T.h"
#include "platform/pipewire/audio/ChannelDownmix.h"
#include "platform/pipewire/audio/VoiceChatApps.h"

namespace quelto::pipewire {

namespace {

bool isOutputStream(const Node& node)
{
    return node.mediaClass == u"Stream/Output/Audio";
}

/// The id of the application whose sound the stream is. Empty if it is not a listed one, or not known yet.
QString applicationOf(const Graph& graph, const Node& stream)
{
    const auto client = stream.client ? graph.clients.find(*stream.client) : graph.clients.end();
    if (client == graph.clients.end() || !client->second.isComplete) {
        return {};
    }
    ProgramIdentity program = client->second.program;
    program.names.append(stream.applicationName);
    return voiceChatAppOf(program);
}

/// Calls the function with each output port of a stream of an application.
template <typename Function> void forEachPort(const Graph& graph, const Function& function)
{
    for (const auto& [id, node] : graph.nodes) {
        if (!isOutputStream(node) || applicationOf(graph, node).isEmpty()) {
            continue;
        }
        for (const ObjectId port : graph.portsOf(id, PortDirection::output)) {
            function(port);
        }
    }
}

} // namespace

QSet<QString> VoiceChatRule::applications(const Graph& graph) const
{
    QSet<QString> ids;
    for (const auto& [id, client] : graph.clients) {
        ids.insert(client.isComplete ? voiceChatAppOf(client.program) : QString());
    }
    for (const auto& [id, node] : graph.nodes) {
        ids.insert(isOutputStream(node) ? applicationOf(graph, node) : QString());
    }
    ids.remove(QString());
    return ids;
}

std::optional<int> VoiceChatRule::channels(const Graph& graph) const
{
    return applications(graph).isEmpty() ? std::nullopt : std::optional(2);
}

LinkPlan VoiceChatRule::links(const Graph& graph, ObjectId captureNode) const
{
    const auto left = graph.findInput(captureNode, QStringLiteral("FL"));
    const auto right = graph.findInput(captureNode, QStringLiteral("FR"));
    if (!left || !right) {
        return {};
    }
    LinkPlan plan;
    forEachPort(graph, [&](ObjectId port) {
        const ChannelDownmix downmix = channelDownmix(graph.ports.at(port).channel);
        if (downmix.left) {
            plan.insert({port, *left});
        }
        if (downmix.right) {
            plan.insert({port, *right});
        }
    });
    return plan;
}

std::optional<ObjectId> VoiceChatRule::playbackDevice(const Graph& graph) const
{
    std::set<ObjectId> sinks;
    std::set<ObjectId> recorded;
    forEachPort(graph, [&](ObjectId port) { recorded.insert(port); });
    for (const auto& [id, link] : graph.links) {
        const auto input = graph.ports.find(link.input);
        if (recorded.contains(link.output) && input != graph.ports.end()) {
            const auto device = graph.nodes.find(input->second.node);
            if (device != graph.nodes.end() && device->second.mediaClass.startsWith(u"Audio/Sink")) {
                sinks.insert(device->first);
            }
        }
    }
    // With several outputs one latency must serve for all.
    const auto byDefault = graph.findNode(graph.defaultSink);
    return sinks.empty() || (byDefault && sinks.contains(*byDefault)) ? byDefault : std::optional(*sinks.begin());
}

QString VoiceChatRule::noServerMessage() const
{
    return T("Ses sunucusu PipeWire yanıt vermiyor; geri gelmesi bekleniyor.");
}

} // namespace quelto::pipewire

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/SystemAudioRule.h"

#include "base/language/T.h"
#include "platform/pipewire/audio/ChannelDownmix.h"

namespace quelto::pipewire {

std::optional<int> SystemAudioRule::channels(const Graph& graph) const
{
    return playbackDevice(graph) ? std::optional(2) : std::nullopt;
}

LinkPlan SystemAudioRule::links(const Graph& graph, ObjectId captureNode) const
{
    const auto sink = playbackDevice(graph);
    const auto left = graph.findInput(captureNode, QStringLiteral("FL"));
    const auto right = graph.findInput(captureNode, QStringLiteral("FR"));
    if (!sink || !left || !right) {
        return {};
    }
    LinkPlan plan;
    for (const auto& [id, link] : graph.links) {
        const auto sinkPort = graph.ports.find(link.input);
        const auto streamPort = graph.ports.find(link.output);
        if (sinkPort == graph.ports.end() || streamPort == graph.ports.end() || sinkPort->second.node != *sink ||
            ownerOf(graph, streamPort->second.node) != Owner::otherProgram) {
            continue;
        }
        const ChannelDownmix downmix = channelDownmix(sinkPort->second.channel);
        if (downmix.left) {
            plan.insert({link.output, *left});
        }
        if (downmix.right) {
            plan.insert({link.output, *right});
        }
    }
    return plan;
}

std::optional<ObjectId> SystemAudioRule::playbackDevice(const Graph& graph) const
{
    return graph.findNode(graph.defaultSink);
}

QString SystemAudioRule::noServerMessage() const
{
    return T("Ses sunucusu PipeWire çalışmıyor. Bir uçbirimde “systemctl --user start pipewire wireplumber” komutunu "
             "çalıştırın ya da ayarlardan sistem sesini kapatın.");
}

QString SystemAudioRule::noDeviceMessage() const
{
    return T("Ses çıkışı bulunamadı. Bir hoparlör ya da kulaklık bağlayın veya ayarlardan sistem sesini kapatın.");
}

} // namespace quelto::pipewire

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/SystemAudioRule.h"

#include "base/language/T.h"
#include "platform/pipewire/audio/ChannelDownmix.h"

namespace quelto::pipewire {

std::optional<int> SystemAudioRule::channels(const Graph& graph) const
{
    return heardThrough(graph) ? std::optional(2) : std::nullopt;
}

LinkPlan SystemAudioRule::links(const Graph& graph, ObjectId captureNode) const
{
    const auto sink = heardThrough(graph);
    const auto left = graph.inputOf(captureNode, QStringLiteral("FL"));
    const auto right = graph.inputOf(captureNode, QStringLiteral("FR"));
    if (!sink || !left || !right) {
        return {};
    }
    LinkPlan plan;
    for (const auto& [id, link] : graph.links) {
        const auto heard = graph.ports.find(link.input);
        const auto played = graph.ports.find(link.output);
        if (heard == graph.ports.end() || played == graph.ports.end() || heard->second.node != *sink ||
            ownerOf(graph, played->second.node) != Owner::another) {
            continue;
        }
        const ChannelDownmix sides = channelDownmix(heard->second.channel);
        if (sides.left) {
            plan.insert({link.output, *left});
        }
        if (sides.right) {
            plan.insert({link.output, *right});
        }
    }
    return plan;
}

std::optional<ObjectId> SystemAudioRule::heardThrough(const Graph& graph) const
{
    return graph.nodeNamed(graph.defaultSink);
}

QString SystemAudioRule::noServer() const
{
    return T("Ses sunucusu PipeWire çalışmıyor. Bir uçbirimde “systemctl --user start pipewire wireplumber” komutunu "
             "çalıştırıp yeniden deneyin ya da ayarlardan sistem sesini kapatın.");
}

QString SystemAudioRule::noDevice() const
{
    return T("Ses çıkışı bulunamadı. Bir hoparlör ya da kulaklık bağlayın veya ayarlardan sistem sesini kapatın.");
}

} // namespace quelto::pipewire

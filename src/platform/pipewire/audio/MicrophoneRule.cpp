// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/MicrophoneRule.h"

#include "base/language/T.h"

namespace quelto::pipewire {

namespace {

bool isInputDevice(const Node& node)
{
    return node.mediaClass == u"Audio/Source" || node.mediaClass.startsWith(u"Audio/Source/") ||
        node.mediaClass == u"Audio/Duplex";
}

bool isSink(const Node& node)
{
    return node.mediaClass == u"Audio/Sink" || node.mediaClass.startsWith(u"Audio/Sink/");
}

/// The ports of a device appear shortly after the device.
bool hasPorts(const Graph& graph, ObjectId device)
{
    return !graph.portsOf(device, PortDirection::output).empty();
}

std::vector<ObjectId> capturedPorts(const Graph& graph, ObjectId device)
{
    std::vector<ObjectId> ports = graph.portsOf(device, PortDirection::output);
    const auto withChannel = [&](const QString& channel) {
        return std::ranges::find_if(ports, [&](ObjectId id) { return graph.ports.at(id).channel == channel; });
    };
    const auto left = withChannel(QStringLiteral("FL"));
    const auto right = withChannel(QStringLiteral("FR"));
    if (left != ports.end() && right != ports.end()) {
        return {*left, *right};
    }
    if (ports.size() > 2) {
        ports.resize(2);
    }
    return ports;
}

} // namespace

MicrophoneRule::MicrophoneRule(QString id)
    : m_id(std::move(id))
{
}

std::optional<ObjectId> MicrophoneRule::device(const Graph& graph) const
{
    // If the stored id names an output, its monitor is recorded.
    if (const auto chosen = graph.findNode(m_id); chosen && hasPorts(graph, *chosen)) {
        const Node& node = graph.nodes.at(*chosen);
        if (isInputDevice(node) || isSink(node)) {
            return chosen;
        }
    }
    // If there is no input device, the session manager names an output as the default source.
    if (const auto fallback = graph.findNode(graph.defaultSource); fallback && hasPorts(graph, *fallback)) {
        if (isInputDevice(graph.nodes.at(*fallback))) {
            return fallback;
        }
    }
    return std::nullopt;
}

std::optional<int> MicrophoneRule::channels(const Graph& graph) const
{
    const auto source = device(graph);
    return source ? std::optional(capturedPorts(graph, *source).size() == 1 ? 1 : 2) : std::nullopt;
}

LinkPlan MicrophoneRule::links(const Graph& graph, ObjectId captureNode) const
{
    const auto source = device(graph);
    if (!source) {
        return {};
    }
    const std::vector<ObjectId> outputs = capturedPorts(graph, *source);
    const std::vector<ObjectId> inputs = graph.portsOf(captureNode, PortDirection::input);
    if (outputs.size() != inputs.size()) {
        return {};
    }
    LinkPlan plan;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        plan.insert({outputs[i], inputs[i]});
    }
    return plan;
}

QString MicrophoneRule::noServerMessage() const
{
    return T("Ses sunucusu PipeWire çalışmıyor. Bir uçbirimde “systemctl --user start pipewire wireplumber” komutunu "
             "çalıştırın.");
}

QString MicrophoneRule::noDeviceMessage() const
{
    return T("Mikrofon bulunamadı.");
}

QList<MicrophoneInfo> microphonesIn(const Graph& graph)
{
    QList<MicrophoneInfo> found;
    for (const auto& [id, node] : graph.nodes) {
        if (isInputDevice(node) && ownerOf(graph, id) != Owner::thisProgram) {
            found.append({.id = node.name, .name = node.description.isEmpty() ? node.name : node.description});
        }
    }
    return found;
}

} // namespace quelto::pipewire

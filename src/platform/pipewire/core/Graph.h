// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

namespace quelto::pipewire {

using ObjectId = std::uint32_t;

struct Client {
    /// What the program says about itself; behind the PulseAudio protocol this is the only way to tell programs apart.
    std::optional<std::uint32_t> processId;
    /// What the server's socket says; inside a sandbox the program's own number is another one.
    std::optional<std::uint32_t> socketProcessId;
    /// The first news of a client does not hold its process; until the second one it could be anybody's.
    bool isComplete = false;
};

struct Node {
    QString name;
    QString description;
    QString mediaClass;
    /// Nothing for nodes that the server made itself.
    std::optional<ObjectId> client;
};

enum class PortDirection { input, output };

struct Port {
    ObjectId node = 0;
    PortDirection direction = PortDirection::input;
    /// The server's short name, such as "FL"; empty where unknown.
    QString channel;
    /// Position among the ports of that direction.
    std::uint32_t index = 0;
};

/// The two ports of a link.
struct LinkEnds {
    ObjectId output = 0;
    ObjectId input = 0;

    bool operator==(const LinkEnds&) const = default;
    bool operator<(const LinkEnds& other) const
    {
        return std::tie(output, input) < std::tie(other.output, other.input);
    }
};

using LinkPlan = std::set<LinkEnds>;

/// What the sound server holds at one moment, as plain values.
struct Graph {
    std::map<ObjectId, Client> clients;
    std::map<ObjectId, Node> nodes;
    std::map<ObjectId, Port> ports;
    std::map<ObjectId, LinkEnds> links;
    /// Node names.
    QString defaultSink;
    QString defaultSource;
    /// This program, as it knows itself and as the server's socket sees it.
    std::uint32_t ownProcessId = 0;
    std::optional<std::uint32_t> ownSocketProcessId;

    std::optional<ObjectId> nodeNamed(const QString& name) const;
    /// In the order of their indices.
    std::vector<ObjectId> portsOf(ObjectId node, PortDirection direction) const;
    std::optional<ObjectId> inputOf(ObjectId node, const QString& channel) const;
};

enum class Owner { thisProgram, another, unknown };

/// Whose sounds a node plays. Unknown while the server has not told about its client.
Owner ownerOf(const Graph& graph, ObjectId node);

} // namespace quelto::pipewire

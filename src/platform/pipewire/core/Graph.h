// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/ProgramIdentity.h"

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
    /// Reported by the program itself. For clients of the PulseAudio protocol it is the only way to tell programs
    /// apart.
    std::optional<std::uint32_t> processId;
    /// Determined by the server's socket. Inside a sandbox it differs from the process id that the program reports.
    std::optional<std::uint32_t> socketProcessId;
    /// The server first announces a client without its process ids and sends them later. Until then the owner is
    /// unknown.
    bool isComplete = false;
    ProgramIdentity program;
};

struct Node {
    QString name;
    QString description;
    QString mediaClass;
    /// Nothing for nodes that the server created itself.
    std::optional<ObjectId> client;
    /// What the program calls itself in this stream, which may differ from what its client says.
    QString applicationName;
};

enum class PortDirection { input, output };

struct Port {
    ObjectId node = 0;
    PortDirection direction = PortDirection::input;
    /// The server's short name, such as "FL". Empty if unknown.
    QString channel;
    /// The position among the node's ports of the same direction.
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

/// The links that should exist.
using LinkPlan = std::set<LinkEnds>;

/// A copy of the sound server's graph as plain values.
struct Graph {
    std::map<ObjectId, Client> clients;
    std::map<ObjectId, Node> nodes;
    std::map<ObjectId, Port> ports;
    std::map<ObjectId, LinkEnds> links;
    /// Node names.
    QString defaultSink;
    QString defaultSource;
    /// This program's process ids, as for Client.
    std::uint32_t ownProcessId = 0;
    std::optional<std::uint32_t> ownSocketProcessId;

    std::optional<ObjectId> findNode(const QString& name) const;
    /// Ordered by index.
    std::vector<ObjectId> portsOf(ObjectId node, PortDirection direction) const;
    std::optional<ObjectId> findInput(ObjectId node, const QString& channel) const;
};

enum class Owner { thisProgram, otherProgram, unknown };

/// Which program a node belongs to. Unknown until the server has described its client.
Owner ownerOf(const Graph& graph, ObjectId node);

} // namespace quelto::pipewire

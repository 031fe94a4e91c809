// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/Graph.h"

#include <gtest/gtest.h>

namespace quelto::pipewire {

inline const QStringList Stereo = {QStringLiteral("FL"), QStringLiteral("FR")};

/// Builds a graph with consecutive ids.
class GraphTest : public testing::Test {
protected:
    GraphTest()
    {
        m_graph.ownProcessId = 100;
        m_graph.ownSocketProcessId = 900;
    }

    ObjectId client(std::optional<std::uint32_t> process, std::optional<std::uint32_t> socketProcess = {})
    {
        m_graph.clients[++m_lastId] = {.processId = process, .socketProcessId = socketProcess, .isComplete = true};
        return m_lastId;
    }
    ObjectId node(const QString& name, const QString& mediaClass, std::optional<ObjectId> owner = {})
    {
        m_graph.nodes[++m_lastId] = {.name = name, .description = {}, .mediaClass = mediaClass, .client = owner};
        return m_lastId;
    }
    ObjectId port(ObjectId owner, PortDirection direction, const QString& channel)
    {
        const auto index = static_cast<std::uint32_t>(m_graph.portsOf(owner, direction).size());
        m_graph.ports[++m_lastId] = {.node = owner, .direction = direction, .channel = channel, .index = index};
        return m_lastId;
    }
    std::vector<ObjectId> ports(ObjectId owner, PortDirection direction, const QStringList& channels)
    {
        std::vector<ObjectId> added;
        for (const QString& channel : channels) {
            added.push_back(port(owner, direction, channel));
        }
        return added;
    }
    ObjectId link(ObjectId output, ObjectId input)
    {
        m_graph.links[++m_lastId] = {output, input};
        return m_lastId;
    }

    Graph m_graph;
    ObjectId m_lastId = 10;
};

} // namespace quelto::pipewire

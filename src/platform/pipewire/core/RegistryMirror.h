// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/Graph.h"
#include "platform/pipewire/core/PipeWireHandles.h"

namespace quelto::pipewire {

/// Keeps a Graph in sync with the server's registry, over one connection.
///
/// Thread: the loop's lock held.
class RegistryMirror {
public:
    /// onChanged: called on the loop's thread after each change of the graph.
    RegistryMirror(pw_loop* loop, pw_core* core, std::function<void()> onChanged);

    const Graph& graph() const noexcept { return m_graph; }
    pw_registry* registry() const noexcept { return m_registry.get(); }

private:
    /// An object with the names of the default devices. The session manager has one. While a session manager takes over
    /// from another there are two, announced in any order, and the earlier one may still change its own.
    struct BoundMetadata {
        RegistryMirror* mirror;
        std::uint32_t version = 0;
        /// Higher for an object that the server made later.
        std::uint32_t serial = 0;
        ProxyPtr proxy;
        Hook hook;
        /// Node names by key.
        std::map<std::string, QString, std::less<>> names;
    };

    struct BoundClient {
        RegistryMirror* mirror;
        ProxyPtr proxy;
        Hook hook;
    };

    void add(ObjectId id, std::string_view type, std::uint32_t version, const spa_dict* properties);
    void addNode(ObjectId id, const spa_dict* properties);
    void addPort(ObjectId id, const spa_dict* properties);
    void addLink(ObjectId id, const spa_dict* properties);
    void bindClient(ObjectId id, std::uint32_t version);
    void bindMetadata(ObjectId id, std::uint32_t version, std::uint32_t serial);
    void readDefaultsAgainLater();
    void readDefaultsAgain();
    void remove(ObjectId id);
    void readClient(const pw_client_info& info);
    void readDefault(BoundMetadata& metadata, std::string_view key, const char* value);
    void updateDefaults();
    /// Of the latest session manager that names a device. Empty if none does.
    QString defaultOf(std::string_view key) const;

    static const pw_registry_events RegistryEvents;
    static const pw_client_events ClientEvents;
    static const pw_metadata_events MetadataEvents;

    std::function<void()> m_onChanged;
    pw_core* m_core;
    Graph m_graph;
    RegistryPtr m_registry;
    Hook m_registryHook;
    std::map<ObjectId, std::unique_ptr<BoundClient>> m_clients;
    std::map<ObjectId, std::unique_ptr<BoundMetadata>> m_metadata;
    LoopTimer m_untilReadAgain;
    /// Something has appeared since the timer was armed.
    bool m_isReadTwice = false;
};

} // namespace quelto::pipewire

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/core/RegistryMirror.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <unistd.h>

#include <array>

namespace quelto::pipewire {

namespace {

/// After a client appeared. Clients often appear in groups, and bind the metadata shortly after they connect.
constexpr int ReadAgainMilliseconds = 1000;

/// The identifiers of sandboxed programs, by whichever part of the server found them.
constexpr std::array SandboxKeys = {"pipewire.access.portal.app_id", "pipewire.sec.app-id", "pipewire.snap.id"};

/// Units: bytes. What names the application stands at the beginning.
constexpr qint64 MaxCommandLine = 1 << 16;

/// Empty if the process has ended or belongs to another user.
QByteArray commandLineOf(std::optional<std::uint32_t> process)
{
    QFile file(QStringLiteral("/proc/%1/cmdline").arg(process.value_or(0)));
    return process && file.open(QIODevice::ReadOnly) ? file.read(MaxCommandLine) : QByteArray();
}

ProgramIdentity identityOf(const spa_dict* properties, const Client& client)
{
    ProgramIdentity program = {
        .names = {property(properties, PW_KEY_APP_NAME)},
        .binary = property(properties, PW_KEY_APP_PROCESS_BINARY),
        .ids = {},
        .securityLabel = property(properties, PW_KEY_SEC_LABEL),
        .commandLine = client.program.commandLine,
    };
    for (const char* key : SandboxKeys) {
        program.ids.append(property(properties, key));
    }
    program.ids.removeAll(QString());
    // Inside a sandbox the process id means another process, but there an id tells the application.
    const bool isSandboxed = !program.ids.isEmpty();
    if (program.commandLine.isEmpty() && !isSandboxed && isApplicationRuntime(program.binary)) {
        program.commandLine = commandLineOf(client.processId);
    }
    program.ids.append(property(properties, PW_KEY_APP_ID));
    return program;
}

RegistryMirror* mirrorOf(void* data)
{
    return static_cast<RegistryMirror*>(data);
}

} // namespace

const pw_registry_events RegistryMirror::RegistryEvents = {
    .version = PW_VERSION_REGISTRY_EVENTS,
    .global = [](void* data, std::uint32_t id, std::uint32_t, const char* type, std::uint32_t version,
                 const spa_dict* properties) { mirrorOf(data)->add(id, type, version, properties); },
    .global_remove = [](void* data, std::uint32_t id) { mirrorOf(data)->remove(id); },
};

const pw_client_events RegistryMirror::ClientEvents = {
    .version = PW_VERSION_CLIENT_EVENTS,
    .info = [](void* data, const pw_client_info* info) { static_cast<BoundClient*>(data)->mirror->readClient(*info); },
    .permissions = nullptr,
};

const pw_metadata_events RegistryMirror::MetadataEvents = {
    .version = PW_VERSION_METADATA_EVENTS,
    .property =
        [](void* data, std::uint32_t subject, const char* key, const char*, const char* value) {
            auto* metadata = static_cast<BoundMetadata*>(data);
            if (subject == PW_ID_CORE && key) {
                metadata->mirror->readDefault(*metadata, key, value);
            }
            return 0;
        },
};

RegistryMirror::RegistryMirror(pw_loop* loop, pw_core* core, std::function<void()> onChanged)
    : m_onChanged(std::move(onChanged))
    , m_core(core)
    , m_registry(pw_core_get_registry(core, PW_VERSION_REGISTRY, 0))
    , m_untilReadAgain(loop, [this] { readDefaultsAgain(); })
{
    m_graph.ownProcessId = static_cast<std::uint32_t>(getpid());
    listen(m_registry.get(), m_registryHook, RegistryEvents, this);
}

void RegistryMirror::add(ObjectId id, std::string_view type, std::uint32_t version, const spa_dict* properties)
{
    if (type == PW_TYPE_INTERFACE_Node) {
        addNode(id, properties);
    } else if (type == PW_TYPE_INTERFACE_Port) {
        addPort(id, properties);
    } else if (type == PW_TYPE_INTERFACE_Link) {
        addLink(id, properties);
    } else if (type == PW_TYPE_INTERFACE_Client) {
        bindClient(id, version);
    } else if (type == PW_TYPE_INTERFACE_Metadata && property(properties, PW_KEY_METADATA_NAME) == u"default") {
        bindMetadata(id, version, numberProperty(properties, PW_KEY_OBJECT_SERIAL).value_or(0));
        readDefaultsAgainLater();
    } else {
        return;
    }
    m_onChanged();
}

void RegistryMirror::addNode(ObjectId id, const spa_dict* properties)
{
    m_graph.nodes[id] = Node{
        .name = property(properties, PW_KEY_NODE_NAME),
        .description = property(properties, PW_KEY_NODE_DESCRIPTION),
        .mediaClass = property(properties, PW_KEY_MEDIA_CLASS),
        .client = numberProperty(properties, PW_KEY_CLIENT_ID),
        .applicationName = property(properties, PW_KEY_APP_NAME),
    };
}

void RegistryMirror::addPort(ObjectId id, const spa_dict* properties)
{
    const auto node = numberProperty(properties, PW_KEY_NODE_ID);
    // Other ports carry MIDI or video.
    if (!node || !property(properties, PW_KEY_FORMAT_DSP).endsWith(u"audio")) {
        return;
    }
    m_graph.ports[id] = Port{
        .node = *node,
        .direction =
            property(properties, PW_KEY_PORT_DIRECTION) == u"in" ? PortDirection::input : PortDirection::output,
        .channel = property(properties, PW_KEY_AUDIO_CHANNEL),
        .index = numberProperty(properties, PW_KEY_PORT_ID).value_or(0),
    };
}

void RegistryMirror::addLink(ObjectId id, const spa_dict* properties)
{
    const auto output = numberProperty(properties, PW_KEY_LINK_OUTPUT_PORT);
    const auto input = numberProperty(properties, PW_KEY_LINK_INPUT_PORT);
    if (output && input) {
        m_graph.links[id] = {.output = *output, .input = *input};
    }
}

void RegistryMirror::bindClient(ObjectId id, std::uint32_t version)
{
    ProxyPtr proxy =
        bind(m_registry.get(), id, PW_TYPE_INTERFACE_Client, std::min<std::uint32_t>(version, PW_VERSION_CLIENT));
    if (!proxy) {
        return;
    }
    m_graph.clients[id] = {};
    auto client = std::make_unique<BoundClient>();
    client->mirror = this;
    client->proxy = std::move(proxy);
    listen(objectOf<pw_client>(client->proxy), client->hook, ClientEvents, client.get());
    m_clients[id] = std::move(client);
    readDefaultsAgainLater();
}

void RegistryMirror::bindMetadata(ObjectId id, std::uint32_t version, std::uint32_t serial)
{
    ProxyPtr proxy =
        bind(m_registry.get(), id, PW_TYPE_INTERFACE_Metadata, std::min<std::uint32_t>(version, PW_VERSION_METADATA));
    if (!proxy) {
        return;
    }
    auto metadata = std::make_unique<BoundMetadata>();
    metadata->mirror = this;
    metadata->version = version;
    metadata->serial = serial;
    metadata->proxy = std::move(proxy);
    listen(objectOf<pw_metadata>(metadata->proxy), metadata->hook, MetadataEvents, metadata.get());
    m_metadata[id] = std::move(metadata);
}

/// While a client binds the metadata, the PipeWire server sends changes of it to no other client. Programs bind it when
/// they connect, so the defaults are read again after a client, or another session manager, appeared.
void RegistryMirror::readDefaultsAgainLater()
{
    if (m_untilReadAgain.isArmed()) {
        // It may be about to fire, which is too early for what has appeared now.
        m_isReadTwice = true;
    } else {
        m_untilReadAgain.arm(ReadAgainMilliseconds);
    }
}

void RegistryMirror::readDefaultsAgain()
{
    if (std::exchange(m_isReadTwice, false)) {
        m_untilReadAgain.arm(ReadAgainMilliseconds);
    }
    for (const auto& [id, metadata] : std::exchange(m_metadata, {})) {
        bindMetadata(id, metadata->version, metadata->serial);
        if (m_metadata.contains(id)) {
            m_metadata[id]->names = metadata->names;
        }
    }
}

void RegistryMirror::remove(ObjectId id)
{
    m_graph.nodes.erase(id);
    m_graph.ports.erase(id);
    m_graph.links.erase(id);
    m_graph.clients.erase(id);
    m_clients.erase(id);
    // If no session manager is left, devices stay as they are until it is back, so the default names are kept.
    if (m_metadata.erase(id) > 0 && !m_metadata.empty()) {
        updateDefaults();
    }
    m_onChanged();
}

void RegistryMirror::readClient(const pw_client_info& info)
{
    Client& client = m_graph.clients[info.id];
    if (info.props) {
        client.processId = numberProperty(info.props, PW_KEY_APP_PROCESS_ID);
        client.socketProcessId = numberProperty(info.props, PW_KEY_SEC_PID);
        client.program = identityOf(info.props, client);
    }
    client.isComplete = true;
    auto* ownClient = reinterpret_cast<pw_proxy*>(pw_core_get_client(m_core));
    if (info.id == pw_proxy_get_bound_id(ownClient)) {
        m_graph.ownSocketProcessId = client.socketProcessId;
    }
    m_onChanged();
}

void RegistryMirror::readDefault(BoundMetadata& metadata, std::string_view key, const char* value)
{
    const QString name = QJsonDocument::fromJson(QByteArray(value ? value : "")).object().value(u"name").toString();
    auto& known = metadata.names[std::string(key)];
    if (known == name) {
        return;
    }
    known = name;
    updateDefaults();
    m_onChanged();
}

void RegistryMirror::updateDefaults()
{
    m_graph.defaultSink = defaultOf("default.audio.sink");
    m_graph.defaultSource = defaultOf("default.audio.source");
}

QString RegistryMirror::defaultOf(std::string_view key) const
{
    QString latest;
    std::uint32_t latestSerial = 0;
    for (const auto& [id, metadata] : m_metadata) {
        const auto name = metadata->names.find(key);
        if (name != metadata->names.end() && !name->second.isEmpty() && metadata->serial >= latestSerial) {
            latest = name->second;
            latestSerial = metadata->serial;
        }
    }
    return latest;
}

} // namespace quelto::pipewire

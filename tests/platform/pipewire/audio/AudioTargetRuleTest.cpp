// SPDX-License-Identifier: GPL-3.0-or-later
#include "GraphFixture.h"
#include "platform/pipewire/audio/ChannelDownmix.h"
#include "platform/pipewire/audio/MicrophoneRule.h"
#include "platform/pipewire/audio/SystemAudioRule.h"

#include <gmock/gmock.h>

namespace quelto::pipewire {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

class SystemAudioRuleTest : public GraphTest {
protected:
    SystemAudioRuleTest()
    {
        m_graph.defaultSink = QStringLiteral("speaker");
        m_sink = node(QStringLiteral("speaker"), QStringLiteral("Audio/Sink"));
        m_speaker = ports(m_sink, PortDirection::input, Stereo);
        m_capture = node(QStringLiteral("quelto-system-sound"), QStringLiteral("Stream/Input/Audio"), client(100, 900));
        m_inputs = ports(m_capture, PortDirection::input, Stereo);
    }

    /// Adds a client's stereo stream that plays to the speaker. Returns its output ports.
    std::vector<ObjectId> program(std::optional<ObjectId> owner)
    {
        const ObjectId stream = node(QStringLiteral("program"), QStringLiteral("Stream/Output/Audio"), owner);
        std::vector<ObjectId> outputs = ports(stream, PortDirection::output, Stereo);
        link(outputs[0], m_speaker[0]);
        link(outputs[1], m_speaker[1]);
        return outputs;
    }
    LinkPlan plan() const { return m_rule.links(m_graph, m_capture); }

    SystemAudioRule m_rule;
    ObjectId m_sink = 0;
    ObjectId m_capture = 0;
    std::vector<ObjectId> m_speaker;
    std::vector<ObjectId> m_inputs;
};

TEST_F(SystemAudioRuleTest, RecordsAllStreamsOfTheDefaultOutput)
{
    const auto first = program(client(200));
    const auto second = program(client(201));
    EXPECT_THAT(plan(),
                UnorderedElementsAre(LinkEnds{first[0], m_inputs[0]}, LinkEnds{first[1], m_inputs[1]},
                                     LinkEnds{second[0], m_inputs[0]}, LinkEnds{second[1], m_inputs[1]}));
}

TEST_F(SystemAudioRuleTest, IgnoresItsOwnLinks)
{
    program(client(200));
    const LinkPlan before = plan();
    for (const LinkEnds& ends : before) {
        link(ends.output, ends.input);
    }
    EXPECT_EQ(plan(), before);
}

TEST_F(SystemAudioRuleTest, ExcludesThisProgramBehindThePulseAudioProtocol)
{
    program(client(100, 555));
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(SystemAudioRuleTest, ExcludesThisProgramInsideASandbox)
{
    program(client(3, 900));
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(SystemAudioRuleTest, ExcludesStreamsOfUnknownOwner)
{
    const ObjectId owner = client(200);
    m_graph.clients[owner].isComplete = false;
    program(owner);
    EXPECT_THAT(plan(), IsEmpty());
    m_graph.clients.erase(owner);
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(SystemAudioRuleTest, RecordsNodesThatTheServerCreated)
{
    program(std::nullopt);
    EXPECT_EQ(plan().size(), 2u);
}

TEST_F(SystemAudioRuleTest, RecordsAnEffectChainOnce)
{
    const auto game = program(client(200));
    const ObjectId hardware = node(QStringLiteral("hardware"), QStringLiteral("Audio/Sink"));
    const auto hardwarePorts = ports(hardware, PortDirection::input, Stereo);
    const ObjectId effects = node(QStringLiteral("effects"), QStringLiteral("Stream/Output/Audio"), client(300));
    const auto effectsPorts = ports(effects, PortDirection::output, Stereo);
    link(effectsPorts[0], hardwarePorts[0]);
    link(effectsPorts[1], hardwarePorts[1]);
    EXPECT_THAT(plan(), UnorderedElementsAre(LinkEnds{game[0], m_inputs[0]}, LinkEnds{game[1], m_inputs[1]}));
}

TEST_F(SystemAudioRuleTest, FollowsTheDefaultOutput)
{
    program(client(200));
    const ObjectId other = node(QStringLiteral("headset"), QStringLiteral("Audio/Sink"));
    const auto headset = ports(other, PortDirection::input, {QStringLiteral("MONO")});
    const ObjectId stream = node(QStringLiteral("call"), QStringLiteral("Stream/Output/Audio"), client(201));
    const auto voice = ports(stream, PortDirection::output, {QStringLiteral("MONO")});
    link(voice[0], headset[0]);
    m_graph.defaultSink = QStringLiteral("headset");
    EXPECT_THAT(plan(), UnorderedElementsAre(LinkEnds{voice[0], m_inputs[0]}, LinkEnds{voice[0], m_inputs[1]}));
    EXPECT_EQ(m_rule.playbackDevice(m_graph), other);
}

TEST_F(SystemAudioRuleTest, DownmixesSixChannelsToStereo)
{
    const ObjectId surround = node(QStringLiteral("surround"), QStringLiteral("Audio/Sink"));
    const QStringList channels = {QStringLiteral("FL"),  QStringLiteral("FR"), QStringLiteral("FC"),
                                  QStringLiteral("LFE"), QStringLiteral("RL"), QStringLiteral("RR")};
    const auto inputs = ports(surround, PortDirection::input, channels);
    const ObjectId stream = node(QStringLiteral("game"), QStringLiteral("Stream/Output/Audio"), client(200));
    const auto outputs = ports(stream, PortDirection::output, channels);
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        link(outputs[i], inputs[i]);
    }
    m_graph.defaultSink = QStringLiteral("surround");
    EXPECT_THAT(plan(),
                UnorderedElementsAre(LinkEnds{outputs[0], m_inputs[0]}, LinkEnds{outputs[1], m_inputs[1]},
                                     LinkEnds{outputs[2], m_inputs[0]}, LinkEnds{outputs[2], m_inputs[1]},
                                     LinkEnds{outputs[4], m_inputs[0]}, LinkEnds{outputs[5], m_inputs[1]}));
}

TEST_F(SystemAudioRuleTest, NoChannelsWithoutADefaultOutput)
{
    program(client(200));
    EXPECT_EQ(m_rule.channels(m_graph), 2);
    m_graph.defaultSink = QStringLiteral("gone");
    EXPECT_EQ(m_rule.channels(m_graph), std::nullopt);
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(SystemAudioRuleTest, NoLinksUntilTheCaptureNodeHasItsPorts)
{
    program(client(200));
    m_graph.ports.erase(m_inputs[1]);
    EXPECT_THAT(plan(), IsEmpty());
}

TEST(ChannelDownmix, MapsEveryChannelToItsSides)
{
    constexpr ChannelDownmix Left = {.left = true};
    constexpr ChannelDownmix Right = {.right = true};
    constexpr ChannelDownmix Both = {.left = true, .right = true};
    const std::vector<std::pair<const char16_t*, ChannelDownmix>> table = {
        {u"FL", Left},  {u"SL", Left},   {u"RL", Left},    {u"FLC", Left},  {u"TRL", Left},
        {u"FR", Right}, {u"SR", Right},  {u"RR", Right},   {u"FRC", Right}, {u"TRR", Right},
        {u"FC", Both},  {u"RC", Both},   {u"MONO", Both},  {u"", Both},     {u"LFE", {}},
        {u"LFE2", {}},  {u"AUX0", Left}, {u"AUX1", Right}, {u"AUX2", Left}, {u"AUX13", Right}};
    for (const auto& [channel, sides] : table) {
        EXPECT_EQ(channelDownmix(QString::fromUtf16(channel)), sides) << QString::fromUtf16(channel).toStdString();
    }
}

class MicrophoneRuleTest : public GraphTest {
protected:
    ObjectId device(const QString& name, const QStringList& channels,
                    const QString& mediaClass = QStringLiteral("Audio/Source"))
    {
        const ObjectId added = node(name, mediaClass);
        ports(added, PortDirection::output, channels);
        return added;
    }
    ObjectId capture(const QStringList& channels)
    {
        const ObjectId added =
            node(QStringLiteral("quelto-microphone"), QStringLiteral("Stream/Input/Audio"), client(100));
        ports(added, PortDirection::input, channels);
        return added;
    }
};

const QStringList Mono = {QStringLiteral("MONO")};

TEST_F(MicrophoneRuleTest, RecordsTheDeviceWithTheId)
{
    device(QStringLiteral("built-in"), Stereo);
    const ObjectId headset = device(QStringLiteral("headset"), Mono);
    m_graph.defaultSource = QStringLiteral("built-in");
    EXPECT_EQ(MicrophoneRule(QStringLiteral("headset")).device(m_graph), headset);
}

TEST_F(MicrophoneRuleTest, FallsBackToTheDefaultDeviceAndReturns)
{
    const ObjectId builtIn = device(QStringLiteral("built-in"), Stereo);
    m_graph.defaultSource = QStringLiteral("built-in");
    const MicrophoneRule rule(QStringLiteral("headset"));
    EXPECT_EQ(rule.device(m_graph), builtIn);
    const ObjectId headset = node(QStringLiteral("headset"), QStringLiteral("Audio/Source"));
    EXPECT_EQ(rule.device(m_graph), builtIn) << "its ports do not exist yet";
    ports(headset, PortDirection::output, Mono);
    EXPECT_EQ(rule.device(m_graph), headset);
}

TEST_F(MicrophoneRuleTest, FollowsTheDefaultDeviceWithoutAnId)
{
    const ObjectId first = device(QStringLiteral("first"), Mono);
    const ObjectId second = device(QStringLiteral("second"), Mono);
    const MicrophoneRule rule{QString()};
    EXPECT_EQ(rule.device(m_graph), std::nullopt);
    m_graph.defaultSource = QStringLiteral("first");
    EXPECT_EQ(rule.device(m_graph), first);
    m_graph.defaultSource = QStringLiteral("second");
    EXPECT_EQ(rule.device(m_graph), second);
}

TEST_F(MicrophoneRuleTest, RecordsAMonitorOnlyIfChosen)
{
    const ObjectId speaker = device(QStringLiteral("speaker"), Stereo, QStringLiteral("Audio/Sink"));
    m_graph.defaultSource = QStringLiteral("speaker");
    EXPECT_EQ(MicrophoneRule(QString()).device(m_graph), std::nullopt);
    EXPECT_EQ(MicrophoneRule(QString()).channels(m_graph), std::nullopt);
    EXPECT_EQ(MicrophoneRule(QStringLiteral("speaker")).device(m_graph), speaker);
}

TEST_F(MicrophoneRuleTest, IgnoresAnIdThatIsNotADevice)
{
    device(QStringLiteral("player"), Stereo, QStringLiteral("Stream/Output/Audio"));
    EXPECT_EQ(MicrophoneRule(QStringLiteral("player")).device(m_graph), std::nullopt);
}

TEST_F(MicrophoneRuleTest, RecordsAMonoDeviceInMono)
{
    const ObjectId microphone = device(QStringLiteral("mic"), Mono);
    const MicrophoneRule rule(QStringLiteral("mic"));
    EXPECT_EQ(rule.channels(m_graph), 1);
    const ObjectId node = capture(Mono);
    EXPECT_THAT(rule.links(m_graph, node),
                UnorderedElementsAre(LinkEnds{m_graph.portsOf(microphone, PortDirection::output)[0],
                                              m_graph.portsOf(node, PortDirection::input)[0]}));
}

TEST_F(MicrophoneRuleTest, RecordsTheFirstTwoChannelsOfAnAudioInterface)
{
    const ObjectId interface =
        device(QStringLiteral("mic"), {QStringLiteral("AUX0"), QStringLiteral("AUX1"), QStringLiteral("AUX2")});
    const MicrophoneRule rule(QStringLiteral("mic"));
    EXPECT_EQ(rule.channels(m_graph), 2);
    const ObjectId node = capture(Stereo);
    const auto outputs = m_graph.portsOf(interface, PortDirection::output);
    const auto inputs = m_graph.portsOf(node, PortDirection::input);
    EXPECT_THAT(rule.links(m_graph, node),
                UnorderedElementsAre(LinkEnds{outputs[0], inputs[0]}, LinkEnds{outputs[1], inputs[1]}));
}

TEST_F(MicrophoneRuleTest, LinksLeftAndRightByChannelName)
{
    const ObjectId microphone =
        device(QStringLiteral("mic"), {QStringLiteral("FR"), QStringLiteral("FC"), QStringLiteral("FL")});
    const ObjectId node = capture(Stereo);
    const auto outputs = m_graph.portsOf(microphone, PortDirection::output);
    const auto inputs = m_graph.portsOf(node, PortDirection::input);
    EXPECT_THAT(MicrophoneRule(QStringLiteral("mic")).links(m_graph, node),
                UnorderedElementsAre(LinkEnds{outputs[2], inputs[0]}, LinkEnds{outputs[0], inputs[1]}));
}

TEST_F(MicrophoneRuleTest, NoLinksIfTheChannelCountsDiffer)
{
    device(QStringLiteral("mic"), Mono);
    EXPECT_THAT(MicrophoneRule(QStringLiteral("mic")).links(m_graph, capture(Stereo)), IsEmpty());
}

TEST_F(MicrophoneRuleTest, ListExcludesMonitorsAndOwnNodes)
{
    const ObjectId headset = device(QStringLiteral("headset"), Mono);
    m_graph.nodes[headset].description = QStringLiteral("A headset");
    device(QStringLiteral("virtual"), Mono, QStringLiteral("Audio/Source/Virtual"));
    device(QStringLiteral("speaker"), Stereo, QStringLiteral("Audio/Sink"));
    device(QStringLiteral("player"), Stereo, QStringLiteral("Stream/Output/Audio"));
    node(QStringLiteral("ours"), QStringLiteral("Audio/Source"), client(100));
    const MicrophoneInfo first = {.id = QStringLiteral("headset"), .name = QStringLiteral("A headset")};
    const MicrophoneInfo second = {.id = QStringLiteral("virtual"), .name = QStringLiteral("virtual")};
    EXPECT_EQ(microphonesIn(m_graph), (QList<MicrophoneInfo>{first, second}));
}

} // namespace
} // namespace quelto::pipewire

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/VoiceChatRule.h"
#include "GraphFixture.h"

#include <gmock/gmock.h>

namespace quelto::pipewire {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

using Ids = QSet<QString>;

const QString Discord = QStringLiteral("discord");
const QString Mumble = QStringLiteral("mumble");

class VoiceChatRuleTest : public GraphTest {
protected:
    VoiceChatRuleTest()
    {
        m_capture = node(QStringLiteral("quelto-voice-chat"), QStringLiteral("Stream/Input/Audio"), client(100, 900));
        m_inputs = ports(m_capture, PortDirection::input, Stereo);
    }

    /// A running program with that executable.
    ObjectId program(const QString& binary)
    {
        const ObjectId added = client(200 + m_lastId);
        m_graph.clients[added].program.binary = binary;
        return added;
    }
    /// A stereo stream of a program. Returns its output ports.
    std::vector<ObjectId> stream(ObjectId owner)
    {
        return ports(node(QStringLiteral("stream"), QStringLiteral("Stream/Output/Audio"), owner),
                     PortDirection::output, Stereo);
    }
    /// An output device and its input ports.
    std::pair<ObjectId, std::vector<ObjectId>> sink(const QString& name)
    {
        const ObjectId device = node(name, QStringLiteral("Audio/Sink"));
        return {device, ports(device, PortDirection::input, Stereo)};
    }
    LinkPlan plan() const { return m_rule.links(m_graph, m_capture); }

    VoiceChatRule m_rule;
    ObjectId m_capture = 0;
    std::vector<ObjectId> m_inputs;
};

TEST_F(VoiceChatRuleTest, RecordsTheStreamsOfListedApplications)
{
    const auto chat = stream(program(Discord));
    stream(program(QStringLiteral("game")));
    EXPECT_THAT(plan(), UnorderedElementsAre(LinkEnds{chat[0], m_inputs[0]}, LinkEnds{chat[1], m_inputs[1]}));
    EXPECT_EQ(m_rule.applications(m_graph), Ids{Discord});
    EXPECT_EQ(m_rule.channels(m_graph), 2);
}

TEST_F(VoiceChatRuleTest, HasNoStreamWithoutAListedApplication)
{
    stream(program(QStringLiteral("game")));
    EXPECT_EQ(m_rule.channels(m_graph), std::nullopt);
    EXPECT_EQ(m_rule.applications(m_graph), Ids());
    EXPECT_THAT(plan(), IsEmpty());
    EXPECT_EQ(m_rule.missingTarget(), MissingTarget::normal);
}

TEST_F(VoiceChatRuleTest, CountsASilentApplication)
{
    program(Discord);
    EXPECT_EQ(m_rule.channels(m_graph), 2);
    EXPECT_EQ(m_rule.applications(m_graph), Ids{Discord});
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(VoiceChatRuleTest, SecondStreamOfAnApplicationIsOnlyLinked)
{
    const ObjectId owner = program(Discord);
    stream(owner);
    const Ids before = m_rule.applications(m_graph);
    stream(owner);
    stream(program(Discord));
    EXPECT_EQ(m_rule.applications(m_graph), before);
    EXPECT_EQ(plan().size(), 6u);
}

TEST_F(VoiceChatRuleTest, RecordsSeveralApplications)
{
    stream(program(Discord));
    stream(program(Mumble));
    EXPECT_EQ(m_rule.applications(m_graph), (Ids{Discord, Mumble}));
    EXPECT_EQ(plan().size(), 4u);
}

TEST_F(VoiceChatRuleTest, RecordsAStreamOnAnyOutput)
{
    const auto [headset, headsetPorts] = sink(QStringLiteral("headset"));
    m_graph.defaultSink = QStringLiteral("speaker");
    sink(QStringLiteral("speaker"));
    const auto chat = stream(program(Discord));
    link(chat[0], headsetPorts[0]);
    link(chat[1], headsetPorts[1]);
    EXPECT_THAT(plan(), UnorderedElementsAre(LinkEnds{chat[0], m_inputs[0]}, LinkEnds{chat[1], m_inputs[1]}));
    EXPECT_EQ(m_rule.playbackDevice(m_graph), headset);
}

TEST_F(VoiceChatRuleTest, LatencyIsThatOfTheDefaultOutputIfItPlaysOneOfTheStreams)
{
    const auto [headset, headsetPorts] = sink(QStringLiteral("headset"));
    const auto [speaker, speakerPorts] = sink(QStringLiteral("speaker"));
    m_graph.defaultSink = QStringLiteral("speaker");
    EXPECT_EQ(m_rule.playbackDevice(m_graph), speaker) << "nothing plays";
    const ObjectId owner = program(Discord);
    link(stream(owner)[0], headsetPorts[0]);
    EXPECT_EQ(m_rule.playbackDevice(m_graph), headset);
    link(stream(owner)[0], speakerPorts[0]);
    EXPECT_EQ(m_rule.playbackDevice(m_graph), speaker);
}

TEST_F(VoiceChatRuleTest, HasNoPlaybackDeviceWithoutOutputs)
{
    const auto chat = stream(program(Discord));
    link(chat[0], m_inputs[0]);
    EXPECT_EQ(m_rule.playbackDevice(m_graph), std::nullopt) << "the link to the capture node is no output";
    EXPECT_EQ(m_rule.timestamps(), TimestampReference::playback);
}

TEST_F(VoiceChatRuleTest, DownmixesMonoAndSurround)
{
    const ObjectId owner = program(Discord);
    const ObjectId mono = node(QStringLiteral("voice"), QStringLiteral("Stream/Output/Audio"), owner);
    const ObjectId voice = port(mono, PortDirection::output, QStringLiteral("MONO"));
    const ObjectId surround = node(QStringLiteral("film"), QStringLiteral("Stream/Output/Audio"), owner);
    const ObjectId rear = port(surround, PortDirection::output, QStringLiteral("RL"));
    port(surround, PortDirection::output, QStringLiteral("LFE"));
    EXPECT_THAT(
        plan(),
        UnorderedElementsAre(LinkEnds{voice, m_inputs[0]}, LinkEnds{voice, m_inputs[1]}, LinkEnds{rear, m_inputs[0]}));
}

TEST_F(VoiceChatRuleTest, IgnoresMicrophoneStreamsAndDevicesOfApplications)
{
    const ObjectId owner = program(Discord);
    ports(node(QStringLiteral("mic"), QStringLiteral("Stream/Input/Audio"), owner), PortDirection::output, Stereo);
    ports(node(QStringLiteral("share"), QStringLiteral("Audio/Source/Virtual"), owner), PortDirection::output, Stereo);
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(VoiceChatRuleTest, WaitsUntilTheClientIsDescribed)
{
    const ObjectId owner = program(Discord);
    stream(owner);
    m_graph.clients[owner].isComplete = false;
    EXPECT_THAT(plan(), IsEmpty());
    EXPECT_EQ(m_rule.applications(m_graph), Ids());
    m_graph.clients.erase(owner);
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(VoiceChatRuleTest, KnowsAnApplicationByTheNameInItsStream)
{
    stream(program(QStringLiteral("wrapper")));
    m_graph.nodes.rbegin()->second.applicationName = QStringLiteral("Mumble");
    EXPECT_EQ(m_rule.applications(m_graph), Ids{Mumble});
    EXPECT_EQ(plan().size(), 2u);
}

TEST_F(VoiceChatRuleTest, IgnoresABrowserThatNamesItsStreamLikeAnApplication)
{
    stream(program(QStringLiteral("chrome")));
    m_graph.nodes.rbegin()->second.applicationName = QStringLiteral("Discord");
    EXPECT_EQ(m_rule.applications(m_graph), Ids());
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(VoiceChatRuleTest, IgnoresStreamsOfTheServer)
{
    ports(node(QStringLiteral("Discord"), QStringLiteral("Stream/Output/Audio")), PortDirection::output, Stereo);
    EXPECT_THAT(plan(), IsEmpty());
}

TEST_F(VoiceChatRuleTest, NoLinksUntilTheCaptureNodeHasItsPorts)
{
    stream(program(Discord));
    m_graph.ports.erase(m_inputs[1]);
    EXPECT_THAT(plan(), IsEmpty());
}

} // namespace
} // namespace quelto::pipewire

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/ChannelDownmix.h"

#include <array>

namespace quelto::pipewire {

namespace {

constexpr std::array LeftChannels = {u"FL",  u"SL",  u"RL",   u"FLC", u"FLW", u"FLH",
                                     u"RLC", u"TFL", u"TFLC", u"TSL", u"TRL", u"BLC"};
constexpr std::array RightChannels = {u"FR",  u"SR",  u"RR",   u"FRC", u"FRW", u"FRH",
                                      u"RRC", u"TFR", u"TFRC", u"TSR", u"TRR", u"BRC"};

template <std::size_t Size> bool contains(const std::array<const char16_t*, Size>& channels, const QString& channel)
{
    return std::ranges::any_of(channels, [&](const char16_t* name) { return channel == QStringView(name); });
}

} // namespace

ChannelDownmix channelDownmix(const QString& channel)
{
    if (contains(LeftChannels, channel)) {
        return {.left = true};
    }
    if (contains(RightChannels, channel)) {
        return {.right = true};
    }
    if (channel.contains(u"LFE")) {
        return {};
    }
    if (channel.startsWith(u"AUX")) {
        const bool isOdd = channel.mid(3).toInt() % 2 == 1;
        return {.left = !isOdd, .right = isOdd};
    }
    return {.left = true, .right = true};
}

} // namespace quelto::pipewire

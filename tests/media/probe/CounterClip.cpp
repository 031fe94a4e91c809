// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/CounterClip.h"

#include "tests/media/probe/DecodedPictures.h"
#include "tests/media/probe/Probe.h"

#include <QStringList>

#include <cmath>
#include <cstring>
#include <numbers>
#include <span>
#include <stdexcept>

namespace quelto::test {

namespace {

constexpr double BeepPeriod = 0.5;
constexpr double FirstBeep = 0.25;
constexpr double BeepLength = 0.02;
constexpr int SampleRate = 48000;

QString number(double value)
{
    return QString::number(value, 'f', 9);
}

/// "if(eq(N,0),0.0,if(eq(N,1),0.1,…))"
QString timeExpression(const std::vector<double>& times)
{
    QString expression = number(times.back());
    for (auto i = times.size() - 1; i-- > 0;) {
        expression = QStringLiteral("if(eq(N,%1),%2,%3)").arg(i).arg(number(times[i]), expression);
    }
    return expression;
}

QString videoSource(const CounterClip& clip)
{
    // The small picture is drawn slowly by expressions, and enlarged quickly.
    auto source = QStringLiteral("color=c=black:s=%1x2:r=%2:d=%3,format=yuv420p,"
                                 "geq=lum='if(eq(X,0),220,if(eq(X,%4),30,30+190*mod(floor((N+%5)/pow(2,X-1)),2)))'"
                                 ":cb=128:cr=128,scale=%6:%7:flags=neighbor,setsar=1")
                      .arg(CounterClip::bars)
                      .arg(clip.times.empty() ? clip.rate : QStringLiteral("100"))
                      .arg(clip.times.empty() ? clip.seconds : static_cast<double>(clip.times.size()) / 100)
                      .arg(CounterClip::bars - 1)
                      .arg(clip.firstNumber)
                      .arg(clip.size.width())
                      .arg(clip.size.height());
    if (!clip.filter.isEmpty()) {
        source += u',' + clip.filter;
    }
    if (!clip.times.empty()) {
        source += QStringLiteral(",settb=1/90000,setpts='round((%1)/TB)'").arg(timeExpression(clip.times));
    }
    return source;
}

QString audioSource(const BeepTrack& track, double seconds)
{
    return QStringLiteral("aevalsrc='0.3*sin(2*PI*%1*mod(t+%2,%2*2))*lt(mod(t+%2,%2*2),%3)':s=%4:c=%5:d=%6")
        .arg(track.pitch)
        .arg(FirstBeep)
        .arg(BeepLength)
        .arg(track.sampleRate)
        .arg(track.channels)
        .arg(track.seconds > 0 ? track.seconds : seconds);
}

/// The track in one channel, with silence up to its start.
std::vector<float> soundOnTimeline(const QString& path, int audioTrack)
{
    auto arguments =
        QStringLiteral("-nostdin -v error -copyts -i PATH -map 0:a:%1 -af aresample=%2:async=1:first_pts=0 "
                       "-ac 1 -f f32le -")
            .arg(audioTrack)
            .arg(SampleRate)
            .split(u' ');
    // Paths may have spaces.
    arguments.replace(arguments.indexOf(QStringLiteral("PATH")), path);
    const auto result = run(QStringLiteral("ffmpeg"), arguments);
    if (result.exitCode != 0) {
        throw std::runtime_error(result.errors.toStdString());
    }
    std::vector<float> samples(static_cast<std::size_t>(result.output.size()) / sizeof(float));
    std::memcpy(samples.data(), result.output.constData(), samples.size() * sizeof(float));
    return samples;
}

/// How alike the signals are, whatever their loudness: at most 1.
double likeness(std::span<const float> samples, const std::vector<float>& pattern)
{
    double product = 0;
    double energy = 0;
    double patternEnergy = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        product += double{samples[i]} * pattern[i];
        energy += double{samples[i]} * samples[i];
        patternEnergy += double{pattern[i]} * pattern[i];
    }
    // Silence is like nothing.
    constexpr double Quiet = 1e-3;
    return energy > Quiet ? product / std::sqrt(energy * patternEnergy) : 0;
}

} // namespace

QString makeClip(const GeneratedClips& clips, const QString& name, const CounterClip& clip)
{
    QStringList arguments{
        QStringLiteral("-itsoffset %1 -f lavfi -i %2").arg(number(clip.videoStart), videoSource(clip))};
    const auto seconds = clip.times.empty() ? clip.seconds : clip.times.back() + 0.1;
    QString maps = QStringLiteral("-map 0:v");
    int index = 1;
    for (const auto& track : clip.audio) {
        arguments.push_back(
            QStringLiteral("-itsoffset %1 -f lavfi -i %2").arg(number(track.start), audioSource(track, seconds)));
        maps += QStringLiteral(" -map %1:a").arg(index++);
    }
    arguments.push_back(maps);
    // Edit lists are exact to a frame of sound.
    arguments.push_back(QStringLiteral("-fps_mode passthrough -movie_timescale 720000"));
    if (!clip.times.empty()) {
        arguments.push_back(QStringLiteral("-enc_time_base -1 -video_track_timescale 90000"));
    }
    arguments += {clip.encoding, clip.audioEncoding, clip.muxing};
    return clips.make(name, arguments.join(u' '));
}

std::vector<CountedFrame> readCounter(const QString& path, const QRect& rect)
{
    constexpr int Columns = 5;
    constexpr QSize Size(CounterClip::bars * Columns, 2);
    const auto pictures =
        decodePictures(path, rect, QStringLiteral("scale=%1:%2:flags=area").arg(Size.width()).arg(Size.height()),
                       QStringLiteral("gray"));
    std::vector<CountedFrame> frames;
    for (const auto& picture : pictures) {
        // The middle column of a bar is far from its neighbours.
        const auto bar = [&](int index) {
            return static_cast<double>(static_cast<std::uint8_t>(picture.bytes[index * Columns + Columns / 2]));
        };
        CountedFrame frame{.time = picture.time, .white = bar(0), .black = bar(CounterClip::bars - 1)};
        constexpr double MinContrast = 20;
        if (frame.white - frame.black >= MinContrast) {
            frame.number = 0;
            for (int bit = 0; bit < CounterClip::bars - 2; ++bit) {
                frame.number |= (bar(bit + 1) > (frame.white + frame.black) / 2 ? 1 : 0) << bit;
            }
        }
        frames.push_back(frame);
    }
    return frames;
}

int numberOf(const QImage& picture, const QRect& rect)
{
    if (picture.isNull()) {
        return -1;
    }
    const auto bars = rect.isNull() ? picture.rect() : rect;
    const auto bar = [&](int index) {
        const auto x = bars.left() + (2 * index + 1) * bars.width() / (2 * CounterClip::bars);
        return qGray(picture.pixel(x, bars.center().y()));
    };
    const int white = bar(0);
    const int black = bar(CounterClip::bars - 1);
    constexpr int MinContrast = 64;
    if (white - black < MinContrast) {
        return -1;
    }
    int number = 0;
    for (int bit = 0; bit < CounterClip::bars - 2; ++bit) {
        number |= (bar(bit + 1) > (white + black) / 2 ? 1 : 0) << bit;
    }
    return number;
}

std::vector<int> numbersOf(const std::vector<CountedFrame>& frames)
{
    std::vector<int> numbers(frames.size());
    std::ranges::transform(frames, numbers.begin(), &CountedFrame::number);
    return numbers;
}

std::vector<double> timesOf(const std::vector<CountedFrame>& frames)
{
    std::vector<double> times(frames.size());
    std::ranges::transform(frames, times.begin(), &CountedFrame::time);
    return times;
}

std::vector<double> beepTimes(const QString& path, int audioTrack, double pitch)
{
    const auto samples = soundOnTimeline(path, audioTrack);
    std::vector<float> beep(static_cast<std::size_t>(BeepLength * SampleRate));
    for (std::size_t i = 0; i < beep.size(); ++i) {
        beep[i] = static_cast<float>(std::sin(2 * std::numbers::pi * pitch * static_cast<double>(i) / SampleRate));
    }
    std::vector<double> times;
    const auto gap = static_cast<std::size_t>((BeepPeriod - 2 * BeepLength) * SampleRate);
    for (std::size_t start = 0; start + beep.size() <= samples.size(); start += 24) {
        constexpr float Audible = 0.02F;
        if (std::abs(samples[start + beep.size() - 1]) < Audible) {
            continue;
        }
        // The loud sample is near the beginning of a beep.
        const auto last = std::min(start + 2 * beep.size(), samples.size() - beep.size());
        double best = 0;
        std::size_t at = start;
        for (auto i = start; i <= last; ++i) {
            const auto here = likeness(std::span(samples).subspan(i), beep);
            if (here > best) {
                best = here;
                at = i;
            }
        }
        constexpr double MinLikeness = 0.7;
        if (best > MinLikeness) {
            times.push_back(static_cast<double>(at) / SampleRate);
            start = at + gap;
        }
    }
    return times;
}

} // namespace quelto::test

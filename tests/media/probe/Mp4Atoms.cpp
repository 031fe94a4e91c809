// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/Mp4Atoms.h"

#include <QFile>
#include <QtEndian>

#include <functional>
#include <stdexcept>

namespace quelto::test {

namespace {

class Box {
public:
    explicit Box(QByteArrayView data)
        : m_data(data)
    {
    }

    std::uint64_t number(qsizetype at, int bytes) const
    {
        if (at + bytes > m_data.size()) {
            throw std::runtime_error("box too short");
        }
        std::uint64_t value = 0;
        for (int i = 0; i < bytes; ++i) {
            value = value << 8 | static_cast<std::uint8_t>(m_data[at + i]);
        }
        return value;
    }
    std::uint32_t word(qsizetype at) const { return static_cast<std::uint32_t>(number(at, 4)); }
    QByteArrayView data() const { return m_data; }

    void forEach(const std::function<void(const QString&, const Box&)>& visit) const
    {
        qsizetype at = 0;
        while (at + 8 <= m_data.size()) {
            auto size = static_cast<qsizetype>(word(at));
            const auto type = QString::fromLatin1(m_data.sliced(at + 4, 4));
            qsizetype header = 8;
            if (size == 1) {
                size = static_cast<qsizetype>(number(at + 8, 8));
                header = 16;
            } else if (size == 0) {
                size = m_data.size() - at;
            }
            if (size < header || at + size > m_data.size()) {
                throw std::runtime_error("box size");
            }
            visit(type, Box(m_data.sliced(at + header, size - header)));
            at += size;
        }
        if (at != m_data.size()) {
            throw std::runtime_error("rest behind the last box");
        }
    }

private:
    QByteArrayView m_data;
};

void readTrack(const QString& type, const Box& box, Mp4TrackBoxes& track)
{
    const bool isWide = !box.data().isEmpty() && box.data().front() == 1;
    if (type == u"mdia" || type == u"minf" || type == u"stbl" || type == u"edts") {
        box.forEach([&](const QString& inner, const Box& child) { readTrack(inner, child, track); });
    } else if (type == u"tkhd") {
        track.isEnabled = (box.word(0) & 1U) != 0;
        track.alternateGroup = static_cast<int>(box.number(isWide ? 46 : 34, 2));
    } else if (type == u"mdhd") {
        track.timeScale = box.word(isWide ? 20 : 12);
        track.mediaDuration = isWide ? box.number(24, 8) : box.word(16);
    } else if (type == u"elst") {
        track.editLength = isWide ? box.number(8, 8) : box.word(8);
        track.editStart =
            isWide ? static_cast<std::int64_t>(box.number(16, 8)) : static_cast<std::int32_t>(box.word(12));
    } else if (type == u"stts") {
        for (std::uint32_t i = 0; i < box.word(4); ++i) {
            track.durations.insert(track.durations.end(), box.word(8 + 8 * i), box.word(12 + 8 * i));
        }
    } else if (type == u"stss") {
        track.syncSamples.emplace();
        for (std::uint32_t i = 0; i < box.word(4); ++i) {
            track.syncSamples->push_back(box.word(8 + 4 * i));
        }
    } else if (type == u"stsd") {
        track.sampleEntry = QString::fromLatin1(box.data().sliced(12, 4));
        track.hasColourBox = box.data().toByteArray().contains("colrnclx");
    }
}

} // namespace

Mp4Boxes readMp4Boxes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("no such file");
    }
    const auto bytes = file.readAll();
    Mp4Boxes boxes;
    Box(bytes).forEach([&](const QString& type, const Box& box) {
        boxes.order.push_back(type);
        if (type != u"moov") {
            return;
        }
        box.forEach([&](const QString& inner, const Box& child) {
            if (inner == u"mvhd") {
                boxes.movieTimeScale = child.word(child.data().front() == 1 ? 20 : 12);
            } else if (inner == u"trak") {
                auto& track = boxes.tracks.emplace_back();
                child.forEach([&](const QString& part, const Box& partBox) { readTrack(part, partBox, track); });
            }
        });
    });
    return boxes;
}

} // namespace quelto::test

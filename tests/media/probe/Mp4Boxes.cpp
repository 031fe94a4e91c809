// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/Mp4Boxes.h"

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

    std::uint64_t number(qsizetype offset, int bytes) const
    {
        if (offset + bytes > m_data.size()) {
            throw std::runtime_error("box too short");
        }
        std::uint64_t value = 0;
        for (int i = 0; i < bytes; ++i) {
            value = value << 8 | static_cast<std::uint8_t>(m_data[offset + i]);
        }
        return value;
    }
    std::uint32_t word(qsizetype offset) const { return static_cast<std::uint32_t>(number(offset, 4)); }
    QByteArrayView data() const { return m_data; }

    void forEach(const std::function<void(const QString&, const Box&)>& visit) const
    {
        qsizetype offset = 0;
        while (offset + 8 <= m_data.size()) {
            auto size = static_cast<qsizetype>(word(offset));
            const auto type = QString::fromLatin1(m_data.sliced(offset + 4, 4));
            qsizetype header = 8;
            if (size == 1) {
                size = static_cast<qsizetype>(number(offset + 8, 8));
                header = 16;
            } else if (size == 0) {
                size = m_data.size() - offset;
            }
            if (size < header || offset + size > m_data.size()) {
                throw std::runtime_error("invalid box size");
            }
            visit(type, Box(m_data.sliced(offset + header, size - header)));
            offset += size;
        }
        if (offset != m_data.size()) {
            throw std::runtime_error("data after the last box");
        }
    }

private:
    QByteArrayView m_data;
};

void readTrack(const QString& type, const Box& box, Mp4TrackBoxes& track)
{
    const bool isVersion1 = !box.data().isEmpty() && box.data().front() == 1;
    if (type == u"mdia" || type == u"minf" || type == u"stbl" || type == u"edts") {
        box.forEach([&](const QString& inner, const Box& child) { readTrack(inner, child, track); });
    } else if (type == u"tkhd") {
        track.isEnabled = (box.word(0) & 1U) != 0;
        track.duration = isVersion1 ? box.number(28, 8) : box.word(20);
        track.alternateGroup = static_cast<int>(box.number(isVersion1 ? 46 : 34, 2));
    } else if (type == u"mdhd") {
        track.timeScale = box.word(isVersion1 ? 20 : 12);
        track.mediaDuration = isVersion1 ? box.number(24, 8) : box.word(16);
    } else if (type == u"elst") {
        track.editLength = isVersion1 ? box.number(8, 8) : box.word(8);
        track.editStart =
            isVersion1 ? static_cast<std::int64_t>(box.number(16, 8)) : static_cast<std::int32_t>(box.word(12));
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
        throw std::runtime_error("cannot open file");
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

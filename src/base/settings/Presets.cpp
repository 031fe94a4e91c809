// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/Presets.h"

#include "base/language/T.h"

namespace quelto {

namespace {

struct ResolutionRow {
    ResolutionPreset value;
    const char* rawValue;
    std::optional<int> height;
};

struct QualityRow {
    QualityPreset value;
    const char* rawValue;
    double bitsPerPixel;
};

struct CodecRow {
    VideoCodec value;
    const char* rawValue;
    const char* label;
};

constexpr std::array Resolutions{
    ResolutionRow{ResolutionPreset::native, "native", std::nullopt},
    ResolutionRow{ResolutionPreset::p1440, "p1440", 1440},
    ResolutionRow{ResolutionPreset::p1080, "p1080", 1080},
    ResolutionRow{ResolutionPreset::p720, "p720", 720},
};

constexpr std::array Qualities{
    QualityRow{QualityPreset::low, "low", 0.045},
    QualityRow{QualityPreset::medium, "medium", 0.075},
    QualityRow{QualityPreset::high, "high", 0.11},
    QualityRow{QualityPreset::ultra, "ultra", 0.17},
};

constexpr std::array Codecs{
    CodecRow{VideoCodec::h264, "h264", "H.264"},
    CodecRow{VideoCodec::hevc, "hevc", "HEVC"},
};

template <typename Rows, typename Value> const auto& rowOf(const Rows& rows, Value value)
{
    return rows[static_cast<std::size_t>(value)];
}

template <typename Rows, typename Value> Value valueFrom(const Rows& rows, const QString& rawValue, Value fallback)
{
    const auto* row =
        std::ranges::find_if(rows, [&](const auto& each) { return rawValue == QLatin1String(each.rawValue); });
    return row == rows.end() ? fallback : row->value;
}

} // namespace

QString rawValueOf(ResolutionPreset preset)
{
    return QString::fromLatin1(rowOf(Resolutions, preset).rawValue);
}

QString rawValueOf(QualityPreset preset)
{
    return QString::fromLatin1(rowOf(Qualities, preset).rawValue);
}

QString rawValueOf(VideoCodec codec)
{
    return QString::fromLatin1(rowOf(Codecs, codec).rawValue);
}

QString labelOf(ResolutionPreset preset)
{
    const auto height = heightOf(preset);
    return height ? QString::number(*height) + u'p' : T("Yerel");
}

QString labelOf(QualityPreset preset)
{
    switch (preset) {
    case QualityPreset::low:
        return T("Düşük");
    case QualityPreset::medium:
        return T("Orta");
    case QualityPreset::high:
        return T("Yüksek");
    case QualityPreset::ultra:
        break;
    }
    // The same in every language.
    return QStringLiteral("Ultra");
}

QString labelOf(VideoCodec codec)
{
    return QString::fromLatin1(rowOf(Codecs, codec).label);
}

template <> ResolutionPreset presetFromRawValue(const QString& rawValue)
{
    return valueFrom(Resolutions, rawValue, ResolutionPreset::p1080);
}

template <> QualityPreset presetFromRawValue(const QString& rawValue)
{
    return valueFrom(Qualities, rawValue, QualityPreset::high);
}

template <> VideoCodec presetFromRawValue(const QString& rawValue)
{
    return valueFrom(Codecs, rawValue, VideoCodec::h264);
}

std::optional<int> heightOf(ResolutionPreset preset)
{
    return rowOf(Resolutions, preset).height;
}

double bitsPerPixelOf(QualityPreset preset)
{
    return rowOf(Qualities, preset).bitsPerPixel;
}

} // namespace quelto

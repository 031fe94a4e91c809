// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/SettingChoices.h"

#include "base/keys/HotKeyText.h"
#include "base/keys/KeyCodes.h"
#include "base/language/Language.h"
#include "base/settings/AppSettings.h"

#include <QMetaProperty>

#include <cmath>
#include <limits>
#include <span>
#include <variant>

namespace quelto {

namespace {

using OneNumberOf = std::span<const int>;
using OneWordOf = QStringList (*)();
struct Between {
    double lowest;
    double highest;
};
struct AnyBitsOf {
    quint32 bits;
};
/// A key that the shortcut's recorder accepts: Escape cancels it.
struct AnyKey { };
struct TextToShow { };

struct ChoiceRow {
    const char* key;
    std::variant<OneNumberOf, OneWordOf, Between, AnyBitsOf, AnyKey, TextToShow> choices;
};

constexpr std::uint32_t EscapeCode = 53;
constexpr Between Gain{0, 2};

template <typename Presets> QStringList rawValuesOf(const Presets& presets)
{
    QStringList words;
    for (const auto preset : presets) {
        words.append(rawValueOf(preset));
    }
    return words;
}

QStringList languages()
{
    return QStringList{QStringLiteral("system")} + rawValuesOf(AllLanguages);
}

QStringList colorThemes()
{
    QStringList words;
    for (const auto* id : AppSettings::colorThemes) {
        words.append(QLatin1String(id));
    }
    return words;
}

// A preference without a row takes every value of its type.
constexpr std::array Rows{
    ChoiceRow{"clipLength", OneNumberOf(AppSettings::clipLengths)},
    ChoiceRow{"resolution", [] { return rawValuesOf(AllResolutionPresets); }},
    ChoiceRow{"quality", [] { return rawValuesOf(AllQualityPresets); }},
    ChoiceRow{"fps", OneNumberOf(AppSettings::fpsOptions)},
    ChoiceRow{"codec", [] { return rawValuesOf(AllVideoCodecs); }},
    ChoiceRow{"micVolume", Gain},
    ChoiceRow{"systemVolume", Gain},
    ChoiceRow{"discordLimitMB", OneNumberOf(AppSettings::discordLimits)},
    ChoiceRow{"language", languages},
    ChoiceRow{"colorTheme", colorThemes},
    ChoiceRow{"hotkeyCode", AnyKey{}},
    ChoiceRow{"hotkeyModifiers",
              AnyBitsOf{modifierBits::command | modifierBits::shift | modifierBits::option | modifierBits::control}},
    ChoiceRow{"hotkeyKeyName", TextToShow{}},
};

struct IsOffered {
    const QVariant& value;

    bool operator()(OneNumberOf numbers) const { return std::ranges::count(numbers, value.toInt()) > 0; }
    bool operator()(OneWordOf words) const { return words().contains(value.toString()); }
    bool operator()(Between range) const
    {
        return range.lowest <= value.toDouble() && value.toDouble() <= range.highest;
    }
    bool operator()(AnyBitsOf mask) const { return (value.toUInt() & ~mask.bits) == 0; }
    bool operator()(AnyKey) const
    {
        return value.toUInt() != EscapeCode && !positionsOfKeyCode(value.toUInt()).empty();
    }
    bool operator()(TextToShow) const
    {
        const auto text = value.toString();
        return !text.trimmed().isEmpty() && std::ranges::all_of(text, [](QChar each) { return each.isPrint(); });
    }
};

template <typename Number> std::optional<QVariant> inRange(qlonglong number)
{
    return std::in_range<Number>(number) ? std::optional(QVariant::fromValue(static_cast<Number>(number)))
                                         : std::nullopt;
}

/// Converts between the number types of the session bus, and nothing else: no control gives text for a number.
std::optional<QVariant> converted(const QVariant& value, QMetaType type)
{
    constexpr std::array WholeNumbers{QMetaType::UChar, QMetaType::Short,    QMetaType::UShort,   QMetaType::Int,
                                      QMetaType::UInt,  QMetaType::LongLong, QMetaType::ULongLong};
    const bool isWhole = std::ranges::count(WholeNumbers, value.typeId()) > 0;
    switch (type.id()) {
    case QMetaType::Int:
        return isWhole ? inRange<int>(value.toLongLong()) : std::nullopt;
    case QMetaType::UInt:
        return isWhole ? inRange<quint32>(value.toLongLong()) : std::nullopt;
    case QMetaType::Double:
        return isWhole || value.typeId() == QMetaType::Double ? std::optional(QVariant(value.toDouble()))
                                                              : std::nullopt;
    default:
        return value.metaType() == type ? std::optional(value) : std::nullopt;
    }
}

} // namespace

std::optional<QVariant> offeredSetting(const QString& key, const QVariant& value)
{
    const auto& settings = AppSettings::staticMetaObject;
    const auto index = settings.indexOfProperty(key.toUtf8().constData());
    if (index < settings.propertyOffset()) {
        return std::nullopt;
    }
    auto result = converted(value, settings.property(index).metaType());
    const auto* row = std::ranges::find_if(Rows, [&](const ChoiceRow& each) { return key == QLatin1String(each.key); });
    if (result && row != Rows.end() && !std::visit(IsOffered{*result}, row->choices)) {
        result.reset();
    }
    return result;
}

} // namespace quelto

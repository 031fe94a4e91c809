// SPDX-License-Identifier: GPL-3.0-or-later
#include "updates/Release.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <vector>

namespace quelto {

namespace {

constexpr QChar ZeroWidthNonJoiner(0x200C);
constexpr QChar ZeroWidthJoiner(0x200D);

std::optional<QString> textOf(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QStringList> textsOf(const QJsonValue& value)
{
    if (!value.isArray()) {
        return std::nullopt;
    }
    QStringList texts;
    for (const auto& each : value.toArray()) {
        const auto text = textOf(each);
        if (!text) {
            return std::nullopt;
        }
        texts.append(*text);
    }
    return texts;
}

std::int64_t numberOf(QByteArray piece)
{
    if (piece.startsWith('+')) {
        piece.remove(0, 1);
        if (piece.startsWith('-')) {
            return 0;
        }
    }
    std::int64_t number = 0;
    const auto* const end = piece.cbegin() + piece.size();
    const auto read = std::from_chars(piece.cbegin(), end, number);
    return read.ec == std::errc() && read.ptr == end ? number : 0;
}

std::vector<std::int64_t> numbersOf(const QString& version)
{
    std::vector<std::int64_t> numbers;
    for (const auto& piece : version.split(u'.', Qt::SkipEmptyParts)) {
        numbers.push_back(numberOf(piece.toUtf8()));
    }
    return numbers;
}

} // namespace

std::optional<Release> decodeRelease(const QByteArray& json)
{
    const auto object = QJsonDocument::fromJson(json).object();
    const auto version = textOf(object[u"version"]);
    const auto notes = textsOf(object[u"notes"]);
    const auto url = textOf(object[u"url"]);
    if (!version || !notes || !url) {
        return std::nullopt;
    }
    return Release{.version = *version, .notes = *notes, .url = *url};
}

bool isNewer(const QString& version, const QString& other)
{
    auto numbers = numbersOf(version);
    auto others = numbersOf(other);
    const auto length = std::max(numbers.size(), others.size());
    numbers.resize(length);
    others.resize(length);
    return others < numbers;
}

QString visibleLine(const QString& text)
{
    auto visible = text;
    for (auto& each : visible) {
        if (each.category() == QChar::Other_Control) {
            each = u' ';
        }
    }
    // Among them are those that change the direction of the text around them. Joiners are part of some letters and
    // emoji.
    visible.removeIf([](QChar each) {
        return each.category() == QChar::Other_Format && each != ZeroWidthJoiner && each != ZeroWidthNonJoiner;
    });
    return visible.simplified();
}

} // namespace quelto

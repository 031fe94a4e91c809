// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/FileName.h"

#include <QStringDecoder>

namespace quelto {

namespace {

constexpr char16_t EscapeBase = 0xDC00;
constexpr qsizetype MaxBytesPerCharacter = 4;

bool isByte(QChar unit)
{
    return unit.unicode() >= EscapeBase + 0x80 && unit.unicode() <= EscapeBase + 0xFF;
}

/// The position of the first byte that decodeFileName kept, at or after `from`; the size of the text if there is none.
qsizetype findByte(QStringView text, qsizetype from)
{
    for (auto at = from; at < text.size(); ++at) {
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            ++at;
        } else if (isByte(text[at])) {
            return at;
        }
    }
    return text.size();
}

QString textOf(QByteArrayView validName)
{
    // QString::fromUtf8 would drop a byte order mark, which is a part of the name.
    return QStringDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom).decode(validName);
}

/// The bytes of the character at the start, 0 if there is no valid one.
qsizetype characterBytes(QByteArrayView name)
{
    for (qsizetype size = 1; size <= std::min(MaxBytesPerCharacter, name.size()); ++size) {
        if (name.first(size).isValidUtf8()) {
            return size;
        }
    }
    return 0;
}

} // namespace

QString decodeFileName(QByteArrayView name)
{
    if (name.isValidUtf8()) {
        return textOf(name);
    }
    QString text;
    while (!name.isEmpty()) {
        const auto size = characterBytes(name);
        if (size > 0) {
            text += textOf(name.first(size));
        } else {
            text += QChar(static_cast<char16_t>(EscapeBase + static_cast<unsigned char>(name.front())));
        }
        name = name.sliced(std::max<qsizetype>(size, 1));
    }
    return text;
}

QByteArray encodeFileName(const QString& name)
{
    QByteArray bytes;
    const QStringView text(name);
    for (qsizetype at = 0; at < text.size();) {
        const auto end = findByte(text, at);
        bytes += text.sliced(at, end - at).toUtf8();
        if (end < text.size()) {
            bytes += static_cast<char>(text[end].unicode() - EscapeBase);
        }
        at = end + 1;
    }
    return bytes;
}

QString displayFileName(QString name)
{
    for (auto at = findByte(name, 0); at < name.size(); at = findByte(name, at + 1)) {
        name[at] = QChar::ReplacementCharacter;
    }
    return name;
}

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/BoundKeys.h"

#include "base/keys/HotKeyText.h"

#include <QKeySequence>
#include <QRegularExpression>

#include <optional>

namespace quelto {

namespace {

constexpr auto ModifierMask = static_cast<int>(Qt::KeyboardModifierMask);

/// In the words that Qt reads: "<Primary><Alt>c" and "Ctrl+Alt+c" become "Ctrl+Alt+c".
QString inWordsOfQt(QString text)
{
    static const QRegularExpression bracketed(QStringLiteral("<(\\w+)>"));
    static const QRegularExpression control(QStringLiteral("\\b(Primary|Control)\\+"),
                                            QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression super(QStringLiteral("\\b(Super|Logo|Win)\\+"),
                                          QRegularExpression::CaseInsensitiveOption);
    return text.replace(bracketed, QStringLiteral("\\1+"))
        .replace(control, QStringLiteral("Ctrl+"))
        .replace(super, QStringLiteral("Meta+"));
}

std::optional<QStringList> tryWords(const QString& text, QKeySequence::SequenceFormat format)
{
    const auto keys = QKeySequence::fromString(text, format);
    if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown || keys[0].key() == 0) {
        return std::nullopt;
    }
    const QKeySequence key(keys[0].toCombined() & ~ModifierMask);
    return hotKeyWords(storedModifiers(keys[0].keyboardModifiers()), key.toString(QKeySequence::NativeText));
}

std::optional<QStringList> tryWords(const QString& text)
{
    const auto words = tryWords(text, QKeySequence::PortableText);
    return words ? words : tryWords(text, QKeySequence::NativeText);
}

} // namespace

QStringList boundKeyWords(const QString& description)
{
    const auto text = description.simplified();
    if (text.isEmpty()) {
        return {};
    }
    if (const auto words = tryWords(inWordsOfQt(text))) {
        return *words;
    }
    QList<QStringList> shortcuts;
    for (const auto& part : inWordsOfQt(text).split(u' ')) {
        if (const auto words = tryWords(part); words && words->size() > 1) {
            shortcuts.append(*words);
        }
    }
    return shortcuts.size() == 1 ? shortcuts.first() : QStringList{text};
}

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace quelto {

/// T for a caller that has its arguments in a list.
QString translated(const char* key, const QStringList& arguments);
/// TOnDesktop for a caller that has its arguments in a list.
QString translatedForDesktop(const char* key, const QStringList& arguments);

namespace detail {
inline QString argumentText(const QString& text)
{
    return text;
}
inline QString argumentText(qlonglong number)
{
    return QString::number(number);
}
inline QString argumentText(int number)
{
    return QString::number(number);
}
} // namespace detail

/// The text for the user in the chosen language. The key is the Turkish text itself, in UTF-8; a key that no table
/// knows shows as it stands. {0}, {1}, {2} are filled from the arguments, one after the other; numbers appear without
/// grouping. A placeholder without an argument stays, an argument without a placeholder has no effect.
///
/// Thread: any.
template <typename... Arguments> QString T(const char* key, const Arguments&... arguments)
{
    return translated(key, {detail::argumentText(arguments)...});
}

/// The same for a text that speaks of the platform's own places and keys: it reads as this desktop calls them, where it
/// has a word of its own for them, and as T otherwise.
template <typename... Arguments> QString TOnDesktop(const char* key, const Arguments&... arguments)
{
    return translatedForDesktop(key, {detail::argumentText(arguments)...});
}

} // namespace quelto

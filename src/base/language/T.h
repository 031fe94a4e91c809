// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace quelto {

/// T with the arguments in a list.
QString translated(const char* key, const QStringList& arguments);
/// TOnDesktop with the arguments in a list.
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

/// The text in the current language. The key is the Turkish text itself, in UTF-8; a key without a translation is
/// returned unchanged. The arguments replace {0}, {1}, {2} in this order; numbers have no group separators. A
/// placeholder without an argument stays; an argument without a placeholder is ignored.
///
/// Thread: any.
template <typename... Arguments> QString T(const char* key, const Arguments&... arguments)
{
    return translated(key, {detail::argumentText(arguments)...});
}

/// T for a text that names places and keys of the platform: uses the Linux desktop's wording where the table has one,
/// and T otherwise.
template <typename... Arguments> QString TOnDesktop(const char* key, const Arguments&... arguments)
{
    return translatedForDesktop(key, {detail::argumentText(arguments)...});
}

} // namespace quelto

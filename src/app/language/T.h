// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

namespace detail {
QString fill(QString text, std::initializer_list<QString> arguments);
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
    return detail::fill(QString::fromUtf8(key), {detail::argumentText(arguments)...});
}

} // namespace quelto

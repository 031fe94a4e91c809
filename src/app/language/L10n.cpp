// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/language/L10n.h"

#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>

#include <atomic>
#include <memory>

namespace quelto {

namespace {

std::atomic<Language> inForce{Language::tr};

icu::UnicodeString unicode(const QString& text)
{
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::int32_t>(text.size())};
}

QString fromUnicode(const icu::UnicodeString& unicode)
{
    return QString::fromUtf16(unicode.getBuffer(), unicode.length());
}

icu::Locale icuLocale()
{
    return icu::Locale::createFromName(localeIdOf(L10n::current()).toLatin1().constData());
}

} // namespace

void L10n::use(const QString& setting)
{
    inForce = languageFor(setting, preferredLanguages());
}

Language L10n::current()
{
    return inForce;
}

QLocale L10n::locale()
{
    return QLocale(localeIdOf(current()));
}

QString L10n::date(const QDateTime& date, const QString& dateTemplate)
{
    const auto locale = icuLocale();
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
        icu::DateTimePatternGenerator::createInstance(locale, error));
    if (U_FAILURE(error) != 0) {
        // ICU's data is not there; a plain date is better than none.
        return QLocale(localeIdOf(current())).toString(date, QLocale::ShortFormat);
    }
    const icu::SimpleDateFormat format(patterns->getBestPattern(unicode(dateTemplate), error), locale, error);
    icu::UnicodeString result;
    return fromUnicode(format.format(static_cast<UDate>(date.toMSecsSinceEpoch()), result));
}

QString L10n::upperCased(const QString& text)
{
    return fromUnicode(unicode(text).toUpper(icuLocale()));
}

} // namespace quelto

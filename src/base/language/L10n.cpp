// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"

#include <unicode/dtptngen.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>

#include <array>
#include <atomic>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>

namespace quelto {

namespace {

std::atomic<Language> currentLanguage{Language::tr};

icu::UnicodeString unicode(const QString& text)
{
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::int32_t>(text.size())};
}

QString fromUnicode(const icu::UnicodeString& unicode)
{
    return QString::fromUtf16(unicode.getBuffer(), unicode.length());
}

icu::Locale icuLocale(Language language)
{
    return icu::Locale::createFromName(localeIdOf(language).toLatin1().constData());
}

/// Null if ICU's data is not installed. Cached: finding the pattern takes much longer than formatting a date.
std::shared_ptr<const icu::DateFormat> dateFormat(const QString& dateTemplate)
{
    using Formats = std::map<std::pair<Language, QString>, std::shared_ptr<const icu::DateFormat>>;
    static std::mutex lock;
    static Formats cache;
    const std::lock_guard guard(lock);
    const Language language = L10n::current();
    auto& format = cache[{language, dateTemplate}];
    if (!format) {
        const auto locale = icuLocale(language);
        UErrorCode error = U_ZERO_ERROR;
        const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
            icu::DateTimePatternGenerator::createInstance(locale, error));
        if (U_FAILURE(error) != 0) {
            return nullptr;
        }
        const auto created = std::make_shared<icu::SimpleDateFormat>(
            patterns->getBestPattern(unicode(dateTemplate), error), locale, error);
        created->setTimeZone(*icu::TimeZone::getGMT());
        format = created;
    }
    return format;
}

struct SizeUnit {
    icu::MeasureUnit (*unit)();
    double bytes;
    int maxDecimals;
};

const std::array SizeUnits{
    SizeUnit{icu::MeasureUnit::getByte, 1, 0},        SizeUnit{icu::MeasureUnit::getKilobyte, 1e3, 0},
    SizeUnit{icu::MeasureUnit::getMegabyte, 1e6, 1},  SizeUnit{icu::MeasureUnit::getGigabyte, 1e9, 2},
    SizeUnit{icu::MeasureUnit::getTerabyte, 1e12, 2},
};
constexpr double NextUnitThreshold = 1000;

/// The size in the unit, rounded to its decimals.
double roundedSize(const SizeUnit& unit, qint64 bytes)
{
    const double shift = std::pow(10, unit.maxDecimals);
    return std::round(static_cast<double>(bytes) / unit.bytes * shift) / shift;
}

} // namespace

void L10n::use(const QString& setting)
{
    currentLanguage = languageFor(setting, preferredLanguages());
}

Language L10n::current()
{
    return currentLanguage;
}

QLocale L10n::locale()
{
    return QLocale(localeIdOf(current()));
}

QString L10n::date(const QDateTime& date, const QString& dateTemplate)
{
    const auto format = dateFormat(dateTemplate);
    if (format == nullptr) {
        // Without ICU's data, Qt's short format is the fallback.
        return QLocale(localeIdOf(current())).toString(date, QLocale::ShortFormat);
    }
    // ICU keeps using the time zone at program start, so the local time is formatted as if it were UTC.
    const auto local = date.toLocalTime();
    const auto localAsUtc = local.toMSecsSinceEpoch() + local.offsetFromUtc() * qint64(1000);
    icu::UnicodeString result;
    return fromUnicode(format->format(static_cast<UDate>(localAsUtc), result));
}

QString L10n::fileSize(qint64 bytes)
{
    const auto* unit = SizeUnits.begin();
    // Compares the rounded size, so that 999,960 bytes are "1 MB" and not "1000 kB".
    while (std::next(unit) != SizeUnits.end() && roundedSize(*unit, bytes) >= NextUnitThreshold) {
        ++unit;
    }
    UErrorCode error = U_ZERO_ERROR;
    const auto text = icu::number::NumberFormatter::withLocale(icuLocale(current()))
                          .unit(unit->unit())
                          .unitWidth(unit == SizeUnits.begin() ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_SHORT)
                          .precision(icu::number::Precision::maxFraction(unit->maxDecimals))
                          .formatDouble(roundedSize(*unit, bytes), error)
                          .toString(error);
    return U_FAILURE(error) != 0 ? locale().formattedDataSize(bytes, unit->maxDecimals, QLocale::DataSizeSIFormat)
                                 : fromUnicode(text);
}

QString L10n::upperCased(const QString& text)
{
    return fromUnicode(unicode(text).toUpper(icuLocale(current())));
}

} // namespace quelto

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

std::atomic<Language> inForce{Language::tr};

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

/// Nothing where ICU's data is not there. Looking up a pattern takes long beside writing a date by it.
std::shared_ptr<const icu::DateFormat> dateFormat(const QString& dateTemplate)
{
    using Formats = std::map<std::pair<Language, QString>, std::shared_ptr<const icu::DateFormat>>;
    static std::mutex lock;
    static Formats known;
    const std::lock_guard guard(lock);
    const Language language = L10n::current();
    auto& format = known[{language, dateTemplate}];
    if (!format) {
        const auto locale = icuLocale(language);
        UErrorCode error = U_ZERO_ERROR;
        const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
            icu::DateTimePatternGenerator::createInstance(locale, error));
        if (U_FAILURE(error) != 0) {
            return nullptr;
        }
        const auto made = std::make_shared<icu::SimpleDateFormat>(
            patterns->getBestPattern(unicode(dateTemplate), error), locale, error);
        made->setTimeZone(*icu::TimeZone::getGMT());
        format = made;
    }
    return format;
}

struct SizeUnit {
    icu::MeasureUnit (*unit)();
    double bytes;
    /// How many stand behind the point at most.
    int digits;
};

const std::array SizeUnits{
    SizeUnit{icu::MeasureUnit::getByte, 1, 0},        SizeUnit{icu::MeasureUnit::getKilobyte, 1e3, 0},
    SizeUnit{icu::MeasureUnit::getMegabyte, 1e6, 1},  SizeUnit{icu::MeasureUnit::getGigabyte, 1e9, 2},
    SizeUnit{icu::MeasureUnit::getTerabyte, 1e12, 2},
};
constexpr double InTheNextUnit = 1000;

/// In the unit, rounded to its digits.
double shownIn(const SizeUnit& unit, qint64 bytes)
{
    const double shift = std::pow(10, unit.digits);
    return std::round(static_cast<double>(bytes) / unit.bytes * shift) / shift;
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
    const auto format = dateFormat(dateTemplate);
    if (format == nullptr) {
        // ICU's data is not there; a plain date is better than none.
        return QLocale(localeIdOf(current())).toString(date, QLocale::ShortFormat);
    }
    // ICU would stay in the time zone that the program was started in.
    const auto local = date.toLocalTime();
    const auto asIfInGreenwich = local.toMSecsSinceEpoch() + local.offsetFromUtc() * qint64(1000);
    icu::UnicodeString result;
    return fromUnicode(format->format(static_cast<UDate>(asIfInGreenwich), result));
}

QString L10n::fileSize(qint64 bytes)
{
    const auto* unit = SizeUnits.begin();
    // By what is shown, so that 999,960 bytes are "1 MB" and not "1000 kB".
    while (std::next(unit) != SizeUnits.end() && shownIn(*unit, bytes) >= InTheNextUnit) {
        ++unit;
    }
    UErrorCode error = U_ZERO_ERROR;
    const auto text = icu::number::NumberFormatter::withLocale(icuLocale(current()))
                          .unit(unit->unit())
                          .unitWidth(unit == SizeUnits.begin() ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_SHORT)
                          .precision(icu::number::Precision::maxFraction(unit->digits))
                          .formatDouble(shownIn(*unit, bytes), error)
                          .toString(error);
    return U_FAILURE(error) != 0 ? locale().formattedDataSize(bytes, unit->digits, QLocale::DataSizeSIFormat)
                                 : fromUnicode(text);
}

QString L10n::upperCased(const QString& text)
{
    return fromUnicode(unicode(text).toUpper(icuLocale(current())));
}

} // namespace quelto

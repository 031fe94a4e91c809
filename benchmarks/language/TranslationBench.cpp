// SPDX-License-Identifier: GPL-3.0-or-later
// Measures a text lookup: the first one in a language other than Turkish, which loads the table, and the later ones.
// Prints nanoseconds, as JSON.
#include "base/language/L10n.h"
#include "base/language/T.h"

#include <chrono>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Lookups = 1'000'000;

double nanosecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

} // namespace

int main()
{
    quelto::L10n::use(QStringLiteral("ru"));
    auto start = Clock::now();
    qsizetype letters = quelto::T("Klip kaydedildi").size();
    const auto first = nanosecondsSince(start);
    start = Clock::now();
    for (int i = 0; i < Lookups; ++i) {
        letters += quelto::T("Oto klip ({0}): {1}", i, i).size();
    }
    const auto filled = nanosecondsSince(start) / Lookups;
    start = Clock::now();
    for (int i = 0; i < Lookups; ++i) {
        letters += quelto::T("Klip kaydedildi").size();
    }
    const auto plain = nanosecondsSince(start) / Lookups;
    std::printf(R"({"first": %.0f, "plain": %.1f, "filled": %.1f, "letters": %lld})"
                "\n",
                first, plain, filled, static_cast<long long>(letters));
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/Translations.h"

#include <QFile>

#include <atomic>

namespace quelto {

namespace {

constexpr auto AllButTurkish = std::span(AllLanguages).subspan(1);
std::atomic<bool> isBuilt{false};

QByteArray readResource(const QString& name)
{
    QFile file(QStringLiteral(":/language/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Translations::Table parseTranslations(const QByteArray& source, std::span<const Language> columns)
{
    Translations::Table table;
    for (const auto& row : source.split('\n')) {
        const auto cells = row.split('\t');
        if (cells.size() != static_cast<qsizetype>(columns.size()) + 1) {
            continue;
        }
        Translations::Texts texts;
        for (qsizetype column = 1; column < cells.size(); ++column) {
            texts.insert(columns[static_cast<std::size_t>(column - 1)], QString::fromUtf8(cells[column]));
        }
        table.insert(cells.first(), texts);
    }
    return table;
}

const Translations::Table& Translations::table()
{
    static const auto table = [] {
        isBuilt = true;
        return parseTranslations(readResource(QStringLiteral("translations.tsv")), AllButTurkish);
    }();
    return table;
}

const Translations::Table& Translations::desktopTable()
{
    static const auto table = parseTranslations(readResource(QStringLiteral("desktop.tsv")), AllLanguages);
    return table;
}

bool Translations::isTableBuilt()
{
    return isBuilt;
}

} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/Language.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace quelto {
namespace {

// A text longer than this needs a check that it fits its button or row.
constexpr double MaxRatioToEnglish = 1.6;

QStringList linesOf(const QString& path)
{
    QFile file(QStringLiteral(QUELTO_SOURCE_DIR "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

/// A translation table.
struct Rows {
    QList<QStringList> rows;
    QStringList languages;

    qsizetype column(const char* language) const { return 1 + languages.indexOf(QString::fromLatin1(language)); }
};

Rows rowsOf(const char* file, const QStringList& languages)
{
    Rows result{.rows = {}, .languages = languages};
    for (const auto& line : linesOf(QStringLiteral("src/base/language/") + QString::fromLatin1(file))) {
        const auto cells = line.split(u'\t');
        EXPECT_EQ(cells.size(), languages.size() + 1) << line.toStdString();
        result.rows.append(cells);
    }
    return result;
}

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(u' ');
}

const Rows& table()
{
    static const auto rows = rowsOf("translations.tsv", words("en de es fr pt ru"));
    return rows;
}

const Rows& desktopTable()
{
    static const auto rows = rowsOf("desktop.tsv", words("tr en de es fr pt ru"));
    return rows;
}

QStringList placeholders(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral(R"(\{\d\})"));
    QSet<QString> found;
    for (auto matches = pattern.globalMatch(text); matches.hasNext();) {
        found.insert(matches.next().captured());
    }
    auto sorted = found.values();
    sorted.sort();
    return sorted;
}

/// Whether the list exempts the text from a rule. Lists have three columns: language, key and reason.
bool isExempt(const QString& list, const QString& language, const QString& key)
{
    static QHash<QString, QSet<QString>> lists;
    if (!lists.contains(list)) {
        auto& exemptions = lists[list];
        for (const auto& line : linesOf(QStringLiteral("tests/base/language/") + list)) {
            const auto cells = line.split(u'\t');
            EXPECT_EQ(cells.size(), 3) << "expected language, key and reason: " << line.toStdString();
            exemptions.insert(cells.value(0) + u'\t' + cells.value(1));
        }
    }
    return lists[list].contains(language + u'\t' + key);
}

class TranslationRows : public testing::TestWithParam<const char*> {
protected:
    const Rows& rows = QByteArray(GetParam()) == "Desktop" ? desktopTable() : table();
};

TEST_P(TranslationRows, HaveAllColumnsAndUniqueKeys)
{
    QSet<QString> keys;
    for (const auto& row : rows.rows) {
        EXPECT_FALSE(keys.contains(row[0])) << row[0].toStdString();
        keys.insert(row[0]);
        for (const auto& text : row) {
            EXPECT_FALSE(text.isEmpty()) << row[0].toStdString();
            EXPECT_EQ(text, text.trimmed()) << text.toStdString();
        }
    }
}

TEST_P(TranslationRows, HaveSamePlaceholdersInEveryColumn)
{
    for (const auto& row : rows.rows) {
        for (const auto& text : row) {
            EXPECT_EQ(placeholders(text), placeholders(row[0])) << text.toStdString();
        }
    }
}

TEST_P(TranslationRows, UseTheAlphabetOfTheirLanguage)
{
    static const QRegularExpression turkish(QStringLiteral("[ğĞşŞıİ]"));
    static const QRegularExpression cyrillic(QStringLiteral("[а-яёА-ЯЁ]"));
    for (const auto& row : rows.rows) {
        for (const auto* language : {"en", "de", "es", "fr", "pt", "ru"}) {
            const auto& text = row[rows.column(language)];
            EXPECT_FALSE(turkish.match(text).hasMatch()) << text.toStdString();
            EXPECT_EQ(cyrillic.match(text).hasMatch() && QByteArray(language) != "ru", false) << text.toStdString();
        }
    }
}

TEST_P(TranslationRows, AreTranslatedFromEnglish)
{
    for (const auto& row : rows.rows) {
        for (const auto* language : {"de", "es", "fr", "pt", "ru"}) {
            if (row[rows.column(language)] == row[rows.column("en")]) {
                EXPECT_TRUE(isExempt(QStringLiteral("same-as-english.tsv"), QString::fromLatin1(language), row[0]))
                    << language << ": " << row[0].toStdString();
            }
        }
    }
}

TEST_P(TranslationRows, ContainOnlyKnownLatinWordsInRussian)
{
    static const QRegularExpression word(QStringLiteral("[A-Za-z][A-Za-z.+/-]*[A-Za-z]"));
    const auto known = linesOf(QStringLiteral("tests/base/language/latin-words-in-russian.txt"));
    for (const auto& row : rows.rows) {
        for (auto matches = word.globalMatch(row[rows.column("ru")]); matches.hasNext();) {
            const auto found = matches.next().captured();
            EXPECT_TRUE(known.contains(found)) << found.toStdString() << " in: " << row[0].toStdString();
        }
    }
}

TEST_P(TranslationRows, AreNotMuchLongerThanTheEnglish)
{
    for (const auto& row : rows.rows) {
        for (const auto* language : {"de", "es", "fr", "pt", "ru"}) {
            const auto& text = row[rows.column(language)];
            if (static_cast<double>(text.size()) >
                MaxRatioToEnglish * static_cast<double>(row[rows.column("en")].size())) {
                EXPECT_TRUE(isExempt(QStringLiteral("long-texts.tsv"), QString::fromLatin1(language), row[0]))
                    << language << ": " << text.toStdString();
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Tables, TranslationRows, testing::Values("All", "Desktop"),
                         [](const auto& name) { return name.param; });

TEST(DesktopRows, ReplaceExistingRows)
{
    for (const auto& row : desktopTable().rows) {
        EXPECT_TRUE(std::ranges::any_of(table().rows, [&](const auto& each) { return each[0] == row[0]; }))
            << row[0].toStdString();
    }
}

/// The text of all C++ and QML files of the program.
const QString& sources()
{
    static const auto all = [] {
        QString text;
        QDirIterator files(QStringLiteral(QUELTO_SOURCE_DIR "/src"),
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h"), QStringLiteral("*.qml")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            text += QString::fromUtf8(file.readAll());
        }
        return text;
    }();
    return all;
}

/// The keys that are passed to T or TOnDesktop as literals.
QSet<QString> keysInSources()
{
    static const QRegularExpression call(
        QStringLiteral(R"re((?<![A-Za-z0-9_])T(?:OnDesktop)?\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+))re"));
    static const QRegularExpression literal(QStringLiteral(R"re("((?:[^"\\]|\\.)*)")re"));
    QSet<QString> keys;
    for (auto calls = call.globalMatch(sources()); calls.hasNext();) {
        QString key;
        for (auto parts = literal.globalMatch(calls.next().captured(1)); parts.hasNext();) {
            key += parts.next().captured(1).replace(QStringLiteral("\\\""), QStringLiteral("\""));
        }
        keys.insert(key);
    }
    return keys;
}

TEST(TranslationKeys, EveryTextInTheSourcesHasARow)
{
    const auto keys = keysInSources();
    EXPECT_GT(keys.size(), 90);
    for (const auto& key : keys) {
        EXPECT_TRUE(std::ranges::any_of(table().rows, [&](const auto& row) { return row[0] == key; }))
            << key.toStdString();
    }
}

TEST(TranslationKeys, UnusedRowsAreListed)
{
    auto used = keysInSources();
    for (const auto& row : table().rows) {
        // Some keys are passed as data, for example in fights and menus.
        if (sources().contains(u'"' + row[0] + u'"')) {
            used.insert(row[0]);
        }
    }
    const auto unused = linesOf(QStringLiteral("tests/base/language/unused-keys.txt"));
    for (const auto& key : unused) {
        EXPECT_FALSE(used.contains(key)) << "is used now, remove it from the list: " << key.toStdString();
        used.insert(key);
    }
    for (const auto& row : table().rows) {
        EXPECT_TRUE(used.contains(row[0])) << row[0].toStdString();
    }
}

} // namespace
} // namespace quelto

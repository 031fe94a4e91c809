// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

namespace quelto::test {

/// The page of a match in the real window, with real files.
class MatchPageFixture : public ShellFixture {
protected:
    QString pathOf(const QByteArray& title) const
    {
        return settings.saveFolder() + QStringLiteral("/Dota 2 - ") + QString::fromUtf8(title);
    }
    /// Plays a match during which these clips are saved, in this order.
    QUuid play(const QList<QByteArray>& titles)
    {
        QList<QByteArray> names;
        std::ranges::transform(titles, std::back_inserter(names),
                               [](const QByteArray& title) { return "Dota 2 - " + title; });
        makeClips(names);
        QStringList paths;
        std::ranges::transform(titles, std::back_inserter(paths),
                               [this](const QByteArray& title) { return pathOf(title); });
        return playWith(paths);
    }
    QUuid playMany(int count)
    {
        QList<QByteArray> titles;
        for (int i = 0; i < count; ++i) {
            titles.append(QStringLiteral("Nr %1.mp4").arg(i, 3, 10, QLatin1Char('0')).toUtf8());
        }
        return play(titles);
    }
    QUuid playWith(const QStringList& paths)
    {
        matches->gameStarted(QStringLiteral("Dota 2"), QStringLiteral("Invoker"));
        for (const auto& path : paths) {
            matches->clipSaved(path);
        }
        matches->gameEnded(QStringLiteral("Dota 2"));
        time.advance(std::chrono::seconds(10));
        time.settle();
        return matches->sessions().first().id;
    }
    void open(const QUuid& match)
    {
        navigation->showMatch(matchIdText(match));
        drawFrame();
    }

    QQuickItem* page() const
    {
        return firstVisible(window, [](const QQuickItem* each) { return isOf(each, "MatchSummaryView"); });
    }
    /// The titles of the cards that exist, in reading order.
    QStringList cardTitles() const
    {
        QList<QQuickItem*> cards;
        visitVisible(window->contentItem(), [&](QQuickItem* each) {
            if (isOf(each, "ClipCard")) {
                cards.append(each);
            }
        });
        std::ranges::sort(cards, {}, [](const QQuickItem* card) { return std::pair(card->y(), card->x()); });
        QStringList titles;
        std::ranges::transform(cards, std::back_inserter(titles),
                               [](const QQuickItem* card) { return card->property("title").toString(); });
        return titles;
    }
    QQuickItem* card(const char* title) const
    {
        auto* const found = firstVisible(window, [title](const QQuickItem* each) {
            return isOf(each, "ClipCard") && each->property("title").toString() == QString::fromUtf8(title);
        });
        EXPECT_NE(found, nullptr) << title;
        return found;
    }
    bool isSelected(const char* title) const
    {
        const auto* const found = card(title);
        return found != nullptr && found->property("isSelected").toBool();
    }

private:
    static bool isOf(const QQuickItem* item, const char* qmlType)
    {
        return QByteArray(item->metaObject()->className()).startsWith(QByteArray(qmlType) + "_QMLTYPE");
    }
};

} // namespace quelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto::test {

/// The page that lists the matches, in the real window.
class MatchListFixture : public ShellFixture {
protected:
    static QString matchGame() { return QStringLiteral("League of Legends"); }
    /// The file need not exist.
    QString clipPath(const QString& name) const { return QDir(settings.saveFolder()).filePath(name); }
    QString makeClip(const QString& name) const
    {
        QDir().mkpath(settings.saveFolder());
        QFile file(clipPath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }
    void start(const QString& game, const QString& hero, const QStringList& clips = {})
    {
        matches->gameStarted(game, hero);
        std::ranges::for_each(clips, [&](const QString& each) { matches->clipSaved(each); });
        time.settle();
    }
    void end(const QString& game)
    {
        matches->gameEnded(game);
        time.advance(std::chrono::seconds(10));
        time.settle();
    }
    /// Plays a match with one clip.
    void play(const QString& hero, const QString& game = matchGame())
    {
        start(game, hero, {makeClip(game + QStringLiteral(" - ") + hero + QStringLiteral(".mp4"))});
        end(game);
    }
    /// Plays matches with the heroes "Hero 0", "Hero 1" and so on; the last one is the newest.
    void playMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            play(QStringLiteral("Hero %1").arg(i));
        }
    }
    void showPage()
    {
        navigation->showMatches();
        time.settle();
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        drawFrame();
    }
    void update()
    {
        time.settle();
        drawFrame();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window, key, modifiers);
        drawFrame();
    }

    QQuickItem* list() const
    {
        return firstVisible(window, [](const QQuickItem* each) {
            return QByteArray(each->metaObject()->className()).startsWith("MatchRows_QMLTYPE");
        });
    }
    /// The rows that exist, from top to bottom.
    QList<QQuickItem*> rows() const
    {
        QList<QQuickItem*> found;
        if (list() != nullptr) {
            visitVisible(list(), [&](QQuickItem* each) {
                if (QByteArray(each->metaObject()->className()).startsWith("MatchRow_QMLTYPE")) {
                    found.append(each);
                }
            });
        }
        std::ranges::sort(found, {}, &QQuickItem::y);
        return found;
    }
    QStringList titles() const
    {
        QStringList found;
        for (const auto* row : rows()) {
            found.append(row->property("title").toString());
        }
        return found;
    }
    /// The row of a hero; null if it does not exist.
    QQuickItem* row(const QString& hero) const
    {
        for (auto* each : rows()) {
            if (each->property("title").toString().endsWith(hero)) {
                return each;
            }
        }
        return nullptr;
    }
    /// The part of a row's subtitle after the date.
    QString countsOf(const QString& hero) const
    {
        return row(hero)->property("subtitle").toString().section(QStringLiteral(" • "), 1);
    }
    /// The hero of the row that has the keyboard focus; empty if none has.
    QString focusedHero() const
    {
        for (const auto* each : rows()) {
            if (each->hasActiveFocus()) {
                return each->property("title").toString().section(QStringLiteral(" • "), 1);
            }
        }
        return {};
    }
    bool isMarked(const QString& hero) const
    {
        return firstVisibleOn(row(hero), [](const QQuickItem* each) {
                   return QByteArray(each->metaObject()->className()).startsWith("FocusRing_QMLTYPE");
               }) != nullptr;
    }
    QQuickItem* trashButton(const QString& hero) const
    {
        return firstVisibleOn(row(hero), [](QQuickItem* each) {
            const auto* interface = QAccessible::queryAccessibleInterface(each);
            return interface != nullptr && interface->role() == QAccessible::Button;
        });
    }
    void clickOn(const QQuickItem* target, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseClick(window, button, {}, middleOf(target));
        drawFrame();
    }
    bool asksToDelete() const { return shows(QStringLiteral("Bu maç özeti silinsin mi?")); }
    bool isWholeRowVisible(const QString& hero) const
    {
        return placeOf(list()).contains(placeOf(row(hero)).adjusted(-3, -3, 3, 3));
    }
    QString idOf(const QString& hero) const
    {
        const auto found = std::ranges::find(matches->sessions(), hero, &MatchSession::hero);
        return matchIdText(found->id);
    }
};

} // namespace quelto::test

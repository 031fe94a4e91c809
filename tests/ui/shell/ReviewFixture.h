// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/shell/ShellFixture.h"

#include <QKeyEvent>

namespace quelto::test {

/// The review of a match in the real window, with players whose files the test opens.
class ReviewFixture : public ShellFixture {
protected:
    static constexpr auto Ace = "League of Legends - 2026-03-01 20.15.07 [EFSANE 95] Ace.mp4";
    static constexpr auto Solo = "League of Legends - 2026-03-01 20.16.07 [BASIT 15] Solo Kill.mp4";
    static constexpr auto Named = "League of Legends - Best of all.mp4";

    void open(const QList<QByteArray>& clips)
    {
        match = playMatch(clips);
        navigation->setPage({.kind = Pages::Kind::Review, .match = match});
        settleReview();
    }
    /// Opens the files that players were asked to open.
    void settleReview()
    {
        drawFrame();
        for (int i = 0; i < 2; ++i) {
            const auto all = players;
            for (const auto& each : all) {
                if (each && each->isOpening()) {
                    each->opened(10);
                }
            }
            time.settle();
            drawFrame();
        }
    }
    QString pathOf(const QByteArray& name) const { return settings.saveFolder() + u'/' + QString::fromUtf8(name); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(window, key, modifiers); }
    /// A key that is held from before.
    void hold(Qt::Key key)
    {
        for (int i = 0; i < 3; ++i) {
            QKeyEvent repeat(QEvent::KeyPress, key, {}, {}, true);
            QCoreApplication::sendEvent(window, &repeat);
        }
    }
    void type(char key) { QTest::keyClick(window, key); }
    void expectCounts(int kept, int deleted)
    {
        EXPECT_TRUE(shows(QStringLiteral("%1 kalacak").arg(kept))) << kept;
        EXPECT_TRUE(shows(QStringLiteral("%1 silinecek").arg(deleted))) << deleted;
    }
    bool isEnabled(const char* name) { return item(QString::fromUtf8(name))->isEnabled(); }
    QString focusedName() const
    {
        const auto* interface = QAccessible::queryAccessibleInterface(window->activeFocusItem());
        return interface == nullptr ? QString() : interface->text(QAccessible::Name);
    }
    /// Players that play.
    int playingCount() const
    {
        return static_cast<int>(
            std::ranges::count_if(players, [](const auto& each) { return each && each->rate() != 0; }));
    }

    QUuid match;
};

} // namespace quelto::test

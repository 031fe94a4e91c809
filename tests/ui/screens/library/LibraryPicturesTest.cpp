// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/screens/library/LibraryScreenFixture.h"

#include "app/language/L10n.h"

#include <QProcess>
#include <QTest>

namespace quelto {
namespace {

/// Real clips, made once for all tests of the program.
class ClipFiles {
public:
    static const ClipFiles& shared()
    {
        static const ClipFiles files;
        return files;
    }

    QString wide(qsizetype number) const { return m_wide.at(number % m_wide.size()); }
    QString tall() const { return m_tall; }

private:
    ClipFiles()
    {
        const std::array sources{
            "gradients=rate=2:s=640x360:c0=0x1b2a6b:c1=0xe8364f:x0=0:y0=0:x1=640:y1=360:nb_colors=2:seed=3",
            "gradients=rate=2:s=640x360:c0=0x0b3a4a:c1=0x22d3c5:nb_colors=2:x0=0:y0=360:x1=640:y1=0:seed=4",
            "mandelbrot=rate=2:s=640x360:start_scale=0.02:end_scale=0.01",
            "testsrc2=rate=2:s=640x360",
            "life=s=320x180:mold=10:r=2:ratio=0.2:death_color=0x401020:life_color=0x60ff80,scale=640:360:flags="
            "neighbor",
            "cellauto=rate=2:s=640x360:rule=110",
        };
        for (const auto* source : sources) {
            m_wide.append(make(QString::fromLatin1(source), 2 + static_cast<int>(m_wide.size()) * 13));
        }
        m_tall = make(QStringLiteral("gradients=rate=2:s=360x640:c0=0x4a1942:c1=0xff8a3d:nb_colors=2:seed=5"), 31);
    }

    QString make(const QString& source, int seconds)
    {
        const auto path = m_folder.filePath(QStringLiteral("%1.mp4").arg(++m_count));
        QProcess::execute(QStringLiteral("ffmpeg"),
                          {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"), QStringLiteral("lavfi"),
                           QStringLiteral("-i"), source, QStringLiteral("-t"), QString::number(seconds),
                           QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p"), path});
        return path;
    }

    QTemporaryDir m_folder;
    int m_count = 0;
    QStringList m_wide;
    QString m_tall;
};

class LibraryPicturesTest : public test::LibraryScreenFixture {
protected:
    void add(const QString& name, const QString& file, qint64 secondsAgo)
    {
        QDir().mkpath(settings.saveFolder());
        const auto target = QDir(settings.saveFolder()).filePath(name);
        ASSERT_TRUE(QFile::copy(file, target));
        QFile copy(target);
        ASSERT_TRUE(copy.open(QIODevice::ReadWrite));
        ASSERT_TRUE(
            copy.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo), QFileDevice::FileModificationTime));
    }

    void addTwelve()
    {
        const auto& clipFiles = ClipFiles::shared();
        const std::array names{
            "League of Legends - 2026-03-01 20.15.07 [EFSANE 170] PENTAKILL (Ahri).mp4",
            "League of Legends - 2026-03-01 20.11.41 [ORTA 45] Triple Kill (Ahri).mp4",
            "Dota 2 - 2026-03-01 19.02.10.mp4",
            "Counter-Strike 2 - 2026-03-01 18.44.59 [BASIT 15] Solo Kill.mp4",
            "World of Warcraft - 2026-03-01 17.30.00 [EFSANE 120] Mythic+ 15 tamamlandı: Siege of Boralus (Sürede).mp4",
            "Counter-Strike 2 - Duvarın arkasından 1v4.mp4",
            "Elden Ring - 2026-02-28 23.01.12.mp4",
            "Dota 2 - 2026-02-28 22.15.30 [EFSANE 200] RAMPAGE! (Phantom Assassin).mp4",
            "Dota 2 - 2026-02-28 22.02.30 [ORTA 38] Double Kill (Phantom Assassin).mp4",
            "Masaüstü - 2026-02-25 12.00.00.mp4",
        };
        for (qsizetype i = 0; i < static_cast<qsizetype>(names.size()); ++i) {
            const auto days = i < 5 ? 0 : i < 9 ? 1 : 4;
            add(QString::fromUtf8(names.at(static_cast<std::size_t>(i))), clipFiles.wide(i),
                days * 86400 + secondsToday() * 3 / 4 + i);
        }
        add(QStringLiteral("League of Legends - 2026-03-01 20.15.07 [EFSANE 170] PENTAKILL (Ahri) (9x16).mp4"),
            clipFiles.tall(), secondsToday() / 2);
        add(QStringLiteral("Dota 2 - 2026-02-28 22.15.30 [EFSANE 200] RAMPAGE! (Phantom Assassin) (4x5).mp4"),
            clipFiles.tall(), 86400 + 60);
    }

    static qint64 secondsToday() { return QTime(0, 0).secsTo(QTime::currentTime()); }

    void addMany(int count)
    {
        const std::array games{"Dota 2", "League of Legends", "Counter-Strike 2"};
        for (int i = 0; i < count; ++i) {
            add(QStringLiteral("%1 - Klip %2.mp4")
                    .arg(QLatin1String(games.at(static_cast<std::size_t>(i) % games.size())))
                    .arg(i),
                ClipFiles::shared().wide(i), qint64{i} * 3600 * 3);
        }
    }

    void open(const QString& properties = {})
    {
        reload();
        show(properties);
        settle(700);
    }
};

TEST_F(LibraryPicturesTest, Empty)
{
    open();
    EXPECT_TRUE(shows(QStringLiteral("Henüz klip yok")));
    picture(QStringLiteral("library-empty"));
}

TEST_F(LibraryPicturesTest, TwelveClipsInThreePalettes)
{
    addTwelve();
    open();
    for (const auto* palette : {"ember", "blurple", "ocean"}) {
        settings.setColorTheme(QLatin1String(palette));
        picture(QStringLiteral("library-12-") + QLatin1String(palette));
    }
}

TEST_F(LibraryPicturesTest, TwelveClipsInOtherLanguages)
{
    addTwelve();
    for (const auto* language : {"de", "ru"}) {
        settings.setLanguage(QLatin1String(language));
        open();
        picture(QStringLiteral("library-12-") + QLatin1String(language));
        engine.reset();
    }
}

TEST_F(LibraryPicturesTest, TheSmallestWindow)
{
    addTwelve();
    size = {779, 640};
    settings.setLanguage(QStringLiteral("ru"));
    open();
    picture(QStringLiteral("library-smallest"));
}

TEST_F(LibraryPicturesTest, FiveHundredClips)
{
    addMany(500);
    open();
    picture(QStringLiteral("library-500"));
}

TEST_F(LibraryPicturesTest, FilteredAndWithoutResult)
{
    addTwelve();
    open();
    click(item(QStringLiteral("Efsane")));
    picture(QStringLiteral("library-filtered"));
    click(item(QStringLiteral("Ara")));
    for (const char letter : {'x', 'q'}) {
        QTest::keyClick(window, letter);
    }
    picture(QStringLiteral("library-no-result"));
}

TEST_F(LibraryPicturesTest, Hovered)
{
    addTwelve();
    open();
    QTest::mouseMove(window, middleOf(card(QStringLiteral("Triple Kill (Ahri)"))));
    picture(QStringLiteral("library-hover"));
    QTest::mouseMove(window, middleOf(card(QStringLiteral("PENTAKILL (Ahri) (9x16)"))));
    picture(QStringLiteral("library-hover-tall"));
}

TEST_F(LibraryPicturesTest, WithItsMenuAndItsQuestion)
{
    addTwelve();
    open();
    auto* target = card(QStringLiteral("Triple Kill (Ahri)"));
    click(target, Qt::RightButton);
    picture(QStringLiteral("library-menu"));
    key(Qt::Key_Escape);
    settle();
    key(Qt::Key_Delete);
    picture(QStringLiteral("library-confirm"));
}

TEST_F(LibraryPicturesTest, ByKeyboard)
{
    addTwelve();
    open();
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    picture(QStringLiteral("library-keyboard"));
}

} // namespace
} // namespace quelto

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/SampleClips.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto::test {

namespace {

/// Playable clips, generated once for all tests of the program.
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
            "mandelbrot=rate=1:s=640x360:start_scale=0.02:end_scale=0.01",
            "testsrc2=rate=2:s=640x360",
            "life=s=320x180:mold=10:r=2:ratio=0.2:death_color=0x401020:life_color=0x60ff80,scale=640:360:flags="
            "neighbor",
            "cellauto=rate=2:s=640x360:rule=110",
        };
        for (const auto* source : sources) {
            m_wide.append(generate(QString::fromLatin1(source), 2 + static_cast<int>(m_wide.size()) * 13));
        }
        m_tall = generate(QStringLiteral("gradients=rate=2:s=360x640:c0=0x4a1942:c1=0xff8a3d:nb_colors=2:seed=5"), 31);
    }

    QString generate(const QString& source, int seconds)
    {
        const auto path = m_folder.filePath(QStringLiteral("%1.mp4").arg(++m_count));
        QProcess::execute(QStringLiteral("ffmpeg"),
                          {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"), QStringLiteral("lavfi"),
                           QStringLiteral("-i"), source, QStringLiteral("-t"), QString::number(seconds),
                           QStringLiteral("-preset"), QStringLiteral("ultrafast"), QStringLiteral("-pix_fmt"),
                           QStringLiteral("yuv420p"), path});
        return path;
    }

    QTemporaryDir m_folder;
    int m_count = 0;
    QStringList m_wide;
    QString m_tall;
};

qint64 secondsToday()
{
    return QTime(0, 0).secsTo(QTime::currentTime());
}

void add(const QString& folder, const QString& name, const QString& file, qint64 secondsAgo)
{
    QDir().mkpath(folder);
    const auto target = QDir(folder).filePath(name);
    ASSERT_TRUE(QFile::copy(file, target));
    QFile copy(target);
    ASSERT_TRUE(copy.open(QIODevice::ReadWrite));
    ASSERT_TRUE(copy.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo), QFileDevice::FileModificationTime));
}

} // namespace

void addTwelveClips(const QString& folder)
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
        add(folder, QString::fromUtf8(names.at(static_cast<std::size_t>(i))), clipFiles.wide(i),
            days * 86400 + secondsToday() * 3 / 4 + i);
    }
    add(folder, QStringLiteral("League of Legends - 2026-03-01 20.15.07 [EFSANE 170] PENTAKILL (Ahri) (9x16).mp4"),
        clipFiles.tall(), secondsToday() / 2);
    add(folder, QStringLiteral("Dota 2 - 2026-02-28 22.15.30 [EFSANE 200] RAMPAGE! (Phantom Assassin) (4x5).mp4"),
        clipFiles.tall(), 86400 + 60);
}

void addClips(const QString& folder, int count)
{
    const std::array games{"Dota 2", "League of Legends", "Counter-Strike 2"};
    for (int i = 0; i < count; ++i) {
        add(folder,
            QStringLiteral("%1 - Klip %2.mp4")
                .arg(QLatin1String(games.at(static_cast<std::size_t>(i) % games.size())))
                .arg(i),
            ClipFiles::shared().wide(i), qint64{i} * 3600 * 3);
    }
}

} // namespace quelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopPasteboard.h"

#include "ChildProcess.h"

#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using pipewire::ChildProcess;

class FreedesktopPasteboardTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
    }

    /// What another program receives that requests the clipboard in the target format.
    static QByteArray pasted(const char* target)
    {
        ChildProcess program(QStringLiteral("sh"),
                             {QStringLiteral("-c"),
                              QStringLiteral("xclip -out -selection clipboard -target \"$1\"; echo end"),
                              QStringLiteral("sh"), QString::fromUtf8(target)});
        QByteArray output;
        // This program serves the clipboard, so its event loop must keep running.
        static_cast<void>(QTest::qWaitFor([&] { return (output += program.readAvailable()).endsWith("end\n"); }));
        return output.chopped(4);
    }

    FreedesktopPasteboard m_pasteboard;
};

TEST_F(FreedesktopPasteboardTest, OtherProgramsReceiveTheFile)
{
    m_pasteboard.setFile(QStringLiteral("/clips/Dota 2 - [ORTA 45] 50% #1 (ü).mp4"));
    const QByteArray uri = "file:///clips/Dota%202%20-%20%5BORTA%2045%5D%2050%25%20%231%20(%C3%BC).mp4";
    EXPECT_EQ(pasted("text/uri-list"), uri + "\r\n");
    EXPECT_EQ(pasted("x-special/gnome-copied-files"), "copy\n" + uri);
    EXPECT_EQ(pasted("application/x-kde-cutselection"), "0");
}

TEST_F(FreedesktopPasteboardTest, OffersTheUriListFirstAndNoTextOfItsOwn)
{
    m_pasteboard.setFile(QStringLiteral("/clips/a.mp4"));
    const auto targets = pasted("TARGETS").split('\n');
    EXPECT_EQ(targets.first(), "text/uri-list");
    for (const char* text : {"text/plain;charset=utf-8", "UTF8_STRING", "STRING", "TEXT"}) {
        EXPECT_FALSE(targets.contains(text)) << text;
    }
}

TEST_F(FreedesktopPasteboardTest, OtherProgramsReceiveThePicture)
{
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(QColor(10, 200, 30));
    m_pasteboard.setFile(QStringLiteral("/clips/a.mp4"));
    m_pasteboard.setImage(picture);
    EXPECT_EQ(QImage::fromData(pasted("image/png"), "PNG").convertToFormat(picture.format()), picture);
    EXPECT_FALSE(pasted("TARGETS").contains("text/uri-list"));
}

TEST_F(FreedesktopPasteboardTest, OtherProgramsReceiveTheText)
{
    m_pasteboard.setFile(QStringLiteral("/clips/a.mp4"));
    m_pasteboard.setText(QStringLiteral("-gamestateintegration ü"));
    EXPECT_EQ(pasted("UTF8_STRING"), "-gamestateintegration ü");
    EXPECT_FALSE(pasted("TARGETS").contains("text/uri-list"));
}

TEST_F(FreedesktopPasteboardTest, KeepsTheLastFile)
{
    m_pasteboard.setFile(QStringLiteral("/clips/a.mp4"));
    m_pasteboard.setFile(QStringLiteral("/clips/b.mp4"));
    EXPECT_EQ(pasted("text/uri-list"), "file:///clips/b.mp4\r\n");
}

} // namespace
} // namespace quelto

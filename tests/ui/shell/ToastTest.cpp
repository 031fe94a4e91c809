// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QEasingCurve>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::colorOf;
using test::fontOf;
using test::outlineOf;
using test::placeOf;

class ToastTest : public test::ShellFixture {
protected:
    const QString text = QStringLiteral("Klip panoya kopyalandı");

    /// The background of the toast; null while none is shown.
    QQuickItem* capsule() const
    {
        const auto* words = textItem(text);
        return words == nullptr ? nullptr : test::enclosingRectangle(words);
    }
    QQuickItem* shownCapsule()
    {
        navigation->showToast(text);
        EXPECT_TRUE(QTest::qWaitFor([this] { return capsule() != nullptr && capsule()->opacity() == 1; }));
        return capsule();
    }
};

TEST_F(ToastTest, CapsuleHasDesignedFontColorsAndOutline)
{
    const auto* box = shownCapsule();
    ASSERT_NE(box, nullptr);
    const auto* words = textItem(text);
    EXPECT_EQ(fontOf(words).pixelSize(), 13);
    EXPECT_EQ(fontOf(words).weight(), QFont::DemiBold);
    EXPECT_EQ(placeOf(words), placeOf(box).adjusted(18, 11, -18, -11));
    EXPECT_EQ(colorOf(box), theme->card());
    EXPECT_EQ(test::radiusOf(box), box->height() / 2);
    EXPECT_EQ(outlineOf(box).width, 1);
    EXPECT_EQ(outlineOf(box).color, test::withOpacity(theme->accent(), 0.6));
}

TEST_F(ToastTest, HasASoftShadowBelow)
{
    const auto* box = shownCapsule();
    ASSERT_NE(box, nullptr);
    const auto* shadow = test::shadowOf(box);
    ASSERT_NE(shadow, nullptr);
    EXPECT_EQ(test::radiusOf(shadow), 12);
    EXPECT_EQ(colorOf(shadow), test::withOpacity(Qt::black, 0.5));
    EXPECT_EQ(placeOf(shadow), placeOf(box).adjusted(-12, -12, 12, 12).translated(0, 4));
    EXPECT_LT(shadow->z(), 0) << "the shadow is behind the capsule";
}

TEST_F(ToastTest, MovesAndFadesFor200MillisecondsEasingOut)
{
    QHash<QString, QObject*> animations;
    for (auto* each : test::animationsOf(shownCapsule())) {
        animations.insert(each->parent()->property("targetProperty").value<QQmlProperty>().name(), each);
    }
    for (const auto* moving : {"y", "opacity"}) {
        const auto* animation = animations.value(QLatin1String(moving));
        ASSERT_NE(animation, nullptr) << moving;
        EXPECT_EQ(animation->property("duration").toInt(), 200) << moving;
        EXPECT_EQ(animation->property("easing").value<QEasingCurve>().type(), QEasingCurve::OutQuad) << moving;
    }
}

TEST_F(ToastTest, SlidesInFromTheBottomEdgeAndBackOut)
{
    auto* box = shownCapsule();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(placeOf(box).bottom(), window->height() - 24);
    time.advance(2500ms);
    EXPECT_EQ(navigation->toast(), QString());
    EXPECT_GT(box->opacity(), 0) << "it fades out";
    EXPECT_EQ(textItem(text)->property("text").toString(), text) << "the text stays until the toast has left";
    QTRY_COMPARE(box->opacity(), 0.0);
    QTRY_COMPARE(placeOf(box).top(), window->height());
    EXPECT_FALSE(shows(text));
    navigation->showToast(text);
    EXPECT_EQ(placeOf(box).top(), window->height()) << "it starts below the edge";
    EXPECT_EQ(box->opacity(), 0);
    QTRY_COMPARE(placeOf(box).bottom(), window->height() - 24);
    QTRY_COMPARE(box->opacity(), 1.0);
}

} // namespace
} // namespace quelto

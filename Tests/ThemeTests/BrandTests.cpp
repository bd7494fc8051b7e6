#include "Brand.h"
#include "GlowImages.h"

#include <gtest/gtest.h>

#include <QImage>

namespace tavrin {
namespace {

TEST(ColorFromHex, aNumberSignInFrontIsOptional) {
    EXPECT_EQ(colorFromHex(u"E8B04B"), QColor(0xE8, 0xB0, 0x4B));
    EXPECT_EQ(colorFromHex(u"#e8b04b"), QColor(0xE8, 0xB0, 0x4B));
}

TEST(ColorFromHex, textThatDoesNotScanIsBlack) {
    EXPECT_EQ(colorFromHex(u""), QColor(0, 0, 0));
    EXPECT_EQ(colorFromHex(u"gold"), QColor(0, 0, 0));
    EXPECT_EQ(colorFromHex(u"##FFFFFF"), QColor(0, 0, 0));
}

TEST(ColorFromHex, theThreeLowBytesOfTheNumberCount) {
    EXPECT_EQ(colorFromHex(u"FF"), QColor(0, 0, 0xFF));
    EXPECT_EQ(colorFromHex(u"AA112233"), QColor(0x11, 0x22, 0x33));
    EXPECT_EQ(colorFromHex(u"12zz"), QColor(0, 0, 0x12));
    EXPECT_EQ(colorFromHex(u"FFFFFFFFFFFFFFFFFFFF"), QColor(255, 255, 255));
}

TEST(ColorFromHex, isOpaque) {
    EXPECT_EQ(colorFromHex(u"2A1A4A").alpha(), 255);
}

TEST(ContrastRatio, isThatOfTheGuidelines) {
    EXPECT_NEAR(contrastRatio(Brand::white(1), Brand::black(1)), 21.0, 0.01);
    EXPECT_NEAR(contrastRatio(Brand::gold(), Brand::gold()), 1.0, 0.001);
    EXPECT_NEAR(contrastRatio(colorFromHex(u"777777"), Brand::white(1)), 4.48, 0.01);
}

// Text of the sizes used here needs 4.5 to 1.
TEST(Contrast, everyTextColorStandsOutFromEveryGround) {
    const QColor grounds[]{Brand::deepest(), Brand::deep(), Brand::purple2(), Brand::sheet()};
    const QColor texts[]{Brand::ink(),  Brand::lavender(),    Brand::muted(),
                         Brand::gold(), Brand::softWarning(), Brand::safe()};
    // A card, a highlighted card, a field under the mouse.
    for (const double veil : {0.0, 0.05, 0.1}) {
        for (const QColor& ground : grounds) {
            const QColor surface = laidOver(Brand::white(veil), ground);
            for (const QColor& text : texts)
                EXPECT_GE(contrastRatio(text, surface), 4.5) << qPrintable(text.name());
        }
    }
}

TEST(Contrast, figuresStandOutFromTheirCapsulesAndBanners) {
    const QColor capsule = laidOver(Brand::faded(Brand::gold(), 0.15), Brand::purple2());
    EXPECT_GE(contrastRatio(Brand::gold(), capsule), 4.5);
    const QColor warning = laidOver(Brand::faded(Brand::danger(), 0.12), Brand::purple2());
    EXPECT_GE(contrastRatio(Brand::softWarning(), warning), 4.5);
}

// The language that goes, in a list in the upper half of the window, where the ground is lightest.
TEST(Contrast, theColourOfDangerStandsOutFromItsWell) {
    for (const QColor& ground : {Brand::deep(), Brand::purple2()}) {
        const QColor lit = laidOver(Brand::faded(Brand::gold(), 0.1), ground);
        const QColor well = laidOver(Brand::well(), laidOver(Brand::white(0.05), lit));
        EXPECT_GE(contrastRatio(Brand::danger(), well), 4.5);
        EXPECT_GE(contrastRatio(Brand::danger(), laidOver(Brand::white(0.04), well)), 4.5) << "under the mouse";
        EXPECT_GE(contrastRatio(Brand::danger(), laidOver(Brand::black(0.2), well)), 4.5) << "pressed";
    }
}

TEST(Contrast, textOnGoldStandsOutFromBothEndsOfTheGradient) {
    EXPECT_GE(contrastRatio(Brand::onGold(), Brand::gold()), 4.5);
    EXPECT_GE(contrastRatio(Brand::onGold(), Brand::goldHi()), 4.5);
}

// Decided: the two colours of danger are given, and white on the light end reaches 3.4 to 1. That is what bold labels
// and controls need, 3 to 1, and no more; a darker text on it reaches less at the other end. So nothing may bring it
// down.
TEST(Contrast, textOnDangerStandsOutAsABoldLabelMust) {
    EXPECT_GE(contrastRatio(Brand::onDanger(), Brand::danger()), 3.0);
    EXPECT_GE(contrastRatio(Brand::onDanger(), Brand::dangerDeep()), 4.5);
}

TEST(Glow, reachesOnePointBelowTheEdgeSoThatNoSeamShows) {
    const QImage image = glowImage({10, 12, Brand::gold()});
    const int middle = image.width() / 2;
    EXPECT_EQ(qAlpha(image.pixel(middle, 12)), 255);
    EXPECT_EQ(qAlpha(image.pixel(middle, 13)), 0);
}

TEST(Glow, isEmptyInsideAndFadesOutwards) {
    const QImage image = glowImage({10, 12, Brand::gold()});
    const int middle = image.width() / 2;
    EXPECT_EQ(image.width(), 2 * 22 + 1);
    EXPECT_EQ(qAlpha(image.pixel(middle, middle)), 0);
    EXPECT_EQ(qAlpha(image.pixel(middle, 14)), 0);
    EXPECT_GT(qAlpha(image.pixel(middle, 11)), 200);
    EXPECT_GT(qAlpha(image.pixel(middle, 8)), qAlpha(image.pixel(middle, 4)));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
}

TEST(Glow, anAddressThatMakesNoSenseGivesNoPicture) {
    GlowImages images;
    QSize size;
    EXPECT_TRUE(images.requestImage(QStringLiteral("4000/14/FFFFFF"), &size, {}).isNull());
    EXPECT_TRUE(images.requestImage(QStringLiteral("10/0/FFFFFF"), &size, {}).isNull());
    EXPECT_TRUE(images.requestImage(QStringLiteral("x"), &size, {}).isNull());
    EXPECT_FALSE(images.requestImage(QStringLiteral("10/14/FFFFFF"), &size, {}).isNull());
}

}  // namespace
}  // namespace tavrin

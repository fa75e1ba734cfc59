#include "Rendering.h"
#include "kit/Bitmaps.h"
#include "kit/CadreDesign.h"
#include "support/Sanitized.h"

#include <QPalette>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

class Card : public ::testing::Test {
protected:
    Card() { DecidePalette(QPalette(Qt::black, Qt::white)); }

    // The copies that the card consists of, written out: header, body rows, footer.
    static QList<Copy> CopiesOf(const QSize& size, double scale) {
        const DeviceGrid grid{scale};
        const CardBitmaps& bitmaps = CardBitmapsFor(grid, CurrentPalette());
        const int end = OnScreen(size.width(), scale) - OnScreen(14, scale);
        QList<Copy> copies;
        const auto band = [&](int top, const QImage& left, const QImage& middle, const QImage& right) {
            copies.append({{0, top}, left});
            for (int x = 14; x < size.width(); x += 14) copies.append({{OnScreen(x, scale), top}, middle});
            copies.append({{end, top}, right});
        };
        band(0, bitmaps.VertGauche, bitmaps.VertMillieu, bitmaps.VertDroite);
        for (int y = 27; y < size.height(); y += 27) {
            band(OnScreen(y, scale), bitmaps.ContenuGauche, bitmaps.ContenuMillieu, bitmaps.ContenuDroite);
        }
        band(OnScreen(size.height(), scale) - OnScreen(27, scale), bitmaps.FooterGauche,
             bitmaps.FooterMillieu, bitmaps.FooterDroite);
        return copies;
    }

    static void ExpectDrawn(const QSize& size, double scale, int every = 1) {
        CadreDesign card;
        card.resize(size);
        const QString difference = Difference(Rendered(card, scale), CopiesOf(size, scale), every);
        EXPECT_EQ(difference.toStdString(), "") << size.width() << " by " << size.height() << " at " << scale;
    }
};

TEST_F(Card, EveryPixelIsThatOfTheLastBitmapCopiedThere) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        for (const QSize size : {QSize(140, 81), QSize(141, 100), QSize(293, 257), QSize(57, 55)}) {
            if (UnderSanitizers && size.width() > 141) continue;
            ExpectDrawn(size, scale);
        }
    }
}

TEST_F(Card, ACardLowerThanABandHasNoBodyAndAFooterThatIsCut) {
    for (const double scale : {1.0, 1.5, 2.0}) ExpectDrawn({100, 11}, scale);
    CadreDesign card;
    card.resize(100, 11);
    // The last rows of the footer, with its border at the very bottom.
    EXPECT_EQ(Rendered(card, 1).pixelColor(50, 10), CurrentPalette().CardBorder);
    EXPECT_NE(Rendered(card, 1).pixelColor(50, 0), CurrentPalette().CardBorder);
}

TEST_F(Card, ACardNarrowerThanATileHasARightEndThatStartsLeftOfIt) {
    for (const double scale : {1.0, 1.5, 2.0}) ExpectDrawn({9, 100}, scale);
    CadreDesign card;
    card.resize(9, 100);
    EXPECT_EQ(Rendered(card, 1).pixelColor(8, 50), CurrentPalette().CardBorder);
    EXPECT_EQ(Rendered(card, 1).pixelColor(0, 50), CurrentPalette().Surface);
}

TEST_F(Card, TheSmallestCardsAreDrawnToo) {
    for (const QSize size : {QSize(1, 1), QSize(13, 26), QSize(14, 27), QSize(15, 28)}) {
        for (const double scale : {1.0, 1.5, 2.0}) ExpectDrawn(size, scale);
    }
}

TEST_F(Card, ALargeCardIsDrawnToItsEdges) {
    ExpectDrawn({1931, 1083}, 1, 701);
    ExpectDrawn({1001, 703}, 1.5, 701);
    ExpectDrawn({1001, 703}, 2, 701);
}

TEST_F(Card, AnEmptyCardDrawsNothing) {
    CadreDesign card;
    card.resize(0, 0);
    EXPECT_TRUE(card.grab().isNull());
}

TEST_F(Card, TheCardHasAHairlineBorderACaptionStripAndRoundedCorners) {
    CadreDesign card;
    card.resize(200, 150);
    const Palette& palette = CurrentPalette();
    const QImage picture = Rendered(card, 1);
    EXPECT_EQ(picture.pixelColor(0, 0), palette.Window);
    EXPECT_EQ(picture.pixelColor(199, 0), palette.Window);
    EXPECT_EQ(picture.pixelColor(0, 149), palette.Window);
    EXPECT_EQ(picture.pixelColor(199, 149), palette.Window);
    EXPECT_EQ(picture.pixelColor(100, 0), palette.CardBorder);
    EXPECT_EQ(picture.pixelColor(100, 149), palette.CardBorder);
    EXPECT_EQ(picture.pixelColor(0, 75), palette.CardBorder);
    EXPECT_EQ(picture.pixelColor(199, 75), palette.CardBorder);
    EXPECT_EQ(picture.pixelColor(100, 13), palette.Caption);
    EXPECT_EQ(picture.pixelColor(100, 26), palette.Hairline);
    EXPECT_EQ(picture.pixelColor(100, 27), palette.Surface);
    EXPECT_EQ(picture.pixelColor(100, 100), palette.Surface);
}

TEST_F(Card, BothSidesOfTheCardAreMirrorImages) {
    CadreDesign card;
    card.resize(140, 90);
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QImage picture = Rendered(card, scale);
        EXPECT_EQ(picture, picture.mirrored(true, false)) << scale;
    }
}

TEST_F(Card, LinesAreWholePixelsOfTheScreenAtEveryScale) {
    CadreDesign card;
    card.resize(141, 91);
    const QColor border = CurrentPalette().CardBorder;
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        const QImage picture = Rendered(card, scale);
        const int line = std::max(1, static_cast<int>(scale));
        const int middle = picture.height() / 2;
        for (int x = 0; x < line; ++x) {
            EXPECT_EQ(picture.pixelColor(x, middle), border) << scale;
            EXPECT_EQ(picture.pixelColor(picture.width() - 1 - x, middle), border) << scale;
        }
        EXPECT_EQ(picture.pixelColor(line, middle), CurrentPalette().Surface) << scale;
        EXPECT_EQ(picture.pixelColor(picture.width() - 1 - line, middle), CurrentPalette().Surface) << scale;
    }
}

TEST_F(Card, AnAreaThatIsDrawnAnewLooksAsBefore) {
    CadreDesign card;
    card.resize(300, 220);
    for (const double scale : {1.0, 1.5, 2.0}) {
        QImage screen = Rendered(card, scale);
        const QImage before = screen;
        screen.setDevicePixelRatio(scale);
        for (const QRect& part : {QRect(0, 0, 20, 20), QRect(17, 30, 40, 50), QRect(250, 180, 50, 40)}) {
            card.render(&screen, part.topLeft(), part, {});
        }
        screen.setDevicePixelRatio(1);
        EXPECT_EQ(screen, before) << scale;
    }
}

TEST_F(Card, EachChangeOfSizeIsToldAtOnce) {
    QWidget window;
    window.resize(500, 500);
    CadreDesign card(&window);
    card.resize(200, 100);
    window.show();
    QList<QSize> told;
    QObject::connect(&card, &CadreDesign::Resize, [&] { told += card.size(); });
    card.resize(210, 100);
    card.resize(210, 100);
    card.resize(210, 130);
    card.move(5, 5);
    EXPECT_EQ(told, (QList{QSize(210, 100), QSize(210, 130)}));
}

TEST_F(Card, ACardIsToldItsSizeWhenItIsShown) {
    CadreDesign card;
    int times = 0;
    QObject::connect(&card, &CadreDesign::Resize, [&] { ++times; });
    card.resize(200, 100);
    card.resize(300, 100);
    EXPECT_EQ(times, 0);
    card.show();
    EXPECT_EQ(times, 1);
}

TEST_F(Card, TheDarkCardIsDrawnInDarkColours) {
    DecidePalette(QPalette(Qt::white, Qt::black));
    ExpectDrawn({141, 100}, 1.5);
    CadreDesign card;
    card.resize(200, 150);
    EXPECT_EQ(Rendered(card, 1).pixelColor(100, 75), DarkPalette.Surface);
    DecidePalette(QPalette(Qt::black, Qt::white));
}

}  // namespace
}  // namespace Sonmira

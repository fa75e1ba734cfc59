#include "Rendering.h"
#include "kit/Bitmaps.h"
#include "kit/MyProgressBar.h"

#include <QPalette>
#include <QTest>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class ProgressBar : public ::testing::Test {
protected:
    ProgressBar() { DecidePalette(QPalette(Qt::black, Qt::white)); }

    // The copies that the bar consists of, written out: background from the left, its right end, then the
    // fill with the loop that ends where the value says.
    static QList<Copy> CopiesOf(int width, int value, double scale) {
        const DeviceGrid grid{scale};
        const BarBitmaps& bitmaps = BarBitmapsFor(grid, CurrentPalette());
        const auto at = [&](int x, int y) { return QPoint(OnScreen(x, scale), OnScreen(y, scale)); };
        QList<Copy> copies{{at(0, 0), bitmaps.VertGauche}};
        for (int x = 14; x < width; x += 14) copies.append({at(x, 0), bitmaps.VertMillieu});
        copies.append({{OnScreen(width, scale) - OnScreen(14, scale), 0}, bitmaps.VertDroite});
        if (value == 0) return copies;
        copies.append({at(2, 2), bitmaps.bargauche});
        int x = 2;
        for (;;) {
            x += 2;
            const double limit = static_cast<double>(width) * value / 100 - 3;
            if (x >= limit) break;
            copies.append({at(x, 2), bitmaps.barmillieu});
        }
        copies.append({at(x - 1, 2), bitmaps.barDroite});
        return copies;
    }

    static void ExpectDrawn(int width, int value, double scale) {
        MyProgressBar bar;
        bar.resize(width, MyProgressBar::DesignHeight);
        bar.SetValue(value);
        bar.Label27->hide();
        const QString difference = Difference(Rendered(bar, scale), CopiesOf(width, value, scale));
        EXPECT_EQ(difference.toStdString(), "") << value << " % of " << width << " at " << scale;
    }

    // The column of the middle row in which the fill ends, or -1.
    static int LastFilled(int width, int value) {
        MyProgressBar bar;
        bar.resize(width, MyProgressBar::DesignHeight);
        bar.SetValue(value);
        bar.Label27->hide();
        const QImage picture = Rendered(bar, 1);
        int last = -1;
        for (int x = 0; x < width; ++x) {
            if (picture.pixelColor(x, 10) == CurrentPalette().Accent) last = x;
        }
        return last;
    }
};

TEST_F(ProgressBar, EveryPixelIsThatOfTheLastBitmapCopiedThere) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        for (const int value : {0, 1, 37, 100, 150}) {
            for (const int width : {28, 100, 101, 200, 333}) ExpectDrawn(width, value, scale);
        }
    }
}

TEST_F(ProgressBar, TheBarIsSharpAtAnUnevenPlaceOfAnUnevenScale) {
    MyProgressBar bar;
    bar.resize(101, MyProgressBar::DesignHeight);
    bar.SetValue(37);
    bar.Label27->hide();
    // 3 by 5 logical pixels are 4.5 by 7.5 of the screen, so the bar begins at the fifth and the eighth.
    const QImage screen = Rendered(bar, 1.5, {3, 5});
    QList<Copy> copies = CopiesOf(101, 37, 1.5);
    copies[8].Place.setX(OnScreen(104, 1.5) - 5 - OnScreen(14, 1.5));  // the right end keeps to the edge
    EXPECT_EQ(Difference(screen.copy(5, 8, OnScreen(104, 1.5) - 5, 30), copies).toStdString(), "");
}

TEST_F(ProgressBar, TheFillEndsWhereTheValueSays) {
    // One tile of two columns at least, then two for each that begins before the limit, then one of the end.
    EXPECT_EQ(LastFilled(200, 0), -1);
    EXPECT_EQ(LastFilled(200, 1), 4);
    EXPECT_EQ(LastFilled(200, 37), 72);    // the limit is 71
    EXPECT_EQ(LastFilled(200, 50), 98);    // 97
    EXPECT_EQ(LastFilled(201, 100), 198);  // 198: inside of the frame
    EXPECT_EQ(LastFilled(200, 100), 198);  // 197
}

TEST_F(ProgressBar, TheFrameStaysAroundAFullBar) {
    for (const int width : {100, 101, 102, 103}) {
        MyProgressBar bar;
        bar.resize(width, MyProgressBar::DesignHeight);
        bar.SetValue(100);
        bar.Label27->hide();
        const QImage picture = Rendered(bar, 1);
        EXPECT_EQ(picture.pixelColor(0, 10), CurrentPalette().CardBorder);
        EXPECT_EQ(picture.pixelColor(1, 10), CurrentPalette().Track);
        EXPECT_EQ(picture.pixelColor(width - 1, 10), CurrentPalette().CardBorder);
        EXPECT_EQ(picture.pixelColor(width / 2, 0), CurrentPalette().CardBorder);
        EXPECT_EQ(picture.pixelColor(width / 2, 1), CurrentPalette().Track);
        EXPECT_EQ(picture.pixelColor(width / 2, 19), CurrentPalette().CardBorder);
    }
}

TEST_F(ProgressBar, AValueOfOneOnANarrowBarStillHasBothEnds) {
    for (const int width : {28, 40, 100}) EXPECT_EQ(LastFilled(width, 1), 4) << width;
}

TEST_F(ProgressBar, ANegativeValueHasBothEndsToo) {
    EXPECT_EQ(LastFilled(200, -5), 4);
    ExpectDrawn(200, -5, 1);
}

TEST_F(ProgressBar, AboveAHundredTheFillIsCutAtTheRightEdge) {
    EXPECT_EQ(LastFilled(200, 150), 199);
    EXPECT_EQ(LastFilled(201, 150), 200);
}

TEST_F(ProgressBar, AnEnormousValueCostsNothing) {
    MyProgressBar bar;
    bar.resize(3840, 20);
    bar.SetValue(std::numeric_limits<qint32>::max());
    EXPECT_EQ(bar.Label27->text(), u"2147483647 %"_s);
    EXPECT_FALSE(bar.grab().isNull());
    bar.SetValue(std::numeric_limits<qint32>::min());
    EXPECT_FALSE(bar.grab().isNull());
}

TEST_F(ProgressBar, TheTextShowsTheValueItWasHanded) {
    MyProgressBar bar;
    EXPECT_EQ(bar.Label27->text(), u"0 %"_s);
    for (const int value : {0, 1, 37, 100, 150, -3}) {
        bar.SetValue(value);
        EXPECT_EQ(bar.Value(), value);
        EXPECT_EQ(bar.Label27->text(), QString::number(value) + u" %"_s);
    }
}

TEST_F(ProgressBar, TheTextStandsInTheMiddleAtEverySize) {
    MyProgressBar bar;
    for (const int width : {60, 61, 200, 333}) {
        bar.resize(width, 20);
        bar.show();
        for (const int value : {7, 100}) {
            bar.SetValue(value);
            EXPECT_EQ(bar.Label27->x(), (width - bar.Label27->width()) / 2);
            EXPECT_GE(bar.Label27->width(),
                      bar.Label27->fontMetrics().horizontalAdvance(bar.Label27->text()));
        }
    }
}

TEST_F(ProgressBar, ResizingKeepsTheShownValue) {
    MyProgressBar bar;
    bar.resize(100, 20);
    bar.show();
    bar.SetValue(37);
    bar.resize(220, 20);
    EXPECT_EQ(bar.Value(), 37);
    EXPECT_EQ(bar.Label27->text(), u"37 %"_s);
    bar.Label27->hide();
    EXPECT_EQ(Difference(Rendered(bar, 1), CopiesOf(220, 37, 1)).toStdString(), "");
}

TEST_F(ProgressBar, ANewValueIsSeenAtOnce) {
    MyProgressBar bar;
    bar.resize(200, 20);
    bar.Label27->hide();
    for (const int value : {10, 20, 0}) {
        bar.SetValue(value);
        EXPECT_EQ(Difference(Rendered(bar, 1), CopiesOf(200, value, 1)).toStdString(), "");
    }
}

TEST_F(ProgressBar, FromRightToLeftTheBarGrowsFromTheRight) {
    MyProgressBar bar;
    bar.resize(200, 20);
    bar.SetValue(37);
    bar.Label27->hide();
    const QImage leftToRight = Rendered(bar, 1);
    bar.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(Rendered(bar, 1), leftToRight.mirrored(true, false));
}

TEST_F(ProgressBar, TheTextIsReadableOnTheFillAndBesideIt) {
    const auto luminance = [](const QColor& color) {
        const auto part = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    const auto contrast = [&](const QColor& one, const QColor& other) {
        const double a = luminance(one) + 0.05;
        const double b = luminance(other) + 0.05;
        return a > b ? a / b : b / a;
    };
    for (const Palette* palette : {&LightPalette, &DarkPalette}) {
        EXPECT_GE(contrast(palette->OnAccent, palette->Accent), 4.5);
        EXPECT_GE(contrast(palette->Text, palette->Track), 4.5);
    }
}

TEST_F(ProgressBar, TheDarkBarIsDrawnInDarkColours) {
    DecidePalette(QPalette(Qt::white, Qt::black));
    ExpectDrawn(200, 37, 1.5);
    MyProgressBar bar;
    bar.resize(200, 20);
    bar.Label27->hide();
    EXPECT_EQ(Rendered(bar, 1).pixelColor(100, 10), DarkPalette.Track);
    DecidePalette(QPalette(Qt::black, Qt::white));
    EXPECT_EQ(Rendered(bar, 1).pixelColor(100, 10), LightPalette.Track);
}

}  // namespace
}  // namespace Sonmira

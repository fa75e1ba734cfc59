#include "kit/Palette.h"

#include <QPalette>

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

double Luminance(const QColor& color) {
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one) + 0.05;
    const double b = Luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

TEST(Colours, ADesktopWithLightTextOnDarkWindowsGetsTheDarkPalette) {
    DecidePalette(QPalette(Qt::white, QColor(40, 40, 40)));
    EXPECT_TRUE(CurrentPalette().IsDark);
    EXPECT_EQ(&CurrentPalette(), &DarkPalette);
    DecidePalette(QPalette(Qt::black, QColor(240, 240, 240)));
    EXPECT_FALSE(CurrentPalette().IsDark);
    EXPECT_EQ(&CurrentPalette(), &LightPalette);
}

TEST(Colours, EveryTextIsReadableOnEveryGround) {
    for (const Palette* palette : {&LightPalette, &DarkPalette}) {
        const QColor texts[] = {palette->Text, palette->Secondary, palette->AccentText, palette->DangerText,
                                palette->OkText};
        const QColor grounds[] = {palette->Window, palette->Surface, palette->Caption,
                                  palette->Field,  palette->Tint,    palette->Selection};
        for (const QColor& text : texts) {
            for (const QColor& ground : grounds) {
                EXPECT_GE(Contrast(text, ground), 4.5)
                    << text.name().toStdString() << " on " << ground.name().toStdString();
            }
        }
        EXPECT_GE(Contrast(palette->OnAccent, palette->Accent), 4.5);
    }
}

TEST(Colours, TheInkOfTheDrawingsStandsOut) {
    for (const Palette* palette : {&LightPalette, &DarkPalette}) {
        for (const QColor& ink : {palette->Ink, palette->Accent, palette->Danger, palette->Ok}) {
            EXPECT_GE(Contrast(ink, palette->Surface), 3.0) << ink.name().toStdString();
        }
    }
}

}  // namespace
}  // namespace Sonmira

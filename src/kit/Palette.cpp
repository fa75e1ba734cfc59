#include "kit/Palette.h"

#include <QGuiApplication>
#include <QPalette>

#include <optional>

namespace Sonmira {

namespace {

std::optional<bool> IsDarkDesktop;

constexpr QColor Rgb(int rgb) {
    return {rgb >> 16 & 0xFF, rgb >> 8 & 0xFF, rgb & 0xFF};
}

}  // namespace

constinit const Palette LightPalette = {.IsDark = false,
                                        .Window = Rgb(0xF1F4F6),
                                        .Surface = Rgb(0xFFFFFF),
                                        .Caption = Rgb(0xF7F9FA),
                                        .Field = Rgb(0xFFFFFF),
                                        .Hairline = Rgb(0xE3E8EC),
                                        .CardBorder = Rgb(0xD8DFE4),
                                        .Border = Rgb(0xC9D1D8),
                                        .Text = Rgb(0x1F2A33),
                                        .Secondary = Rgb(0x5C6B77),
                                        .Disabled = Rgb(0xA7B1BA),
                                        .Accent = Rgb(0x13808C),
                                        .AccentDark = Rgb(0x0E626B),
                                        .AccentText = Rgb(0x0E626B),
                                        .Tint = Rgb(0xE0F1F2),
                                        .Selection = Rgb(0xDDF0F1),
                                        .OnAccent = Rgb(0xFFFFFF),
                                        .Amber = Rgb(0xD9861A),
                                        .Danger = Rgb(0xC84B42),
                                        .DangerText = Rgb(0xB83A31),
                                        .Ok = Rgb(0x2F9E63),
                                        .OkText = Rgb(0x1E7A48),
                                        .Track = Rgb(0xE6EBEE),
                                        .TrackSelected = Rgb(0xFFFFFF),
                                        .Ink = Rgb(0x3A4853),
                                        .FolderFill = Rgb(0xFCEFD2)};

constinit const Palette DarkPalette = {.IsDark = true,
                                       .Window = Rgb(0x1F262B),
                                       .Surface = Rgb(0x272F35),
                                       .Caption = Rgb(0x2C353B),
                                       .Field = Rgb(0x20272C),
                                       .Hairline = Rgb(0x38434B),
                                       .CardBorder = Rgb(0x3E4A52),
                                       .Border = Rgb(0x46525B),
                                       .Text = Rgb(0xE6ECF0),
                                       .Secondary = Rgb(0xA3B1BC),
                                       .Disabled = Rgb(0x66737D),
                                       .Accent = Rgb(0x2FA7B3),
                                       .AccentDark = Rgb(0x23848E),
                                       .AccentText = Rgb(0x5CC3CD),
                                       .Tint = Rgb(0x21474C),
                                       .Selection = Rgb(0x22484D),
                                       .OnAccent = Rgb(0x0F1A1E),
                                       .Amber = Rgb(0xE39A36),
                                       .Danger = Rgb(0xD95F56),
                                       .DangerText = Rgb(0xF59A93),
                                       .Ok = Rgb(0x36AD6E),
                                       .OkText = Rgb(0x5CC58C),
                                       .Track = Rgb(0x3A454D),
                                       .TrackSelected = Rgb(0x1B2A2E),
                                       .Ink = Rgb(0xC9D4DC),
                                       .FolderFill = Rgb(0x4A4333)};

void DecidePalette(const QPalette& desktop) {
    IsDarkDesktop =
        desktop.color(QPalette::Window).lightnessF() < desktop.color(QPalette::WindowText).lightnessF();
}

const Palette& CurrentPalette() {
    if (!IsDarkDesktop) DecidePalette(QGuiApplication::palette());
    return *IsDarkDesktop ? DarkPalette : LightPalette;
}

}  // namespace Sonmira

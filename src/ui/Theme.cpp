#include "ui/Theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The calm teal: surfaces, text, accent, and what a disabled control fades to.
constexpr QColor Window(0xF1, 0xF4, 0xF6);
constexpr QColor Surface(0xFF, 0xFF, 0xFF);
constexpr QColor Caption(0xF7, 0xF9, 0xFA);
constexpr QColor Hairline(0xE3, 0xE8, 0xEC);
constexpr QColor Border(0xC9, 0xD1, 0xD8);
constexpr QColor Text(0x1F, 0x2A, 0x33);
constexpr QColor Secondary(0x5C, 0x6B, 0x77);
constexpr QColor Disabled(0xA7, 0xB1, 0xBA);
constexpr QColor Accent(0x13, 0x80, 0x8C);
constexpr QColor Selection(0xDD, 0xF0, 0xF1);

}  // namespace

void ApplyTheme(QApplication& application) {
    application.setStyle(QStyleFactory::create(u"Fusion"_s));
    QPalette palette(Text, Window, Surface, Border, Hairline, Text, Text, Surface, Window);
    palette.setColor(QPalette::AlternateBase, Caption);
    palette.setColor(QPalette::Highlight, Selection);
    palette.setColor(QPalette::HighlightedText, Text);
    palette.setColor(QPalette::PlaceholderText, Secondary);
    palette.setColor(QPalette::Link, Accent);
    palette.setColor(QPalette::Button, Caption);
    palette.setColor(QPalette::ToolTipBase, Surface);
    palette.setColor(QPalette::ToolTipText, Text);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, Disabled);
    }
    application.setPalette(palette);
}

}  // namespace Sonmira

#include "ui/Theme.h"

#include "kit/Icons.h"
#include "kit/Palette.h"
#include "ui/CalmStyle.h"

#include <QApplication>
#include <QPalette>

namespace Sonmira {

void ApplyTheme(QApplication& application) {
    DecidePalette(QApplication::palette());
    const Palette& colors = CurrentPalette();
    application.setStyle(new CalmStyle);
    QPalette palette(colors.Text, colors.Surface, colors.Hairline, colors.Border, colors.Border, colors.Text,
                     colors.OnAccent, colors.Field, colors.Window);
    palette.setColor(QPalette::Base, colors.Surface);
    palette.setColor(QPalette::AlternateBase, colors.Caption);
    palette.setColor(QPalette::Highlight, colors.Selection);
    palette.setColor(QPalette::HighlightedText, colors.Text);
    palette.setColor(QPalette::PlaceholderText, colors.Secondary);
    palette.setColor(QPalette::Link, colors.AccentText);
    palette.setColor(QPalette::LinkVisited, colors.AccentText);
    palette.setColor(QPalette::ToolTipBase, colors.Surface);
    palette.setColor(QPalette::ToolTipText, colors.Text);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, colors.Disabled);
    }
    QApplication::setPalette(palette);
    QApplication::setWindowIcon(OwnIcon(u"sonmira"));
}

}  // namespace Sonmira

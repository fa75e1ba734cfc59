#pragma once

#include <QColor>

class QPalette;

namespace Sonmira {

// The colours of the calm teal, of which all windows, controls and drawings are made. Text on Window,
// Surface, Caption, Field, Tint and Selection has a contrast of 4.5 at least in Text, Secondary, AccentText,
// DangerText and OkText.
struct Palette {
    bool IsDark;
    QColor Window;      // behind everything
    QColor Surface;     // cards, lists, toolbar
    QColor Caption;     // caption strip of a card, header of a list
    QColor Field;       // input fields
    QColor Hairline;    // lines between areas
    QColor CardBorder;  // around a card
    QColor Border;      // around fields and buttons
    QColor Text;
    QColor Secondary;   // text of less weight
    QColor Disabled;    // text of what cannot be used
    QColor Accent;      // fills: bars, check marks, the line under a tab
    QColor AccentDark;  // an accent that is pressed
    QColor AccentText;
    QColor Tint;       // under the pointer
    QColor Selection;  // selected rows; text keeps its colour there
    QColor OnAccent;   // text and marks on Accent, Ok and Danger
    QColor Amber;      // at work
    QColor Danger;     // fills and icons
    QColor DangerText;
    QColor Ok;  // fills and icons
    QColor OkText;
    QColor Track;          // the empty part of a bar
    QColor TrackSelected;  // the same on a selected row
    QColor Ink;            // strokes of the icons
    QColor FolderFill;     // inside of folder icons
};

extern const Palette LightPalette;
extern const Palette DarkPalette;

// Decides which of the two holds from the desktop's colours: dark where its windows are darker than the text
// on them. Call once, before any palette of ours is set; a later call decides anew and makes later drawings
// follow.
void DecidePalette(const QPalette& desktop);

// The palette that holds. Where nobody decided, it is decided now from the application's colours.
const Palette& CurrentPalette();

}  // namespace Sonmira

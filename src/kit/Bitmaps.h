#pragma once

#include "kit/Palette.h"
#include "kit/Twips.h"

#include <QImage>

namespace Sonmira {

// The small bitmaps of which the kit's controls are put together, drawn for one scale and one palette. Their
// sizes are the logical ones on the device grid.

// Background 14 wide and 20 high, fill 2 wide and 16 high. The fill's two pixels are what lets it end where
// the value says; what is copied beyond a bitmap's own size is nothing.
struct BarBitmaps {
    QImage VertGauche, VertMillieu, VertDroite;
    QImage bargauche, barmillieu, barDroite;
};

// All 14 wide and 27 high.
struct CardBitmaps {
    QImage VertGauche, VertMillieu, VertDroite;
    QImage ContenuGauche, ContenuMillieu, ContenuDroite;
    QImage FooterGauche, FooterMillieu, FooterDroite;
};

// Drawn when they are first asked for, then kept.
const BarBitmaps& BarBitmapsFor(const DeviceGrid& grid, const Palette& palette);
const CardBitmaps& CardBitmapsFor(const DeviceGrid& grid, const Palette& palette);

}  // namespace Sonmira

#include "kit/CadreDesign.h"

#include "kit/Accessible.h"
#include "kit/Bitmaps.h"

#include <QPaintEvent>

#include <algorithm>

namespace Sonmira {

CadreDesign::CadreDesign(QWidget* parent) : QWidget(parent) {
    InstallKitAccessibility();
}

void CadreDesign::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const auto [grid, pixels] = CountInDevicePixels(painter, size());
    const CardBitmaps& bitmaps = CardBitmapsFor(grid, CurrentPalette());
    const int end = pixels.width() - grid.At(TileWidth);
    // A tile more on both sides than what is to be drawn anew, since tiles do not end on whole logical
    // pixels.
    const QRect wanted = event->rect().adjusted(-TileWidth, -2 * BandHeight, TileWidth, 2 * BandHeight);
    const int firstTile = std::max(1, wanted.left() / TileWidth) * TileWidth;
    const int lastTile = std::min(width() - 1, wanted.right());
    const auto band = [&, &picture = painter, &steps = grid](int top, const QImage& left,
                                                             const QImage& middle, const QImage& right) {
        picture.drawImage(0, top, left);
        for (int x = firstTile; x <= lastTile; x += TileWidth) picture.drawImage(steps.At(x), top, middle);
        picture.drawImage(end, top, right);
    };

    band(0, bitmaps.VertGauche, bitmaps.VertMillieu, bitmaps.VertDroite);
    const int firstRow = std::max(1, wanted.top() / BandHeight) * BandHeight;
    const int lastRow = std::min(height() - 1, wanted.bottom());
    for (int y = firstRow; y <= lastRow; y += BandHeight) {
        band(grid.At(y), bitmaps.ContenuGauche, bitmaps.ContenuMillieu, bitmaps.ContenuDroite);
    }
    band(pixels.height() - grid.At(BandHeight), bitmaps.FooterGauche, bitmaps.FooterMillieu,
         bitmaps.FooterDroite);
}

void CadreDesign::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The foot and the right end move, so all of it is drawn anew.
    update();
    Q_EMIT Resize();
}

}  // namespace Sonmira

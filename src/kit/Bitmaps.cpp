#include "kit/Bitmaps.h"

#include <QPainterPath>

#include <map>

namespace Sonmira {

namespace {

constexpr int Tile = 14;
constexpr int Band = 27;
constexpr int BarHeight = 20;
constexpr int FillStep = 2;
constexpr int FillHeight = 16;
constexpr double CardRadius = 6;
constexpr double BarRadius = 4;
constexpr double FillRadius = 2;

QImage Canvas(int width, int height, const QColor& ground) {
    QImage canvas(width, height,
                  ground.alpha() == 255 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    canvas.fill(ground);
    return canvas;
}

void FillRounded(QPainter& painter, const QRectF& room, double radius, const QBrush& brush) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRoundedRect(room, radius, radius);
}

// Smoothed edges are not quite the same on both sides; the ends shall be.
QImage Opposite(const QImage& end) {
    return end.mirrored(true, false);
}

// A whole card of three by three pieces, which is then cut up: so the pieces fit each other at any scale.
QImage WholeCard(const DeviceGrid& grid, const Palette& palette) {
    const int tile = grid.At(Tile);
    const int band = grid.At(Band);
    const int line = grid.Hairline();
    const double radius = CardRadius * grid.Scale;
    QImage card = Canvas(3 * tile, 3 * band, palette.Window);
    QPainter painter(&card);
    FillRounded(painter, card.rect(), radius, palette.CardBorder);
    QLinearGradient ground(0, 2 * band, 0, 3 * band);  // fades in the foot, not before
    ground.setColorAt(0, palette.Surface);
    ground.setColorAt(1, palette.Caption);
    FillRounded(painter, QRectF(card.rect()).adjusted(line, line, -line, -line), radius - line, ground);
    painter.setClipRect(0, 0, card.width(), band);
    FillRounded(painter, QRectF(card.rect()).adjusted(line, line, -line, -line), radius - line,
                palette.Caption);
    painter.fillRect(line, band - line, card.width() - 2 * line, line, palette.Hairline);
    return card;
}

CardBitmaps DrawCard(const DeviceGrid& grid, const Palette& palette) {
    const QImage card = WholeCard(grid, palette);
    const int width = grid.At(Tile);
    const int height = grid.At(Band);
    const auto piece = [&](int column, int row) {
        return card.copy(column * width, row * height, width, height);
    };
    return {piece(0, 0),           piece(1, 0), Opposite(piece(0, 0)), piece(0, 1),          piece(1, 1),
            Opposite(piece(0, 1)), piece(0, 2), piece(1, 2),           Opposite(piece(0, 2))};
}

BarBitmaps DrawBar(const DeviceGrid& grid, const Palette& palette) {
    const int tile = grid.At(Tile);
    const int line = grid.Hairline();
    QImage frame = Canvas(3 * tile, grid.At(BarHeight), Qt::transparent);
    {
        QPainter painter(&frame);
        const double radius = BarRadius * grid.Scale;
        FillRounded(painter, frame.rect(), radius, palette.CardBorder);
        FillRounded(painter, QRectF(frame.rect()).adjusted(line, line, -line, -line), radius - line,
                    palette.Track);
    }
    const int step = grid.At(FillStep);
    QImage fill = Canvas(3 * step, grid.At(FillStep + FillHeight) - grid.At(FillStep), palette.Track);
    {
        QPainter painter(&fill);
        FillRounded(painter, fill.rect(), FillRadius * grid.Scale, palette.Accent);
    }
    const auto cut = [](const QImage& whole, int column) {
        const int width = whole.width() / 3;
        return whole.copy(column * width, 0, width, whole.height());
    };
    return {cut(frame, 0), cut(frame, 1), Opposite(cut(frame, 0)),
            cut(fill, 0),  cut(fill, 1),  Opposite(cut(fill, 0))};
}

template <class Bitmaps>
const Bitmaps& Kept(Bitmaps (*draw)(const DeviceGrid&, const Palette&), const DeviceGrid& grid,
                    const Palette& palette) {
    static std::map<std::pair<double, bool>, Bitmaps> kept;
    const auto key = std::pair(grid.Scale, palette.IsDark);
    const auto found = kept.find(key);
    if (found != kept.end()) return found->second;
    return kept.emplace(key, draw(grid, palette)).first->second;
}

}  // namespace

const BarBitmaps& BarBitmapsFor(const DeviceGrid& grid, const Palette& palette) {
    return Kept(DrawBar, grid, palette);
}

const CardBitmaps& CardBitmapsFor(const DeviceGrid& grid, const Palette& palette) {
    return Kept(DrawCard, grid, palette);
}

}  // namespace Sonmira

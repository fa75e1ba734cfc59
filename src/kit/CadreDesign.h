#pragma once

#include <QWidget>

namespace Sonmira {

// A container that paints the card of the house: a caption strip of BandHeight at the top, a body, a foot
// band of BandHeight, a hairline border with rounded corners around all. It is put together from nine small
// bitmaps by copying. Outside the corners what lies behind shows through.
// It has no properties; what is placed on it are ordinary children.
class CadreDesign : public QWidget {
    Q_OBJECT

public:
    static constexpr int BandHeight = 27;  // logical pixels: caption strip, foot band, body tile
    static constexpr int TileWidth = 14;   // logical pixels: ends and tiles

    explicit CadreDesign(QWidget* parent = nullptr);

Q_SIGNALS:
    // At each change of size, still inside that change; the toolkit brings the card and all on it to the
    // screen together, right after it. A card that is not visible hears of its new size when it is shown.
    void Resize();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace Sonmira

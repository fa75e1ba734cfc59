#include "kit/MyProgressBar.h"

#include "kit/Accessible.h"
#include "kit/Bitmaps.h"

#include <QAccessible>
#include <QEvent>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr int Tile = 14;
constexpr int Inset = 2;  // the fill's distance from the left and from the top
constexpr int Step = 2;

// Where the last tile of the fill would have come next. Beyond the right edge the tiles are of no use; two
// pixels further on the right end is of none either.
int EndOfTiles(int width, qint32 value) {
    const qint64 limit = std::min(qint64{width} * value - 300, (qint64{width} + 2) * 100);
    int x = Inset;
    do x += Step;
    while (qint64{x} * 100 < limit);
    return x;
}

QImage ComposeBar(const DeviceGrid& grid, const QSize& device, int width, qint32 value) {
    const BarBitmaps& bitmaps = BarBitmapsFor(grid, CurrentPalette());
    QImage bar(device, QImage::Format_ARGB32_Premultiplied);
    bar.fill(Qt::transparent);
    QPainter painter(&bar);
    // The transparent corners of the ends take the place of the tile below them.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, bitmaps.VertGauche);
    for (int x = Tile; x < width; x += Tile) painter.drawImage(grid.At(x), 0, bitmaps.VertMillieu);
    painter.drawImage(device.width() - grid.At(Tile), 0, bitmaps.VertDroite);
    if (value == 0) return bar;

    const int top = grid.At(Inset);
    painter.drawImage(grid.At(Inset), top, bitmaps.bargauche);
    const int end = EndOfTiles(width, value);
    for (int x = Inset + Step; x < end; x += Step) painter.drawImage(grid.At(x), top, bitmaps.barmillieu);
    painter.drawImage(grid.At(end - 1), top, bitmaps.barDroite);
    return bar;
}

}  // namespace

// The label, in two colours: one over the fill, one over the empty part.
class MyProgressBar::Text final : public QLabel {
public:
    explicit Text(MyProgressBar& bar) : QLabel(u"0 %"_s, &bar), Bar(bar) {
        setObjectName(u"Label27"_s);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setTextFormat(Qt::PlainText);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const Palette& palette = CurrentPalette();
        const int end = Bar.FillEnd();
        QRect filled = QRect(0, 0, end, Bar.height()).translated(-x(), -y());
        if (Bar.isRightToLeft()) filled.moveLeft(Bar.width() - end - x());
        painter.setPen(Bar.isEnabled() ? palette.Text : palette.Disabled);
        painter.drawText(rect(), Qt::AlignCenter, text());
        if (end == 0) return;
        // What lies over the fill is drawn anew, on the fill.
        painter.setClipRect(filled);
        painter.setPen(palette.OnAccent);
        painter.drawText(rect(), Qt::AlignCenter, text());
    }

private:
    MyProgressBar& Bar;
};

MyProgressBar::MyProgressBar(QWidget* parent) : QWidget(parent), Label27(new Text(*this)) {
    InstallKitAccessibility();
    Centre();
}

int MyProgressBar::FillEnd() const {
    return CurrentValue == 0 ? 0 : std::min(width(), EndOfTiles(width(), CurrentValue) + 1);
}

void MyProgressBar::Centre() {
    Label27->resize(Label27->sizeHint());
    Label27->move((width() - Label27->width()) / 2,
                  (std::min(height(), DesignHeight) - Label27->height()) / 2);
}

void MyProgressBar::SetValue(qint32 value) {
    const bool isNew = value != CurrentValue;
    CurrentValue = value;
    Label27->setText(QString::number(value) + u" %"_s);
    Centre();
    repaint();
    if (!isNew) return;
    QAccessibleValueChangeEvent change(this, value);
    QAccessible::updateAccessibility(&change);
}

void MyProgressBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const auto [grid, pixels] = CountInDevicePixels(painter, size());
    const QList<double> drawnFor = {grid.Scale, double(pixels.width()), double(pixels.height()),
                                    double(CurrentValue), double(CurrentPalette().IsDark)};
    if (drawnFor != DrawnFor) {
        Drawn = ComposeBar(grid, pixels, width(), CurrentValue);
        DrawnFor = drawnFor;
    }
    painter.drawImage(0, 0, isRightToLeft() ? Drawn.mirrored(true, false) : Drawn);
}

void MyProgressBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Centre();
}

void MyProgressBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Centre();
    update();
}

}  // namespace Sonmira

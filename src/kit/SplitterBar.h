#pragma once

#include <QFrame>
#include <QPointer>
#include <QRect>

namespace Sonmira {

// The arithmetic of a bar that divides a length in two, in whole units of whoever asks. Nothing is limited
// to 16 bits here.
struct SplitterGeometry {
    qint32 Orientation =
        0;  // 0: upright bar, the length is the width; 1: lying bar, the length is the height
    int SplitterSize = 75;
    int MaxSize = 0;  // 0: none
    qint32 MaxSizeAppliesTo = 0;
    int MinSize1 = 255;
    int MinSize2 = 255;
    int MinSizeAux = 255;

    // The least length in which both sides and the bar have room.
    int MinimumTotal() const { return MinSize1 + SplitterSize + MinSize2; }
    int CrossSize(int across) const;
    // The ratio tells where the centre of the bar lies; 0 where there is no length. Not limited to 1.
    float RatioFromPosition(int length, int position) const;
    // To the nearest whole number, a tie to the even one.
    int PositionFromRatio(int length, float ratio) const;
    // Where the bar comes to lie that is wanted at a position. MinSize1 wins over everything, and MinSize2
    // over MaxSize.
    int Clamp(int length, int position) const;

    // What a child hides of itself beyond the edges of its side, on each edge.
    static constexpr int ListViewOverlap = 15;

    // The places of the bar and of the children around a bar at a position.
    QRect BarPlace(int position, int cross) const;
    QRect Child1Place(int position, int cross, bool isListView) const;
    QRect Child2Place(int position, int cross, int length, bool isListView) const;

private:
    QRect Oriented(int start, int size, int cross) const;
};

class Splitter;

// The bar of a Splitter, "picSplitter": it draws itself and hands what the user does to the splitter.
class SplitterBar : public QFrame {
    Q_OBJECT

public:
    explicit SplitterBar(Splitter& owner);

    // The look of a bar that is dragged while the children stay: a filled bar with a border.
    void Highlight(qint32 appearance, qint32 border, quint32 color);
    // Back to the dots on the window's own colour.
    void RemoveHighlight();
    bool IsHighlighted() const { return Fill.isValid(); }

    // A place on the screen in the bar, inside of its border, counted along the splitter's length from the
    // edge where the length starts; logical pixels.
    int PlaceAlong(const QPoint& screen) const;

    Splitter& Owner;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void TakeFocus();
    void GiveFocusBack();

    QColor Fill;
    QPointer<QWidget> FocusBefore;
};

// A 32-bit colour 0x00BBGGRR, or 0x80000000 plus the index of a system colour.
QColor ColorOf(quint32 color);

}  // namespace Sonmira

#pragma once

#include <QFrame>
#include <QPointer>

namespace Sonmira {

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

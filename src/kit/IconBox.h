#pragma once

#include <QIcon>
#include <QLabel>

namespace Sonmira {

// One of our own drawings that only decorates: drawn for the screen that it is shown on, in the middle of
// the control, and passed over by the pointer and by assistive tools.
class IconBox : public QLabel {
    Q_OBJECT

public:
    // `size` is the edge of the drawing in logical pixels.
    IconBox(QWidget* parent, const QIcon& icon, int size = 16);

    QSize sizeHint() const override { return {Edge, Edge}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon Icon;
    int Edge;
};

}  // namespace Sonmira

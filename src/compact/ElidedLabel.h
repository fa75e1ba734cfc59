#pragma once

#include <QLabel>

namespace Sonmira {

// A label for a text of any length: it never asks for more room than it is given, and leaves out of the
// middle what does not fit, with the whole text as its tool tip.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace Sonmira

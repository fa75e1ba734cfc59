#pragma once

#include <QImage>
#include <QLabel>

namespace Sonmira {

// A bar of a percentage with its text over it. It is put together from six small bitmaps by copying alone,
// which keeps a tick of a run cheap. The bitmaps are made for a bar of DesignHeight; a higher bar stays
// empty below, a lower one is cut. In a right-to-left layout the bar grows from the right.
// To assistive tools it is a progress bar with its value from 0 to 100 (more where it was given more).
class MyProgressBar : public QWidget {
    Q_OBJECT

public:
    static constexpr int DesignHeight = 20;  // logical pixels

    explicit MyProgressBar(QWidget* parent = nullptr);

    // Takes a percentage and draws at once. Nothing limits it: above 100 the fill is cut at the right edge,
    // and the text shows what was given. Zero shows an empty bar; a negative value its two ends.
    void SetValue(qint32 value);
    qint32 Value() const { return CurrentValue; }

    QSize sizeHint() const override { return {200, DesignHeight}; }
    QSize minimumSizeHint() const override { return {2 * 14, DesignHeight}; }

    // The text over the bar, "37 %", centred. Owned by the bar.
    QLabel* const Label27;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Text;

    // Puts the text in the middle.
    void Centre();
    // Where the fill ends, in logical pixels from where it starts to grow; 0 without a fill.
    int FillEnd() const;

    qint32 CurrentValue = 0;
    // The bar as it was last put together, and for what.
    QImage Drawn;
    QList<double> DrawnFor;
};

}  // namespace Sonmira

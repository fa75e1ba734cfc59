#pragma once

#include <QProgressBar>

class QAbstractItemView;

namespace Sonmira {

struct RowState;

// The progress bar of one row: the percentage and a thin bar, green once the file is converted, or why it
// failed. It lies over its row and lets the mouse through.
class RowBar : public QProgressBar {
    Q_OBJECT

public:
    // A child of the list's viewport, for the row behind `element`, which counts from 0.
    RowBar(QAbstractItemView& list, int element);

    void Show(const RowState& state);
    // What stands in it to read: a percentage, or the reason of a failure; nothing before the first
    // conversion.
    const QString& Text() const { return Shown; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Stage { Waiting, AtWork, Converted, Failed };

    void PaintBar(QPainter& painter, const QRect& room) const;

    QAbstractItemView& List;
    const int Element;
    Stage Now = Stage::Waiting;
    QString Shown;
};

}  // namespace Sonmira

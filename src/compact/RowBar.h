#pragma once

#include <QProgressBar>

namespace Sonmira {

struct RowState;

// The progress bar of one row: the percentage and a thin bar, green once the file is converted, or why it
// failed. It lies over its row and lets the mouse through.
class RowBar : public QProgressBar {
    Q_OBJECT

public:
    explicit RowBar(QWidget* parent);

    void Show(const RowState& state);
    // What stands in it to read: a percentage, or the reason of a failure; nothing before the first
    // conversion.
    const QString& Text() const { return Shown; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Stage { Waiting, AtWork, Converted, Failed };

    void PaintBar(QPainter& painter, const QRect& room) const;

    Stage Now = Stage::Waiting;
    QString Shown;
};

}  // namespace Sonmira

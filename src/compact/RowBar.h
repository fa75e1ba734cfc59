#pragma once

#include <QColor>
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

// The colour of the file names, as the number that the settings file keeps: red in the lowest of three bytes,
// blue in the highest.
inline constexpr qint32 DefaultTrackColour = 16576;

QColor ColourOf(qint32 number);
// From 0xRRGGBB to that number.
qint32 ColourNumber(quint32 rgb);

// The saved number. Where there is none, the default, which is saved at once; also the default, and nothing
// is saved, where the value is no number.
qint32 SavedTrackColour();
void SaveTrackColour(qint32 number);

}  // namespace Sonmira

#include "compact/RowBar.h"

#include "compact/AudiotoolRows.h"
#include "engine/RunView.h"
#include "kit/Palette.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"

#include <QAbstractItemView>
#include <QPainter>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr int TextWidth = 52;
constexpr int BarHeight = 6;

}  // namespace

RowBar::RowBar(QAbstractItemView& list, int element)
    : QProgressBar(list.viewport()), List(list), Element(element) {
    setRange(0, 100);
    setValue(0);
    setTextVisible(false);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void RowBar::Show(const RowState& state) {
    Now = state.Icon.isEmpty()          ? Stage::Waiting
          : state.Icon == ErrorIcon     ? Stage::Failed
          : state.Icon == ConvertedIcon ? Stage::Converted
                                        : Stage::AtWork;
    setValue(Now == Stage::Converted ? maximum() : state.Percent);
    Shown = Now == Stage::Failed ? state.Progress : Now == Stage::Waiting ? QString() : PercentText(value());
    setAccessibleDescription(Shown);
    update();
}

void RowBar::PaintBar(QPainter& painter, const QRect& room) const {
    QRectF track = room;
    track.setTop(room.center().y() + 0.5 - BarHeight / 2.0);
    track.setHeight(BarHeight);
    if (track.width() < BarHeight) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const Palette& colours = CurrentPalette();
    const bool isSelected = List.selectionModel()->isRowSelected(Element);
    painter.setBrush(isSelected ? colours.TrackSelected : colours.Track);
    painter.drawRoundedRect(track, BarHeight / 2.0, BarHeight / 2.0);
    const double done = track.width() * value() / maximum();
    if (done < 1) return;
    painter.setBrush(Now == Stage::Converted ? colours.Ok : colours.Accent);
    painter.setClipRect(QStyle::visualRect(layoutDirection(), room,
                                           QRect(room.topLeft(), QSize(qRound(done), room.height()))));
    painter.drawRoundedRect(track, BarHeight / 2.0, BarHeight / 2.0);
}

void RowBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    constexpr int Margin = 6;
    const QRect room = rect().adjusted(Margin, 0, -Margin - 2, 0);
    if (Now == Stage::Failed) {
        painter.setPen(CurrentPalette().DangerText);
        painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeading,
                         fontMetrics().elidedText(Shown, Qt::ElideRight, room.width()));
        return;
    }
    painter.setPen(Now == Stage::Converted ? CurrentPalette().OkText : CurrentPalette().Text);
    const QRect left(room.left(), room.top(), TextWidth - Margin, room.height());
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), left), Qt::AlignVCenter | Qt::AlignRight,
                     Shown);
    PaintBar(painter, QStyle::visualRect(layoutDirection(), rect(), room.adjusted(TextWidth, 0, 0, 0)));
}

namespace {

const QString Section = u"Track"_s;
const QString Key = u"COLOR"_s;

}  // namespace

QColor ColourOf(qint32 number) {
    return {number & 0xFF, number >> 8 & 0xFF, number >> 16 & 0xFF};
}

qint32 ColourNumber(quint32 rgb) {
    return static_cast<qint32>((rgb & 0xFF) << 16 | (rgb & 0xFF00) | (rgb >> 16 & 0xFF));
}

qint32 SavedTrackColour() {
    const QString saved = ReadIniValue(SettingsFile, Section, Key);
    qint32 number = DefaultTrackColour;
    if (saved.isEmpty()) {
        SaveTrackColour(number);
    } else {
        PassOver([&] { number = ToInteger32(saved); });
    }
    return number;
}

void SaveTrackColour(qint32 number) {
    WriteIniValue(SettingsFile, Section, Key, NumberText(number));
}

}  // namespace Sonmira

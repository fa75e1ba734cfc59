#include "ui/CutTexts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QToolTip>

namespace Sonmira {

namespace {

struct ShownText {
    QString Text;
    int Room;
};

QStyleOptionFrame OptionOf(const QLineEdit& field) {
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth =
        field.hasFrame() ? field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field) : 0;
    option.state |= QStyle::State_Sunken;
    if (field.isReadOnly()) option.state |= QStyle::State_ReadOnly;
    return option;
}

QRect RoomOf(const QLineEdit& field, const QStyleOptionFrame& option) {
    constexpr int OwnMargin = 2;
    return field.style()
        ->subElementRect(QStyle::SE_LineEditContents, &option, &field)
        .adjusted(OwnMargin, 0, -OwnMargin, 0);
}

ShownText TextOf(const QWidget& control) {
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        if (label->wordWrap() || label->textFormat() == Qt::RichText) return {};
        return {label->text(), label->contentsRect().width() - 2 * label->margin()};
    }
    const QStyle* const style = control.style();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        QStyleOptionButton option;
        option.initFrom(button);
        option.text = button->text();
        option.icon = button->icon();
        const bool isBox = qobject_cast<const QCheckBox*>(button) != nullptr;
        const bool isRadio = qobject_cast<const QRadioButton*>(button) != nullptr;
        if (!isBox && !isRadio && qobject_cast<const QPushButton*>(button) == nullptr) return {};
        const QStyle::SubElement contents = isBox     ? QStyle::SE_CheckBoxContents
                                            : isRadio ? QStyle::SE_RadioButtonContents
                                                      : QStyle::SE_PushButtonContents;
        return {option.text, style->subElementRect(contents, &option, button).width()};
    }
    if (const auto* list = qobject_cast<const QComboBox*>(&control)) {
        QStyleOptionComboBox option;
        option.initFrom(list);
        option.editable = list->isEditable();
        option.subControls = QStyle::SC_All;
        const QRect field =
            style->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, list);
        return {list->currentText(), field.width()};
    }
    if (const auto* field = qobject_cast<const QLineEdit*>(&control)) {
        const QStyleOptionFrame option = OptionOf(*field);
        return {field->text(), RoomOf(*field, option).width()};
    }
    return {};
}

// A field that nobody types in shows what is cut as a label does; a path keeps both ends.
void PaintElided(QLineEdit& field, const QString& text) {
    const QStyleOptionFrame option = OptionOf(field);
    QPainter painter(&field);
    if (field.hasFrame()) field.style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, &field);
    const QRect room = RoomOf(field, option);
    const Qt::TextElideMode mode = text.startsWith(u'/') ? Qt::ElideMiddle : Qt::ElideRight;
    painter.setPen(field.palette().color(QPalette::Text));
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     field.fontMetrics().elidedText(text, mode, room.width()));
}

class ElidedTextFilter : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) return PaintIfElided(*watched);
        if (event->type() != QEvent::ToolTip) return false;
        auto* const control = static_cast<QWidget*>(watched);
        const QString cut = control->toolTip().isEmpty() ? ElidedTextOf(*control) : QString();
        if (cut.isEmpty()) return false;
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), cut, control);
        return true;
    }

private:
    static bool PaintIfElided(QObject& watched) {
        auto* const field = qobject_cast<QLineEdit*>(&watched);
        if (field == nullptr || field->hasFocus()) return false;
        const QString cut = ElidedTextOf(*field);
        if (cut.isEmpty()) return false;
        PaintElided(*field, cut);
        return true;
    }
};

}  // namespace

QString ElidedTextOf(const QWidget& control) {
    const ShownText shown = TextOf(control);
    const QSize wanted = control.fontMetrics().size(Qt::TextShowMnemonic, shown.Text);
    return !shown.Text.isEmpty() && wanted.width() > shown.Room ? shown.Text : QString();
}

void ShowElidedTexts(QWidget& control) {
    static ElidedTextFilter filter;
    const bool hasText =
        qobject_cast<QLabel*>(&control) != nullptr || qobject_cast<QAbstractButton*>(&control) != nullptr ||
        qobject_cast<QComboBox*>(&control) != nullptr || qobject_cast<QLineEdit*>(&control) != nullptr;
    if (!hasText) return;
    control.removeEventFilter(&filter);
    control.installEventFilter(&filter);
}

}  // namespace Sonmira

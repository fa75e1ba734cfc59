#include "ui/CutTexts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
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
        if (qobject_cast<const QCheckBox*>(button) != nullptr)
            return {option.text, style->subElementRect(QStyle::SE_CheckBoxContents, &option, button).width()};
        if (qobject_cast<const QRadioButton*>(button) != nullptr)
            return {option.text,
                    style->subElementRect(QStyle::SE_RadioButtonContents, &option, button).width()};
        if (qobject_cast<const QPushButton*>(button) != nullptr)
            return {option.text,
                    style->subElementRect(QStyle::SE_PushButtonContents, &option, button).width()};
        return {};
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
        constexpr int Margins = 8;
        return {field->text(), field->contentsRect().width() - Margins};
    }
    return {};
}

class Teller : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return false;
        auto* const control = static_cast<QWidget*>(watched);
        const QString cut = control->toolTip().isEmpty() ? CutTextOf(*control) : QString();
        if (cut.isEmpty()) return false;
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), cut, control);
        return true;
    }
};

}  // namespace

QString CutTextOf(const QWidget& control) {
    const ShownText shown = TextOf(control);
    const QSize wanted = control.fontMetrics().size(Qt::TextShowMnemonic, shown.Text);
    return !shown.Text.isEmpty() && wanted.width() > shown.Room ? shown.Text : QString();
}

void TellCutTexts(QWidget& control) {
    static Teller teller;
    const bool hasText = qobject_cast<QLabel*>(&control) != nullptr ||
                         qobject_cast<QAbstractButton*>(&control) != nullptr ||
                         qobject_cast<QComboBox*>(&control) != nullptr ||
                         qobject_cast<QLineEdit*>(&control) != nullptr;
    if (!hasText) return;
    control.removeEventFilter(&teller);
    control.installEventFilter(&teller);
}

}  // namespace Sonmira

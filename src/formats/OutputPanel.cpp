#include "formats/OutputPanel.h"

#include "kit/Icons.h"
#include "kit/Twips.h"
#include "platform/Failure.h"
#include "shell/widgets/InputBoxes.h"

#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

template <class Control>
Control* Make(QWidget* parent, const QString& name) {
    auto* control = new Control(parent);
    control->setObjectName(name);
    return control;
}

// The same with its design caption, which stands until a language file is loaded.
template <class Control>
Control* Make(QWidget* parent, const QString& name, const QString& caption) {
    auto* control = Make<Control>(parent, name);
    control->setText(caption);
    return control;
}

}  // namespace

OutputPanel::OutputPanel(QWidget* parent)
    : QWidget(parent),
      HeadingIcon(new IconBox(this, OwnIcon(u"options"))),
      Label11(Make<QLabel>(this, u"Label11"_s, u"Output configuration :"_s)),
      CheckOutPath(Make<QCheckBox>(this, u"CheckOutPath"_s, u"Save in the original's directory"_s)),
      Label5(Make<QLabel>(this, u"Label5"_s, u"- Output path :"_s)),
      TextOutPath(Make<PathBox>(this, u"TextOutPath"_s)),
      CmdSelectPath(Make<QToolButton>(this, u"CmdSelectPath"_s)),
      Label6(Make<QLabel>(this, u"Label6"_s, u"- Output format :"_s)),
      ComboOutFormat(Make<ChoiceList>(this, u"ComboOutFormat"_s)),
      Label7(Make<QLabel>(this, u"Label7"_s, u"- Format parameter :"_s)),
      TextOutFormat(Make<QLineEdit>(this, u"TextOutFormat"_s)),
      CmdFormatParameter(Make<QToolButton>(this, u"CmdFormatParameter"_s)),
      ComboWmaFormat(Make<ChoiceList>(this, u"ComboWmaFormat"_s)),
      ComboAPEFormat(Make<ChoiceList>(this, u"ComboAPEFormat"_s)),
      ComboFLACFormat(Make<ChoiceList>(this, u"ComboFLACFormat"_s)),
      ComboMPCFormat(Make<ChoiceList>(this, u"ComboMPCFormat"_s)),
      Check2(Make<QCheckBox>(this, u"Check2"_s, u"Remove original file after conversion"_s)),
      Inside(*this) {
    setObjectName(u"OutputPanel"_s);
    QFont bold = Label11->font();
    bold.setBold(true);
    Label11->setFont(bold);
    CmdSelectPath->setIcon(OwnIcon(u"folder"));
    CmdSelectPath->setAccessibleName(u"Select the output folder"_s);
    CmdFormatParameter->setIcon(OwnIcon(u"options"));
    CmdFormatParameter->setAccessibleName(u"Change the format parameters"_s);
    for (QToolButton* button : {CmdSelectPath, CmdFormatParameter})
        button->setToolTip(button->accessibleName());
    TextOutFormat->setReadOnly(true);
    Label5->setBuddy(TextOutPath);
    Label6->setBuddy(ComboOutFormat);
    Label7->setBuddy(TextOutFormat);

    for (QWidget* detail : Details()) detail->setAccessibleName(u"Format parameter"_s);
    ShowDetail(TextOutFormat);
    // In reading order; of the details only one is there at a time.
    const QList<QWidget*> order = {CheckOutPath,    TextOutPath,        CmdSelectPath,  ComboOutFormat,
                                   TextOutFormat,   CmdFormatParameter, ComboWmaFormat, ComboAPEFormat,
                                   ComboFLACFormat, ComboMPCFormat,     Check2};
    for (qsizetype n = 1; n < order.size(); ++n) setTabOrder(order[n - 1], order[n]);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    PlaceControls();
}

QSize OutputPanel::sizeHint() const {
    constexpr int More = 120;
    return {minimumSizeHint().width() + More, minimumSizeHint().height()};
}

QSize OutputPanel::minimumSizeHint() const {
    constexpr int LastRow = 405;
    // The boxes have the width of the fields, by the rule, and are to show their whole text.
    int field = CheckOutPath->sizeHint().width();
    if (!Check2->isHidden()) field = qMax(field, Check2->sizeHint().width());
    const int height = Check2->isHidden() ? DesignHeight - LastRow : DesignHeight;
    const int besideField = ToPixels(Inside.Left(TextOutPath) + Inside.Width(CmdSelectPath) + 2 * 150);
    return {besideField + field, ToPixels(Inside.Scaled(height))};
}

bool OutputPanel::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::LayoutRequest:
        case QEvent::Show:
        case QEvent::FontChange:
        case QEvent::LayoutDirectionChange:
            PlaceControls();
            updateGeometry();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

void OutputPanel::resizeEvent(QResizeEvent* /*event*/) {
    FollowWidth();
}

// What no change of size moves.
void OutputPanel::PlaceControls() {
    const auto scaled = [this](int twips) { return Inside.Scaled(twips); };
    constexpr int Left = 180;
    const int rowHeight = scaled(360);
    const auto row = [&](int n) { return scaled(855 + n * 420); };
    Inside.Place(HeadingIcon, 120, 0, 240, scaled(405));
    Inside.Place(Label11, 450, 0, Inside.Width(Label11), scaled(405));
    Inside.Place(CheckOutPath, Left, scaled(480), Inside.Width(CheckOutPath), scaled(330));
    Inside.Place(Check2, Left, scaled(2190), Inside.Width(Check2), scaled(330));

    int captions = 0;
    for (const QLabel* caption : {Label5, Label6, Label7}) {
        captions = qMax(captions, ToTwips(caption->sizeHint().width() + 2));
    }
    int n = 0;
    for (QLabel* caption : {Label5, Label6, Label7}) {
        Inside.Place(caption, Left, row(n), captions, rowHeight);
        ++n;
    }
    const int fields = Left + captions + 120;
    const auto field = [&](QWidget* control, int place) {
        Inside.Place(control, fields, row(place), Inside.Width(control), rowHeight);
    };
    field(TextOutPath, 0);
    field(ComboOutFormat, 1);
    for (QWidget* detail : Details()) field(detail, 2);
    const auto button = [&](QWidget* control, int place) {
        Inside.Place(control, Inside.Left(control), row(place), 450, rowHeight);
    };
    button(CmdSelectPath, 0);
    button(CmdFormatParameter, 2);
    FollowWidth();
}

void OutputPanel::FollowWidth() {
    Inside.Mirror();
    PassOver([this] {
        for (QWidget* control : {CmdSelectPath, CmdFormatParameter}) {
            Inside.SetLeft(control, Inside.Width() - Inside.Width(CmdSelectPath) - 150);
        }
        Inside.SetWidth(TextOutPath,
                        Inside.Width() - Inside.Left(TextOutPath) - Inside.Width(CmdSelectPath) - 150 - 150);
        Inside.SetWidth(ComboOutFormat, Inside.Width(TextOutPath));
        for (QWidget* list : {ComboAPEFormat, ComboFLACFormat}) {
            Inside.SetWidth(list, Inside.Width(ComboOutFormat));
        }
        for (QWidget* control : std::initializer_list<QWidget*>{ComboWmaFormat, ComboMPCFormat, TextOutFormat,
                                                                CheckOutPath, Check2}) {
            Inside.SetWidth(control, Inside.Width(TextOutPath));
        }
    });
    PassOver([this] { Inside.SetWidth(Label11, Inside.Width() - Inside.Left(Label11) - 120); });
}

std::array<QWidget*, 5> OutputPanel::Details() const {
    return {TextOutFormat, ComboWmaFormat, ComboAPEFormat, ComboFLACFormat, ComboMPCFormat};
}

void OutputPanel::ShowDetail(const QWidget* detail) {
    for (QWidget* one : Details()) one->setVisible(one == detail);
    CmdFormatParameter->setVisible(detail == TextOutFormat);
}

void OutputPanel::SetControlsEnabled(bool enabled) {
    for (QWidget* control :
         std::initializer_list<QWidget*>{ComboOutFormat, ComboWmaFormat, ComboAPEFormat, ComboFLACFormat,
                                         CmdFormatParameter, CmdSelectPath, CheckOutPath, Check2}) {
        control->setEnabled(enabled);
    }
}

}  // namespace Sonmira

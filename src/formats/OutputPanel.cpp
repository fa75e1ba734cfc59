#include "formats/OutputPanel.h"

#include "kit/Icons.h"
#include "shell/widgets/ChoiceList.h"
#include "shell/widgets/PathBox.h"

#include <QCheckBox>
#include <QGridLayout>
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
      Check2(Make<QCheckBox>(this, u"Check2"_s, u"Remove original file after conversion"_s)) {
    setObjectName(u"Picture9"_s);
    QFont bold = Label11->font();
    bold.setBold(true);
    Label11->setFont(bold);
    CmdSelectPath->setIcon(OwnIcon(u"folder"));
    CmdSelectPath->setAccessibleName(u"Select the output folder"_s);
    CmdFormatParameter->setIcon(OwnIcon(u"options"));
    CmdFormatParameter->setAccessibleName(u"Change the format parameters"_s);
    TextOutFormat->setReadOnly(true);
    Label5->setBuddy(TextOutPath);
    Label6->setBuddy(ComboOutFormat);
    Label7->setBuddy(TextOutFormat);

    auto* grid = new QGridLayout(this);
    grid->addWidget(Label11, 0, 0, 1, 3);
    grid->addWidget(CheckOutPath, 1, 0, 1, 3);
    grid->addWidget(Label5, 2, 0);
    grid->addWidget(TextOutPath, 2, 1);
    grid->addWidget(CmdSelectPath, 2, 2);
    grid->addWidget(Label6, 3, 0);
    grid->addWidget(ComboOutFormat, 3, 1, 1, 2);
    grid->addWidget(Label7, 4, 0);
    for (QWidget* detail : Details()) {
        detail->setAccessibleName(u"Format parameter"_s);
        grid->addWidget(detail, 4, 1, 1, detail == TextOutFormat ? 1 : 2);
    }
    grid->addWidget(CmdFormatParameter, 4, 2);
    ShowDetail(TextOutFormat);
    grid->addWidget(Check2, 5, 0, 1, 3);
    grid->setColumnStretch(1, 1);
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

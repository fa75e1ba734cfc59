#include "compact/AudiotoolForm.h"

#include "compact/AudiotoolList.h"
#include "formats/OutputPanel.h"
#include "kit/Icons.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QHeaderView>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    const QRect room = contentsRect();
    const QString fitting = fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width());
    setToolTip(fitting == text() ? QString() : text());
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeading, fitting);
}

namespace {

template <class Control>
Control* Named(Control* control, const QString& name) {
    control->setObjectName(name);
    return control;
}

QToolButton* Picture(const QString& name, QStringView icon, const QString& tip) {
    auto* button = Named(new QToolButton, name);
    button->setIcon(OwnIcon(icon));
    button->setIconSize(QSize(24, 24));
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}

template <class Label>
Label* Bold(Label* label) {
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

}  // namespace

AudiotoolForm::AudiotoolForm(QMainWindow& window) : AudiotoolMenus(window) {
    BuildControls();
    auto* page = new QWidget;
    LayOut(*page);
    window.setCentralWidget(page);
}

void AudiotoolForm::BuildControls() {
    Image1 = Picture(u"Image1"_s, u"add-file", u"Add an audio file"_s);
    ClearList = Picture(u"ClearList"_s, u"clear", u"Delete all items"_s);
    LabelFilesToConvert = Bold(Named(new QLabel(u"Files to convert :"_s), u"LabelFilesToConvert"_s));
    ListViewFiles = Named(new AudiotoolList, u"ListViewFiles"_s);
    ListViewFiles->setAccessibleName(u"Files to convert"_s);
    ListViewFiles->SetEmptyHint(u"Drop audio files here"_s);
    Label12 = Bold(Named(new QLabel(u"Conversion information :"_s), u"Label12"_s));
    LabelCurrentFile = Named(new ElidedLabel, u"LabelCurrentFile"_s);
    LabelCounterFiles = Bold(Named(new QLabel, u"LabelCounterFiles"_s));

    // The panel of the main window, with the names that its captions have here. Sources are never removed
    // here.
    Output = Named(new OutputPanel, u"Output"_s);
    Output->Label5->setObjectName(u"Label2"_s);
    Output->Label6->setObjectName(u"Label1"_s);
    Output->Label7->setObjectName(u"Label3"_s);
    Output->Check2->hide();

    CmdConvert = Named(new QPushButton(OwnIcon(u"convert"), u"Convert !"_s), u"CmdConvert"_s);
    cmdCancel = Named(new QPushButton(OwnIcon(u"cancel"), u"Cancel"_s), u"cmdCancel"_s);
    cmdCancel->setEnabled(false);  // there is nothing to cancel before something runs
    CmdQuit = Named(new QPushButton(u"Quit"_s), u"CmdQuit"_s);
}

void AudiotoolForm::LayOut(QWidget& page) const {
    auto* head = new QHBoxLayout;
    head->addWidget(LabelFilesToConvert);
    head->addStretch();
    head->addWidget(Image1);
    head->addWidget(ClearList);
    auto* run = new QHBoxLayout;
    run->addWidget(Label12);
    run->addSpacing(8);
    run->addWidget(LabelCurrentFile, 1);
    run->addWidget(LabelCounterFiles);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdConvert);
    buttons->addWidget(cmdCancel);
    buttons->addStretch();
    buttons->addWidget(CmdQuit);
    auto* column = new QVBoxLayout(&page);
    column->addLayout(head);
    column->addWidget(ListViewFiles, 1);
    column->addLayout(run);
    column->addWidget(Output);
    column->addLayout(buttons);
}

}  // namespace Sonmira

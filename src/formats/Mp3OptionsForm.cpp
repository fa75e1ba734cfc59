#include "formats/Mp3OptionsForm.h"

#include "formats/OptionControls.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QSpinBox* MakeUpDown(const QString& name, int least, int most, int step, int value, const QString& textName,
                     const QString& what) {
    auto* control = MakeControl<QSpinBox>(name);
    control->setRange(least, most);
    control->setSingleStep(step);
    control->setValue(value);
    control->findChild<QLineEdit*>()->setObjectName(textName);
    control->setAccessibleName(what);
    return control;
}

QSpinBox* MakeHertz(const QString& name, int value, const QString& textName, const QString& what) {
    return MakeUpDown(name, 0, 48000, 10, value, textName, what);
}

ChoiceList* MakeList(const QString& name, const QString& what, const QStringList& items) {
    auto* list = MakeControl<ChoiceList>(name);
    list->addItems(items);
    list->setAccessibleName(what);
    return list;
}

// A frame of two rows: what stands at the left of each, and its up-down.
QGroupBox* MakeFilter(const QString& name, const QString& caption, QWidget* check, QWidget* frequency,
                      QWidget* label, QWidget* width) {
    auto* frame = MakeFrame(name, caption);
    QGridLayout* const grid = AddGrid(frame);
    grid->addWidget(check, 0, 0);
    grid->addWidget(frequency, 0, 1);
    grid->addWidget(label, 1, 0);
    grid->addWidget(width, 1, 1);
    grid->setColumnStretch(2, 1);
    return frame;
}

void EndPage(QWidget* page) {
    static_cast<QVBoxLayout*>(page->layout())->addStretch(1);
}

}  // namespace

Mp3OptionsForm::Mp3OptionsForm(QWidget* owner) : QDialog(owner) {
    setObjectName(u"frmMP3"_s);
    setWindowTitle(u"MP3 Lame 3.98 Encoder Option"_s);
    auto* column = new QVBoxLayout(this);
    tabMP3 = MakeControl<QTabWidget>(u"tabMP3"_s);
    // All tabs are to be seen, in full.
    tabMP3->setUsesScrollButtons(false);
    tabMP3->setElideMode(Qt::ElideNone);
    column->addWidget(tabMP3, 1);
    AddGeneral();
    AddFiltering();
    AddVbr();
    AddExpert();
    AddPresets();
    AddCommandLine();
    cmdOK = MakeControl<QPushButton>(u"cmdOK"_s, u"Ok"_s);
    cmdCancel = MakeControl<QPushButton>(u"cmdCancel"_s, u"Cancel"_s);
    cmdApply = MakeControl<QPushButton>(u"cmdApply"_s, u"Apply"_s);
    cmdOK->setDefault(true);
    AddButtons(this, {cmdOK, cmdCancel, cmdApply});
}

QWidget* Mp3OptionsForm::AddPage(const QString& caption) {
    auto* page = new QWidget;
    new QVBoxLayout(page);
    tabMP3->addTab(page, caption);
    return page;
}

void Mp3OptionsForm::AddGeneral() {
    QWidget* const page = AddPage(u"General"_s);
    frmBitrate = MakeFrame(u"frmBitrate"_s, u"Bitrate"_s);
    sldrBitrate = MakeBitrateSlider(u"sldrBitrate"_s);
    sldrBitrate->setAccessibleName(u"Bitrate"_s);
    AddRow(frmBitrate, {MakeControl<QLabel>(u"Label2"_s, u"poor quality "_s), sldrBitrate,
                        MakeControl<QLabel>(u"Label3"_s, u"good quality "_s)});
    frmChMode = MakeFrame(u"frmChMode"_s, u"Channels Mode"_s);
    cmbChMode =
        MakeList(u"cmbChMode"_s, u"Channels mode"_s,
                 {u"Mono"_s, u"Stereo"_s, u"Joint Stereo"_s, u"Forced Joint Stereo"_s, u"Dual Channels"_s});
    AddRow(frmChMode, {cmbChMode});
    frmQuality = MakeFrame(u"frmQuality"_s, u"Encoder Quality"_s);
    sldrQuality = MakeSlider(u"sldrQuality"_s, 9, 2, 1);
    sldrQuality->setAccessibleName(u"Encoder quality"_s);
    AddRow(frmQuality, {MakeControl<QLabel>(u"Label7"_s, u"better"_s), sldrQuality,
                        MakeControl<QLabel>(u"Label6"_s, u"faster"_s)});
    frmFrequency = MakeFrame(u"frmFrequency"_s, u"Sampling Frequency"_s);
    cmbFrequency = MakeFrequencyList(u"cmbFrequency"_s);
    AddRow(frmFrequency, {cmbFrequency});
    AddRow(page, {frmBitrate});
    AddRow(page, {frmChMode, frmFrequency});
    AddRow(page, {frmQuality});
    EndPage(page);
}

void Mp3OptionsForm::AddFiltering() {
    QWidget* const page = AddPage(u"Filtering"_s);
    chHFilt = MakeControl<QCheckBox>(u"chHFilt"_s, u"Highpass filtering frequency (in Hz):"_s);
    udHFiltF = MakeHertz(u"udHFiltF"_s, 30, u"tHFiltF"_s, u"Highpass frequency in Hz"_s);
    lblHFiltW = MakeControl<QLabel>(u"lblHFiltW"_s, u"Width of Highpass filter (in Hz):"_s);
    udHFiltW = MakeHertz(u"udHFiltW"_s, 5, u"tHFiltW"_s, u"Highpass width in Hz"_s);
    chLFilt = MakeControl<QCheckBox>(u"chLFilt"_s, u"Lowpass filtering frequency (in Hz):"_s);
    udLFiltF = MakeHertz(u"udLFiltF"_s, 15160, u"tLFiltF"_s, u"Lowpass frequency in Hz"_s);
    lblLFiltW = MakeControl<QLabel>(u"lblLFiltW"_s, u"Width of Lowpass filter (in Hz):"_s);
    udLFiltW = MakeHertz(u"udLFiltW"_s, 750, u"tLFiltW"_s, u"Lowpass width in Hz"_s);
    AddRow(page, {MakeFilter(u"frmHFilt"_s, u"HighPass Filter"_s, chHFilt, udHFiltF, lblHFiltW, udHFiltW)});
    AddRow(page, {MakeFilter(u"frmLFilt"_s, u"LowPass Filter"_s, chLFilt, udLFiltF, lblLFiltW, udLFiltW)});
    EndPage(page);
}

void Mp3OptionsForm::AddVbr() {
    QWidget* const page = AddPage(u"VBR"_s);
    cmbVBRCodingMethod = MakeList(u"cmbVBRCodingMethod"_s, u"Coding method"_s,
                                  {u"None"_s, u"Default"_s, u"Old"_s, u"New"_s, u"MTRH"_s, u"ABR"_s});
    lblVbrQuality = MakeControl<QLabel>(u"lblVbrQuality"_s, u"VBR Quality:"_s);
    udVbrQuality = MakeUpDown(u"udVbrQuality"_s, 0, 9, 1, 0, u"txtVbrQuality"_s, u"VBR quality"_s);
    lblAbrBitrate = MakeControl<QLabel>(u"lblAbrBitrate"_s, u"ABR Bitrate:"_s);
    udAbrBitrate = MakeUpDown(u"udAbrBitrate"_s, 4, 320, 1, 123, u"txtAbrBitrate"_s, u"ABR bitrate"_s);
    frmVbrBitrate = MakeFrame(u"frmVbrBitrate"_s, u"Maximum VBR Bitrate"_s);
    sldrVbrBitrate = MakeBitrateSlider(u"sldrVbrBitrate"_s);
    sldrVbrBitrate->setAccessibleName(u"Maximum VBR bitrate"_s);
    lblVbrBitrate = MakeControl<QLabel>(u"lblVbrBitrate"_s);
    AddRow(frmVbrBitrate, {lblVbrBitrate});
    AddRow(frmVbrBitrate, {sldrVbrBitrate});
    frmVbrAdvanced = MakeFrame(u"frmVbrAdvanced"_s, u"Advanced"_s);
    chWriteVBRHeader = MakeControl<QCheckBox>(u"chWriteVBRHeader"_s, u"Write VBR Header"_s);
    chStrictlyEnforceMinBitrate =
        MakeControl<QCheckBox>(u"chStrictlyEnforceMinBitrate"_s, u"Strictly enforce minimum bitrate"_s);
    AddRow(frmVbrAdvanced, {chWriteVBRHeader});
    AddRow(frmVbrAdvanced, {chStrictlyEnforceMinBitrate});
    QGridLayout* const grid = AddGrid(page);
    grid->addWidget(MakeControl<QLabel>(u"Label14"_s, u"Coding Method:"_s), 0, 0);
    grid->addWidget(cmbVBRCodingMethod, 0, 1);
    grid->addWidget(lblVbrQuality, 1, 0);
    grid->addWidget(udVbrQuality, 1, 1);
    grid->addWidget(lblAbrBitrate, 2, 0);
    grid->addWidget(udAbrBitrate, 2, 1);
    grid->setColumnStretch(2, 1);
    AddRow(page, {frmVbrBitrate});
    AddRow(page, {frmVbrAdvanced});
    EndPage(page);
}

void Mp3OptionsForm::AddExpert() {
    QWidget* const page = AddPage(u"Expert"_s);
    const auto box = [&](const QString& name, const QString& caption) {
        auto* check = MakeControl<QCheckBox>(name, caption);
        AddRow(page, {check});
        return check;
    };
    chStrictlyISOCompliance =
        box(u"chStrictlyISOCompliance"_s, u"comply as much as possible to ISO MPEG spec"_s);
    chShortBlocks = box(u"chShortBlocks"_s, u"short blocks"_s);
    chBitReservoir = box(u"chBitReservoir"_s, u"bit reservoir"_s);
    chBlockType = box(u"chBlockType"_s, u"allow block types to differ between channels"_s);
    chErrorProtection = box(u"chErrorProtection"_s, u"include CRC -Checksums"_s);
    cmbATHControl = MakeList(u"cmbATHControl"_s, u"ATH control"_s,
                             {u"default"_s, u"only"_s, u"disabled"_s, u"only for short blocks"_s});
    cmbEmphasis =
        MakeList(u"cmbEmphasis"_s, u"De-emphasis"_s, {u"default"_s, u"0/15 microseconds"_s, u"citt j.17"_s});
    QGridLayout* const grid = AddGrid(page);
    grid->addWidget(MakeControl<QLabel>(u"Label10"_s, u"ATH Control:"_s), 0, 0);
    grid->addWidget(cmbATHControl, 0, 1);
    grid->addWidget(MakeControl<QLabel>(u"Label12"_s, u"De-emphasis :"_s), 1, 0);
    grid->addWidget(cmbEmphasis, 1, 1);
    grid->setColumnStretch(2, 1);
    EndPage(page);
}

void Mp3OptionsForm::AddPresets() {
    const auto options = [this](const QString& page, const QString& frameName, const QStringList& captions) {
        auto* frame = MakeFrame(frameName, page);
        auto* group = new QButtonGroup(this);
        for (const QString& caption : captions) {
            auto* option = new QRadioButton(caption);
            group->addButton(option, static_cast<int>(group->buttons().size()) + 1);
            AddRow(frame, {option});
        }
        group->button(1)->setChecked(true);
        MakeOneTabStop(*group);
        QWidget* const tab = AddPage(page);
        AddRow(tab, {frame});
        EndPage(tab);
        return group;
    };
    opPreset = options(u"Preset"_s, u"Frame4"_s,
                       {u"Phone"_s, u"SW"_s, u"AM"_s, u"FM"_s, u"Voice"_s, u"Radio"_s, u"Tape"_s, u"HiFi"_s,
                        u"CD"_s, u"Studio"_s, u"R3Mix"_s});
    opAltPreset = options(u"Alt-Preset"_s, u"Frame9"_s,
                          {u"Fast Standard"_s, u"Standard"_s, u"Fast Extreme"_s, u"Extrene"_s, u"Insane"_s});
}

void Mp3OptionsForm::AddCommandLine() {
    QWidget* const page = AddPage(u"Command Line"_s);
    txtCommLine = MakeControl<QLineEdit>(u"txtCommLine"_s);
    txtCommLine->setAccessibleName(u"Command line of the encoder"_s);
    page->layout()->addWidget(txtCommLine);
    EndPage(page);
}

}  // namespace Sonmira

#include "formats/OggOptions.h"

#include "formats/OptionControls.h"
#include "platform/Dialogs.h"
#include "platform/Values.h"
#include "shell/Settings.h"
#include "shell/widgets/Events.h"

#include <QCheckBox>
#include <QLabel>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// More than the window starts with.
constexpr int QualityWithoutChoice = 400;

QString SavedKey(const QString& key) {
    return ReadIniValue(SettingsFile, u"OGG"_s, key);
}

void SetByQuality(const FormatCaller& caller, const OggChoice& choice) {
    caller.FileWenc.SetFormatOggVorbis(choice.Frequency, choice.Channels, {}, {}, {}, choice.Quality);
}

}  // namespace

void SaveOggChoice(const OggChoice& choice) {
    const int values[] = {choice.UsesQuality ? 1 : 0,
                          choice.UsesVbr ? 1 : 0,
                          choice.Frequency,
                          choice.Channels,
                          choice.Quality,
                          choice.Nominal,
                          choice.Minimum,
                          choice.Maximum};
    int key = 0;
    for (const int value : values) {
        WriteIniValue(SettingsFile, u"OGG"_s, PlainNumber(++key), PlainNumber(value));
    }
}

bool SetOggFormat(const FormatCaller& caller, const OggChoice& choice) {
    if (choice.UsesQuality) {
        SetByQuality(caller, choice);
        return true;
    }
    const int minimum = choice.UsesVbr ? choice.Minimum : 0;
    const int maximum = choice.UsesVbr ? choice.Maximum : 0;
    AudioFile& encoder = caller.FileWenc;
    if (!encoder.IsFormatOggVorbisAvailable(choice.Frequency, choice.Channels, choice.Nominal, minimum,
                                            maximum)) {
        return false;
    }
    if (choice.UsesVbr) {
        encoder.SetFormatOggVorbis(choice.Frequency, choice.Channels, choice.Nominal, minimum, maximum);
    } else {
        encoder.SetFormatOggVorbis(choice.Frequency, choice.Channels, choice.Nominal);
    }
    return true;
}

void ApplySavedOggFormat(const FormatCaller& caller) {
    const QString usesQuality = SavedKey(u"1"_s);
    if (usesQuality.isEmpty()) {
        caller.FileWenc.SetFormatOggVorbis(44100, 2, {}, {}, {}, QualityWithoutChoice);
        return;
    }
    // Where a damaged key fails below, no other format's sound must go out under the name of this one.
    caller.FileWenc.SetFormatOggVorbis(0, 0);
    OggChoice saved;
    saved.UsesQuality = LeadingNumber(usesQuality) == 1;
    saved.UsesVbr = LeadingNumber(SavedKey(u"2"_s)) == 1;
    saved.Frequency = ToInteger32(SavedKey(u"3"_s));
    saved.Channels = ToInteger32(SavedKey(u"4"_s));
    saved.Quality = ToInteger32(SavedKey(u"5"_s));
    saved.Nominal = ToInteger32(SavedKey(u"6"_s));
    saved.Minimum = ToInteger32(SavedKey(u"7"_s));
    saved.Maximum = ToInteger32(SavedKey(u"8"_s));
    if (!SetOggFormat(caller, saved)) SetByQuality(caller, saved);
}

namespace {

constexpr int StartPosition = 9;  // 128 kbit
constexpr int MostQuality = 1000;

}  // namespace

OggOptions::OggOptions(QWidget* owner)
    : QDialog(owner),
      frmFrequency(MakeFrame(u"frmFrequency"_s, u"Sampling Frequency"_s)),
      cmbFrequency(MakeFrequencyList(u"cmbFrequency"_s)),
      frmChMode(MakeFrame(u"frmChMode"_s, u"Channels Mode"_s)),
      cmbChMode(MakeControl<ChoiceList>(u"cmbChMode"_s)),
      frmOption(MakeFrame(u"frmOption"_s, u"Option"_s)),
      chQuality(MakeControl<QCheckBox>(u"chQuality"_s, u"Quality Enabled"_s)),
      chVbr(MakeControl<QCheckBox>(u"chVbr"_s, u"VBR Enabled"_s)),
      lblBitrate(MakeControl<QLabel>(u"lblBitrate"_s)),
      sldrBitrate(MakeBitrateSlider(u"sldrBitrate"_s)),
      frmVbr(MakeFrame(u"frmVbr"_s, u"VBR"_s)),
      lblMinBitrate(MakeControl<QLabel>(u"lblMinBitrate"_s)),
      sldrMinBitrate(MakeBitrateSlider(u"sldrMinBitrate"_s)),
      lblMaxBitrate(MakeControl<QLabel>(u"lblMaxBitrate"_s)),
      sldrMaxBitrate(MakeBitrateSlider(u"sldrMaxBitrate"_s)),
      frmQuality(MakeFrame(u"frmQuality"_s, u"Quality (Compression)"_s)),
      sldrQuality(MakeSlider(u"sldrQuality"_s, MostQuality, 1, 100)),
      cmdOk(MakeControl<QPushButton>(u"cmdOk"_s, u"Ok"_s)),
      cmdCancel(MakeControl<QPushButton>(u"cmdCancel"_s, u"Cancel"_s)),
      cmdApply(MakeControl<QPushButton>(u"cmdApply"_s, u"Apply"_s)) {
    setObjectName(u"frmOgg"_s);
    setWindowTitle(u"Ogg Vorbis Option"_s);
    cmbChMode->addItems({u"Mono"_s, u"Stereo"_s});
    cmbChMode->setAccessibleName(u"Channels"_s);
    sldrBitrate->setAccessibleName(u"Nominal bitrate"_s);
    sldrMinBitrate->setAccessibleName(u"Minimum bitrate"_s);
    sldrMaxBitrate->setAccessibleName(u"Maximum bitrate"_s);
    sldrQuality->setAccessibleName(u"Quality"_s);

    AddRow(frmFrequency, {cmbFrequency});
    AddRow(frmChMode, {cmbChMode});
    AddRow(frmOption, {chQuality});
    AddRow(frmOption, {chVbr});
    AddRow(frmOption, {lblBitrate});
    AddRow(frmOption, {sldrBitrate});
    AddRow(frmVbr, {lblMinBitrate});
    AddRow(frmVbr, {sldrMinBitrate});
    AddRow(frmVbr, {lblMaxBitrate});
    AddRow(frmVbr, {sldrMaxBitrate});
    AddRow(frmQuality, {sldrQuality});
    auto* column = new QVBoxLayout(this);
    AddRow(this, {frmFrequency, frmChMode});
    column->addWidget(frmOption);
    column->addWidget(frmVbr);
    column->addWidget(frmQuality);
    AddButtons(this, {cmdOk, cmdCancel, cmdApply});
    cmdOk->setDefault(true);
    setMinimumWidth(420);
    ConnectEvents();
}

void OggOptions::ConnectEvents() {
    OnEvent(chQuality, &QCheckBox::toggled, this, [this] { chQuality_Click(); });
    OnEvent(chVbr, &QCheckBox::toggled, this, [this] { chVbr_Click(); });
    const auto bitrate = [this](QSlider* slider, int OggChoice::*field) {
        OnEvent(slider, &QSlider::valueChanged, this, [this, slider, field](int position) {
            Choice.*field = BitrateAt(position);
            slider->setToolTip(QString::number(Choice.*field));
            ShowBitrates();
        });
    };
    bitrate(sldrBitrate, &OggChoice::Nominal);
    bitrate(sldrMinBitrate, &OggChoice::Minimum);
    bitrate(sldrMaxBitrate, &OggChoice::Maximum);
    OnEvent(sldrQuality, &QSlider::valueChanged, this, [this](int position) {
        Choice.Quality = position;
        sldrQuality->setToolTip(QString::number(position / 100.0));
    });
    OnEvent(cmdOk, &QPushButton::clicked, this, [this] {
        if (ApplyOggOptions()) accept();
    });
    OnEvent(cmdApply, &QPushButton::clicked, this, [this] { ApplyOggOptions(); });
    OnEvent(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

void OggOptions::Loader(const FormatCaller& caller) {
    Caller.emplace(caller);
    SelectData(*cmbFrequency, caller.Frequency);
    cmbChMode->SelectPlace(caller.Channels - 1);
    Choice = {};
    for (QSlider* slider : {sldrBitrate, sldrMinBitrate, sldrMaxBitrate}) slider->setValue(StartPosition);
    ShowBitrates();
    chVbr->setChecked(false);
    chVbr_Click();
    chQuality->setChecked(false);
    chQuality_Click();
    sldrQuality->setValue(OggChoice().Quality);
}

void OggOptions::ShowBitrates() {
    lblBitrate->setText(BitrateText(u"Current nominal bitrate"_s, Choice.Nominal));
    lblMinBitrate->setText(BitrateText(u"Current min bitrate"_s, Choice.Minimum));
    lblMaxBitrate->setText(BitrateText(u"Current max bitrate"_s, Choice.Maximum));
}

void OggOptions::chQuality_Click() {
    Choice.UsesQuality = chQuality->isChecked();
    if (Choice.UsesQuality) {
        EnableAll(false, {chVbr, frmVbr, sldrBitrate, sldrMinBitrate, sldrMaxBitrate, lblBitrate,
                          lblMinBitrate, lblMaxBitrate});
        EnableAll(true, {frmQuality, sldrQuality});
    } else {
        EnableAll(false, {frmVbr, sldrQuality});
        EnableAll(true, {chVbr, lblBitrate, sldrBitrate});
        chVbr_Click();
    }
}

void OggOptions::chVbr_Click() {
    Choice.UsesVbr = chVbr->isChecked();
    if (Choice.UsesVbr) {
        EnableAll(true, {frmVbr, sldrMinBitrate, sldrMaxBitrate, lblMinBitrate, lblMaxBitrate});
    } else {
        // The frame of the quality, not that of the limits: an old slip that people know.
        EnableAll(false, {frmQuality, sldrMinBitrate, sldrMaxBitrate, lblMinBitrate, lblMaxBitrate});
    }
}

bool OggOptions::ApplyOggOptions() {
    Choice.Frequency = cmbFrequency->currentData().toInt();
    Choice.Channels = cmbChMode->currentIndex() + 1;
    // Kept before the encoder is asked: a refused combination is the saved one, too.
    SaveOggChoice(Choice);
    if (!SetOggFormat(*Caller, Choice)) {
        Dialogs().ShowMessage(u"Incorrect format"_s, MessageIcon::Critical, u"Sonmira"_s);
        return false;
    }
    Caller->ShowFormat();
    return true;
}

}  // namespace Sonmira

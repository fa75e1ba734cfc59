#include "formats/Mp3Options.h"

#include "formats/OptionControls.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"
#include "shell/widgets/Events.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>

#include <variant>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

using Property = std::variant<qint16 Mp3Parameters::*, qint32 Mp3Parameters::*, bool Mp3Parameters::*>;

// By their keys, which count from 1.
constexpr Property Properties[] = {
    &Mp3Parameters::AbrBitrate,       &Mp3Parameters::AthControl,        &Mp3Parameters::Bitrate,
    &Mp3Parameters::BitReservoir,     &Mp3Parameters::BlockTypesDiffer,  &Mp3Parameters::ChannelCount,
    &Mp3Parameters::Emphasis,         &Mp3Parameters::EncoderQuality,    &Mp3Parameters::ErrorProtection,
    &Mp3Parameters::SampleRate,       &Mp3Parameters::HighpassFrequency, &Mp3Parameters::HighpassWidth,
    &Mp3Parameters::LowpassFrequency, &Mp3Parameters::LowpassWidth,      &Mp3Parameters::ShortBlocks,
    &Mp3Parameters::StrictIso,        &Mp3Parameters::EnforceMinBitrate, &Mp3Parameters::StereoMode,
    &Mp3Parameters::MaxVbrBitrate,    &Mp3Parameters::VbrMethod,         &Mp3Parameters::VbrQuality,
    &Mp3Parameters::WriteVbrHeader};

void Take(qint16& value, const QString& text) {
    value = ToInteger16(text);
}
void Take(qint32& value, const QString& text) {
    value = ToInteger32(text);
}
void Take(bool& value, const QString& text) {
    value = ToFlag(text);
}

QString TextOf(bool value) {
    return FlagText(value);
}
QString TextOf(qint32 value) {
    return PlainNumber(value);
}

// Calls `visit` with each key and its property.
template <class Visit>
void ForEachKey(Visit&& visit) {
    int key = 0;
    for (const Property& property : Properties) {
        ++key;
        std::visit([&](auto member) { visit(PlainNumber(key), member); }, property);
    }
}

}  // namespace

bool ApplySavedMp3Format(const FormatCaller& caller, std::shared_ptr<Mp3Parameters>& parameters) {
    parameters = std::make_shared<Mp3Parameters>();
    ForEachKey([&](const QString& key, auto member) {
        PassOver([&] { Take((*parameters).*member, ReadIniValue(SettingsFile, u"Mp3"_s, key)); });
    });
    bool taken = false;
    PassOver([&] { taken = caller.FileWenc.SetFormatMP3Ex(parameters); });
    return taken;
}

void SaveMp3Format(const Mp3Parameters& parameters) {
    ForEachKey([&](const QString& key, auto member) {
        WriteIniValue(SettingsFile, u"Mp3"_s, key, TextOf(parameters.*member));
    });
}

namespace {

constexpr int PresetTab = 4;
constexpr int AltPresetTab = 5;
constexpr int CommandLineTab = 6;

// What a width of 0 opens as. The lowpass one differs from what stands in the empty window, as it always
// has.
constexpr int HighpassWidthForNone = 5;
constexpr int LowpassWidthForNone = 760;
constexpr int HighpassForNone = 30;
constexpr int LowpassForNone = 15160;

// One that the list does not have fails, as a value outside the range of any other control does.
void SelectItem(ChoiceList& list, int place) {
    if (place < 0) throw Failure(FailureNumber::InvalidPropertyValue);
    list.SelectPlace(place);
}

void ShowPosition(QSlider& slider, int kilobits) {
    if (const std::optional<int> position = PositionOfBitrate(kilobits)) slider.setValue(*position);
}

}  // namespace

Mp3Options::Mp3Options(QWidget* owner) : Mp3OptionsForm(owner) {
    ConnectEvents();
}

void Mp3Options::ConnectEvents() {
    OnEvent(sldrBitrate, &QSlider::valueChanged, this, [this] { ShowBitrate(); });
    OnEvent(sldrVbrBitrate, &QSlider::valueChanged, this, [this] { ShowVbrBitrate(); });
    // Into the parameters at once: they keep it even where the window is cancelled.
    OnEvent(sldrQuality, &QSlider::valueChanged, this, [this](int position) {
        if (Parameters) Parameters->EncoderQuality = static_cast<qint16>(position);
    });
    OnEvent(chHFilt, &QCheckBox::toggled, this, [this] { chHFilt_Click(); });
    OnEvent(chLFilt, &QCheckBox::toggled, this, [this] { chLFilt_Click(); });
    OnEvent(cmbVBRCodingMethod, &ChoiceList::Click, this, [this] { cmbVBRCodingMethod_Click(); });
    OnEvent(opPreset, &QButtonGroup::idClicked, this,
            [this](int number) { SelectedPreset = static_cast<qint16>(number); });
    OnEvent(opAltPreset, &QButtonGroup::idClicked, this,
            [this](int number) { SelectedAltPreset = static_cast<qint16>(number); });
    OnEvent(cmdOK, &QPushButton::clicked, this, [this] {
        ApplyMp3Options();
        accept();
    });
    OnEvent(cmdApply, &QPushButton::clicked, this, [this] { ApplyMp3Options(); });
    OnEvent(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

void Mp3Options::CallForm(const FormatCaller& caller, std::shared_ptr<Mp3Parameters> parameters) {
    Caller.emplace(caller);
    Parameters = std::move(parameters);
    SelectedPreset = SelectedAltPreset = 1;
    LoadMp3Options();
}

void Mp3Options::LoadMp3Options() {
    const Mp3Parameters& set = *Parameters;
    SelectData(*cmbFrequency, set.SampleRate);
    SetInRange(*sldrQuality, set.EncoderQuality);
    ShowPosition(*sldrBitrate, set.Bitrate);
    frmBitrate->setTitle(BitrateText(u"Current bitrate"_s, set.Bitrate));
    ShowPosition(*sldrVbrBitrate, set.MaxVbrBitrate);
    lblVbrBitrate->setText(BitrateText(u"Current bitrate"_s, set.MaxVbrBitrate));
    SetInRange(*udVbrQuality, set.VbrQuality);
    SelectItem(*cmbVBRCodingMethod, set.VbrMethod + 1);
    SetInRange(*udAbrBitrate, set.AbrBitrate);
    SelectItem(*cmbChMode, set.ChannelCount == 1 ? 0 : set.StereoMode);
    chWriteVBRHeader->setChecked(set.WriteVbrHeader);
    chStrictlyEnforceMinBitrate->setChecked(set.EnforceMinBitrate);
    LoadFilters();
    SelectItem(*cmbATHControl, set.AthControl);
    SelectItem(*cmbEmphasis, set.Emphasis);
    chErrorProtection->setChecked(set.ErrorProtection);
    chBlockType->setChecked(set.BlockTypesDiffer);
    chBitReservoir->setChecked(set.BitReservoir);
    chShortBlocks->setChecked(set.ShortBlocks);
    chStrictlyISOCompliance->setChecked(set.StrictIso);
}

void Mp3Options::LoadFilters() {
    const auto load = [](QCheckBox& check, QSpinBox& frequency, int hertz, int forNone, QSpinBox& width,
                         int widthHertz, int widthForNone) {
        SetInRange(frequency, hertz < 0 ? forNone : hertz);
        check.setChecked(hertz >= 0);
        SetInRange(width, widthHertz);
        if (width.value() == 0) width.setValue(widthForNone);
    };
    const Mp3Parameters& set = *Parameters;
    load(*chHFilt, *udHFiltF, set.HighpassFrequency, HighpassForNone, *udHFiltW, set.HighpassWidth,
         HighpassWidthForNone);
    chHFilt_Click();
    load(*chLFilt, *udLFiltF, set.LowpassFrequency, LowpassForNone, *udLFiltW, set.LowpassWidth,
         LowpassWidthForNone);
    chLFilt_Click();
}

void Mp3Options::ApplyMp3Options() {
    switch (tabMP3->currentIndex()) {
        case PresetTab:
            Parameters->SetPreset(SelectedPreset);
            LoadMp3Options();
            break;
        case AltPresetTab:
            Parameters->SetAltPreset(SelectedAltPreset);
            LoadMp3Options();
            break;
        case CommandLineTab:
            Parameters->SetCommandLine(txtCommLine->text());
            LoadMp3Options();
            break;
        default:
            TakeControls();
            break;
    }
    Caller->FileWenc.SetFormatMP3Ex(Parameters);
    Caller->ShowFormat();
    SaveMp3Format(*Parameters);
}

void Mp3Options::TakeControls() {
    Mp3Parameters& set = *Parameters;
    set.SampleRate = cmbFrequency->currentData().toInt();
    set.VbrMethod = cmbVBRCodingMethod->currentIndex() - 1;
    set.Bitrate = BitrateAt(sldrBitrate->value());
    set.MaxVbrBitrate = BitrateAt(sldrVbrBitrate->value());
    set.AthControl = static_cast<qint16>(cmbATHControl->currentIndex());
    // Mono leaves the stereo mode for the day on which it is stereo again.
    set.ChannelCount = cmbChMode->currentIndex() == 0 ? 1 : 2;
    if (set.ChannelCount == 2) set.StereoMode = cmbChMode->currentIndex();
    set.Emphasis = static_cast<qint16>(cmbEmphasis->currentIndex());
    set.WriteVbrHeader = chWriteVBRHeader->isChecked();
    set.EnforceMinBitrate = chStrictlyEnforceMinBitrate->isChecked();
    set.ErrorProtection = chErrorProtection->isChecked();
    set.BlockTypesDiffer = chBlockType->isChecked();
    set.BitReservoir = chBitReservoir->isChecked();
    set.ShortBlocks = chShortBlocks->isChecked();
    set.StrictIso = chStrictlyISOCompliance->isChecked();
    set.AbrBitrate = static_cast<qint16>(udAbrBitrate->value());
    set.HighpassFrequency = chHFilt->isChecked() ? udHFiltF->value() : -1;
    set.LowpassFrequency = chLFilt->isChecked() ? udLFiltF->value() : -1;
    set.HighpassWidth = udHFiltW->value();
    set.LowpassWidth = udLFiltW->value();
    set.VbrQuality = static_cast<qint16>(udVbrQuality->value());
}

void Mp3Options::ShowBitrate() {
    const int kilobits = BitrateAt(sldrBitrate->value());
    frmBitrate->setTitle(BitrateText(u"Current bitrate"_s, kilobits));
    sldrBitrate->setToolTip(QString::number(kilobits));
}

void Mp3Options::ShowVbrBitrate() {
    const int kilobits = BitrateAt(sldrVbrBitrate->value());
    lblVbrBitrate->setText(BitrateText(u"Current bitrate"_s, kilobits));
    sldrVbrBitrate->setToolTip(QString::number(kilobits));
}

void Mp3Options::chHFilt_Click() {
    EnableAll(chHFilt->isChecked(), {udHFiltF, udHFiltW, lblHFiltW});
}

void Mp3Options::chLFilt_Click() {
    EnableAll(chLFilt->isChecked(), {udLFiltF, udLFiltW, lblLFiltW});
}

void Mp3Options::cmbVBRCodingMethod_Click() {
    constexpr int None = 0;
    constexpr int Abr = 5;
    const int method = cmbVBRCodingMethod->currentIndex();
    EnableAll(method != None && method != Abr, {lblVbrQuality, udVbrQuality});
    EnableAll(method == Abr, {lblAbrBitrate, udAbrBitrate});
    EnableAll(method != None, {frmVbrBitrate, lblVbrBitrate, sldrVbrBitrate, frmVbrAdvanced, chWriteVBRHeader,
                               chStrictlyEnforceMinBitrate});
}

}  // namespace Sonmira

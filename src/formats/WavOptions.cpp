#include "formats/WavOptions.h"

#include "formats/OptionControls.h"
#include "platform/Dialogs.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"
#include "shell/widgets/Events.h"

#include <QRadioButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

template <class Table>
int ValueAt(const Table& table, int place) {
    const bool isThere = place >= 0 && place < static_cast<int>(table.size());
    return isThere ? table[static_cast<std::size_t>(place)] : 0;
}

void TakeSaved(int& place, const QString& key) {
    PassOver([&] { place = ToInteger32(ReadIniValue(SettingsFile, u"Wav"_s, key)); });
}

}  // namespace

void SaveWavChoice(const WavChoice& choice) {
    const auto save = [](const QString& key, int place) {
        WriteIniValue(SettingsFile, u"Wav"_s, key, PlainNumber(place));
    };
    save(u"Frequency"_s, choice.Frequency);
    save(u"Channel"_s, choice.Channel);
    save(u"bits"_s, choice.Bits);
}

void SetWavFormat(const FormatCaller& caller, const WavChoice& choice) {
    caller.FileWenc.SetFormatPCM(ValueAt(WavFrequencies, choice.Frequency),
                                 ValueAt(WavChannels, choice.Channel), ValueAt(WavBits, choice.Bits));
    caller.ShowFormat();
}

WavChoice SavedWavChoice() {
    WavChoice choice;
    TakeSaved(choice.Frequency, u"Frequency"_s);
    TakeSaved(choice.Channel, u"Channel"_s);
    TakeSaved(choice.Bits, u"bits"_s);
    return choice;
}

namespace {

constexpr QRgb UnusualColour = 0xFF808080;

// A frame of options, in `columns`; the unusual ones are grey but can be chosen like the others.
QButtonGroup* MakeOptions(QWidget* window, QGridLayout* place, int column, const QString& frameName,
                          const QString& caption, const QStringList& options, const QSet<int>& unusual) {
    auto* frame = MakeFrame(frameName, caption);
    auto* group = new QButtonGroup(window);
    for (int index = 0; index < options.size(); ++index) {
        auto* option = new QRadioButton(options[index]);
        if (unusual.contains(index)) {
            QPalette palette = option->palette();
            palette.setColor(QPalette::WindowText, QColor(UnusualColour));
            option->setPalette(palette);
        }
        group->addButton(option, index);
        frame->layout()->addWidget(option);
    }
    MakeOneTabStop(*group);
    static_cast<QVBoxLayout*>(frame->layout())->addStretch(1);
    place->addWidget(frame, 0, column);
    return group;
}

// Selects the option of that place; there may be none.
void Select(QButtonGroup& group, int place) {
    if (QAbstractButton* option = group.button(place)) option->setChecked(true);
}

template <class Table>
QStringList Captions(const Table& values, const QString& unit) {
    QStringList captions;
    for (const int value : values) captions.append(QString::number(value) + unit);
    return captions;
}

}  // namespace

WavOptions::WavOptions(QWidget* owner) : QDialog(owner) {
    setObjectName(u"frmWav"_s);
    setWindowTitle(u"Wav PCM Option format"_s);
    auto* grid = new QGridLayout;
    Option1 = MakeOptions(this, grid, 0, u"Frame1"_s, u"Sampling Frequency :"_s,
                          Captions(WavFrequencies, u" Hz"_s), {0, 1});
    Option2 = MakeOptions(this, grid, 1, u"Frame2"_s, u"Channel Mode :"_s, {u"Mono"_s, u"Stéréo"_s}, {});
    Option3 = MakeOptions(this, grid, 2, u"Frame3"_s, u"Bits per sample :"_s,
                          Captions(WavBits, u" bits per sample"_s), {0, 1, 2, 3, 6, 7});
    Command1 = MakeControl<QPushButton>(u"Command1"_s, u"Apply"_s);
    Command2 = MakeControl<QPushButton>(u"Command2"_s, u"Restore CD Audio default format"_s);
    Command1->setDefault(true);
    Command2->setAutoDefault(false);
    auto* column = new QVBoxLayout(this);
    column->addLayout(grid);
    AddButtons(this, {Command2, Command1});
    const WavChoice design;
    Select(*Option1, design.Frequency);
    Select(*Option2, design.Channel);
    Select(*Option3, design.Bits);
    OnEvent(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    OnEvent(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    OnEvent(this, &QDialog::finished, this, [this] { Form_Unload(); });
}

void WavOptions::LoadForm(const FormatCaller& caller) {
    Caller.emplace(caller);
    const WavChoice saved = SavedWavChoice();
    Select(*Option1, saved.Frequency);
    Select(*Option2, saved.Channel);
    Select(*Option3, saved.Bits);
}

WavChoice WavOptions::Chosen() const {
    return {Option1->checkedId(), Option2->checkedId(), Option3->checkedId()};
}

void WavOptions::Command1_Click() {
    // Kept before the encoder is asked: a refused format is the saved one, too.
    SaveWavChoice(Chosen());
    SetWavFormat(*Caller, Chosen());
    if (!Caller->TextOutFormat.text().isEmpty()) {
        accept();
        return;
    }
    Dialogs().ShowMessage(u"Can't set this format to the encoder. Please modify format options."_s,
                          MessageIcon::Warning, u"Sonmira"_s);
}

void WavOptions::UseCdFormat() {
    const WavChoice cd;
    Select(*Option1, cd.Frequency);
    Select(*Option2, cd.Channel);
    Select(*Option3, cd.Bits);
    SetWavFormat(*Caller, cd);
    SaveWavChoice(Chosen());
}

void WavOptions::Command2_Click() {
    UseCdFormat();
    accept();
}

// A user who gives up on a refused format is left with a usable one.
void WavOptions::Form_Unload() {
    if (Caller && Caller->TextOutFormat.text().isEmpty()) UseCdFormat();
}

}  // namespace Sonmira

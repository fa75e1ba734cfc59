#include "formats/OutputFormatSelector.h"

#include "engine/OutputFormats.h"
#include "formats/Mp3Options.h"
#include "formats/OggOptions.h"
#include "formats/OutputPanel.h"
#include "formats/WavOptions.h"
#include "platform/Paths.h"
#include "shell/EncoderGate.h"
#include "shell/LanguageFiles.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/InputBoxes.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QToolButton>

namespace Sonmira {

namespace {

// The MP3 format that is in force before anything was selected.
constexpr int PlainFrequency = 44100;
constexpr int PlainChannels = 2;
constexpr int PlainKilobits = 128;

}  // namespace

OutputFormatSelector::OutputFormatSelector(OutputPanel& controls, AudioFile& fileWenc,
                                           OutputSettings& settings)
    : Panel(controls),
      Caller{fileWenc, *controls.TextOutFormat},
      Levels(controls, settings),
      Wma(controls, fileWenc) {
    OnEvent(Panel.ComboOutFormat, &ChoiceList::Click, this, [this] { ComboOutFormat_Click(); });
    OnEvent(Panel.CheckOutPath, &QCheckBox::toggled, this, [this] { CheckOutPath_Click(); });
    OnEvent(Panel.CmdSelectPath, &QToolButton::clicked, this, [this] { CmdSelectPath_Click(); });
    OnEvent(Panel.CmdFormatParameter, &QToolButton::clicked, this, [this] { CmdFormatParameter_Click(); });
}

void OutputFormatSelector::FillComboOutFormat(bool wmaSupported) {
    for (const OutputRow& row : OutputTable) {
        if (row.Needs == OutputNeeds::Lame && !IsLameInstalled()) continue;
        if (row.Needs == OutputNeeds::WmaSupport && !wmaSupported) continue;
        Panel.ComboOutFormat->addItem(row.Name.toString());
    }
    // Adding the first item selects it in silence; nothing is selected until somebody selects it.
    Panel.ComboOutFormat->setCurrentIndex(-1);
}

void OutputFormatSelector::SetPlainMp3() {
    Caller.FileWenc.SetFormatMP3(PlainFrequency, PlainKilobits, PlainChannels);
    Caller.ShowFormat();
}

bool OutputFormatSelector::ApplySavedMp3() {
    const bool taken = ApplySavedMp3Format(Caller, Mp3Params);
    Caller.ShowFormat();
    return taken;
}

void OutputFormatSelector::SelectFormat(const QString& format) {
    const int place = Panel.ComboOutFormat->findText(format, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (place < 0) return;
    Panel.ComboOutFormat->setCurrentIndex(place);
    ComboOutFormat_Click();
}

void OutputFormatSelector::ComboOutFormat_Click() {
    const QString format = Panel.ComboOutFormat->currentText();
    if (const QWidget* const list = Levels.ApplySaved(format)) {
        Panel.ShowDetail(list);
    } else if (format == FormatName::Mp3) {
        // The library is there but cannot be loaded: every file is to fail, rather than to get the sound of
        // the format before under this one's ending.
        if (!ApplySavedMp3()) Caller.FileWenc.DropFormat();
        Panel.ShowDetail(Panel.TextOutFormat);
    } else if (format == FormatName::Wav) {
        Panel.TextOutFormat->clear();
        SetWavFormat(Caller, SavedWavChoice());
        Panel.ShowDetail(Panel.TextOutFormat);
    } else if (format == FormatName::Ogg) {
        Panel.TextOutFormat->clear();  // a damaged choice ends here, and nothing is in force
        ApplySavedOggFormat(Caller);
        Caller.ShowFormat();
        Panel.ShowDetail(Panel.TextOutFormat);
    } else if (format == FormatName::Wma) {
        Wma.ApplySavedWmaFormat();
        Panel.ShowDetail(Panel.ComboWmaFormat);
    }
}

void OutputFormatSelector::CheckOutPath_Click() {
    const bool besideOriginal = Panel.CheckOutPath->isChecked();
    Panel.TextOutPath->setEnabled(!besideOriginal);
    Panel.CmdSelectPath->setEnabled(!besideOriginal);
}

void OutputFormatSelector::CmdSelectPath_Click() {
    const QString folder = BrowseForFolder(LanguageLines[LanguageLine::ChooseFolder]);
    if (!folder.isEmpty()) Panel.TextOutPath->SetText(folder);
}

void OutputFormatSelector::CmdFormatParameter_Click() {
    WithFailureBox([this] {
        const QString format = Panel.ComboOutFormat->currentText();
        if (format == FormatName::Mp3) {
            Mp3Options window(Panel.window());
            window.CallForm(Caller, Mp3Params);
            window.exec();
            Mp3Params = window.InForce();
        }
        if (format == FormatName::Ogg) {
            OggOptions window(Panel.window());
            window.Loader(Caller);
            window.exec();
        }
        if (format == FormatName::Wav) {
            WavOptions window(Panel.window());
            window.LoadForm(Caller);
            window.exec();
        }
    });
}

}  // namespace Sonmira

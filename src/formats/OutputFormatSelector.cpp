#include "formats/OutputFormatSelector.h"

#include "codecs/AudioFile.h"
#include "engine/OutputFormatNames.h"
#include "formats/OutputPanel.h"
#include "shell/EncoderGate.h"
#include "shell/LanguageFiles.h"
#include "shell/Paths.h"
#include "shell/widgets/ChoiceList.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/PathBox.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QToolButton>

namespace Sonmira {

namespace {

// What a format starts with when the user has chosen nothing else: CD quality in, a plain choice out.
constexpr int DefaultFrequency = 44100;
constexpr int DefaultChannels = 2;
constexpr int DefaultKilobits = 128;
constexpr int DefaultBits = 16;
constexpr int DefaultOggQuality = 400;

constexpr int FolderDialogTitleLine = 18;

}  // namespace

OutputFormatSelector::OutputFormatSelector(OutputPanel& controls, AudioFile& fileWenc, EncoderLevels& levels)
    : Panel(controls), FileWenc(fileWenc), Levels(controls, levels), Wma(controls, fileWenc) {
    OnEvent(Panel.ComboOutFormat, &ChoiceList::Click, this, [this] { ComboOutFormat_Click(); });
    OnEvent(Panel.CheckOutPath, &QCheckBox::toggled, this, [this] { CheckOutPath_Click(); });
    OnEvent(Panel.CmdSelectPath, &QToolButton::clicked, this, [this] { CmdSelectPath_Click(); });
}

void OutputFormatSelector::FillComboOutFormat(bool wmaSupported) {
    const auto add = [this](QStringView name) { Panel.ComboOutFormat->addItem(name.toString()); };
    if (IsLameInstalled()) add(FormatName::Mp3);
    for (const QStringView name :
         {FormatName::Wav, FormatName::Ogg, FormatName::Ape, FormatName::Flac, FormatName::Mpc}) {
        add(name);
    }
    if (wmaSupported) add(FormatName::Wma);
    // Adding the first item selects it in silence; nothing is selected until somebody selects it.
    Panel.ComboOutFormat->setCurrentIndex(-1);
}

bool OutputFormatSelector::SetPlainMp3() {
    const bool taken = FileWenc.SetFormatMP3(DefaultFrequency, DefaultKilobits, DefaultChannels);
    ShowFormat();
    return taken;
}

void OutputFormatSelector::ShowFormat() {
    Panel.TextOutFormat->setText(FileWenc.FormatString());
}

void OutputFormatSelector::ComboOutFormat_Click() {
    const QString format = Panel.ComboOutFormat->currentText();
    if (format == FormatName::Ape) {
        Levels.ApplySavedApeFormat();
        Panel.ShowDetail(Panel.ComboAPEFormat);
    } else if (format == FormatName::Mpc) {
        Levels.ApplySavedMpcFormat();
        Panel.ShowDetail(Panel.ComboMPCFormat);
    } else if (format == FormatName::Flac) {
        Levels.ApplySavedFlacFormat();
        Panel.ShowDetail(Panel.ComboFLACFormat);
    } else if (format == FormatName::Mp3) {
        if (!SetPlainMp3()) {
            // The library is there but cannot be loaded. The earlier format stays, and the list must say so,
            // or its sound would be written under the wrong ending.
            const int earlier = std::exchange(AppliedItem, -1);
            if (earlier < 0) {
                Panel.ComboOutFormat->setCurrentIndex(-1);
            } else {
                Panel.ComboOutFormat->SelectPlace(earlier);
            }
            return;
        }
        Panel.ShowDetail(Panel.TextOutFormat);
    } else if (format == FormatName::Wav) {
        Panel.TextOutFormat->clear();
        FileWenc.SetFormatPCM(DefaultFrequency, DefaultChannels, DefaultBits);
        ShowFormat();
        Panel.ShowDetail(Panel.TextOutFormat);
    } else if (format == FormatName::Ogg) {
        FileWenc.SetFormatOggVorbis(DefaultFrequency, DefaultChannels, {}, {}, {}, DefaultOggQuality);
        ShowFormat();
        Panel.ShowDetail(Panel.TextOutFormat);
    } else if (format == FormatName::Wma) {
        Wma.ApplySavedWmaFormat();
        Panel.ShowDetail(Panel.ComboWmaFormat);
    }
    AppliedItem = Panel.ComboOutFormat->currentIndex();
}

void OutputFormatSelector::CheckOutPath_Click() {
    const bool besideOriginal = Panel.CheckOutPath->isChecked();
    Panel.TextOutPath->setEnabled(!besideOriginal);
    Panel.CmdSelectPath->setEnabled(!besideOriginal);
}

void OutputFormatSelector::CmdSelectPath_Click() {
    const QString folder = BrowseForFolder(LanguageLines[FolderDialogTitleLine]);
    if (!folder.isEmpty()) Panel.TextOutPath->SetText(folder);
}

}  // namespace Sonmira

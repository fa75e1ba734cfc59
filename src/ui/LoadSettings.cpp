// How the main window comes up: its texts, the empty collection and what the settings file remembers.

#include "engine/OutputFormatNames.h"
#include "formats/OutputPanel.h"
#include "kit/Placing.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/NamedMutex.h"
#include "shell/EncoderGate.h"
#include "shell/Paths.h"
#include "shell/Settings.h"
#include "shell/Values.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/Form1.h"
#include "shell/widgets/MinMaxInfo.h"
#include "shell/widgets/PathBox.h"
#include "ui/BatchConverter.h"

#include <QAction>
#include <QCheckBox>
#include <QCoreApplication>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The least size in twips, for letters of the usual size.
constexpr double LeastWidth = 9195.0;
constexpr double LeastHeight = 8400.0;

// The place in the language menu that is taken for one run when the picker was closed without a choice.
constexpr QStringView PlaceWithoutChoice = u"6";

QString SavedValue(const QString& section, const QString& key) {
    return ReadIniValue(SettingsFile, section, key);
}

}  // namespace

void BatchConverter::Form_Load() {
    const QStringList version = QCoreApplication::applicationVersion().split(u'.');
    setWindowTitle(u"Sonmira V"_s + version.value(0) + u'.' + version.value(1));
    const double letters = LetterFactor(*this);
    HookMinMaxInfo(*this, LeastWidth * letters, LeastHeight * letters);
    Languages.FillLanguageMenu();
    CreateNamedMutex(u"Tolvane_SonmiraPack");
    CreateNamedMutex(u"Global\\Tolvane_SonmiraPack");
    ChooseLanguage();
    TagPage.AddGenres();
    NewConversion();
    LoadSettings();
    TagPage.UseVersion1();
}

void BatchConverter::ChooseLanguage() {
    const auto saved = [] { return SavedValue(u"LANGUE"_s, u"VALUE"_s); };
    QString place = saved();
    if (place.isEmpty()) {
        Deb::Unload();  // the logo would stand before the picker
        Form1(this).exec();
        place = saved();
    }
    if (place.isEmpty()) place = PlaceWithoutChoice.toString();
    const int index = ToInteger16(LeadingNumber(place));
    // Without a file at that place the design captions stay, and nothing is loaded at all.
    if (index <= Languages.HighestIndex()) ApplyLanguageOf(index);
}

void BatchConverter::LoadSettings() {
    // What a failure leaves unreached stays as designed; the logo goes in any case.
    PassOver([this] {
        if (SavedValue(u"LAUNCH"_s, u"VALUE"_s) != u"True") {
            WriteIniValue(SettingsFile, u"LAUNCH"_s, u"VALUE"_s, u"True"_s);
        }
        QString wmaSupport = SavedValue(u"WMA"_s, u"WMASUPPORT"_s);
        if (wmaSupport.isEmpty()) {
            wmaSupport = u"False"_s;
            WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, wmaSupport);
        }
        Run.WmaSupported = wmaSupport == u"True";
        Controls.acceptWma->setChecked(Run.WmaSupported);
        Codecs.FileWenc.EnableWma(Run.WmaSupported);
        Codecs.FileRenc.EnableWma(Run.WmaSupported);
        Run.Busy = Run.CancelAll = false;
        if (Run.WmaSupported) FormatSelector.FillComboWmaFormat();
        FormatSelector.SetPlainMp3();
        RestoreOutputFolder();
        FormatSelector.FillComboOutFormat(Run.WmaSupported);
        RestoreOutputFormat(wmaSupport);
    });
    Deb::Unload();
}

void BatchConverter::RestoreOutputFolder() {
    const QString folder = SavedValue(u"AudioConverter"_s, u"OutputPath"_s);
    const bool known = !folder.isEmpty() && DirectoryExists(folder);
    Controls.Picture9->TextOutPath->SetText(known ? folder : GetSpecialFolder(DesktopFolderNumber));
    const QString mode = SavedValue(u"AudioConverter"_s, u"Modepath"_s);
    if (!mode.isEmpty()) Controls.Picture9->CheckOutPath->setChecked(mode == u"TRUE");
}

void BatchConverter::RestoreOutputFormat(const QString& wmaSupport) {
    QString format = SavedValue(u"AudioConverter"_s, u"Format"_s);
    if (!format.isEmpty()) {
        const bool takesWma = ToFlag(wmaSupport);  // a text that is no flag fails here, whatever the format
        if (format == FormatName::Wma && !takesWma) format = FormatName::Mp3.toString();
        if (format == FormatName::Mp3 && !IsLameInstalled()) format = FormatName::Wav.toString();
        FormatSelector.SelectFormat(format);
        return;
    }
    FormatSelector.SelectFormat((IsLameInstalled() ? FormatName::Mp3 : FormatName::Wav).toString());
    // On a first start the encoder is given MP3 once more, whatever the list shows.
    FormatSelector.SetPlainMp3();
    FormatSelector.ApplySavedMp3();
}

}  // namespace Sonmira

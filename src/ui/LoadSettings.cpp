// How the main window comes up: its texts, the empty collection and what the settings file remembers.

#include "engine/OutputFormatNames.h"
#include "formats/OutputPanel.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "shell/EncoderGate.h"
#include "shell/LanguageFiles.h"
#include "shell/Paths.h"
#include "shell/Settings.h"
#include "shell/Values.h"
#include "shell/widgets/ChoiceList.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/PathBox.h"
#include "ui/BatchConverter.h"
#include "ui/LanguageTargets.h"

#include <QCheckBox>
#include <QCoreApplication>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString SavedValue(const QString& section, const QString& key) {
    return ReadIniValue(SettingsFile, section, key);
}

}  // namespace

void BatchConverter::Form_Load() {
    const QStringList version = QCoreApplication::applicationVersion().split(u'.');
    setWindowTitle(u"Sonmira V"_s + version.value(0) + u'.' + version.value(1));
    LoadLanguage();
    NewConversion();
    LoadSettings();
}

void BatchConverter::LoadLanguage() {
    const std::vector<LanguageFile> files = FindLanguageFiles();
    const double saved = LeadingNumber(SavedValue(u"LANGUE"_s, u"VALUE"_s));
    const bool known = saved >= 0 && saved < static_cast<double>(files.size());
    const QString path = files.empty() ? ProgramFolder() + u"\\Lang\\English.lng"_s
                                       : files[known ? static_cast<std::size_t>(saved) : 0].Path;
    ApplyLanguage(path, Controls);
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
        Run.Busy = Run.CancelAll = false;
        FormatSelector.SetPlainMp3();
        RestoreOutputFolder();
        FormatSelector.FillComboOutFormat();
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
    ChoiceList& list = *Controls.Picture9->ComboOutFormat;
    QString format = SavedValue(u"AudioConverter"_s, u"Format"_s);
    if (!format.isEmpty()) {
        if (format == FormatName::Wma && !ToFlag(wmaSupport)) {
            format = FormatName::Mp3.toString();
        }
        if (format == FormatName::Mp3 && !IsLameInstalled()) format = FormatName::Wav.toString();
        list.SelectText(format);
        return;
    }
    list.SelectText((IsLameInstalled() ? FormatName::Mp3 : FormatName::Wav).toString());
    // On a first start the encoder is given plain MP3 once more, whatever the list shows.
    FormatSelector.SetPlainMp3();
}

}  // namespace Sonmira

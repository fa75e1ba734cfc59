#include "formats/SavedOutput.h"

#include "engine/Components.h"
#include "engine/OutputFormats.h"
#include "formats/OutputFormatSelector.h"
#include "formats/OutputPanel.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "shell/EncoderGate.h"
#include "shell/Settings.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/InputBoxes.h"

#include <QAction>
#include <QCheckBox>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString SavedValue(const QString& section, const QString& key) {
    return ReadIniValue(SettingsFile, section, key);
}

}  // namespace

bool SavedOutput::LoadSettings(QStringView mp3InOldFiles) {
    bool isFormatTested = true;
    PassOver([&] {
        if (SavedValue(u"LAUNCH"_s, u"VALUE"_s) != u"True") {
            WriteIniValue(SettingsFile, u"LAUNCH"_s, u"VALUE"_s, u"True"_s);
        }
        const QString wmaSupport = RestoreWmaSupport();
        if (Codecs.Settings.WmaSupported) FormatSelector.FillComboWmaFormat();
        FormatSelector.SetPlainMp3();
        RestoreOutputFolder();
        FormatSelector.FillComboOutFormat(Codecs.Settings.WmaSupported);
        isFormatTested = RestoreOutputFormat(wmaSupport, mp3InOldFiles);
    });
    Deb::Unload();
    return isFormatTested;
}

QString SavedOutput::RestoreWmaSupport() {
    QString wmaSupport = SavedValue(u"WMA"_s, u"WMASUPPORT"_s);
    if (wmaSupport.isEmpty()) {
        wmaSupport = u"False"_s;
        WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, wmaSupport);
    }
    Codecs.Settings.WmaSupported = wmaSupport == u"True";
    acceptWma.setChecked(Codecs.Settings.WmaSupported);
    Codecs.FileWenc.EnableWma(Codecs.Settings.WmaSupported);
    Codecs.FileRenc.EnableWma(Codecs.Settings.WmaSupported);
    return wmaSupport;
}

void SavedOutput::RestoreOutputFolder() {
    const QString folder = SavedValue(u"AudioConverter"_s, u"OutputPath"_s);
    const bool known = !folder.isEmpty() && DirectoryExists(folder);
    Panel.TextOutPath->SetText(known ? folder : GetSpecialFolder(DesktopFolderNumber));
    const QString mode = SavedValue(u"AudioConverter"_s, u"Modepath"_s);
    if (!mode.isEmpty()) Panel.CheckOutPath->setChecked(mode == u"TRUE");
}

bool SavedOutput::RestoreOutputFormat(const QString& wmaSupport, QStringView mp3InOldFiles) {
    QString format = SavedValue(u"AudioConverter"_s, u"Format"_s);
    if (!format.isEmpty()) {
        if (format == mp3InOldFiles) format = FormatName::Mp3.toString();
        bool takesWma = false;
        if (!PassOver([&] { takesWma = ToFlag(wmaSupport); })) return false;
        if (format == FormatName::Wma && !takesWma) format = FormatName::Mp3.toString();
        if (format == FormatName::Mp3 && !IsLameInstalled()) format = FormatName::Wav.toString();
        FormatSelector.SelectFormat(format);
        return true;
    }
    FormatSelector.SelectFormat((IsLameInstalled() ? FormatName::Mp3 : FormatName::Wav).toString());
    // On a first start the encoder is given MP3 once more, whatever the list shows.
    FormatSelector.SetPlainMp3();
    FormatSelector.ApplySavedMp3();
    return true;
}

void SavedOutput::Keep() const {
    const auto keep = [](const QString& key, const QString& value) {
        WriteIniValue(SettingsFile, u"AudioConverter"_s, key, value);
    };
    keep(u"OutputPath"_s, Panel.TextOutPath->Text());
    keep(u"Modepath"_s, Panel.CheckOutPath->isChecked() ? u"TRUE"_s : u"FALSE"_s);
    keep(u"Format"_s, Panel.ComboOutFormat->currentText());
}

}  // namespace Sonmira

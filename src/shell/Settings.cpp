#include "shell/Settings.h"

#include "platform/ChildProcess.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"
#include "platform/Values.h"
#include "shell/LanguageFiles.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

QString SettingsFile;
QString SettingsFolder;

void LocateSettingsFile() {
    QString data;
    PassOver([&] { data = GetKnownFolder(ApplicationDataFolderNumber); });
    if (data.isEmpty() || !DirectoryExists(data)) {
        SettingsFolder = WithBackslash(ProgramFolder());
    } else {
        SettingsFolder = WithBackslash(data) + u"SonmiraPack\\"_s;
        // A folder that cannot be made shows at the first write only, which is lost without a word.
        if (!DirectoryExists(SettingsFolder)) CreateFolder(SettingsFolder);
    }
    SettingsFile = SettingsFolder + u"Sonmira.ini"_s;
}

QString ReadIniValue(const QString& file, const QString& section, const QString& key) {
    return ReadProfileValue(file, section, key);
}

void WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value) {
    WriteProfileValue(file, section, key, value);
}

namespace {

// The domain is reserved for examples: whoever publishes the program puts the real host here.
constexpr QStringView Host = u"https://sonmira.example";

// What the French file has as its own name.
constexpr QStringView FrenchMarker = u"Français";

// The place of French in the language menu.
constexpr double FrenchIndex = 1;

void OpenPage(QStringView path) {
    ShellOpen(Host.toString() + path.toString(), ProgramFolder());
}

}  // namespace

bool ShellOpen(const QString& target, const QString& folder, bool /*ignored*/) {
    return LaunchWithDesktop(target, folder);
}

void OpenHelp() {
    ShellOpen(ProgramFolder() + u"\\Sonmira.chm"_s, ProgramFolder());
}

void OpenQuestions() {
    // The menu's place and the loaded texts are two different things that may disagree; this command goes by
    // the one, the home page by the other.
    const double language = ToNumber(ReadIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s));
    OpenPage(language == FrenchIndex ? u"/FAQ/FAQ_Sonmira.htm" : u"/FAQ/FAQ_SonmiraEn.htm");
}

void OpenHomePage() {
    OpenPage(LanguageLines[LanguageLine::LanguageName] == FrenchMarker ? u"/" : u"/indexEn.html");
}

QString EncoderPage() {
    return Host.toString() + u"/lame_encoder_download.htm"_s;
}

QString EncoderDownload() {
    return Host.toString() + u"/download_soft.php?d=5197&s=22"_s;
}

}  // namespace Sonmira

#include "shell/Settings.h"

#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"

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

}  // namespace Sonmira

#include "library/widgets/AddFileDialog.h"

#include "library/AudioFileNames.h"
#include "platform/Dialogs.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"
#include "shell/Settings.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString FolderWithoutBackslash(const QString& path) {
    const QString folder = FolderOf(path);
    // A root keeps its backslash: without it, it would be the name of a drive's current folder.
    const bool isRoot = folder.size() == 1 || (folder.size() == 3 && folder[1] == u':');
    return isRoot ? folder : folder.chopped(1);
}

void AskAndAdd(const std::function<void(const QString& path)>& add) {
    OpenDialogRequest request;
    request.Title = LanguageLines[LanguageLine::AddFile];
    request.Filter = AudioFileFilter();
    request.StartFolder = ReadIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s);
    if (request.StartFolder.isEmpty()) request.StartFolder = ProgramFolder();
    const std::optional<QStringList> chosen = Dialogs().OpenFiles(request);
    if (!chosen || chosen->isEmpty()) return;
    for (const QString& path : *chosen) add(path);
    // One file stores its folder with the backslash behind it, several store it as the dialog names it.
    const QString& first = chosen->first();
    const QString folder = chosen->size() > 1 ? FolderWithoutBackslash(first) : FolderOf(first);
    WriteIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s, folder);
}

}  // namespace

void AddFileDialog(const std::function<void(const QString& path)>& add) {
    PassOver([&] { AskAndAdd(add); });
}

}  // namespace Sonmira

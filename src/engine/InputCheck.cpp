#include "engine/InputCheck.h"

#include "engine/RunState.h"
#include "engine/RunView.h"
#include "platform/Failure.h"
#include "platform/FileSearch.h"
#include "shell/LanguageFiles.h"
#include "shell/Paths.h"

namespace Sonmira {

namespace {

// Lines of the language file.
constexpr int FileNotFoundLine = 95;
constexpr int GeneralFailureLine = 96;
constexpr int WmaUnreadableLine = 97;
constexpr int AacUnreadableLine = 98;
constexpr int OtherUnreadableLine = 99;
constexpr int WmaUnsupportedLine = 100;

void Reject(RunState& run, RunView& view, const QString& path, const QString& message) {
    view.SetRowProgress(run.CurrentItem, LanguageLines[GeneralFailureLine]);
    run.FileError = true;
    QString reason = message;
    if (EndsInUpper(path, u"WMA")) {
        reason = LanguageLines[run.WmaSupported ? WmaUnreadableLine : WmaUnsupportedLine];
    } else if (EndsInUpper(path, u"AAC")) {
        reason = LanguageLines[AacUnreadableLine];
    }
    view.SetRowProgress(run.CurrentItem, reason);
}

}  // namespace

bool CheckInputFile(RunState& run, RunView& view, AudioSource& fileRenc, const QString& path) {
    QString message = LanguageLines[OtherUnreadableLine];
    const bool readable = PassOver([&] {
        if (FindFirstName(path, SearchFor::VisibleFiles).isEmpty()) {
            message = LanguageLines[FileNotFoundLine];
            throw Failure(FailureNumber::FileNotFound);
        }
        fileRenc.OpenForRead(path);
        fileRenc.CloseFile();
    });
    if (!readable) Reject(run, view, path, message);
    return readable;
}

}  // namespace Sonmira

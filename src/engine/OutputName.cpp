#include "engine/OutputName.h"

#include "engine/Run.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"
#include "platform/Values.h"

namespace Sonmira {

OutputName::OutputName(Run& state, QString extension)
    : ThisRun(state), Stem(state.OutputStem()), Extension(std::move(extension)) {
    if (FileExists(Path())) TakeNext();
}

QString OutputName::Path() const {
    return ThisRun.OutputStem() + Extension;
}

bool OutputName::IsTakenByFile() const {
    return !FindFirstName(Path(), SearchFor::FilesAndFolders).isEmpty() && !IsFolder(Path());
}

void OutputName::TakeNext() {
    do {
        ++Number;
        ThisRun.SetOutputStem(Stem + u'(' + PlainNumber(Number) + u')');
    } while (FileExists(Path()));
}

}  // namespace Sonmira

#include "engine/OutputName.h"

#include "engine/RunState.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"
#include "platform/Values.h"

namespace Sonmira {

OutputName::OutputName(RunState& state, QString extension)
    : Run(state), Stem(state.OutputStem), Extension(std::move(extension)) {
    if (FileExists(Path())) TakeNext();
}

QString OutputName::Path() const {
    return Run.OutputStem + Extension;
}

bool OutputName::IsTakenByFile() const {
    return !FindFirstName(Path(), SearchFor::FilesAndFolders).isEmpty() && !IsFolder(Path());
}

void OutputName::TakeNext() {
    do {
        ++Number;
        Run.OutputStem = Stem + u'(' + PlainNumber(Number) + u')';
    } while (FileExists(Path()));
}

}  // namespace Sonmira

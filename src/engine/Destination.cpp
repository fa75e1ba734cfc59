#include "engine/Destination.h"

#include "engine/Run.h"
#include "engine/RunView.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

QString OutputRoot(const RunView& view) {
    return WithBackslash(view.TextOutPath());
}

bool Destination::TakeStem(const Run& run) {
    const QString base = FileNameOf(run.CurrentInput());
    SourceFolder = FolderOf(run.EncodageParticulier() ? run.RealFileName() : run.CurrentInput());
    const qsizetype dot = base.lastIndexOf(u'.');
    if (dot >= 0) Stem = base.left(dot);
    return FindFirstName(run.CurrentInput(), SearchFor::VisibleFiles).contains(u'.');
}

bool Destination::BesideTheSource(Run& run, RunView& view) const {
    if (view.CheckOutPath()) {
        run.SetOutputStem(SourceFolder + Stem);
        return true;
    }
    if (!view.TextOutPath().endsWith(u'\\')) view.SetTextOutPath(view.TextOutPath() + u'\\');
    return false;
}

void Destination::SetOutputStem(Run& run, RunView& view, const QString& relativeFolder) {
    if (BesideTheSource(run, view)) return;
    const QString folder = relativeFolder.isEmpty() ? QString() : WithBackslash(relativeFolder);
    run.SetOutputStem(view.TextOutPath() + folder + Stem);
}

void Destination::SetOutputStemInParent(Run& run, RunView& view, const QString& parentFolder) {
    if (BesideTheSource(run, view)) return;
    // A folder named exactly "\" leaves the folder of the file before. The empty one of a file directly under
    // the root becomes "\", so that the stem stands behind two backslashes, which harms nothing.
    if (parentFolder != u"\\") FolderBelow = WithBackslash(parentFolder);
    run.SetOutputStem(view.TextOutPath() + FolderBelow + Stem);
}

}  // namespace Sonmira

#include "engine/Destination.h"

#include "engine/Run.h"
#include "engine/RunView.h"
#include "platform/Failure.h"
#include "platform/FileRemoval.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/TemporaryFolder.h"
#include "platform/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The folder is asked for in a text of 100 characters, the closing one among them: a longer one stays out,
// and what is left is the root.
QString TempFolder() {
    constexpr qsizetype LengthOfText = 100;
    const QString folder = TemporaryFolder();
    return WithBackslash(ToNative(folder).size() < LengthOfText ? folder : QString());
}

}  // namespace

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

QString TempWavPathFor(const QString& path, int extensionLength) {
    const QString name = FileNameOf(path);
    return TempFolder() + name.left(name.size() - extensionLength) + u"wav"_s;
}

QString FreeTempWavPathFor(const QString& path, int extensionLength) {
    const QString wav = TempWavPathFor(path, extensionLength);
    PassOver([&] { DeleteFileOutright(wav); });
    return FileExists(wav) ? QString() : wav;
}

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

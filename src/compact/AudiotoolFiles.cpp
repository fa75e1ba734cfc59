// How files come into the list of the compact window and leave it.

#include "compact/Audiotool.h"
#include "compact/AudiotoolList.h"
#include "engine/InputCheck.h"
#include "library/AudioFileNames.h"
#include "library/widgets/AddFileDialog.h"
#include "platform/Dialogs.h"
#include "platform/EventLoop.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "shell/LanguageFiles.h"
#include "shell/widgets/Events.h"

#include <QAction>
#include <QScopeGuard>
#include <QTimer>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString DurationText(double seconds) {
    return seconds > 0 ? MinutesAndSeconds(seconds) + u":00"_s : u"-"_s;
}

void TellCannotAdd(const QString& path) {
    QString text = u"Can't add : \n"_s + ShownName(FileNameOf(path));
    if (EndsInUpper(path, u"WMA")) text += u"\n\nYou wma file is it DRM protected ?"_s;
    if (EndsInUpper(path, u"AAC")) {
        text +=
            u"\n\nThe file is not in a known AAC format for Sonmira. Maybe Invalid Channel number or "
            u"protected file."_s;
    }
    Dialogs().ShowMessage(text, MessageIcon::Warning, u"Sonmira"_s);
}

}  // namespace

void Audiotool::AddFileToList(const QString& path) {
    AudiotoolRows& rows = Controls.ListViewFiles->Rows();
    if (rows.Holds(path)) {
        Dialogs().ShowMessage(LanguageLines[LanguageLine::AlreadyInList] + u"\n\n"_s + ShownPath(path),
                              MessageIcon::Warning, u"Sonmira"_s);
        return;
    }
    double seconds = 0;
    const auto read = [&] {
        // Some decoders answer a missing file with no length, as they do an empty one. Unlike FileExists this
        // sees hidden names, too.
        if (FolderExists(path) || !DirectoryExists(path)) throw Failure(FailureNumber::FileNotFound);
        seconds = ReadDuration(Codecs.Parts(), path);
    };
    if (!PassOver(read)) {
        TellCannotAdd(path);
        return;
    }
    rows.Append(path, DurationText(seconds), ColourOf(TrackColor));
    ProgressBars.AttachRowProgressBars();
    UpdateFilesCount();
}

void Audiotool::RenumberRows() {
    Controls.ListViewFiles->Rows().RenumberRows();
}

void Audiotool::UpdateFilesCount() {
    Controls.LabelFilesToConvert->setText(LanguageLines[LanguageLine::FilesToConvert] + u": "_s +
                                          PlainNumber(Controls.ListViewFiles->Rows().Count()));
}

void Audiotool::BeginAdding() {
    ChangingRows = true;
    Controls.addfile->setEnabled(false);
    Controls.Image1->setEnabled(false);
    Controls.ListViewFiles->setAcceptDrops(false);
}

void Audiotool::EndAdding() {
    ChangingRows = false;
    Controls.addfile->setEnabled(true);
    Controls.Image1->setEnabled(true);
    Controls.ListViewFiles->setAcceptDrops(true);
}

void Audiotool::addfile_Click() {
    if (!InputsFree()) return;
    BeginAdding();
    const auto end = qScopeGuard([this] { EndAdding(); });
    AddFileDialog([this](const QString& path) {
        if (!Closed) AddFileToList(path);
    });
}

void Audiotool::ListViewFiles_DragDrop(const QStringList& paths) {
    if (!InputsFree()) return;
    BeginAdding();
    // The program that the files come from waits until the drop ends, so the work starts after it.
    const auto add = [this, paths] {
        const auto end = qScopeGuard([this] { EndAdding(); });
        for (const QString& path : paths) {
            if (Closed) return;
            if (IsDroppedAudioFile(path) && !FolderExists(path)) AddFileToList(path);
        }
    };
    QTimer::singleShot(0, this, [add] { GuardEvent(add); });
}

void Audiotool::DeleteSelectedRows() {
    if (!InputsFree()) return;
    ChangingRows = true;
    const auto end = qScopeGuard([this] { ChangingRows = false; });
    AudiotoolList& list = *Controls.ListViewFiles;
    for (const QPersistentModelIndex& selected : list.SelectedRows()) {
        if (Closed || !selected.isValid()) continue;
        const int row = selected.row() + 1;
        list.Rows().Remove(row);
        ProgressBars.UnloadLast(row);
        RenumberRows();
        ProgressBars.LayoutRowProgressBars();
        UpdateFilesCount();
        YieldToEventLoop();
    }
}

void Audiotool::ClearList_Click() {
    AudiotoolRows& rows = Controls.ListViewFiles->Rows();
    if (!InputsFree() || rows.Count() == 0) return;
    if (!Dialogs().AskYesNo(LanguageLines[LanguageLine::ClearQuestion], u"Sonmira"_s)) return;
    rows.Clear();
    ProgressBars.UnloadAllButFirst();
    UpdateFilesCount();
}

}  // namespace Sonmira

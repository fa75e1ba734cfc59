#include "compact/Audiotool.h"

#include "compact/AudiotoolList.h"
#include "compact/RowDriver.h"
#include "engine/StopCommands.h"
#include "formats/OutputPanel.h"
#include "shell/widgets/Events.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

Audiotool::Audiotool()
    : Controls(*this),
      ProgressBars(*Controls.ListViewFiles),
      RunShown(Controls, [this](bool enabled) { SetControlsEnabled(enabled); }),
      FormatSelector(*Controls.Output, Codecs.FileWenc, Codecs.Settings),
      Languages(*Controls.Languer),
      Output(*Controls.Output, FormatSelector, Codecs, *Controls.acceptWma) {
    setObjectName(u"Audiotool"_s);
    resize(640, 600);
    ConnectEvents();
    ConnectShellCommands();
    Form_Load();
}

void Audiotool::ConnectEvents() {
    const auto command = [this](QAction* action, auto handler) {
        OnEvent(action, &QAction::triggered, this, handler);
    };
    const auto button = [this](QAbstractButton* pressed, auto handler) {
        OnEvent(pressed, &QAbstractButton::clicked, this, handler);
    };
    command(Controls.addfile, [this] { addfile_Click(); });
    button(Controls.Image1, [this] { addfile_Click(); });
    command(Controls.MenuDeletefiles, [this] { ClearList_Click(); });
    button(Controls.ClearList, [this] { ClearList_Click(); });
    command(Controls.convertmenu, [this] { CmdConvert_Click(); });
    button(Controls.CmdConvert, [this] { CmdConvert_Click(); });
    button(Controls.cmdCancel, [this] { cmdCancel_Click(); });
    // A key of the button itself would go with its text.
    OnEvent(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this,
            [this] { Controls.cmdCancel->click(); });
    command(Controls.ConvertNow, [this] { ConvertNow_Click(); });
    command(Controls.Deletefromlist, [this] { DeleteSelectedRows(); });
    AudiotoolList* const list = Controls.ListViewFiles;
    OnEvent(list, &AudiotoolList::FilesDropped, this,
            [this](const QStringList& paths) { ListViewFiles_DragDrop(paths); });
    OnEvent(list, &AudiotoolList::DeletePressed, this, [this] { DeleteSelectedRows(); });
    OnEvent(list, &AudiotoolList::RowMenuAsked, this,
            [this](const QPoint& position) { Controls.popup->popup(position); });
}

void Audiotool::CmdConvert_Click() {
    if (InputsFree()) {
        RowDriver(ThisRun, RunShown, Codecs.Parts(), Controls.ListViewFiles->Rows()).RunAllRows();
    }
}

void Audiotool::ConvertRow(int rowIndex) {
    if (InputsFree()) {
        RowDriver(ThisRun, RunShown, Codecs.Parts(), Controls.ListViewFiles->Rows()).ConvertRow(rowIndex);
    }
}

void Audiotool::ConvertNow_Click() {
    const int row = Controls.ListViewFiles->SelectedRow();
    if (row > 0) ConvertRow(row);
}

void Audiotool::cmdCancel_Click() {
    CancelByButton(ThisRun, Codecs.Parts());
}

void Audiotool::SetControlsEnabled(bool enabled) {
    InputsLocked = !enabled;
    const QWidget* const inFocus = focusWidget();
    for (QAction* action : {Controls.addfile, Controls.MenuDeletefiles, Controls.convertmenu,
                            Controls.ConvertNow, Controls.Deletefromlist}) {
        action->setEnabled(enabled);
    }
    for (QToolButton* button : {Controls.Image1, Controls.ClearList}) button->setEnabled(enabled);
    // These two hand the keyboard to each other. A locked control would pass it on to the next one that is
    // free, and behind the cancel button that is the one which ends the program.
    QPushButton* const freed = enabled ? Controls.CmdConvert : Controls.cmdCancel;
    QPushButton* const locked = enabled ? Controls.cmdCancel : Controls.CmdConvert;
    freed->setEnabled(true);
    if (inFocus == locked) freed->setFocus();
    locked->setEnabled(false);
    Controls.ListViewFiles->setAcceptDrops(enabled);
    Controls.Output->SetControlsEnabled(enabled);
    if (inFocus != nullptr && inFocus != locked && !inFocus->isEnabled()) Controls.ListViewFiles->setFocus();
}

}  // namespace Sonmira

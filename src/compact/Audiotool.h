#pragma once

#include "compact/AudiotoolForm.h"
#include "compact/AudiotoolRunView.h"
#include "compact/RowBar.h"
#include "compact/RowProgressBars.h"
#include "engine/Components.h"
#include "engine/Run.h"
#include "formats/OutputFormatSelector.h"
#include "formats/SavedOutput.h"
#include "shell/widgets/LanguageMenu.h"

#include <QMainWindow>

namespace Sonmira {

// The compact window: a second, simpler front over the same engine. It owns all working state: the rows, the
// state of the run, the audio components.
class Audiotool : public QMainWindow {
    Q_OBJECT

public:
    // Builds the window, applies the language and restores the saved settings. Fails with TypeMismatch where
    // the first start's language picker was closed without a choice.
    Audiotool();

    AudiotoolForm& Form() { return Controls; }
    const Run& State() const { return ThisRun; }
    const OutputSettings& Settings() const { return Codecs.Settings; }
    const LanguageMenu& LanguageItems() const { return Languages; }
    const RowProgressBars& Bars() const { return ProgressBars; }

    // Adds one file. One that is in the list already, or cannot be read, is told and not added.
    void AddFileToList(const QString& path);
    // Writes the position of every row anew.
    void RenumberRows();
    void UpdateFilesCount();
    // Converts one row, counted from 1, and returns at its end. Nothing while the inputs are locked.
    void ConvertRow(int rowIndex);

    // Locks or frees the inputs during a run; the cancel button takes the opposite. The text of the output
    // folder and the quality of Musepack stay free. The keyboard goes from the button that is locked to the
    // one that is freed, and from any other locked control to the list.
    void SetControlsEnabled(bool enabled);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void ConnectEvents();
    void ConnectShellCommands();
    void Form_Load();
    void Form_QueryUnload(bool& cancel);
    void Form_Unload();
    void CmdConvert_Click();
    void cmdCancel_Click();
    void ConvertNow_Click();
    void addfile_Click();
    void ListViewFiles_DragDrop(const QStringList& paths);
    void DeleteSelectedRows();
    void ClearList_Click();
    void trackcolor_Click();

    // The commands that add are off while something is added; a run keeps them off, too.
    void BeginAdding();
    void EndAdding();
    // Whether a command may start a run or change the rows.
    bool InputsFree() const { return !ThisRun.Busy() && !InputsLocked && !ChangingRows; }

    AudiotoolForm Controls;
    Run ThisRun;
    CodecSet Codecs;
    RowProgressBars ProgressBars;
    AudiotoolRunView RunShown;
    OutputFormatSelector FormatSelector;
    LanguageMenu Languages;
    SavedOutput Output;
    qint32 TrackColor = DefaultTrackColour;
    bool InputsLocked = false;
    bool ChangingRows = false;  // rows are being added or removed, and the event loop runs in between
    bool Closed = false;
};

}  // namespace Sonmira

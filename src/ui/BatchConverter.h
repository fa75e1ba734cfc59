#pragma once

#include "codecs/AudioFile.h"
#include "engine/RunState.h"
#include "formats/OutputFormatSelector.h"
#include "library/Collection.h"
#include "shell/widgets/LanguageMenu.h"
#include "tags/TagPanel.h"
#include "ui/BatchCollectionView.h"
#include "ui/BatchConverterForm.h"
#include "ui/BatchRunView.h"

#include <QMainWindow>

namespace Sonmira {

// The main window. It owns all working state: the collection, the state of the run, the audio file
// objects; it is created once and lives as long as the program.
class BatchConverter : public QMainWindow {
    Q_OBJECT

public:
    // Builds the window, applies the language, empties the collection and restores the saved settings.
    BatchConverter();

    BatchConverterForm& Form() { return Controls; }
    const RunState& State() const { return Run; }
    const Collection& Gathered() const { return Items; }
    TagPanel& Tags() { return TagPage; }
    const LanguageMenu& LanguageItems() const { return Languages; }

    // Empties the collection, the tree and the list of rows.
    void NewConversion();
    // Adds what the user picked or dropped; see AddFiles.h. Nothing while the inputs are locked.
    void AddFolder(const QString& path);
    void AddDrop(const QStringList& paths);
    // Starts a full run and returns at its end. Nothing while the inputs are locked.
    void StartRun();

    // Locks or frees the inputs during a run or a scan. Button 6, the stop, takes the opposite. The text of
    // the output folder stays free: what is typed there counts for the next file.
    void SetControlsEnabled(bool enabled);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Load();
    void ChooseLanguage();
    void ApplyLanguageOf(int index);
    void LoadSettings();
    void RestoreOutputFolder();
    void RestoreOutputFormat(const QString& wmaSupport);
    void Form_QueryUnload(bool& cancel);
    void Form_Unload();
    void ConnectEvents();
    void ConnectShellCommands();
    void LangueName_Click(int index);
    void acceptWma_Click();
    void about_Click();
    void addfile_Click();
    void adddirectory_Click();
    void cancel_Click();
    void SSTab1_Click();

    // Whether a command may start, add or empty something.
    bool InputsFree() const { return !Run.Busy && !Items.ScanRunning && !InputsLocked; }

    BatchConverterForm Controls;
    Collection Items;
    RunState Run;
    AudioFile FileRenc;
    AudioFile FileWenc;
    BatchCollectionView CollectionShown;
    BatchRunView RunShown;
    OutputFormatSelector FormatSelector;
    LanguageMenu Languages;
    TagPanel TagPage;
    bool InputsLocked = false;
};

}  // namespace Sonmira

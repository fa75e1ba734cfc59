#pragma once

#include "engine/Components.h"
#include "engine/Run.h"
#include "formats/OutputFormatSelector.h"
#include "formats/SavedOutput.h"
#include "library/Collection.h"
#include "library/widgets/ConversionTree.h"
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
    const Run& State() const { return ThisRun; }
    const OutputSettings& Settings() const { return Codecs.Settings; }
    const Collection& Gathered() const { return Items; }
    TagPanel& Tags() { return TagPage; }
    const LanguageMenu& LanguageItems() const { return Languages; }

    // Empties the collection, the tree and the list of rows.
    void NewConversion();
    // Adds what the user picked or dropped; see AddFiles.h. Nothing while the inputs are locked.
    void AddFolder(const QString& path);
    void AddDrop(const QStringList& paths);
    // Start a full run, or one of what the node that was clicked last stands for, and return at its end.
    // Nothing while the inputs are locked.
    void StartRun();
    void StartSelectionRun();

    // Locks or frees the inputs during a run or a scan. Button 6, the stop, takes the opposite. The text of
    // the output folder stays free: what is typed there counts for the next file.
    void SetControlsEnabled(bool enabled);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Form_Load();
    void ChooseLanguage();
    void Form_QueryUnload(bool& cancel);
    void Form_Unload();
    void ConnectEvents();
    void ConnectShellCommands();
    void addfile_Click();
    void adddirectory_Click();
    void SSTab1_Click();
    void ConnectCollectionEvents();
    void TreeView1_NodeClick(QTreeWidgetItem* node, const QPoint& position);
    // The key of the node that was clicked last; empty where there was none or it is gone.
    QString SelectedKey() const;
    void ShowFileInformation(const QString& name, const QString& key);
    void removefromlist_Click();
    void OpenDirectory_Click();
    void ListViewFiles_ItemClick(const QPoint& position);

    // Whether a command may start, add or empty something.
    bool InputsFree() const { return !ThisRun.Busy() && !Items.ScanRunning && !InputsLocked; }

    BatchConverterForm Controls;
    Collection Items;
    Run ThisRun;
    CodecSet Codecs;
    NodeReference SelectedNode;  // of the last click; stays where the node is removed
    int LastMouseButton = 1;     // 1 left, 2 right
    BatchCollectionView CollectionShown;
    RunNews News;
    BatchRunView RunShown;
    OutputFormatSelector FormatSelector;
    SavedOutput Output;
    LanguageMenu Languages;
    TagPanel TagPage;
    bool InputsLocked = false;
};

}  // namespace Sonmira

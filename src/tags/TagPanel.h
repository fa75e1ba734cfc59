#pragma once

#include "codecs/AudioInformation.h"
#include "tags/TagFields.h"

#include <QObject>

#include <optional>

class QAction;
class QPushButton;
class QToolBar;

namespace Sonmira {

class TagMemory;

// The page "Tag information" of the main window: its controls under their design names.
struct TagPanelForm {
    explicit TagPanelForm(QWidget& window);

    // Button n of the toolbar, counted from 1; 4 and 6 are separators.
    QAction* ToolbarButton(int n) const;

    // Shows the tag in memory over the page, below the toolbar, at the end of the lines.
    void ShowMemory() const;

    QWidget* Picture2;
    QToolBar* Toolbar2;
    QGroupBox* Frame1;  // holds the choice of the version
    std::optional<TagFields> Fields;
    QPushButton* Command3;  // Save
    TagMemory* Picture4 = nullptr;
};

struct TagPanelForm;

// The behaviour of the tag page: the tag of one file, shown, changed and saved without converting it, and a
// memory of one tag. Nothing here ever says a word: what fails empties the fields or leaves the file alone.
class TagPanel : public QObject {
    Q_OBJECT

public:
    // Both outlive the panel. The conversion reads and writes tags through the same object.
    TagPanel(TagPanelForm& form, AudioInformation& tags);

    // The steps of the window's load: the genres, and version 1 in force.
    void AddGenres();
    void UseVersion1();
    // The page is opened: version 2 is in force again.
    void Open();

    // Shows the tag of a file and remembers its path, also where that fails: the fields are empty then.
    void LoadTagPanel(const QString& path);
    // Saves the fields to the file that is shown. Where a field is no number nothing is saved.
    void SaveTagPanel();

    void HideMemory();

    const QString& CurrentFile() const { return CurrentTagFile; }

private:
    void ConnectEvents();
    void UseChosenVersion();
    void Option1_Click(int index);
    void infoGenre_Click();
    void Copy();
    void Paste();
    void ToggleMemory();

    TagPanelForm& Form;
    AudioInformation& Information;
    QString CurrentTagFile;  // outlives the file's place in the collection
};

}  // namespace Sonmira

#pragma once

#include "codecs/AudioInformation.h"
#include "tags/TagFields.h"

#include <QDialog>

#include <optional>

class QPushButton;

namespace Sonmira {

class MusicExplorer;

// The window for editing tags while browsing folders. It has a tag object of its own and shares nothing with
// the tag page of the main window. Nothing here ever says a word: what fails empties the fields or leaves the
// file alone.
class TagEditorial : public QDialog {
    Q_OBJECT

public:
    // Takes its captions from the language file; one that lacks them fails with SubscriptOutOfRange.
    explicit TagEditorial(QWidget* owner = nullptr);

    // Shows the tag of a file and remembers its path, also where that fails: the fields are empty then.
    void Load(const QString& path);
    const QString& CurrentFile() const { return CurrentTagFile; }

    MusicExplorer* Explorer1;
    QGroupBox* Frame2;  // "Audio Information"
    QGroupBox* Frame1;  // "Tag Version"
    std::optional<TagFields> Fields;
    QPushButton* Command1;  // Save

private:
    void Form_Load();
    void Save();
    void Option1_Click(int index);

    AudioInformation Information;
    QString CurrentTagFile;
};

}  // namespace Sonmira

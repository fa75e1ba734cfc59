#pragma once

#include "tags/TagFields.h"

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

}  // namespace Sonmira

#pragma once

#include <QString>

class QAction;
class QMainWindow;
class QMenu;

namespace Sonmira {

// The menu bar and the popup menu of the compact window, under their design names and captions.
struct AudiotoolMenus {
    explicit AudiotoolMenus(QMainWindow& window);

    QMenu* Fichier;
    QAction* addfile;
    QAction* convertmenu;
    QAction* MenuDeletefiles;
    QAction* Exite;

    QMenu* Options;
    QMenu* Languer;  // holds LangueName, one item a language file
    QAction* TagEditor;
    QAction* trackcolor;
    QAction* acceptWma;

    QMenu* Informations;
    QAction* aide;
    QAction* FAQ;
    QAction* Helpus;
    QAction* Homepage;
    QAction* about;

    // On a row.
    QMenu* popup;
    QAction* ConvertNow;
    QAction* Deletefromlist;
};

struct AudiotoolForm;

// Loads a language file and gives every control of the compact window its text from it. The headers of the
// list and the commands for questions and for translators have no line and stay as they were designed.
void ApplyLanguage(const QString& path, AudiotoolForm& form);

}  // namespace Sonmira

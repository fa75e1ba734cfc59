#pragma once

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

}  // namespace Sonmira

#include "ui/BatchMenus.h"

#include "kit/Icons.h"
#include "ui/LanguageTargets.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QMenu* Menu(QMenu* menu, const QString& name) {
    menu->setObjectName(name);
    return menu;
}

QAction* Command(QMenu* menu, const QString& name, const QString& caption, QStringView icon = {}) {
    QAction* const action = menu->addAction(caption);
    action->setObjectName(name);
    if (!icon.isEmpty()) action->setIcon(OwnIcon(icon));
    return action;
}

}  // namespace

BatchMenus::BatchMenus(QMainWindow& window) : Bar(window.menuBar()) {
    const auto top = [&](const QString& name, const QString& caption) {
        return Menu(Bar->addMenu(caption), name);
    };
    file = top(u"file"_s, u"File"_s);
    addfile = Command(file, u"addfile"_s, u"Add a file"_s, u"add-file");
    adddirectory = Command(file, u"adddirectory"_s, u"Add a directory"_s, u"add-directory");
    mynew = Command(file, u"mynew"_s, u"new"_s, u"new");
    playfilemenu = Command(file, u"playfilemenu"_s, u"Play this file"_s, u"play");
    file->addSeparator();
    Quit = Command(file, u"Quit"_s, u"Close"_s, u"close");

    ActionMenu = top(u"ActionMenu"_s, u"Action"_s);
    ConvertAll = Command(ActionMenu, u"ConvertAll"_s, u"Convert All"_s, u"convert");
    ConvertSlection = Command(ActionMenu, u"ConvertSlection"_s, u"Convert Selection"_s, u"convert-selection");
    cancel = Command(ActionMenu, u"cancel"_s, u"Cancel"_s, u"cancel");

    Options = top(u"Options"_s, u"Option"_s);
    Languer = Menu(Options->addMenu(u"Language"_s), u"Languer"_s);
    acceptWma = Command(Options, u"acceptWma"_s, u"acceptWma"_s);
    acceptWma->setCheckable(true);
    Languer->setIcon(OwnIcon(u"language"));

    Informations = top(u"Informations"_s, u"Information"_s);
    aide = Command(Informations, u"aide"_s, u"Help"_s, u"help");
    FAQ = Command(Informations, u"FAQ"_s, u"FAQ"_s, u"faq");
    Homepage = Command(Informations, u"Homepage"_s, u"Homepage"_s, u"homepage");
    about = Command(Informations, u"about"_s, u"About"_s, u"information");

    popupmenux = Menu(new QMenu(&window), u"popupmenux"_s);
    convertnoww = Command(popupmenux, u"convertnoww"_s, u"Convert !"_s, u"convert");
    playfile = Command(popupmenux, u"playfile"_s, u"Play file"_s, u"play");
    OpenDirectory = Command(popupmenux, u"OpenDirectory"_s, u"Open Directory"_s, u"open-directory");
    sepit = popupmenux->addSeparator();
    sepit->setObjectName(u"sepit"_s);
    removefromlist = Command(popupmenux, u"removefromlist"_s, u"Remove from list"_s, u"remove");

    popupmenuy = Menu(new QMenu(&window), u"popupmenuy"_s);
    cancelonefile = Command(popupmenuy, u"cancelonefile"_s, u"Cancel conversion"_s, u"cancel-file");

    for (QAction* const action : {playfilemenu, playfile}) action->setVisible(false);
    addfile->setShortcut(QKeySequence::Open);
    Quit->setShortcut(QKeySequence::Quit);
    aide->setShortcut(QKeySequence::HelpContents);
    adddirectory->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    mynew->setShortcut(QKeySequence::New);
    ConvertAll->setShortcut(Qt::CTRL | Qt::Key_Return);
    ConvertSlection->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Return);
    // These two are shown only: the tree and the window hear the keys themselves, where nobody else does.
    removefromlist->setShortcut(QKeySequence::Delete);
    cancel->setShortcut(Qt::Key_Escape);
    for (QAction* const action : {removefromlist, cancel}) {
        action->setShortcutContext(Qt::WidgetShortcut);
        action->setShortcutVisibleInContextMenu(true);
    }
    AssignMnemonics();
}

void BatchMenus::AssignMnemonics() {
    GiveMnemonics(*Bar);
    for (QMenu* const menu : {popupmenux, popupmenuy}) GiveMnemonics(*menu);
}

}  // namespace Sonmira

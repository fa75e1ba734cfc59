#include "ui/BatchConverter.h"

#include "engine/JobDriver.h"
#include "engine/SelectionDriver.h"
#include "engine/StopCommands.h"
#include "formats/OutputPanel.h"
#include "library/AddFiles.h"
#include "library/widgets/AddFileDialog.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/InputBoxes.h"
#include "tags/TagPage.h"
#include "ui/MainWindowLayout.h"
#include "ui/TabStrip.h"

#include <QAction>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QToolBar>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// In this size every caption has its whole text, in each of the languages.
constexpr QSize UsualSize(1080, 700);

}  // namespace

BatchConverter::BatchConverter()
    : Controls(*this),
      CollectionShown(Controls, [this](bool enabled) { SetControlsEnabled(enabled); }),
      News(*this),
      RunShown(
          Controls, [this](bool enabled) { SetControlsEnabled(enabled); }, &News),
      FormatSelector(*Controls.Picture9, Codecs.FileWenc, Codecs.Settings),
      Output(*Controls.Picture9, FormatSelector, Codecs, *Controls.acceptWma),
      Languages(*Controls.Languer),
      TagPage(Controls.TagPage, Codecs.Tags) {
    setObjectName(u"BatchConverter"_s);
    new MainWindowLayout(*this, Controls);
    resize(UsualSize);
    ConnectEvents();
    ConnectCollectionEvents();
    ConnectShellCommands();
    Form_Load();
}

void BatchConverter::ConnectEvents() {
    const auto toolbar = [this](int button, auto handler) {
        OnEvent(Controls.ToolbarButton(button), &QAction::triggered, this, handler);
    };
    const auto menu = [this](QAction* command, auto handler) {
        OnEvent(command, &QAction::triggered, this, handler);
    };
    // Comes before the command itself: whatever a button does, the tag in memory gives way to it.
    OnEvent(Controls.Toolbar1, &QToolBar::actionTriggered, this, [this] { TagPage.HideMemory(); });
    const auto newConversion = [this] {
        if (InputsFree()) NewConversion();
    };
    menu(Controls.mynew, newConversion);
    toolbar(1, newConversion);
    menu(Controls.addfile, [this] { addfile_Click(); });
    toolbar(2, [this] { addfile_Click(); });
    menu(Controls.adddirectory, [this] { adddirectory_Click(); });
    toolbar(3, [this] { adddirectory_Click(); });
    menu(Controls.ConvertAll, [this] { StartRun(); });
    toolbar(5, [this] { StartRun(); });
    menu(Controls.ConvertSlection, [this] { StartSelectionRun(); });
    menu(Controls.convertnoww, [this] { StartSelectionRun(); });
    menu(Controls.cancel, [this] { CancelByMenu(ThisRun, Items, Codecs.Parts()); });
    toolbar(6, [this] { CancelByToolbar(ThisRun, Items, Codecs.Parts()); });
    menu(Controls.cancelonefile, [this] { CancelOneFile(ThisRun); });
    OnEvent(Controls.StopImg, &QToolButton::clicked, this, [this] { SkipFile(ThisRun, Codecs.Parts()); });
    OnEvent(Controls.ClearImg, &QToolButton::clicked, this, [this] { ClearRowsWhenIdle(ThisRun, RunShown); });
    OnEvent(Controls.SSTab1, &QTabBar::currentChanged, this, [this] { SSTab1_Click(); });
}

void BatchConverter::NewConversion() {
    RunShown.ClearRows();
    Controls.TreeView1->ResetToRoot();
    Items.Records.Reset();
    Items.DirectoryCount = Items.FileCount = 0;
    CollectionShown.ShowDirectoryCount(0);
    CollectionShown.ShowFileCount(0);
    for (QLabel* label : {Controls.LabelFileName, Controls.LabelDuration, Controls.Label29}) label->clear();
}

void BatchConverter::addfile_Click() {
    if (!InputsFree()) return;
    AddFileDialog([this](const QString& path) { AddFileRecord(Items, CollectionShown, path); });
}

void BatchConverter::adddirectory_Click() {
    if (!InputsFree()) return;
    const QString path = BrowseForFolder(LanguageLines[LanguageLine::ChooseFolder]);
    if (!path.isEmpty()) AddFolder(path);
}

void BatchConverter::AddFolder(const QString& path) {
    if (InputsFree()) AddDirectory(Items, CollectionShown, path);
}

void BatchConverter::AddDrop(const QStringList& paths) {
    if (InputsFree()) AddDropped(Items, CollectionShown, paths);
}

void BatchConverter::StartRun() {
    if (!InputsFree()) return;
    const RunNews::Session session(News);
    JobDriver(ThisRun, RunShown, Codecs.Parts(), Items).RunAllConversions();
}

void BatchConverter::StartSelectionRun() {
    if (!InputsFree()) return;
    const RunNews::Session session(News);
    SelectionDriver driver(ThisRun, RunShown, Codecs.Parts(), Items);
    driver.ConvertNode(SelectedKey());
}

// Escape comes here where nothing that has the focus took it.
void BatchConverter::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || event->modifiers() != Qt::NoModifier) {
        QMainWindow::keyPressEvent(event);
    } else if (Controls.TagPage.Picture4->isVisible()) {
        TagPage.HideMemory();
    } else {
        Controls.ToolbarButton(6)->trigger();  // the stop: does nothing while there is nothing to stop
    }
}

void BatchConverter::SSTab1_Click() {
    TagPage.HideMemory();
    Controls.ShowPage();
    if (!Controls.ShowsTagPage()) return;
    TagPage.Open();
    // True for files as well as folders, so that only a file that has gone is tried here; a file that is
    // there is shown at the next click on it.
    const QString key = SelectedKey();
    if (!key.isEmpty() && !DirectoryExists(key)) TagPage.LoadTagPanel(key);
}

void BatchConverter::SetControlsEnabled(bool enabled) {
    InputsLocked = !enabled;
    const QWidget* const inFocus = focusWidget();
    for (const int button : {1, 2, 3, 4, 5, 7, 8}) Controls.ToolbarButton(button)->setEnabled(enabled);
    Controls.ToolbarButton(6)->setEnabled(!enabled);
    Controls.TreeView1->setAcceptDrops(enabled);
    Controls.Picture9->SetControlsEnabled(enabled);
    // The keyboard goes to the rows of the run rather than to whatever control is free beside the locked one.
    if (inFocus != nullptr && !inFocus->isEnabled()) Controls.ListViewFiles->setFocus();
}

}  // namespace Sonmira

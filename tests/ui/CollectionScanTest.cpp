// Adding folders and drops: what comes in, what is locked meanwhile, and how it is stopped.
#include "CollectionTest.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class CollectionScan : public CollectionTest {
protected:
    CollectionScan() { Open(); }

    // Subfolders with a file each, so that a scan lets the event loop run.
    void MakeSubfolders() {
        for (const char* name : {"Music/A/1.wav", "Music/B/2.wav", "Music/C/3.wav"}) Folder.MakeFile(name);
    }
    void MakeEmptySubfolders(int count) {
        for (int n = 0; n < count; ++n) Folder.MakeFolder("Music/" + QByteArray::number(n));
    }
    QStringList RecordNames() {
        QStringList names;
        for (int n = 1; n <= Records().UpperBound(); ++n) names.append(Records()[n].Name);
        return names;
    }
};

TEST_F(CollectionScan, TakesWhatItsListHoldsADropTakesMoreAndASubfolderAfterwardsChangesNothing) {
    for (const char* name : {"Music/a.wav", "Music/B.Mp3", "Music/note.txt", "Music/p.mpc", "Music/l.alac",
                             "Music/Rock/x.ogg"}) {
        Folder.MakeFile(name);
    }
    Folder.MakeFolder("Music/Empty");
    AddFolderByCommand(Folder.Path("Music"));
    const QStringList scanned = {u"My Conversion"_s, u"Music"_s, u"a.wav"_s, u"B.Mp3"_s,
                                 u"Empty"_s,         u"Rock"_s,  u"x.ogg"_s};
    EXPECT_EQ(Nodes(), scanned);
    ExpectCounts(u"3"_s, u"3"_s);

    for (const char* name : {"Music/p.mpc", "Music/l.alac", "Music/note.txt", "Music/a.wav"}) {
        EXPECT_TRUE(Drop({name})) << name;
        ExpectFree();
    }
    const QStringList dropped = scanned + QStringList{u"p.mpc"_s, u"l.alac"_s};
    EXPECT_EQ(Nodes(), dropped);
    ExpectCounts(u"3"_s, u"5"_s);
    EXPECT_EQ(Node(Folder.Path("Music/p.mpc"))->parent(), Node(RootKey.toString()));

    for (const char* name : {"Music/Rock", "Music/Empty", "Music"}) AddFolderByCommand(Folder.Path(name));
    EXPECT_EQ(Nodes(), dropped);
    ExpectCounts(u"3"_s, u"5"_s);
    EXPECT_EQ(Records().UpperBound(), 8);
    ExpectFree();
}

TEST_F(CollectionScan, LeavesAllNodesButTheRootCollapsed) {
    Folder.MakeFile("Music/Sub/Deep/x.ogg");
    Folder.MakeFile("y.wav");
    AddFolderByCommand(Folder.Path("Music"));
    EXPECT_TRUE(Drop({"y.wav"}));
    int nodes = 0;
    for (QTreeWidgetItemIterator it(&Tree()); *it != nullptr; ++it, ++nodes) {
        EXPECT_EQ((*it)->isExpanded(), *it == Node(RootKey.toString())) << (*it)->text(0).toStdString();
    }
    EXPECT_EQ(nodes, 6);
    Node(RootKey.toString())->setExpanded(false);
    StartAnew();
    AddFolderByCommand(Folder.Path("Music"));
    EXPECT_TRUE(Node(RootKey.toString())->isExpanded());
    EXPECT_FALSE(Node(Folder.Path("Music"))->isExpanded());
}

TEST_F(CollectionScan, TakesNamesThatDifferInCapitalsForDifferentOnes) {
    for (const char* name : {"a.wav", "A.wav", "Music/x.ogg", "MUSIC/x.ogg"}) Folder.MakeFile(name);
    EXPECT_TRUE(Drop({"a.wav", "A.wav"}));
    for (const char* name : {"Music", "MUSIC"}) AddFolderByCommand(Folder.Path(name));
    const QStringList nodes = {u"My Conversion"_s, u"a.wav"_s, u"A.wav"_s, u"Music"_s,
                               u"x.ogg"_s,         u"MUSIC"_s, u"x.ogg"_s};
    EXPECT_EQ(Nodes(), nodes);
    Click(Folder.Path("MUSIC"));
    PressDelete();
    Click(Folder.Path("A.wav"));
    PressDelete();
    EXPECT_EQ(Nodes(), (QStringList{nodes[0], nodes[1], nodes[3], nodes[4]}));
    EXPECT_NE(Node(Folder.Path("Music/x.ogg")), nullptr);
    ExpectCounts(u"1"_s, u"2"_s);
}

TEST_F(CollectionScan, LocksTheInputsAndNamesThePathInHand) {
    MakeSubfolders();
    int turns = 0;
    AddWhile(Folder.Path("Music"), [&] {
        ++turns;
        for (const int button : {1, 2, 3, 5, 8}) EXPECT_FALSE(Form().ToolbarButton(button)->isEnabled());
        EXPECT_TRUE(Form().ToolbarButton(6)->isEnabled());
        EXPECT_FALSE(Panel().ComboOutFormat->isEnabled());
        EXPECT_TRUE(Form().StatusPanel1->text().startsWith(QString::fromUtf8(Folder.Native("Music/"))))
            << Form().StatusPanel1->text().toStdString();
    });
    EXPECT_GT(turns, 0);
    EXPECT_EQ(Records().UpperBound(), 7);
    ExpectFree();
}

TEST_F(CollectionScan, RefusesADragMeanwhile) {
    MakeSubfolders();
    Folder.MakeFile("late.wav");
    int turns = 0;
    AddWhile(Folder.Path("Music"), [&] {
        ++turns;
        EXPECT_FALSE(Drop({"late.wav"}));
    });
    EXPECT_GT(turns, 0);
    EXPECT_EQ(Node(Folder.Path("late.wav")), nullptr);
    EXPECT_TRUE(Drop({"late.wav"}));
    EXPECT_NE(Node(Folder.Path("late.wav")), nullptr);
}

TEST_F(CollectionScan, ShowsNoMenuForARightClickMeanwhile) {
    MakeSubfolders();
    int clicks = 0;
    AddWhile(Folder.Path("Music"), [&] {
        Click(Folder.Path("Music"), Qt::RightButton);
        EXPECT_FALSE(PopupShown());
        ++clicks;
    });
    EXPECT_GT(clicks, 0);
    Click(Folder.Path("Music"), Qt::RightButton);
    EXPECT_TRUE(PopupShown());
}

TEST_F(CollectionScan, RemovesNothingMeanwhile) {
    MakeSubfolders();
    int tries = 0;
    AddWhile(Folder.Path("Music"), [&] {
        Click(Folder.Path("Music"));
        PressDelete();
        Form().removefromlist->trigger();
        Form().mynew->trigger();
        ++tries;
    });
    EXPECT_GT(tries, 0);
    EXPECT_EQ(Nodes().size(), 8);
    EXPECT_EQ(Records().UpperBound(), 7);
    // What was clicked meanwhile is what the key removes afterwards.
    PressDelete();
    EXPECT_EQ(Nodes().size(), 1);
    EXPECT_EQ(Records().UpperBound(), 0);
}

TEST_F(CollectionScan, HearsTheUserBehindEverySubfolder) {
    MakeEmptySubfolders(200);
    int turns = 0;
    AddWhile(Folder.Path("Music"), [&] { EXPECT_EQ(Window->Gathered().DirectoryCount, 1 + ++turns); });
    EXPECT_EQ(turns, 200);
}

// Counts the events of one type that come to an object.
struct EventCount : QObject {
    EventCount(QObject* watched, QEvent::Type type) : Type(type) { watched->installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == Type) ++Count;
        return false;
    }
    const QEvent::Type Type;
    int Count = 0;
};

TEST_F(CollectionScan, PaintsAndPlacesNodesNoMoreThanSixtyTimesASecond) {
    MakeEmptySubfolders(500);
    const auto opening = QObject::connect(Tree().model(), &QAbstractItemModel::rowsInserted, &Tree(),
                                          [&](const QModelIndex& parent) { Tree().expand(parent); });
    const EventCount painted(Form().StatusPanel1, QEvent::Paint);
    const EventCount placed(&Tree(), QEvent::Timer);
    QElapsedTimer whole;
    whole.start();
    Window->AddFolder(Folder.Path("Music"));
    const auto most = static_cast<int>(whole.elapsed() / 15 + 1);
    EXPECT_LE(painted.Count, most);
    EXPECT_LE(placed.Count, most);
    QObject::disconnect(opening);
    EXPECT_EQ(Nodes().size(), 502);
}

// The button of the toolbar and the command of the menu.
class CollectionStop : public CollectionScan, public ::testing::WithParamInterface<bool> {};

TEST_P(CollectionStop, EndsAScanAfterTheSubfolderInHandAndKeepsWhatCameIn) {
    constexpr int Folders = 200;
    constexpr int FilesInEach = 15;
    for (int folder = 0; folder < Folders; ++folder) {
        for (int file = 0; file < FilesInEach; ++file) {
            Folder.MakeFile("Music/" + QByteArray::number(folder) + '/' + QByteArray::number(file) + ".wav");
        }
    }
    int foldersAtStop = 0;
    AddWhile(Folder.Path("Music"), [&] {
        const int folders = Window->Gathered().DirectoryCount;
        if (foldersAtStop > 0 || folders < 3) return;
        foldersAtStop = folders;
        if (GetParam()) {
            ClickToolbar(6);
        } else {
            Form().cancel->trigger();
        }
    });
    ASSERT_GT(foldersAtStop, 0);
    EXPECT_LT(foldersAtStop, Folders);
    const int files = (foldersAtStop - 1) * FilesInEach;
    ExpectCounts(QString::number(foldersAtStop), QString::number(files));
    EXPECT_EQ(Nodes().size(), 1 + foldersAtStop + files);
    EXPECT_EQ(Records().UpperBound(), foldersAtStop + files);
    ExpectFree();
    // A stop holds for one scan only.
    Folder.MakeFile("Other/x.wav");
    AddFolderByCommand(Folder.Path("Other"));
    EXPECT_EQ(LastRecord().Name, u"x.wav"_s);
}

TEST_P(CollectionStop, ThatWaitsAlreadyEndsAScanAfterTheFirstOfManySmallSubfolders) {
    MakeEmptySubfolders(200);
    QAction* const stop = GetParam() ? Form().ToolbarButton(6) : Form().cancel;
    QMetaObject::invokeMethod(stop, &QAction::trigger, Qt::QueuedConnection);
    AddFolderByCommand(Folder.Path("Music"));
    ExpectCounts(u"2"_s, u"0"_s);
    ExpectFree();
}

INSTANTIATE_TEST_SUITE_P(ByButtonAndMenu, CollectionStop, ::testing::Bool(),
                         [](const auto& given) { return given.param ? "Button" : "Menu"; });

// Two folders that share a number: the removal of one takes the other's record of a child, whose node stays.
class CollectionSharedNumbers : public CollectionScan {
protected:
    // `child` is all that B holds.
    void LeaveNodeWithoutRecord(const QByteArray& child) {
        Folder.MakeFile("A/one.mp3");
        Folder.MakeFile("C/three.mp3");
        for (const char* name : {"A", "B"}) AddFolderByCommand(Folder.Path(name));  // B has the number 3
        Click(Folder.Path("A"));
        PressDelete();
        AddFolderByCommand(Folder.Path("C"));  // at position 3 and so number 3 again
        Click(Folder.Path("C"));
        PressDelete();
        ASSERT_EQ(RecordNames(), QStringList{u"B"_s});
        ASSERT_NE(Node(Folder.Path(child)), nullptr);
    }
    // A record came in, and no node for it.
    void ExpectRecordOnly(const QByteArray& name) {
        EXPECT_EQ(Records().UpperBound(), 2);
        EXPECT_EQ(LastRecord().Path, Folder.Path(name));
        EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"B"_s, LastRecord().Name}));
        EXPECT_EQ(Node(Folder.Path(name))->parent(), Node(Folder.Path("B"))) << "the old one";
        ExpectFree();
    }
};

TEST_F(CollectionSharedNumbers, AFolderWhoseKeyIsThereGetsARecordOnly) {
    Folder.MakeFolder("B/Sub");
    LeaveNodeWithoutRecord("B/Sub");
    Folder.MakeFile("B/Sub/new.wav");
    AddFolderByCommand(Folder.Path("B/Sub"));
    ExpectRecordOnly("B/Sub");
    ExpectCounts(u"1"_s, u"0"_s);
}

TEST_F(CollectionSharedNumbers, ADroppedFolderWhoseKeyIsThereGetsARecordOnlyAndTheDropGoesOn) {
    Folder.MakeFolder("B/Sub");
    LeaveNodeWithoutRecord("B/Sub");
    Folder.MakeFile("last.wav");
    EXPECT_TRUE(Drop({"B/Sub", "last.wav"}));
    EXPECT_EQ(RecordNames(), (QStringList{u"B"_s, u"Sub"_s, u"last.wav"_s}));
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"B"_s, u"Sub"_s, u"last.wav"_s}));
    ExpectFree();
}

TEST_F(CollectionSharedNumbers, ADroppedFileWhoseKeyIsThereGetsARecordOnly) {
    Folder.MakeFile("B/two.mp3");
    LeaveNodeWithoutRecord("B/two.mp3");
    EXPECT_TRUE(Drop({"B/two.mp3"}));
    ExpectRecordOnly("B/two.mp3");
}

TEST_F(CollectionSharedNumbers, AFileOfTheDialogWhoseKeyIsThereGetsARecordOnly) {
    Folder.MakeFile("B/two.mp3");
    LeaveNodeWithoutRecord("B/two.mp3");
    const auto realDialog = std::exchange(Dialogs().OpenFiles, [this](const OpenDialogRequest& /*request*/) {
        return QStringList{Folder.Path("B/two.mp3")};
    });
    ClickToolbar(2);
    Dialogs().OpenFiles = realDialog;
    EXPECT_EQ(RecordNames(), (QStringList{u"B"_s, u"two.mp3"_s}));
    EXPECT_EQ(ReadIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s), QString())
        << "a failure ends it without saving anything";
    EXPECT_TRUE(Form().ToolbarButton(2)->isEnabled());
}

}  // namespace
}  // namespace Sonmira

// The images that the nodes of the tree go by, and the hint over an empty tree.
#include "CollectionTest.h"
#include "kit/Icons.h"
#include "library/widgets/ReportList.h"
#include "platform/Failure.h"

#include <QPaintEvent>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// The number of the failure that `act` ends in; 0 where it ends well.
int FailureOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const Failure& failure) {
        return failure.Number;
    }
    return 0;
}

TEST(Images, OfAKeyThatIsThereOrNotThereFail) {
    ImageList images;
    EXPECT_EQ(FailureOf([&] { images.At(u".mp3"_s); }), FailureNumber::KeyNotFound);
    images.Add(u".mp3"_s, {});
    EXPECT_EQ(FailureOf([&] { images.At(u".mp3"_s); }), 0);
    EXPECT_EQ(FailureOf([&] { images.Add(u".mp3"_s, {}); }), FailureNumber::KeyNotUnique);
    EXPECT_EQ(FailureOf([&] { images.Add(u".MP3"_s, {}); }), 0) << "keys differ by case";
}

class CollectionImages : public CollectionTest {
protected:
    CollectionImages() { Open(); }

    int FailureOfAdding(const QString& parent, const QString& key, const QString& image) {
        return FailureOf([&] { Tree().AddNode(parent, key, u"text"_s, image); });
    }
    // The same whether the node is selected or not.
    static QImage PictureOf(const QTreeWidgetItem* node) {
        const QImage picture = node->icon(0).pixmap(QSize(16, 16), QIcon::Normal).toImage();
        EXPECT_EQ(node->icon(0).pixmap(QSize(16, 16), QIcon::Selected).toImage(), picture);
        return picture;
    }
    static QImage Drawing(QStringView name) { return OwnIcon(name).pixmap(QSize(16, 16)).toImage(); }
    static qint64 ImageOf(const QTreeWidgetItem* node) { return node->icon(0).cacheKey(); }
};

TEST_F(CollectionImages, ANodeFailsWithoutItsImageOrItsParentAndWhereItsKeyIsThere) {
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"\\a.mp3"_s, u".mp3"_s), FailureNumber::KeyNotFound);
    Tree().GetIcon(u"\\a.mp3"_s);
    EXPECT_EQ(FailureOfAdding(u"\\gone"_s, u"\\a.mp3"_s, u".mp3"_s), FailureNumber::KeyNotFound);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"\\a.MP3"_s, u".MP3"_s), FailureNumber::KeyNotFound);
    EXPECT_EQ(Tree().NodeCount(), 1);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"\\a.mp3"_s, u".mp3"_s), 0);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"\\a.mp3"_s, u".mp3"_s), FailureNumber::KeyNotUnique);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), RootKey.toString(), u".mp3"_s),
              FailureNumber::KeyNotUnique);
    EXPECT_EQ(Tree().topLevelItem(0)->childCount(), 1);
}

TEST_F(CollectionImages, ShowTheRootADriveAFolderAndAnEnding) {
    Tree().GetIcon4(u"Z:\\"_s);
    Tree().AddNode(RootKey.toString(), u"Z:\\"_s, QString(), u"disque"_s);
    for (const char* name : {"Music/a.mp3", "Music/Sub/b.ogg", "Music/Sub/c.WAV"}) Folder.MakeFile(name);
    AddFolderByCommand(Folder.Path("Music"));
    std::vector<QImage> different;
    for (const auto& [key, drawing] : {std::pair(RootKey.toString(), u"collection"_s),
                                       {u"Z:\\"_s, u"drive"_s},
                                       {Folder.Path("Music"), u"folder"_s},
                                       {Folder.Path("Music/a.mp3"), u"format-mp3"_s},
                                       {Folder.Path("Music/Sub/b.ogg"), u"format-ogg"_s},
                                       {Folder.Path("Music/Sub/c.WAV"), u"format-wav"_s}}) {
        const QImage picture = PictureOf(Node(key));
        EXPECT_EQ(picture, Drawing(drawing)) << key.toStdString();
        EXPECT_EQ(std::count(different.begin(), different.end(), picture), 0) << key.toStdString();
        different.push_back(picture);
    }
    EXPECT_EQ(PictureOf(Node(Folder.Path("Music/Sub"))), Drawing(u"folder"));
}

TEST_F(CollectionImages, AreOnePerEndingAndFetchedOnce) {
    for (const char* name : {"a.mp3", "b.mp3", "c.ogg", "d.MP3"}) Folder.MakeFile(name);
    ASSERT_TRUE(Drop({"a.mp3", "b.mp3", "c.ogg", "d.MP3"}));
    EXPECT_EQ(Tree().NodeCount(), 5);
    const auto image = [this](const char* name) { return ImageOf(Node(Folder.Path(name))); };
    EXPECT_EQ(image("a.mp3"), image("b.mp3"));
    EXPECT_NE(image("a.mp3"), image("c.ogg"));
    EXPECT_NE(image("a.mp3"), image("d.MP3")) << "keys differ by case";
}

TEST_F(CollectionImages, TheDrivesIsFetchedOnlyBeforeAnyFolders) {
    Tree().GetIcon4(u"Z:\\"_s);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"Z:\\x"_s, u"dossier"_s), FailureNumber::KeyNotFound);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"Z:\\"_s, u"disque"_s), 0);
    // Only the key of folders is looked for, so that a second drive finds the first one's image there.
    EXPECT_EQ(FailureOf([&] { Tree().GetIcon4(u"Y:\\"_s); }), FailureNumber::KeyNotUnique);
    Tree().GetIcon4(u"Z:\\x"_s);
    EXPECT_EQ(FailureOfAdding(u"Z:\\"_s, u"Z:\\x"_s, u"dossier"_s), 0);
    EXPECT_NE(ImageOf(Node(u"Z:\\"_s)), ImageOf(Node(u"Z:\\x"_s)));
}

TEST_F(CollectionImages, TheDrivesIsNeverThereAfterAFolders) {
    Tree().GetIcon4(u"\\music"_s);
    Tree().GetIcon4(u"Z:\\"_s);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"Z:\\"_s, u"disque"_s), FailureNumber::KeyNotFound);
    StartAnew();
    Tree().GetIcon4(u"Z:\\"_s);
    EXPECT_EQ(FailureOfAdding(RootKey.toString(), u"Z:\\"_s, u"disque"_s), FailureNumber::KeyNotFound)
        << "a new conversion keeps the images";
}

TEST_F(CollectionImages, TheRootOfTheFileSystemIsADriveWithoutAName) {
    AddWhile(u"Z:\\"_s, [this] { Form().cancel->trigger(); });
    const QTreeWidgetItem* const drive = Node(u"Z:\\"_s);
    ASSERT_NE(drive, nullptr);
    EXPECT_EQ(drive->text(0), QString());
    EXPECT_EQ(drive->parent(), Node(RootKey.toString()));
    EXPECT_EQ(Records()[1].Path, u"Z:\\"_s);
    EXPECT_EQ(Records()[1].Name, QString());
    EXPECT_EQ(Records()[1].RelativeFolder, QString());
    // What lies in it has no empty folder in front of its name.
    ASSERT_GE(Records().UpperBound(), 2);
    EXPECT_EQ(Records()[2].Path, u"Z:\\"_s + Records()[2].Name);
    EXPECT_EQ(Records()[2].RelativeFolder, Records()[2].Name);
    EXPECT_NE(ImageOf(drive), ImageOf(drive->child(0))) << "a drive's and a folder's";
    ExpectFree();
}

TEST_F(CollectionImages, AFolderWithAShortNameBelowTheRootOfTheFileSystemIsAFolderBeforeAndAfterOthers) {
    Window->AddFolder(u"\\q7"_s);
    Folder.MakeFile("Music/a.wav");
    AddFolderByCommand(Folder.Path("Music"));
    for (const QString& path : {u"\\q8"_s, u"\\q"_s}) Window->AddFolder(path);
    ExpectCounts(u"4"_s, u"1"_s);
    for (const QString& path : {u"\\q7"_s, u"\\q8"_s, u"\\q"_s}) {
        ASSERT_NE(Node(path), nullptr) << path.toStdString();
        EXPECT_EQ(ImageOf(Node(path)), ImageOf(Node(Folder.Path("Music")))) << path.toStdString();
    }
    ExpectFree();
}

TEST_F(CollectionImages, TheRootOfTheFileSystemHasNoNodeAfterAFolder) {
    Folder.MakeFile("Music/a.wav");
    AddFolderByCommand(Folder.Path("Music"));
    AddWhile(u"Z:\\"_s, [this] { Form().cancel->trigger(); });
    EXPECT_EQ(Node(u"Z:\\"_s), nullptr);
    EXPECT_EQ(Records().UpperBound(), 3) << "the record stays, and nothing below it came in";
    EXPECT_EQ(LastRecord().Path, u"Z:\\"_s);
    ExpectCounts(u"1"_s, u"1"_s);
    ExpectFree();
}

class EmptyHint : public CollectionTest {
protected:
    EmptyHint() {
        Folder.MakeFile("a.wav");
        Open();
    }
    bool IsDrawn() {
        const auto picture = [this] { return Tree().viewport()->grab().toImage(); };
        const QImage now = picture();
        Tree().SetEmptyHint({});
        const bool differs = picture() != now;
        Tree().SetEmptyHint(u"Drop here"_s);
        return differs;
    }
};

TEST_F(EmptyHint, GoesWithTheFirstNodeAndComesBackWithANewConversion) {
    EXPECT_TRUE(IsDrawn());
    Drop({"a.wav"});
    EXPECT_FALSE(IsDrawn());
    StartAnew();
    EXPECT_TRUE(IsDrawn());
}

TEST_F(EmptyHint, ComesBackWithTheRemovalOfTheLastNode) {
    Drop({"a.wav"});
    Click(Folder.Path("a.wav"));
    PressDelete();
    EXPECT_TRUE(IsDrawn());
}

// What Qt asks the tree to paint.
struct PaintedRegion : QObject {
    QRegion Region;
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) Region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

TEST_F(EmptyHint, IsPaintedOverWhereItStoodWhenANodeCameIn) {
    Settle();
    PaintedRegion painted;
    Tree().viewport()->installEventFilter(&painted);
    const QPoint middle = Tree().viewport()->rect().center();
    Settle();
    ASSERT_FALSE(painted.Region.contains(middle)) << "nothing happens yet";
    Drop({"a.wav"});
    EXPECT_TRUE(painted.Region.contains(middle));
    painted.Region = {};
    StartAnew();
    Settle();
    EXPECT_TRUE(painted.Region.contains(middle));
}

}  // namespace
}  // namespace Sonmira

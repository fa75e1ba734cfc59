#include "MainWindowTest.h"
#include "platform/Folders.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/LameEncoder.h"
#include "shell/widgets/LanguageChoice.h"
#include "shell/widgets/Main.h"
#include "ui/TabStrip.h"

#include <QActionEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>

#include <set>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// The start of the program from its entry routine on, with no settings yet.
class FirstStart : public MainWindowTest {
public:
    FirstStart() {
        qputenv("XDG_CONFIG_HOME", Folder.Native("config"));
        Folder.MakeFolder("config");
    }
    ~FirstStart() override {
        OverrideEncoderSystemFolder({});
        ProgramEnd() = RealEnd;
    }

protected:
    // Runs the entry routine; `pick` acts on the language picker.
    void Start(const std::function<void(Form1&)>& pick = {}) {
        const ModalAnswer picker(u"Form1"_s, [&](QWidget& window) {
            PickersSeen += 1;
            LogoBesidePicker = LogoIsThere();
            if (pick) {
                pick(static_cast<Form1&>(window));
            } else {
                window.close();
            }
        });
        const ModalAnswer notice(u"LameEncoder"_s, [&](QWidget& window) {
            NoticesSeen += 1;
            LogoBesideNotice = LogoIsThere();
            NoticeTexts.clear();
            for (const QLabel* label : window.findChildren<QLabel*>()) NoticeTexts.append(label->text());
            window.close();
        });
        Sonmira::Main([this] {
            Window = std::make_unique<BatchConverter>();
            Window->show();
            return std::make_unique<QWidget>();
        });
    }
    static bool LogoIsThere() {
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == u"Deb" && widget->isVisible()) return true;
        }
        return false;
    }
    static void Choose(Form1& picker, int place) {
        QListWidget& list = *picker.ListView1;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                          list.visualItemRect(list.item(place)).center());
    }
    QByteArray Ini() { return ContentOf(Folder.Native("config/SonmiraPack/Sonmira.ini")); }

    std::function<void()> RealEnd = ProgramEnd();
    int PickersSeen = 0;
    int NoticesSeen = 0;
    QStringList NoticeTexts;
    bool LogoBesidePicker = false;
    bool LogoBesideNotice = false;
};

TEST_F(FirstStart, AsksForTheLanguageAfterTheLogoIsGone) {
    Start([](Form1& picker) {
        EXPECT_EQ(picker.ListView1->currentItem()->text(), u"English"_s);
        Choose(picker, 0);
    });
    EXPECT_EQ(PickersSeen, 1);
    EXPECT_FALSE(LogoBesidePicker);
    EXPECT_EQ(Window->windowTitle(), u"Sonmira V2.1"_s);
    EXPECT_TRUE(Window->LanguageItems().Item(0)->isChecked());
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Mp3"_s);
    EXPECT_EQ(Panel().TextOutPath->Text(), DesktopFolder());
}

// The steps of the load as they are seen from outside, up to the picker and behind it.
class LoadOrder : public FirstStart {
public:
    LoadOrder() { qApp->installEventFilter(&Events); }

protected:
    struct Filter : QObject {
        std::function<void(const QObject&, QEvent&)> Seen = [](auto&&...) {};
        bool eventFilter(QObject* watched, QEvent* event) override {
            Seen(*watched, *event);
            return false;
        }
    };

    // Each step once, at its first sign.
    void Note(const QString& step) {
        if (!Steps.contains(step)) Steps.append(step);
    }
    // How many of the two names that others look for this process bears, and how many anybody bears: other
    // tests run at the same time.
    static std::pair<int, int> NamesHeld() {
        std::set<QByteArray> own;
        for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            own.insert(QByteArray::fromStdString(std::filesystem::read_symlink(file, gone).string()));
        }
        std::pair<int, int> held;
        for (const QByteArray& line : ContentOf("/proc/net/unix").split('\n')) {
            if (!line.endsWith(" @Tolvane_SonmiraPack") && !line.endsWith(" @Global\\Tolvane_SonmiraPack"))
                continue;
            ++held.second;
            held.first += own.contains("socket:[" + line.simplified().split(' ')[6] + ']') ? 1 : 0;
        }
        return held;
    }
    template <class Control>
    static Control& In(const QWidget& window, const char* name) {
        return *window.findChild<Control*>(QString::fromLatin1(name));
    }
    void SeeBeforeThePicker(const QObject& watched, QEvent& event) {
        if (event.type() == QEvent::WindowTitleChange && watched.objectName() == u"BatchConverter") {
            Note(u"title"_s);
            LeastSizeAtTitle = static_cast<const QWidget&>(watched).minimumSize();
        }
        if (event.type() != QEvent::ActionChanged || watched.objectName() != u"Languer") return;
        if (static_cast<const QActionEvent&>(event).action()->text() != u"English" || Loading) return;
        Note(u"languages"_s);
        Loading = static_cast<const QWidget*>(&watched);
        while (Loading->parentWidget() != nullptr) Loading = Loading->parentWidget();
        LeastSizeAtLanguages = Loading->minimumSize();
        HeldAtLanguages = NamesHeld();
    }
    void WatchBehindThePicker(QWidget& window) {
        const auto note = [this](auto* sender, auto signal, const QString& step) {
            QObject::connect(sender, signal, &Events, [this, step] { Note(step); });
        };
        note(&In<QAction>(window, "LangueName1"), &QAction::toggled, u"item"_s);
        note(In<QMenu>(window, "file").menuAction(), &QAction::changed, u"texts"_s);
        const auto noteRows = [&](const char* name, const QString& step) {
            const auto* rows = window.findChild<QComboBox*>(QString::fromLatin1(name));
            note(rows->model(), &QAbstractItemModel::rowsInserted, step);
        };
        noteRows("infoGenre", u"genres"_s);
        note(In<QTreeView>(window, "TreeView1").model(), &QAbstractItemModel::rowsInserted, u"root"_s);
        noteRows("ComboOutFormat", u"settings"_s);
        Events.Seen = [this](const QObject& watched, const QEvent& event) {
            if (event.type() == QEvent::EnabledChange && watched.objectName() == u"infoGenreS")
                Note(u"tag version"_s);
        };
    }

    QStringList Steps;
    const QWidget* Loading = nullptr;
    QSize LeastSizeAtTitle;
    QSize LeastSizeAtLanguages;
    const std::pair<int, int> HeldBefore = NamesHeld();
    std::pair<int, int> HeldAtLanguages;
    Filter Events;
};

TEST_F(LoadOrder, IsKeptStepByStep) {
    Events.Seen = [this](const QObject& watched, QEvent& event) { SeeBeforeThePicker(watched, event); };
    Start([this](Form1& picker) {
        QWidget& window = *picker.parentWidget();
        EXPECT_EQ(window.objectName(), u"BatchConverter"_s);
        EXPECT_EQ(Loading, &window);
        // All that comes before the choice of the language is done, and nothing of what follows.
        Note(u"picker"_s);
        EXPECT_EQ(window.windowTitle(), u"Sonmira V2.1"_s);
        EXPECT_EQ(window.minimumSize(), QSize(613, 560));
        const int byOthers = HeldAtLanguages.second - HeldAtLanguages.first;
        EXPECT_GE(NamesHeld().first, 2 - byOthers) << "the names that others look for";
        EXPECT_EQ(In<QAction>(window, "LangueName6").text(), u"US English"_s);
        EXPECT_FALSE(In<QAction>(window, "LangueName1").isChecked());
        EXPECT_EQ(In<QComboBox>(window, "infoGenre").count(), 0);
        EXPECT_EQ(In<QTreeView>(window, "TreeView1").model()->rowCount(), 0);
        EXPECT_EQ(In<QComboBox>(window, "ComboOutFormat").count(), 0);
        EXPECT_TRUE(In<QLineEdit>(window, "infoGenreS").isEnabled());
        EXPECT_EQ(Ini(), QByteArray());
        WatchBehindThePicker(window);
        Choose(picker, 1);
    });
    EXPECT_EQ(Steps, (QStringList{u"title"_s, u"languages"_s, u"picker"_s, u"item"_s, u"texts"_s, u"genres"_s,
                                  u"root"_s, u"settings"_s, u"tag version"_s}));
    EXPECT_NE(LeastSizeAtTitle, QSize(613, 560));
    EXPECT_EQ(LeastSizeAtLanguages, QSize(613, 560));
    EXPECT_EQ(HeldAtLanguages.first, HeldBefore.first);
    EXPECT_EQ(Form().TagPage.Fields->infoGenre->count(), 148);
    for (const QLineEdit* field :
         {Form().TagPage.Fields->infoGenreS, Form().TagPage.Fields->infoCopyright,
          Form().TagPage.Fields->infoComposer, Form().TagPage.Fields->infoURL,
          Form().TagPage.Fields->infoEncodedBy, Form().TagPage.Fields->infoOriginalArtist}) {
        EXPECT_FALSE(field->isEnabled()) << field->objectName().toStdString();
    }
}

TEST_F(LoadOrder, TheMenusHaveTheirPicturesBeforeThePicker) {
    Start([](Form1& picker) {
        const auto picture = [&](const char* name) {
            const QIcon icon = In<QAction>(*picker.parentWidget(), name).icon();
            EXPECT_FALSE(icon.isNull()) << name;
            return icon.pixmap(16, 16).toImage();
        };
        std::vector<QImage> pictures;
        for (const char* name : {"addfile", "adddirectory", "mynew", "ConvertAll", "about", "cancel"}) {
            EXPECT_EQ(std::count(pictures.begin(), pictures.end(), picture(name)), 0) << name;
            pictures.push_back(picture(name));
        }
        EXPECT_EQ(picture("convertnoww"), picture("ConvertAll"));
        Choose(picker, 0);
    });
    EXPECT_EQ(PickersSeen, 1);
}

TEST_F(FirstStart, WritesJustThreeKeysBeforeTheCloseAndThreeMoreAtIt) {
    Start([](Form1& picker) { Choose(picker, 0); });
    EXPECT_EQ(Ini().replace("\r\n", "\n"),
              "[LANGUE]\nVALUE= 0\n[LAUNCH]\nVALUE=True\n[WMA]\nWMASUPPORT=False\n");
    EXPECT_TRUE(CloseWindow());
    const QByteArray closed = Ini();
    EXPECT_TRUE(closed.contains("[AudioConverter]"));
    for (const char* key : {"OutputPath=", "Modepath=FALSE", "Format=Mp3"}) {
        EXPECT_TRUE(closed.contains(key)) << key;
    }
    EXPECT_EQ(closed.count('='), 6);
}

TEST_F(FirstStart, APickerClosedWithoutAChoiceTakesTheSeventhFileForThisRunOnly) {
    Start();
    EXPECT_TRUE(Window->LanguageItems().Item(6)->isChecked());
    EXPECT_EQ(LanguageLines[93], u"US English"_s);
    EXPECT_FALSE(Ini().contains("LANGUE"));
    EXPECT_EQ(WithoutLetter(Form().file->title()), u"File"_s);
    Window.reset();
    Start();
    EXPECT_EQ(PickersSeen, 2) << "the next start asks again";
}

TEST_F(FirstStart, WithSixFilesAndNoChoiceTheDesignCaptionsStay) {
    std::filesystem::remove(Shipped.Native("US English.lng").toStdString());
    LanguageLines.Assign({});
    Start();
    EXPECT_TRUE(LanguageLines.IsEmpty());
    EXPECT_FALSE(Ini().contains("LANGUE"));
    EXPECT_EQ(WithoutLetter(Form().mynew->text()), u"new"_s);
    EXPECT_EQ(WithoutLetter(Form().acceptWma->text()), u"acceptWma"_s);
    EXPECT_EQ(WithoutLetter(Form().convertnoww->text()), u"Convert !"_s);
    EXPECT_EQ(Form().Label32->text(), u"File:"_s);
    EXPECT_EQ(Form().ToolbarButton(2)->text(), u"Add File"_s);
    EXPECT_EQ(Form().SSTab1->tabText(0), u"Conversion information"_s);
    EXPECT_EQ(Panel().CheckOutPath->text(), u"Save in the original's directory"_s);

    QString said;
    bool ended = false;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon /*icon*/, const QString& /*title*/) {
        said = text;
    };
    ProgramEnd() = [&] { ended = true; };
    Form().Homepage->trigger();
    EXPECT_TRUE(said.contains(u"9 : Subscript out of range")) << said.toStdString();
    EXPECT_TRUE(ended);
    ended = false;
    Form().FAQ->trigger();
    EXPECT_TRUE(said.contains(u"13 : Type mismatch")) << said.toStdString();
    EXPECT_TRUE(ended);
}

TEST_F(FirstStart, WithoutTheEncoderTheNoticeStandsBesideTheLogoAtEveryStart) {
    OverrideEncoderSystemFolder(Folder.MakeFolder("no-encoder"));
    for (int start = 1; start <= 2; ++start) {
        Start([](Form1& picker) { Choose(picker, 1); });
        EXPECT_EQ(NoticesSeen, start);
        EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Wav"_s);
        Window.reset();
    }
    EXPECT_TRUE(LogoBesideNotice);
}

TEST_F(FirstStart, TheNoticeIsTheSameInAllLanguages) {
    OverrideEncoderSystemFolder(Folder.MakeFolder("no-encoder"));
    QStringList first;
    for (int place = 0; place < 7; ++place) {
        Folder.MakeFile("config/SonmiraPack/Sonmira.ini",
                        "[LANGUE]\nVALUE= " + QByteArray::number(place) + "\n");
        Start();
        EXPECT_EQ(NoticesSeen, place + 1);
        EXPECT_TRUE(Window->LanguageItems().Item(place)->isChecked());
        if (place == 0) first = NoticeTexts;
        EXPECT_EQ(NoticeTexts, first) << place;
        // Once more, now that the language is there.
        const ModalAnswer later(u"LameEncoder"_s, [&](QWidget& window) {
            EXPECT_EQ(static_cast<LameEncoder&>(window).Label1->text(),
                      first.filter(u"not found"_s).value(0));
            window.close();
        });
        LameEncoder::ShowNotice();
        Window.reset();
    }
    EXPECT_FALSE(first.filter(QString::fromUtf8(Folder.Native("no-encoder/"))).isEmpty());
}

TEST_F(FirstStart, ASavedPlaceBeyondTheMenuLoadsNoFile) {
    Folder.MakeFile("config/SonmiraPack/Sonmira.ini", "[LANGUE]\nVALUE= 7\n");
    LanguageLines.Assign({});
    Start();
    EXPECT_EQ(PickersSeen, 0);
    EXPECT_TRUE(LanguageLines.IsEmpty());
    EXPECT_EQ(WithoutLetter(Form().Quit->text()), u"Close"_s);
}

TEST_F(FirstStart, ASavedPlaceIsReadByItsLeadingNumber) {
    Folder.MakeFile("config/SonmiraPack/Sonmira.ini", "[langue]\nvalue=  1 and more\n");
    Start();
    EXPECT_EQ(LanguageLines[93], u"Français"_s);
}

TEST_F(FirstStart, WithoutAnyLanguageFileTheUserIsToldAndTheProgramEnds) {
    for (const auto& file : std::filesystem::directory_iterator(Shipped.Native().toStdString())) {
        std::filesystem::remove(file);
    }
    Folder.MakeFile("config/SonmiraPack/Sonmira.ini", "[LANGUE]\nVALUE= 0\n");
    Dialogs().ShowMessage = [](const QString& text, MessageIcon /*icon*/, const QString& /*title*/) {
        std::fprintf(stderr, "%s", text.toUtf8().constData());
    };
    EXPECT_EXIT(Start(), ::testing::ExitedWithCode(0), "Can't find the Language file");
}

TEST_F(FirstStart, TheNamesThatOthersLookForAreHeldAndHinderNoSecondInstance) {
    Start([](Form1& picker) { Choose(picker, 0); });
    const QByteArray held = ContentOf("/proc/net/unix");
    EXPECT_TRUE(held.contains(" @Tolvane_SonmiraPack\n"));
    EXPECT_TRUE(held.contains(" @Global\\Tolvane_SonmiraPack\n"));
    const std::unique_ptr<BatchConverter> first = std::move(Window);
    Start();
    EXPECT_TRUE(Window->isVisible());
}

}  // namespace
}  // namespace Sonmira

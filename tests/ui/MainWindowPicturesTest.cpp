// The main window in all its sizes, languages and states: nothing lies over anything else. Pictures of it go
// into the folder that SONMIRA_PICTURES names, and with them the contact sheets of docs/pictures.
#include "MainWindowTest.h"
#include "kit/CadreDesign.h"
#include "kit/Icons.h"
#include "kit/MyProgressBar.h"
#include "kit/Splitter.h"
#include "shell/widgets/WindowMeasures.h"
#include "ui/TabStrip.h"
#include "ui/Theme.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

struct Picture {
    QString Title;
    QImage Image;
};

// Pictures with their titles below each other in columns, each shrunk to the width of its column.
QImage Sheet(const QList<Picture>& pictures, int columns, int width) {
    constexpr int Gap = 24;
    constexpr int TitleHeight = 26;
    const int room = (width - Gap) / columns - Gap;
    QList<QImage> shrunk;
    QList<int> rowHeights;
    for (qsizetype n = 0; n < pictures.size(); ++n) {
        const QImage& image = pictures[n].Image;
        shrunk.append(image.width() > room ? image.scaledToWidth(room, Qt::SmoothTransformation) : image);
        if (n % columns == 0) rowHeights.append(0);
        rowHeights.last() = qMax(rowHeights.last(), shrunk.last().height());
    }
    int height = Gap;
    for (const int row : rowHeights) height += row + TitleHeight + Gap;
    QImage sheet(width, height, QImage::Format_RGB32);
    sheet.fill(QColor(0xD5, 0xDC, 0xE0));
    QPainter painter(&sheet);
    painter.setPen(QColor(0x1F, 0x2A, 0x33));
    int top = Gap;
    for (qsizetype n = 0; n < pictures.size(); ++n) {
        const int left = Gap + static_cast<int>(n % columns) * (room + Gap);
        painter.drawText(QRect(left, top, room, TitleHeight - 6), Qt::AlignVCenter, pictures[n].Title);
        painter.drawImage(left, top + TitleHeight, shrunk[n]);
        if (n % columns == columns - 1) top += rowHeights[n / columns] + TitleHeight + Gap;
    }
    return sheet;
}

class MainWindowPictures : public MainWindowTest {
protected:
    MainWindowPictures() {
        Wear(false);
        for (const char* name :
             {"Live at the Pier/01 - Soundcheck.wav", "Live at the Pier/02 - First tide.wav",
              "Live at the Pier/03 - Paper boats.wav", "Demos 2004/bass take 3.wav"}) {
            Folder.MakeFile(QByteArray("Music/") + name,
                            WavOf(MakeTone(44100, 2, 44100, 440), WavKind::Signed16));
        }
        Folder.MakeFile("Music/Demos 2004/guitar take 1.flac", "no sound");
        MakeLongWav("Music/Live at the Pier/04 - Harbour lights.wav", 8);
        Folder.MakeFile("Music/Field recordings/train.ogg", "no sound");
        Open();
        UnhookMinMaxInfo(*Window);
        Window->setMinimumSize(613, 560);
        Window->AddFolder(Folder.Path("Music"));
        Form().TreeView1->expandAll();
        Form().TreeView1->setCurrentItem(
            Form().TreeView1->NodeOf(Folder.Path("Music/Live at the Pier/02 - First tide.wav")));
        Panel().TextOutPath->SetText(u"\\home\\ana\\Music\\Converted"_s);
        Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    }
    ~MainWindowPictures() override { Wear(false); }

    static void Wear(bool dark) {
        const QColor ground = dark ? Qt::black : Qt::white;
        const QColor ink = dark ? Qt::white : Qt::black;
        QApplication::setPalette(QPalette(ink, ground, ground, ground, ground, ink, ink, ground, ground));
        ApplyTheme(*qApp);
    }
    void Speak(const QString& language) {
        for (int n = 0; n <= Window->LanguageItems().HighestIndex(); ++n) {
            if (Window->LanguageItems().PathOf(n).endsWith(u'\\' + language + u".lng"_s)) {
                Window->LanguageItems().Item(n)->trigger();
            }
        }
    }
    void Resize(const QSize& size) {
        Window->resize(size);
        Settle();
    }
    Picture Take(const QString& title) {
        Settle();
        ExpectNothingOverlaps(title);
        return {title, LookAt(QString(title).remove(u',').replace(u' ', u'-'))};
    }
    QImage LookAt(const QString& name) {
        const QImage image = Window->grab().toImage();
        Keep(image, u"window-"_s + name);
        return image;
    }
    static void Keep(const QImage& image, const QString& name) {
        const QString folder = qEnvironmentVariable("SONMIRA_PICTURES");
        if (!folder.isEmpty()) image.save(folder + u'/' + name + u".png"_s);
    }

    // Controls that lie in the same one do not lie over each other, and none reaches out of it.
    void ExpectNothingOverlaps(const QString& title) {
        const QList<QWidget*> grounds = {Form().Picture1, Form().Picture5,         Form().Picture7,
                                         Form().Picture9, Form().TagPage.Picture2, Window->centralWidget()};
        for (const QWidget* ground : grounds) {
            if (!ground->isVisible()) continue;
            QList<const QWidget*> controls;
            for (const QWidget* control : ground->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                if (control->isVisible() && control != Form().Image5) controls.append(control);
            }
            for (qsizetype n = 0; n < controls.size(); ++n) {
                // By its rule the toolbar of the tags is a little wider than its page.
                EXPECT_TRUE(ground->rect().adjusted(-2, 0, 2, 0).contains(controls[n]->geometry()))
                    << title.toStdString() << ' ' << controls[n]->objectName().toStdString();
                for (qsizetype other = 0; other < n; ++other) {
                    // By its rule the folder reaches a little below the count, which is aligned at its end.
                    if (controls[other] == Form().Label30 && controls[n] == Form().Label29) continue;
                    EXPECT_FALSE(controls[n]->geometry().intersects(controls[other]->geometry()))
                        << title.toStdString() << ": " << controls[n]->objectName().toStdString() << " over "
                        << controls[other]->objectName().toStdString();
                }
            }
        }
    }
    // Acts in the middle of a run, at some percent of its long file, and stops it.
    void InTheMiddleOfARun(const std::function<void()>& act) {
        Panel().TextOutPath->SetText(Folder.Path("out"));
        bool acted = false;
        QTimer poll;
        // A screen so slow that no machine is through with that file before it was looked at.
        QObject::connect(&Rows(), &QAbstractItemModel::dataChanged, &poll, [&] {
            if (!acted && Rows().RowCount() == 7) QTest::qSleep(20);
        });
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            const int last = Rows().RowCount();
            if (last < 7 || Progress(last).chopped(2).toInt() < 42) return;
            poll.stop();
            acted = true;
            Panel().TextOutPath->setText(u"/home/ana/Music/Converted"_s);
            act();
            ClickToolbar(6);
        });
        poll.start(5);
        ClickToolbar(5);
        EXPECT_TRUE(acted);
    }

    inline static const QStringList Languages = {u"English"_s, u"German"_s, u"French"_s};
    static constexpr QSize Sizes[] = {{613, 560}, {1080, 700}, {1920, 1080}, {3840, 2160}};
};

QString SizeText(const QSize& size) {
    return u"%1 x %2"_s.arg(size.width()).arg(size.height());
}

TEST_F(MainWindowPictures, FromTheLeastSizeToALargeScreen) {
    QList<Picture> all;
    const auto takeAll = [&](const QString& state) {
        for (const QSize& size : Sizes) {
            Resize(size);
            for (const QString& language : Languages) {
                Speak(language);
                all.append(Take(u"%1, %2, %3"_s.arg(language, state, SizeText(size))));
            }
        }
    };
    takeAll(u"idle"_s);
    Speak(Languages[0]);
    InTheMiddleOfARun([&] { takeAll(u"converting"_s); });
    Keep(Sheet(all, 3, 1950), u"sizes"_s);
}

TEST_F(MainWindowPictures, InLightAndDarkOnBothPages) {
    QList<Picture> all;
    Resize({1080, 700});
    InTheMiddleOfARun([&] {
        for (const bool dark : {false, true}) {
            Wear(dark);
            for (const int tab : {0, 1}) {
                Form().SSTab1->setCurrentIndex(tab);
                all.append(Take(u"%1, page %2"_s.arg(dark ? u"dark"_s : u"light"_s).arg(tab + 1)));
                if (tab == 0) continue;
                Form().TagPage.ToolbarButton(1)->trigger();
                Form().TagPage.ToolbarButton(3)->trigger();
                Settle();
                LookAt(u"memory-%1"_s.arg(dark ? u"dark"_s : u"light"_s));
                Form().TagPage.ToolbarButton(3)->trigger();
            }
            Form().SSTab1->setCurrentIndex(0);
        }
    });
    Keep(Sheet(all, 2, 1600), u"light-and-dark"_s);
}

TEST_F(MainWindowPictures, InThreeLanguagesAtTheLeastSize) {
    QList<Picture> all;
    Resize({613, 560});
    InTheMiddleOfARun([&] {
        for (const QString& language : Languages) {
            Speak(language);
            for (const int tab : {0, 1}) {
                Form().SSTab1->setCurrentIndex(tab);
                all.append(Take(u"%1, page %2"_s.arg(language).arg(tab + 1)));
            }
            Form().SSTab1->setCurrentIndex(0);
        }
    });
    Keep(Sheet(all, 2, 1290), u"languages"_s);
}

TEST_F(MainWindowPictures, MirroredAndWithLargeLetters) {
    QList<Picture> all;
    Window->setLayoutDirection(Qt::RightToLeft);
    Resize({1080, 700});
    for (const int tab : {0, 1}) {
        Form().SSTab1->setCurrentIndex(tab);
        all.append(Take(u"right to left, page %1"_s.arg(tab + 1)));
    }
    Window->setLayoutDirection(Qt::LeftToRight);
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 1.5);
    QApplication::setFont(large);
    Settle();
    for (const int tab : {0, 1}) {
        Form().SSTab1->setCurrentIndex(tab);
        Resize({1300, 1000});
        all.append(Take(u"large letters, page %1"_s.arg(tab + 1)));
    }
    QApplication::setFont(usual);
    Keep(Sheet(all, 2, 1600), u"mirrored-and-large"_s);
}

}  // namespace
}  // namespace Sonmira

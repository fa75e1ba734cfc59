#pragma once

#include "formats/Mp3Options.h"
#include "formats/OggOptions.h"
#include "formats/WavOptions.h"
#include "shell/widgets/Events.h"
#include "support/Tool.h"
#include "ui/MainWindowTest.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>

namespace Sonmira {

// The options windows, opened by the button of the real main window and worked by keys and clicks.
class OptionsTest : public MainWindowTest {
protected:
    struct Box {
        QString Text;
        MessageIcon Icon = MessageIcon::Information;
        QString Title;
    };

    OptionsTest() {
        Dialogs().ShowMessage = [this](const QString& text, MessageIcon icon, const QString& title) {
            Boxes.push_back({text, icon, title});
        };
        ProgramEnd() = [this] { ++ProgramEnds; };
    }
    ~OptionsTest() override {
        Dialogs().ShowMessage = {};
        ProgramEnd() = RealEnd;
    }

    static void Save(const QString& section, const QString& key, const QString& value) {
        WriteIniValue(SettingsFile, section, key, value);
    }
    static QString Saved(const QString& section, const QString& key) {
        return ReadIniValue(SettingsFile, section, key);
    }
    // The values of the keys "1" to `last`.
    static QStringList SavedNumbers(const QString& section, int last) {
        QStringList values;
        for (int key = 1; key <= last; ++key) values.append(Saved(section, QString::number(key)));
        return values;
    }
    void Select(const QString& format) { Panel().ComboOutFormat->SelectText(format); }
    QString Summary() { return Panel().TextOutFormat->text(); }

    // Opens the window of the selected format and acts on it; what `act` leaves open is closed as by its
    // close box. Returns how many windows there were.
    int InMp3(const std::function<void(Mp3Options&)>& act) { return In(QStringLiteral("frmMP3"), act); }
    int InOgg(const std::function<void(OggOptions&)>& act) { return In(QStringLiteral("frmOgg"), act); }
    int InWav(const std::function<void(WavOptions&)>& act) { return In(QStringLiteral("frmWav"), act); }

    static void Click(QWidget* button) { QTest::mouseClick(button, Qt::LeftButton); }
    // A radio button is hit on its caption only, however wide it is.
    static void ClickOption(const QButtonGroup* group, int number) {
        QAbstractButton* const option = group->button(number);
        QTest::mouseClick(option, Qt::LeftButton, Qt::NoModifier, QPoint(8, option->height() / 2));
        EXPECT_EQ(group->checkedId(), number);
    }
    static void Choose(ChoiceList* list, int place) {
        QTest::keyClick(list, Qt::Key_Home);
        for (int n = 0; n < place; ++n) QTest::keyClick(list, Qt::Key_Down);
        EXPECT_EQ(list->currentIndex(), place);
    }
    static void MoveTo(QSlider* slider, int position) {
        QTest::keyClick(slider, Qt::Key_Home);
        for (int n = 0; n < position; ++n) QTest::keyClick(slider, Qt::Key_Right);
        EXPECT_EQ(slider->value(), position);
    }
    static void Type(QSpinBox* upDown, int value) {
        upDown->selectAll();
        QTest::keyClicks(upDown, QString::number(value));
        EXPECT_EQ(upDown->value(), value);
    }
    static void Tick(QCheckBox* box) { QTest::keyClick(box, Qt::Key_Space); }
    static QStringList ItemsOf(const QComboBox* list) {
        QStringList items;
        for (int n = 0; n < list->count(); ++n) items.append(list->itemText(n));
        return items;
    }
    static QStringList CaptionsOf(const QButtonGroup* group, int first) {
        QStringList captions;
        for (int n = first; group->button(n) != nullptr; ++n) captions.append(group->button(n)->text());
        return captions;
    }

    // Converts that sound as a WAV into the selected format by a whole run. Returns the native path of what
    // came out.
    QByteArray Convert(const TestSound& sound, const QByteArray& extension) {
        const QByteArray output = Folder.Native("out/Music/a." + extension);
        std::filesystem::remove(output.toStdString());
        Folder.MakeFile("Music/a.wav", WavOf(sound, WavKind::Signed16));
        ClickToolbar(1);
        Panel().TextOutPath->SetText(Folder.Path("out"));
        AddFolderByCommand(Folder.Path("Music"));
        ClickToolbar(5);
        EXPECT_EQ(IconOf(1), QStringLiteral("converted"));
        EXPECT_TRUE(NativeExists(output)) << output.constData();
        return output;
    }
    // What ffprobe says of an entry of the first stream.
    static QByteArray Probe(const QByteArray& path, const QByteArray& entry) {
        return RunTool({"ffprobe", "-v", "error", "-select_streams", "a:0", "-show_entries",
                        "stream=" + entry, "-of", "csv=p=0", path})
            .Output.trimmed();
    }

    std::vector<Box> Boxes;
    int ProgramEnds = 0;

private:
    template <class Options>
    int In(const QString& name, const std::function<void(Options&)>& act) {
        const ModalAnswer answer(name, [&](QWidget& window) {
            window.activateWindow();
            EXPECT_TRUE(BecomesActive(window));
            act(static_cast<Options&>(window));
            if (window.isVisible()) window.close();
        });
        Click(Panel().CmdFormatParameter);
        return answer.Seen();
    }

    const std::function<void()> RealEnd = ProgramEnd();
};

}  // namespace Sonmira

#pragma once

#include "compact/Audiotool.h"
#include "compact/AudiotoolForm.h"
#include "compact/AudiotoolList.h"
#include "compact/RowBar.h"
#include "formats/OutputPanel.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/InputBoxes.h"
#include "support/Tool.h"
#include "support/WindowTest.h"

#include <QAction>
#include <QCheckBox>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <QtTest/QTest>

namespace Sonmira {

// The real compact window over the real components, with settings and output of its own.
class AudiotoolTest : public WindowTest {
protected:
    struct Message {
        QString Text;
        MessageIcon Icon;
        QString Title;
    };

    AudiotoolTest() {
        OwnProgram = QStringLiteral("audiotool");
        Dialogs().ShowMessage = [this](const QString& text, MessageIcon icon, const QString& title) {
            Said.push_back({text, icon, title});
        };
        Dialogs().AskYesNo = [this](const QString& question, const QString& title) {
            Asked.append(title + QLatin1Char('|') + question);
            return AnswersYes;
        };
        ProgramEnd() = [this] { ++ProgramEnds; };
    }
    ~AudiotoolTest() override {
        Window.reset();
        ProgramEnd() = RealEnd;
    }

    Audiotool& Open() {
        Window = std::make_unique<Audiotool>();
        Window->show();
        QApplication::processEvents();
        return *Window;
    }
    // Ready for a run into the folder "out".
    void OpenFor(QStringView format) {
        Open();
        Panel().TextOutPath->SetText(Folder.Path("out"));
        Panel().ComboOutFormat->SelectText(format.toString());
    }
    // Closes the window as a user does. The test lives on behind the forced end, so the farewell comes, too.
    bool CloseWindow() {
        const ModalAnswer farewell(QStringLiteral("LameEncoder"), [](QWidget& notice) { notice.close(); });
        return Window->close();
    }

    AudiotoolForm& Form() { return Window->Form(); }
    OutputPanel& Panel() { return *Form().Output; }
    AudiotoolList& List() { return *Form().ListViewFiles; }
    AudiotoolRows& Rows() { return List().Rows(); }
    const RowBar& Bar(int n) { return Window->Bars().Element(n); }
    QString Cell(int row, AudiotoolRows::Column column) {
        return Rows().index(row - 1, column).data().toString();
    }
    QStringList Column(AudiotoolRows::Column column) {
        QStringList texts;
        for (int row = 1; row <= Rows().Count(); ++row) texts.append(Cell(row, column));
        return texts;
    }
    QStringList Names() { return Column(AudiotoolRows::NameColumn); }
    QStringList Positions() { return Column(AudiotoolRows::PositionColumn); }
    QString IconOf(int row) { return Rows().State(row).Icon; }
    QString FilesText() { return Form().LabelFilesToConvert->text(); }

    // What the list gets when another program's files are let go over it. Returns whether it took them.
    bool Drop(const QMimeData& data) {
        constexpr QPoint Place(20, 20);
        QDragEnterEvent enter(Place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(List().viewport(), &enter);
        // No system drops where the entry was refused.
        if (!enter.isAccepted()) return false;
        QDropEvent drop(Place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(List().viewport(), &drop);
        return drop.isAccepted();
    }
    bool Drop(const QList<QByteArray>& names) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QByteArray& name : names) {
            urls.append(QUrl::fromEncoded("file://" + Folder.Native(name).toPercentEncoding("/")));
        }
        data.setUrls(urls);
        const bool taken = Drop(data);
        Settle();
        return taken;
    }
    void AddFiles(const QList<QByteArray>& names) {
        for (const QByteArray& name : names) Window->AddFileToList(Folder.Path(name));
        QApplication::processEvents();
    }

    // A short sound, as WAV and in any other format that the ending says.
    QByteArray MakeWav(const QByteArray& name, int milliseconds = 300) {
        Folder.MakeFile(
            name, WavOf(MakeTone(44100, 2, std::int64_t{441} * milliseconds / 10, 440), WavKind::Signed16));
        return Folder.Native(name);
    }
    QByteArray Make(const QByteArray& name, int milliseconds = 300, const QList<QByteArray>& options = {}) {
        const QByteArray wav = MakeWav("made/in.wav", milliseconds);
        Folder.MakeFile(name);
        const ToolResult made = RunTool(QList<QByteArray>{"ffmpeg", "-v", "error", "-y", "-i", wav} +
                                        options + QList{Folder.Native(name)});
        EXPECT_EQ(made.ExitCode, 0) << made.Errors.constData();
        return Folder.Native(name);
    }
    void MakeTracks(int count) {
        const QByteArray wav = WavOf(MakeTone(8000, 1, 80, 440), WavKind::Signed16);
        for (int n = 1; n <= count; ++n) Folder.MakeFile(TrackName(n), wav);
    }
    static QByteArray TrackName(int n) { return "tracks/track " + QByteArray::number(n) + ".wav"; }
    void AddTracks(int count) {
        MakeTracks(count);
        QList<QByteArray> names;
        for (int n = 1; n <= count; ++n) names.append(TrackName(n));
        AddFiles(names);
    }

    void Select(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        List().ScrollToRow(row);
        QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers,
                          List().visualRect(Rows().index(row - 1, AudiotoolRows::NameColumn)).center());
    }
    void PressDelete() { QTest::keyClick(&List(), Qt::Key_Delete); }
    void Click(QAbstractButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    // Acts once, as soon as `reached` holds. Until then each change of a row takes so many milliseconds to
    // paint that no machine is through with a run before it was looked at.
    void When(const std::function<bool()>& reached, const std::function<void()>& act, int paints = 30) {
        auto* poll = new QTimer(Window.get());
        const auto slow = QObject::connect(&Rows(), &AudiotoolRows::StateChanged, poll,
                                           [paints] { QTest::qSleep(paints); });
        QObject::connect(poll, &QTimer::timeout, poll, [poll, slow, reached, act] {
            if (!reached()) return;
            poll->stop();
            QObject::disconnect(slow);
            act();
        });
        poll->start(5);
    }
    void WhenBarReaches(int percent, const std::function<void()>& act) {
        When([this, percent] { return Window->State().Busy() && Bar(0).value() >= percent; }, act);
    }

    std::vector<Message> Said;
    QStringList Asked;  // "title|question"
    bool AnswersYes = true;
    int ProgramEnds = 0;
    const std::function<void()> RealEnd = ProgramEnd();
    std::unique_ptr<Audiotool> Window;
};

}  // namespace Sonmira

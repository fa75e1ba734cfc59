#pragma once

#include "formats/OutputPanel.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "shell/widgets/InputBoxes.h"
#include "support/WindowTest.h"
#include "ui/BatchConverter.h"

#include <QCheckBox>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidgetItemIterator>
#include <QtTest/QTest>

namespace Sonmira {

// A caption without the mark of the letter by which it is reached.
inline QString WithoutLetter(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

// The real main window over the real components, with settings and output of its own.
class MainWindowTest : public WindowTest {
protected:
    ~MainWindowTest() override { Window.reset(); }

    // Closes the window as a user does. The test lives on behind the forced end, so the farewell comes, too.
    bool CloseWindow() {
        const ModalAnswer farewell(QStringLiteral("LameEncoder"), [](QWidget& notice) { notice.close(); });
        return Window->close();
    }

    BatchConverter& Open() {
        Window = std::make_unique<BatchConverter>();
        Window->show();
        QApplication::processEvents();
        return *Window;
    }

    BatchConverterForm& Form() { return Window->Form(); }
    OutputPanel& Panel() { return *Form().Picture9; }
    FileListModel& Rows() { return Form().ListViewFiles->Rows(); }
    QString Progress(int row) { return Rows().Text(row, FileListModel::ProgressColumn); }
    QString IconOf(int row) { return Rows().index(row - 1, 0).data(FileListModel::IconKeyRole).toString(); }

    void ClickToolbar(int button) {
        QTest::mouseClick(Form().Toolbar1->widgetForAction(Form().ToolbarButton(button)), Qt::LeftButton);
    }
    void AddFolderByCommand(const QString& folder) {
        FolderToChoose = folder;
        ClickToolbar(3);
    }

    // Texts of the tree's nodes in the order in which they are shown.
    QStringList Nodes() {
        QStringList texts;
        for (QTreeWidgetItemIterator it(Form().TreeView1); *it != nullptr; ++it) texts.append((*it)->text(0));
        return texts;
    }

    // Acts once, as soon as the first row has reached `percent`. Until then each change of a row takes so
    // long to paint that no machine is through with a run before it was looked at.
    void WhenReached(int percent, std::function<void()> act) {
        auto* poll = new QTimer(Window.get());
        const auto slow =
            QObject::connect(&Rows(), &QAbstractItemModel::dataChanged, poll, [] { QTest::qSleep(30); });
        QObject::connect(poll, &QTimer::timeout, poll, [this, poll, slow, percent, act] {
            if (Rows().RowCount() < 1 || Progress(1).chopped(2).toInt() < percent) return;
            poll->stop();
            QObject::disconnect(slow);
            act();
        });
        poll->start(5);
    }

    std::unique_ptr<BatchConverter> Window;
};

}  // namespace Sonmira

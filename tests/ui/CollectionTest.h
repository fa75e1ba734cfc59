#pragma once

#include "MainWindowTest.h"

#include <QMenu>
#include <QTimer>

namespace Sonmira {

// The real main window with what a hand does to its tree and its rows.
class CollectionTest : public MainWindowTest {
protected:
    ConversionTree& Tree() { return *Form().TreeView1; }
    QTreeWidgetItem* Node(const QString& key) { return Tree().NodeOf(key); }
    const ConversionRecords& Records() { return Window->Gathered().Records; }
    const ConversionRecord& LastRecord() { return Records()[Records().UpperBound()]; }

    void Click(const QString& key, Qt::MouseButton button = Qt::LeftButton) {
        Tree().scrollToItem(Node(key));
        QTest::mouseClick(Tree().viewport(), button, Qt::NoModifier,
                          Tree().visualItemRect(Node(key)).center());
    }
    void PressDelete() { QTest::keyClick(&Tree(), Qt::Key_Delete); }
    // Takes away the file or folder behind a node.
    void Vanish(const QByteArray& name) { std::filesystem::remove_all(Folder.Native(name).toStdString()); }
    bool PopupShown() {
        const bool shown = Form().popupmenux->isVisible();
        Form().popupmenux->hide();
        return shown;
    }
    // A new conversion by the menu, as often as a test wants one.
    void StartAnew() { Form().mynew->trigger(); }

    // What the tree gets when another program's files are let go over it. Returns whether it took them.
    bool Drop(const QMimeData& data) {
        constexpr QPoint Place(20, 20);
        QDragEnterEvent enter(Place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Tree().viewport(), &enter);
        // No system drops where the entry was refused.
        if (!enter.isAccepted()) return false;
        QDropEvent drop(Place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Tree().viewport(), &drop);
        Settle();
        return drop.isAccepted();
    }
    bool Drop(const QList<QByteArray>& names) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QByteArray& name : names)
            urls.append(QUrl::fromLocalFile(QString::fromUtf8(Folder.Native(name))));
        data.setUrls(urls);
        return Drop(data);
    }

    // Adds a folder and calls `act` at every turn of the event loop while it is scanned.
    void AddWhile(const QString& folder, const std::function<void()>& act) {
        QTimer turn;
        QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
            if (Window->Gathered().ScanRunning) act();
        });
        turn.start(0);
        Window->AddFolder(folder);
    }

    // The inputs are free and nothing is under way.
    void ExpectFree() {
        for (const int button : {1, 2, 3, 5, 8}) EXPECT_TRUE(Form().ToolbarButton(button)->isEnabled());
        EXPECT_FALSE(Form().ToolbarButton(6)->isEnabled());
        EXPECT_TRUE(Tree().acceptDrops());
        EXPECT_TRUE(Panel().ComboOutFormat->isEnabled());
        EXPECT_FALSE(Window->Gathered().ScanRunning);
        EXPECT_EQ(Form().StatusPanel1->text(), QString());
    }
    void ExpectCounts(const QString& folders, const QString& files) {
        EXPECT_EQ(Form().LabelDirCount->text(), folders);
        EXPECT_EQ(Form().Label4->text(), files);
    }
};

}  // namespace Sonmira

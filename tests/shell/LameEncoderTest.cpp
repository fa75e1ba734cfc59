#include "platform/ChildProcess.h"
#include "platform/Folders.h"
#include "shell/widgets/LameEncoder.h"
#include "support/TestFolder.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class EncoderNotice : public ::testing::Test {
protected:
    EncoderNotice() {
        OverrideEncoderSystemFolder(Folder.Path("lib"));
        DesktopLauncher() = [this](const QString& target, const QString& /*folder*/) {
            Opened.append(target);
            return true;
        };
        Notice = std::make_unique<LameEncoder>();
        Notice->show();
        QApplication::processEvents();
    }
    ~EncoderNotice() override {
        OverrideEncoderSystemFolder({});
        DesktopLauncher() = Real;
    }

    const std::function<bool(const QString&, const QString&)> Real = DesktopLauncher();
    TestFolder Folder;
    QStringList Opened;
    std::unique_ptr<LameEncoder> Notice;
};

TEST_F(EncoderNotice, SaysWhatIsMissingAndWhereItGoes) {
    EXPECT_EQ(Notice->windowTitle(), u"Lame Encoder"_s);
    EXPECT_EQ(Notice->Label1->text(), u"Lame_enc.dll not found in your system's folder"_s);
    EXPECT_EQ(Notice->Label6->text(),
              u"Lame Encoder 3.98 is requiered on this computer to properly encode to MP3"_s);
    EXPECT_EQ(Notice->Label2->text(), u"You can download the Lame Encoder from:"_s);
    EXPECT_EQ(Notice->Label4->text(),
              u"Unzip the downloaded file then put lame_enc.dll in your system's folder Then restart the "
              "application. The file must be placed here: \n"_s +
                  QString::fromUtf8(Folder.Native("lib")) + u'/');
    EXPECT_EQ(Notice->Command3->text(), u"Download"_s);
    EXPECT_EQ(Notice->Command1->text(), u"Cancel"_s);
}

TEST_F(EncoderNotice, TheAddressIsALinkThatLeavesItOpen) {
    QTest::mouseClick(Notice->Label3, Qt::LeftButton);
    EXPECT_EQ(Opened, QStringList{Notice->Label3->text()});
    EXPECT_TRUE(Notice->Label3->text().endsWith(u"/lame_encoder_download.htm"));
    EXPECT_TRUE(Notice->isVisible());
}

TEST_F(EncoderNotice, DownloadOpensTheDownloadAndCloses) {
    QTest::mouseClick(Notice->Command3, Qt::LeftButton);
    ASSERT_EQ(Opened.size(), 1);
    EXPECT_TRUE(Opened[0].endsWith(u"/download_soft.php?d=5197&s=22"));
    EXPECT_FALSE(Notice->isVisible());
}

TEST_F(EncoderNotice, CancelJustCloses) {
    QTest::mouseClick(Notice->Command1, Qt::LeftButton);
    EXPECT_TRUE(Opened.isEmpty());
    EXPECT_FALSE(Notice->isVisible());
}

TEST_F(EncoderNotice, EveryTextFits) {
    for (const QLabel* label : {Notice->Label1, Notice->Label6, Notice->Label2, Notice->Label4}) {
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << qPrintable(label->text());
    }
}

}  // namespace
}  // namespace Sonmira

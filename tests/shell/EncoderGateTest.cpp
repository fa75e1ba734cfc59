#include "platform/Folders.h"
#include "shell/EncoderGate.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Sonmira {
namespace {

namespace fs = std::filesystem;

class EncoderGate : public ::testing::Test {
protected:
    EncoderGate() { OverrideEncoderSystemFolder(Folder.Path()); }
    void TearDown() override { OverrideEncoderSystemFolder(QString()); }

    TestFolder Folder;
};

TEST_F(EncoderGate, OpensForTheLibraryInTheSystemFolder) {
    EXPECT_FALSE(IsLameInstalled());
    Folder.MakeFile("libmp3lame.so.0");
    EXPECT_TRUE(IsLameInstalled());
}

TEST_F(EncoderGate, LooksAfreshEachTime) {
    Folder.MakeFile("libmp3lame.so.0");
    EXPECT_TRUE(IsLameInstalled());
    fs::remove(Folder.Native("libmp3lame.so.0").toStdString());
    EXPECT_FALSE(IsLameInstalled());
}

TEST_F(EncoderGate, TakesASystemFolderWithABackslash) {
    Folder.MakeFile("libmp3lame.so.0");
    OverrideEncoderSystemFolder(Folder.Path() + u'\\');
    EXPECT_TRUE(IsLameInstalled());
}

TEST_F(EncoderGate, TakesALinkToTheLibraryButNoDanglingOne) {
    fs::create_symlink("libmp3lame.so.0.0.0", Folder.Native("libmp3lame.so.0").toStdString());
    EXPECT_FALSE(IsLameInstalled());
    Folder.MakeFile("libmp3lame.so.0.0.0");
    EXPECT_TRUE(IsLameInstalled());
}

TEST_F(EncoderGate, StaysShutForAFolderOfThatName) {
    Folder.MakeFolder("libmp3lame.so.0");
    EXPECT_FALSE(IsLameInstalled());
}

TEST_F(EncoderGate, StaysShutForAHiddenOrOtherFile) {
    Folder.MakeFile(".libmp3lame.so.0");
    Folder.MakeFile("libmp3lame.so");
    Folder.MakeFile("LIBMP3LAME.SO.0");
    EXPECT_FALSE(IsLameInstalled());
}

}  // namespace
}  // namespace Sonmira

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
    Folder.MakeFile("lame_enc.dll");
    EXPECT_TRUE(IsLameInstalled());
}

TEST_F(EncoderGate, LooksAfreshEachTime) {
    Folder.MakeFile("lame_enc.dll");
    EXPECT_TRUE(IsLameInstalled());
    fs::remove(Folder.Native("lame_enc.dll").toStdString());
    EXPECT_FALSE(IsLameInstalled());
}

TEST_F(EncoderGate, TakesASystemFolderWithABackslash) {
    Folder.MakeFile("lame_enc.dll");
    OverrideEncoderSystemFolder(Folder.Path() + u'\\');
    EXPECT_TRUE(IsLameInstalled());
}

TEST_F(EncoderGate, TakesALinkToTheLibraryButNoDanglingOne) {
    fs::create_symlink("lame_enc-3.dll", Folder.Native("lame_enc.dll").toStdString());
    EXPECT_FALSE(IsLameInstalled());
    Folder.MakeFile("lame_enc-3.dll");
    EXPECT_TRUE(IsLameInstalled());
}

TEST_F(EncoderGate, StaysShutForAFolderOfThatName) {
    Folder.MakeFolder("lame_enc.dll");
    EXPECT_FALSE(IsLameInstalled());
}

TEST_F(EncoderGate, StaysShutForAHiddenOrOtherFile) {
    Folder.MakeFile(".lame_enc.dll");
    Folder.MakeFile("lame_enc");
    Folder.MakeFile("libmp3lame.so.0");
    Folder.MakeFile("LAME_ENC.DLL");
    Folder.MakeFile("Lame_enc.dll");
    EXPECT_FALSE(IsLameInstalled());
}

}  // namespace
}  // namespace Sonmira

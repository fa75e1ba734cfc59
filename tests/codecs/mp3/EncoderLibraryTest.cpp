#include "codecs/Conversion.h"
#include "codecs/mp3/LameLibrary.h"
#include "platform/Folders.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

class WithoutEncoderLibrary : public ::testing::Test {
protected:
    void SetUp() override { OverrideEncoderSystemFolder(Folder.MakeFolder("empty")); }
    void TearDown() override { OverrideEncoderSystemFolder({}); }
    TestFolder Folder;
};

TEST_F(WithoutEncoderLibrary, TheMp3FormatIsRefusedAndTheEarlierOneStays) {
    AudioFile file;
    file.SetFormatPCM(44100, 2, 16);
    file.SetFormatMP3(44100, 128, 2);
    EXPECT_EQ(file.FormatString(), QString());
    const QString target = Folder.Path("out.wav");
    file.OpenForWrite(target);
    file.SetSourceFormat(44100, 2);
    file.CloseFile();
    EXPECT_TRUE(ContentOf(Folder.Native("out.wav")).startsWith("RIFF"));
    file.SetFormatPCM(44100, 2, 16);
    EXPECT_NE(file.FormatString(), QString());
}

TEST_F(WithoutEncoderLibrary, AnMp3FormatSetEarlierFailsAtOpeningAndLeavesTheOldFileAlone) {
    AudioFile file;
    OverrideEncoderSystemFolder({});
    file.SetFormatMP3(44100, 128, 2);
    OverrideEncoderSystemFolder(Folder.Path("empty"));
    const QString target = Folder.MakeFile("out.mp3", "earlier");
    EXPECT_EQ(FailureTextOf([&] { file.OpenForWrite(target); }),
              QStringLiteral("The MP3 encoder library is missing"));
    EXPECT_EQ(ContentOf(Folder.Native("out.mp3")), "earlier");
}

TEST_F(WithoutEncoderLibrary, AFileThatOnlyHasItsNameIsNotTaken) {
    Folder.MakeFile("empty/libmp3lame.so.0", "no library");
    EXPECT_EQ(LameLibrary::Load(), nullptr);
}

TEST(EncoderLibrary, IsFoundInTheSystemFolder) {
    EXPECT_NE(LameLibrary::Load(), nullptr);
}

}  // namespace
}  // namespace Sonmira

#include "codecs/Conversion.h"
#include "codecs/mp3/LameLibrary.h"
#include "platform/Folders.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace Sonmira {
namespace {

class WithoutEncoderLibrary : public ::testing::Test {
protected:
    void SetUp() override {
        Module = ContentOf(ToNative(EncoderSystemFolder() + QStringLiteral("\\lame_enc.dll")));
        OverrideEncoderSystemFolder(Folder.MakeFolder("empty"));
    }
    void TearDown() override { OverrideEncoderSystemFolder({}); }
    void Put(const QByteArray& content) { Folder.MakeFile("empty/lame_enc.dll", content); }
    // The module with another name in place of one that it holds, of as many letters.
    QByteArray ModuleWith(const char* name, const char* other) const {
        EXPECT_TRUE(Module.contains(name));
        return QByteArray(Module).replace(name, other);
    }

    TestFolder Folder;
    QByteArray Module;
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
    Put("no library");
    EXPECT_EQ(LameLibrary::Load(), nullptr);
    Put("");
    EXPECT_EQ(LameLibrary::Load(), nullptr);
}

TEST_F(WithoutEncoderLibrary, AFolderOrAPipeOfItsNameIsNotTaken) {
    Folder.MakeFolder("empty/lame_enc.dll");
    EXPECT_EQ(LameLibrary::Load(), nullptr);
    std::filesystem::remove(Folder.Native("empty/lame_enc.dll").toStdString());
    ASSERT_EQ(mkfifo(Folder.Native("empty/lame_enc.dll").constData(), 0600), 0);
    EXPECT_EQ(LameLibrary::Load(), nullptr) << "and nobody waits for a writer";
}

TEST_F(WithoutEncoderLibrary, AModuleIsTakenAsSoonAsAllOfItIsThere) {
    ASSERT_GT(Module.size(), 10000);
    for (const qsizetype part : {64, 1000, 4096, 9000}) {
        Put(Module.first(part));
        EXPECT_EQ(LameLibrary::Load(), nullptr) << part;
    }
    Put(Module.chopped(1));
    EXPECT_EQ(LameLibrary::Load(), nullptr);
    Put(Module);
    EXPECT_NE(LameLibrary::Load(), nullptr);
}

TEST_F(WithoutEncoderLibrary, AModuleWhoseOwnLibraryIsGoneRefusesTheFormat) {
    Put(ModuleWith("libmp3lame.so.0", "libmp3lame.no.0"));
    AudioFile file;
    file.SetFormatMP3(44100, 128, 2);
    EXPECT_EQ(file.FormatString(), QString());
    EXPECT_EQ(FailureTextOf([&] { file.OpenForWrite(Folder.Path("out.mp3")); }),
              QStringLiteral("The MP3 encoder library cannot be loaded"));
    EXPECT_FALSE(NativeExists(Folder.Native("out.mp3")));
    Put(Module);
    file.SetFormatMP3(44100, 128, 2);
    EXPECT_EQ(file.FormatString(), QStringLiteral("MPEG Layer-3 44100 Hz, Stereo, 128 kbit/s"));
}

TEST_F(WithoutEncoderLibrary, AModuleOfAnotherVersionIsNotTaken) {
    Put(ModuleWith("SonmiraLameEncoding1", "SonmiraLameEncoding0"));
    EXPECT_EQ(LameLibrary::Load(), nullptr);
}

// What LAME refuses comes out of the module as a code and is a failure here.
TEST(EncoderLibrary, WhatItRefusesIsAFailureWithAText) {
    Mp3Parameters parameters;
    parameters.SampleRate = -1;
    EXPECT_EQ(FailureTextOf([&] { LameStream(LameLibrary::Load(), parameters); }),
              QStringLiteral("The MP3 encoder made more data than it announced"));
}

TEST(EncoderLibrary, IsFoundInTheSystemFolder) {
    EXPECT_NE(LameLibrary::Load(), nullptr);
}

}  // namespace
}  // namespace Sonmira

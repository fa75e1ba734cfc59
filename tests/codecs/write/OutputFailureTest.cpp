#include "codecs/Conversion.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Sonmira {
namespace {

const FormatSetting CdFormat = [](AudioFile& file) { file.SetFormatPCM(44100, 2, 16); };

AudioBlock SecondOfSilence() {
    return {SampleType::Int16, std::vector<std::byte>(std::size_t{44100} * 4)};
}

int OpeningNumber(AudioFile& file, const QString& path) {
    try {
        file.OpenForWrite(path);
    } catch (const Failure& failure) {
        return failure.Number;
    }
    return 0;
}

TEST(OutputFailure, OfAFullDiskIsReportedForLongAndShortFiles) {
    const TestFolder folder;
    const FormatSetting formats[] = {
        CdFormat,
        [](AudioFile& file) { file.SetFormatMP3(44100, 128, 2); },
        [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400); },
    };
    for (const FormatSetting& format : formats) {
        for (const qint64 frames : {100, 441000}) {
            const QString from =
                folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, frames), WavKind::Signed16));
            EXPECT_EQ(FailureTextOf([&] { ConvertFile(from, QStringLiteral("\\dev\\full"), format); }),
                      QStringLiteral("The disk is full"));
        }
    }
}

TEST(OutputFailure, IsReportedOnceAndTheClosingAfterItIsQuiet) {
    AudioFile file;
    CdFormat(file);
    file.OpenForWrite(QStringLiteral("\\dev\\full"));
    file.SetSourceFormat(44100, 2);
    int failures = 0;
    for (int i = 0; i < 100 && failures == 0; ++i) {
        failures += PassOver([&] { file.WriteBlock(SecondOfSilence()); }) ? 0 : 1;
    }
    EXPECT_EQ(failures, 1);
    EXPECT_NO_THROW(file.CloseFile());
}

TEST(OutputFailure, OfAMissingFolderAFolderOrAForbiddenOneHasItsNumber) {
    const TestFolder folder;
    AudioFile file;
    CdFormat(file);
    EXPECT_EQ(OpeningNumber(file, folder.Path("none/out.wav")), FailureNumber::PathNotFound);
    EXPECT_EQ(OpeningNumber(file, folder.MakeFolder("folder")), FailureNumber::PathFileAccess);
    if (geteuid() == 0) return;  // who may do everything is refused nothing
    folder.MakeFolder("locked");
    chmod(folder.Native("locked").constData(), 0500);
    EXPECT_EQ(OpeningNumber(file, folder.Path("locked/out.wav")), FailureNumber::PermissionDenied);
}

TEST(OutputFailure, OfAFileThatIsThereAlreadyLeavesItAlone) {
    const TestFolder folder;
    const QByteArray content = WavOf(MakeNoise(44100, 2, 1000), WavKind::Signed16);
    const QString source = folder.MakeFile("in.wav", content);
    ASSERT_EQ(link(folder.Native("in.wav").constData(), folder.Native("hard.wav").constData()), 0);
    ASSERT_EQ(symlink("in.wav", folder.Native("soft.wav").constData()), 0);
    AudioFile reader;
    AudioFile writer;
    CdFormat(writer);
    reader.OpenForRead(source);
    for (const char* name : {"in.wav", "hard.wav", "soft.wav"}) {
        EXPECT_EQ(OpeningNumber(writer, folder.Path(name)), FailureNumber::FileAlreadyExists) << name;
    }
    reader.CloseFile();
    EXPECT_EQ(OpeningNumber(writer, source), FailureNumber::FileAlreadyExists);
    EXPECT_EQ(ContentOf(folder.Native("in.wav")), content);
}

TEST(OutputFailure, OfNoFormatLeavesTheTargetAlone) {
    const TestFolder folder;
    const QString target = folder.MakeFile("out.wav", "earlier");
    AudioFile file;
    EXPECT_EQ(OpeningNumber(file, target), FailureNumber::InvalidCall);
    CdFormat(file);
    file.SetFormatPCM(0, 0, 0);
    EXPECT_EQ(OpeningNumber(file, target), FailureNumber::InvalidCall);
    EXPECT_EQ(ContentOf(folder.Native("out.wav")), "earlier");
}

}  // namespace
}  // namespace Sonmira

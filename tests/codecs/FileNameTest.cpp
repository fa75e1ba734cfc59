#include "Conversion.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

class FileName : public ::testing::TestWithParam<const char*> {};

TEST_P(FileName, IsNothingButTheNameOfAFile) {
    const TestFolder folder;
    const TestSound sound = MakeNoise(8000, 1, 1000);
    const QByteArray name = GetParam();
    const QString from = folder.MakeFile(name, WavOf(sound, WavKind::Signed16));
    EXPECT_EQ(ReadWhole(from).Frames, 1000);
    ConvertFile(from, folder.Path("out " + name), [](AudioFile& file) { file.SetFormatPCM(8000, 1, 16); });
    EXPECT_EQ(ContentOf(folder.Native("out " + name)), WavOf(sound, WavKind::Signed16));
}

INSTANTIATE_TEST_SUITE_P(OddNames, FileName,
                         ::testing::Values("\xFF\xFE no text \x80.wav", "two\nlines.wav", "-leading dash.wav",
                                           "http:x.wav", "concat:a|b.wav", "%03d.wav", "back\\slash.wav",
                                           "スポークの寺院.wav", "no extension", "wrong.mp3", "pipe:0",
                                           "file:x.wav", "subfile,,start,0,end,1,,:x.wav"));

}  // namespace
}  // namespace Sonmira

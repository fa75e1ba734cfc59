#include "Conversion.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cctype>

namespace Sonmira {
namespace {

// One line of the list that lies beside the files.
struct RealFile {
    QByteArray Path;
    int Rate = 0;
    int Channels = 0;
    QByteArray State;  // "yes", "errors" or "refused" by another decoder
};

void PrintTo(const RealFile& file, std::ostream* stream) {
    *stream << file.Path.constData();
}

std::vector<RealFile> RealFiles() {
    std::vector<RealFile> files;
    QFile list(QStringLiteral(SONMIRA_CORPUS "/MANIFEST.tsv"));
    if (!list.open(QIODevice::ReadOnly)) return files;
    const QList<QByteArray> header = list.readLine().trimmed().split('\t');
    const auto column = [&](const char* name) { return header.indexOf(QByteArray(name)); };
    while (!list.atEnd()) {
        const QList<QByteArray> fields = list.readLine().split('\t');
        if (fields.size() < header.size() - 1) continue;
        files.push_back({SONMIRA_CORPUS "/" + fields.value(column("path")),
                         fields.value(column("rate")).toInt(), fields.value(column("channels")).toInt(),
                         fields.value(column("ffmpeg_decodes_cleanly"))});
    }
    return files;
}

class RealInput : public ::testing::TestWithParam<RealFile> {};

TEST_P(RealInput, IsReadWithItsFormatAndLength) {
    const RealFile& real = GetParam();
    const QString path = FromNative(real.Path);
    if (real.State == "refused") {
        AudioFile file;
        EXPECT_THROW(file.OpenForRead(path), Failure);
        return;
    }
    if (real.Path.contains("early-eof")) {
        EXPECT_THROW(ReadWhole(path), Failure) << "less sound than its header counts";
        return;
    }
    const ReadFile file = ReadWhole(path);
    // Musepack's own packets do not say how much they hold; such files have a decoder of their own.
    if (real.Path.endsWith(".mpc")) return;
    EXPECT_EQ(file.Rate, real.Rate);
    EXPECT_EQ(file.Channels, real.Channels);
    EXPECT_GT(file.Frames, 0);
    // A packet or two of what the length of its format cannot express.
    EXPECT_NEAR(static_cast<double>(file.StreamLength), static_cast<double>(file.Frames), 2 * 4096 + 2048);
}

INSTANTIATE_TEST_SUITE_P(Corpus, RealInput, ::testing::ValuesIn(RealFiles()), [](const auto& real) {
    std::string name = std::to_string(real.index) + "_";
    for (const char c : real.param.Path.mid(real.param.Path.lastIndexOf('/') + 1)) {
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    }
    return name;
});

}  // namespace
}  // namespace Sonmira

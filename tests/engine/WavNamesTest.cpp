#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/JobDriver.h"
#include "engine/OutputFormats.h"
#include "engine/Run.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "platform/Paths.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// What the WAV on the way of a file is named, and which files are one already.
class WavNames : public ::testing::Test {
protected:
    WavNames() {
        NumberLanguageLines();
        Host.OutputFolder = Folder.MakeFolder("out");
    }
    void Convert(const QByteArray& name, QStringView format) {
        Items = {};
        Host.Format = format.toString();
        AddFileRecord(Items, Host, Folder.MakeFile(name));
        JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
    }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    Collection Items;
};

TEST_F(WavNames, InCapitalLettersAreThoseOfWavsToo) {
    const std::pair<const char*, QStringView> songs[] = {
        {"a.WAV", FormatName::Ape}, {"b.WAV", FormatName::Flac}, {"c.Wav", FormatName::Mpc}};
    for (const auto& [name, format] : songs) {
        Codecs.Encoded.clear();
        Convert(name, format);
        EXPECT_EQ(Codecs.Encoded, QStringList{Folder.Path(name)});
        EXPECT_EQ(Codecs.Sink.Path, QString()) << "nothing was copied";
    }
}

// Three letters are taken off, whatever the ending.
TEST_F(WavNames, OfAnAlacKeepALetterOfItsEnding) {
    QString read;
    Host.AtYield = [&] { read = Run.CurrentInput(); };
    for (const auto& [name, isAlac] : {std::pair{"a.alac", true}, std::pair{"b.ALAC", false}}) {
        Codecs.IsAlac = isAlac;
        Convert(name, FormatName::Mp3);
        EXPECT_EQ(FileNameOf(read), QString::fromLatin1(name).chopped(3) + u"wav"_s);
        EXPECT_EQ(FileNameOf(Codecs.Sink.Path), QString::fromLatin1(name).chopped(5) + u".mp3"_s);
    }
}

TEST_F(WavNames, OfALongerEndingThatIsCopiedKeepALetterOfIt) {
    Convert("song.aiff", FormatName::Flac);
    EXPECT_EQ(FileNameOf(Codecs.Sink.Path), u"song.awav"_s);
    EXPECT_EQ(Codecs.Encoded, QStringList{Codecs.Sink.Path});
}

}  // namespace
}  // namespace Sonmira

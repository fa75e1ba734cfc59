#include "library/AudioFileNames.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST(AudioFileNames, AScanTakesNamesByTheirLastCharactersInAnyCase) {
    for (const QString& name : {u"a.wav"_s, u"a.WMA"_s, u"a.Mp3"_s, u"a.ogg"_s, u"a.aac"_s, u"a.ape"_s,
                                u"a.apl"_s, u"a.FlaC"_s, u"xwav"_s}) {
        EXPECT_TRUE(IsScannedAudioFile(name)) << qPrintable(name);
    }
}

TEST(AudioFileNames, AScanLeavesMpcAndAlacAside) {
    for (const QString& name :
         {u"a.mpc"_s, u"a.mp+"_s, u"a.alac"_s, u"a.m4a"_s, u"a.txt"_s, u"wav.txt"_s, u"av"_s, QString()}) {
        EXPECT_FALSE(IsScannedAudioFile(name)) << qPrintable(name);
    }
}

TEST(AudioFileNames, ADropTakesMpcAndAlacToo) {
    for (const QString& name : {u"\\m\\a.MPC"_s, u"\\m\\a.mp+"_s, u"\\m\\a.Alac"_s, u"\\m\\a.wav"_s}) {
        EXPECT_TRUE(IsDroppedAudioFile(name)) << qPrintable(name);
    }
    EXPECT_FALSE(IsDroppedAudioFile(u"\\m\\a.m4a"_s));
}

TEST(AudioFileNames, TheStreamingReaderLeavesSomeKindsToOthers) {
    for (const char* tail : {"aac", "ape", "apl", "mpc", "mp+", "flac", "alac"}) {
        const QString path = u"\\Music\\a."_s + QString::fromLatin1(tail);
        EXPECT_FALSE(IsStreamReadable(path)) << tail;
        EXPECT_FALSE(IsStreamReadable(path.toUpper())) << tail;
    }
    for (const char* tail : {"wav", "mp3", "ogg", "wma", "m4a", "lac", ""}) {
        EXPECT_TRUE(IsStreamReadable(u"\\Music\\a."_s + QString::fromLatin1(tail))) << tail;
    }
}

TEST(AudioFileNames, TheStreamingReaderNeedsNoDot) {
    EXPECT_FALSE(IsStreamReadable(u"\\Music\\landscAPE"_s));
    EXPECT_FALSE(IsStreamReadable(u"ape"_s));
    EXPECT_TRUE(IsStreamReadable(u"pe"_s));
}

TEST(AudioFileNames, TheDialogFilterIsPairsOfDescriptionAndPatterns) {
    const QStringList parts = AudioFileFilter().split(u'|');
    ASSERT_EQ(parts.size(), 19);  // nine pairs, and the empty text behind the last bar
    EXPECT_TRUE(parts.last().isEmpty());
    EXPECT_EQ(parts[0], u"Audio files (*.wav;*.mp3;*.ogg;*.wma;*.aac;*.ape;*.flac;*.mpc)"_s);
    EXPECT_TRUE(parts[1].contains(u"*.mp+;*.MP+"));
    EXPECT_EQ(parts[16], u"WMA Files(*.wma)"_s);
}

}  // namespace
}  // namespace Sonmira

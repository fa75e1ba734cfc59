#include "FakeComponents.h"
#include "engine/InputCheck.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class FileInformation : public ::testing::Test {
protected:
    QString Read(const QString& path) { return ReadFileInformation(Codecs.Parts(), path); }
    // The text for a stream of that many hundredths of a second.
    QString OfStream(qint64 hundredths) {
        Codecs.Source.Frames = hundredths;  // the fake counts 100 frames a second
        return Read(u"\\a.mp3"_s);
    }

    FakeCodecs Codecs;
};

TEST_F(FileInformation, RoundsHalvesOfASecondToTheEvenOne) {
    EXPECT_EQ(OfStream(5950), u"01:00"_s);
    EXPECT_EQ(OfStream(5850), u"00:58"_s);
    EXPECT_EQ(OfStream(5851), u"00:59"_s);
    EXPECT_EQ(Codecs.Source.Closed, 3);
}

TEST_F(FileInformation, CountsMinutesBeyondAnHour) {
    EXPECT_EQ(OfStream(720000), u"120:00"_s);
    EXPECT_EQ(OfStream(0), u"00:00"_s);
}

TEST_F(FileInformation, AnAacFileTellsNoLengthUnlessItIsAlac) {
    EXPECT_EQ(Read(u"\\a.AAC"_s), u"-"_s);
    Codecs.IsAlac = true;
    Codecs.Duration = 125;
    EXPECT_EQ(Read(u"\\a.alac"_s), u"02:05"_s);
    Codecs.Duration = 0;
    EXPECT_EQ(Read(u"\\a.aac"_s), u"-"_s);
}

TEST_F(FileInformation, TheDecodersTellTheirOwnLengths) {
    Codecs.Duration = 61;
    for (const QString& path : {u"\\a.flac"_s, u"\\a.ape"_s, u"\\a.APL"_s, u"\\a.mpc"_s, u"\\a.mp+"_s}) {
        EXPECT_EQ(Read(path), u"01:01"_s) << path.toStdString();
    }
    Codecs.Duration = 0;
    EXPECT_EQ(Read(u"\\a.flac"_s), u"00:00"_s);
}

TEST_F(FileInformation, WhatNobodyCanReadHasNoLength) {
    Codecs.Source.OpenFails = true;
    EXPECT_EQ(Read(u"\\a.xyz"_s), u"00:00"_s);
    Codecs.Fails = true;
    EXPECT_EQ(Read(u"\\a.aac"_s), u"00:00"_s);
}

TEST_F(FileInformation, ADurationIsANumberOfSecondsOrAFailure) {
    const auto read = [this](const QString& path) { return ReadDuration(Codecs.Parts(), path); };
    Codecs.Source.Frames = 5950;
    EXPECT_DOUBLE_EQ(read(u"\\a.wav"_s), 59.5);
    Codecs.Duration = 61;
    EXPECT_EQ(read(u"\\a.flac"_s), 61);
    EXPECT_EQ(read(u"\\a.aac"_s), 0) << "its decoder tells none";
    Codecs.Source.OpenFails = true;
    EXPECT_THROW(read(u"\\a.wav"_s), Failure);
    Codecs.Fails = true;
    EXPECT_THROW(read(u"\\a.aac"_s), Failure);
}

}  // namespace
}  // namespace Sonmira

#include "Seeds.h"

#include "codecs/ApeFunctions.h"
#include "codecs/FlacEncoder.h"
#include "platform/Failure.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr std::int64_t Frames = 2000;

QByteArray PlainWav() {
    return WavOf(MakeSweep(22050, 2, Frames), WavKind::Signed16);
}

// Musepack knows no rates as low as that of the others.
void MakeMusepack(const TestFolder& folder) {
    folder.MakeFile("44100.wav", WavOf(MakeSweep(44100, 2, Frames), WavKind::Signed16));
    RunTool({"mpcenc", "--silent", "--overwrite", folder.Native("44100.wav"), folder.Native("a.mpc")});
}

// Those of the files that were made.
QList<QByteArray> Contents(const TestFolder& folder, const QList<QByteArray>& names) {
    QList<QByteArray> contents;
    for (const QByteArray& name : names) {
        if (const QByteArray content = ContentOf(folder.Native(name)); !content.isEmpty())
            contents.append(content);
    }
    return contents;
}

// A tag of version 2.3, or 2.4 by other flags, with frames of several encodings and a picture.
QByteArray Id3v2Tag() {
    const auto frame = [](const QByteArray& id, const QByteArray& content) {
        const auto size = static_cast<char>(content.size());
        return id + QByteArray(3, '\0') + size + QByteArray(2, '\0') + content;
    };
    const QByteArray frames = frame("TIT2", QByteArray("\1\xFF\xFE"
                                                       "a\0b\0",
                                                       7)) +
                              frame("TPE1", QByteArray("\0one", 4)) +
                              frame("COMM", QByteArray("\0eng\0text", 9)) +
                              frame("TYER", QByteArray("\0"
                                                       "1999",
                                                       5)) +
                              frame("TXXX", QByteArray("\0key\0value", 10)) + frame("XYZW", "unknown") +
                              frame("APIC", QByteArray("\0image/png\0\3\0\x89PNG", 17));
    return QByteArray("ID3\3\0\0\0\0", 8) + static_cast<char>(frames.size() >> 7) +
           static_cast<char>(frames.size() & 0x7F) + frames;
}

QByteArray Id3v1Tag() {
    return "TAG" + QByteArray("title").leftJustified(30, ' ') + QByteArray("artist").leftJustified(30, '\0') +
           QByteArray(30, '\0') + "1999" + QByteArray("comment").leftJustified(28, '\0') +
           QByteArray("\0\7\x11", 3);
}

}  // namespace

QList<QByteArray> SoundSeeds() {
    const TestFolder folder;
    QList<QByteArray> seeds;
    for (const WavKind kind : {WavKind::Unsigned8, WavKind::Signed16, WavKind::Signed24, WavKind::Signed32,
                               WavKind::Float32, WavKind::Float64}) {
        seeds.append(WavOf(MakeNoise(8000, 1, 300), kind));
        seeds.append(WavOf(MakeNoise(8000, 6, 100), kind, WavHeader::Extensible, 0x3F));
    }
    const QString wav = folder.MakeFile("in.wav", PlainWav());
    FlacEncoder().EncodeFromWav(wav, folder.Path("own.flac"), 5);
    CompressFile(wav, folder.Path("own.ape"), 2000, {}, 0);
    QList<QByteArray> names{"own.flac", "own.ape"};

    QList<QByteArray> command{"ffmpeg", "-v", "error", "-i", folder.Native("in.wav")};
    const auto add = [&](const QByteArray& name, const QList<QByteArray>& options = {}) {
        command += options + QList{folder.Native(name)};
        names.append(name);
    };
    add("a.mp3", {"-b:a", "64k"});
    add("a.mp2", {"-b:a", "64k"});
    add("a.ogg");
    add("flac.ogg", {"-c:a", "flac"});
    add("a.flac");
    add("a.aac");
    add("latm.aac", {"-f", "latm"});
    add("a.m4a");
    add("alac.m4a", {"-c:a", "alac"});
    add("alac.caf", {"-c:a", "alac"});
    add("a.wma");
    add("v1.wma", {"-c:a", "wmav1"});
    add("a.avi");
    add("mp3.avi", {"-c:a", "mp3"});
    add("a.aiff");
    add("a.au");
    add("a.w64");
    add("rf64.wav", {"-rf64", "always"});
    add("ms.wav", {"-c:a", "adpcm_ms"});
    add("ima.wav", {"-c:a", "adpcm_ima_wav"});
    add("mulaw.wav", {"-c:a", "pcm_mulaw"});
    add("a.wv");
    add("a.tta");
    add("a.mka");
    add("a.ac3");
    add("a.mov", {"-c:a", "pcm_s16be"});
    RunTool(command);
    MakeMusepack(folder);
    return seeds + Contents(folder, names + QList<QByteArray>{"a.mpc"});
}

QList<QByteArray> TaggedSeeds() {
    const TestFolder folder;
    const QString wav = folder.MakeFile("in.wav", PlainWav());
    QList<QByteArray> names{"own.ape", "a.mpc"};
    CompressFile(wav, folder.Path("own.ape"), 1000, {}, 0);
    MakeMusepack(folder);
    for (const QByteArray& name : names) {
        PassOver([&] {
            TagFileSimple(folder.Path(name), u"artist"_s, u"album"_s, u"title"_s, u"comment"_s, u"Blues"_s,
                          u"1999"_s, u"3"_s, 1, name == "own.ape" ? 1 : 0);
        });
    }

    QList<QByteArray> command{"ffmpeg",
                              "-v",
                              "error",
                              "-i",
                              folder.Native("in.wav"),
                              "-f",
                              "lavfi",
                              "-i",
                              "color=c=red:s=4x4:d=0.04"};
    const QList<QByteArray> tag{
        "-metadata", "title=a title", "-metadata", "artist=one", "-metadata", "album=two",
        "-metadata", "comment=c",     "-metadata", "genre=Rock", "-metadata", "date=1999-01-02",
        "-metadata", "track=3/12",    "-metadata", "mood=calm",  "-metadata", "composer=c\xC3\xB6"};
    const QList<QByteArray> sound{"-map", "0:a"};
    const QList<QByteArray> picture{"-map", "0:a", "-map",           "1:v",
                                    "-c:v", "png", "-disposition:v", "attached_pic"};
    const auto add = [&](const QByteArray& name, const QList<QByteArray>& options) {
        command += options + tag + QList{folder.Native(name)};
        names.append(name);
    };
    add("3.mp3", picture + QList<QByteArray>{"-id3v2_version", "3", "-write_id3v1", "1"});
    add("4.mp3", picture);
    add("ape.mp3", sound + QList<QByteArray>{"-id3v2_version", "0", "-write_apetag", "1"});
    add("a.flac", picture);
    add("a.ogg", sound);
    add("flac.ogg", sound + QList<QByteArray>{"-c:a", "flac"});
    add("a.opus", sound + QList<QByteArray>{"-ar", "48000"});
    add("a.m4a", picture);
    add("a.wma", sound);
    add("a.wav", sound);
    RunTool(command);

    QList<QByteArray> seeds = Contents(folder, names);
    // Tags of given bytes around the sound that has none.
    RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("in.wav"), "-id3v2_version", "0", "-write_xing",
             "0", folder.Native("bare.mp3")});
    const QByteArray bare = ContentOf(folder.Native("bare.mp3"));
    seeds.append(Id3v2Tag() + bare);
    seeds.append(bare + Id3v1Tag());
    seeds.append(Id3v2Tag() + bare + Id3v1Tag());
    seeds.append(PlainWav());
    return seeds;
}

}  // namespace Sonmira

#pragma once

#include "engine/Components.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"

#include <QStringList>

#include <fstream>

namespace Sonmira {

// A reader that gives `Blocks` blocks of `BlockBytes` bytes and can be told to fail.
class FakeSource final : public AudioSource {
public:
    int Blocks = 4;
    qint64 BlockBytes = 400;
    qint64 BytesOfFrame = 4;
    qint64 Frames = 400;
    bool OpenFails = false;
    int FailsAtBlock = -1;
    int Opened = 0;
    int Closed = 0;
    std::vector<qint64> SizesAsked;
    int Code = 0;
    std::function<void()> AtOpen;
    std::function<void()> AtEnd;  // when it is asked for the block behind the last one
    std::function<void()> AtClose;

    void OpenForRead(const QString& /*path*/) override {
        if (OpenFails) throw Failure(FailureNumber::Component);
        if (AtOpen) AtOpen();
        ++Opened;
        Given = 0;
    }
    AudioBlock ReadBlock(qint64 size) override {
        SizesAsked.push_back(size);
        if (Given == FailsAtBlock) throw Failure(FailureNumber::Component);
        AudioBlock block;
        if (Given++ < Blocks) block.Bytes.resize(static_cast<std::size_t>(BlockBytes));
        if (block.IsEmpty() && AtEnd) AtEnd();
        return block;
    }
    void CloseFile() override {
        ++Closed;
        if (AtClose) AtClose();
    }
    int SampleRate() const override { return 100; }
    int ChannelCount() const override { return 2; }
    qint64 ByteRate() const override { return BytesOfFrame; }
    qint64 StreamLength() const override { return Frames; }
    qint64 Length() const override { return Frames * 10; }
    int FormatCode() const override { return Code; }

private:
    int Given = 0;
};

// A writer that counts, and can be told to fail.
class FakeSink final : public AudioSink {
public:
    QString Path;
    int Rate = 0;
    int Channels = 0;
    int Written = 0;
    int Closed = 0;
    bool OpenFails = false;
    bool WriteFails = false;
    bool CloseFails = false;
    bool MakesFile = false;
    std::function<void()> AtOpen;
    std::function<void()> AtClose;

    void OpenForWrite(const QString& path) override {
        if (OpenFails) throw Failure(FailureNumber::PathFileAccess);
        if (AtOpen) AtOpen();
        Path = path;
        if (MakesFile) std::ofstream(ToNative(path).toStdString()) << "sound";
    }
    void SetSourceFormat(int sampleRate, int channelCount) override {
        Rate = sampleRate;
        Channels = channelCount;
    }
    void WriteBlock(const AudioBlock& /*block*/) override {
        if (WriteFails) throw Failure(FailureNumber::Component);
        ++Written;
    }
    void CloseFile() override {
        ++Closed;
        if (AtClose) AtClose();
        if (CloseFails) throw Failure(FailureNumber::Component);
    }
    void SetFormatPCM(int frequency, int channels, int bits) override {
        Format = {frequency, channels, bits};
    }
    std::vector<int> Format;
};

// What every fake decoder and encoder does: it tells who was called, in order, and writes a file, or fails.
struct FakeWork {
    QStringList Calls;
    bool MakesFile = true;
    bool Fails = false;
    qint16 Result = 1;    // what the decoders that answer answer
    double Duration = 5;  // seconds, of every file
    bool IsAlac = false;
    std::function<void()> Meanwhile;  // runs in the middle of each work, as a click does

    void Do(const QString& name, const QString& output) {
        Calls.append(name);
        if (MakesFile) {
            const std::string path = ToNative(output).toStdString();
            std::ofstream(path) << "sound";
        }
        if (Meanwhile) Meanwhile();
        if (Fails) throw Failure(FailureNumber::Component);
    }
};

// A set of components in which everything is fake but the tags, of which it is told who reads them.
class FakeCodecs : public FakeWork {
public:
    FakeSource Source;
    FakeSink Sink;
    QStringList TagReads;
    std::function<void()> AtTagRead;   // may fail
    std::vector<TagValues> TagsSaved;  // as the tag object was given them, whatever became of it

    Components Parts() { return {Source, Sink, Aac, Alac, Flac, Mpc, FlacOut, MpcOut, Ape, Tags, Settings}; }
    OutputSettings Settings;

    std::vector<qint32> ApeLevels;   // asked of CompressFile
    std::vector<qint16> FlacLevels;  // asked of EncodeFromWav
    QStringList Encoded;             // the WAVs that were encoded

    // What the progress handlers are called with in the middle of each work.
    std::function<void(Components parts)> Report;

private:
    void Work(const QString& name, const QString& output) {
        const auto act = Meanwhile;
        Meanwhile = [&] {
            if (Report) Report(Parts());
            if (act) act();
        };
        const bool ended = PassOver([&] { Do(name, output); });
        Meanwhile = act;
        if (!ended) throw Failure(FailureNumber::Component);
    }

    struct FakeAac : AacDecoder {
        explicit FakeAac(FakeCodecs& all) : All(all) {}
        void SetInputFile(const QString& path) override {
            if (All.Fails) throw Failure(FailureNumber::Component);
            Input = path;
        }
        void SetOutputFile(const QString& path) override { Output = path; }
        QString GetOutputFile() const override { return Output; }
        qint16 DecodeToWav() override {
            All.Work(QStringLiteral("AACDecoder1"), Output);
            return All.Result;
        }
        void StopCodec() override { All.Calls.append(QStringLiteral("stop AACDecoder1")); }
        FakeCodecs& All;
        QString Input;
        QString Output;
    };
    struct FakeAlac : AlacDecoder {
        explicit FakeAlac(FakeCodecs& all) : All(all) {}
        qint16 IsAlac(const QString& /*path*/) override { return All.IsAlac ? 1 : 0; }
        qint16 DecodeToWav(const QString& /*path*/, const QString& outputPath) override {
            All.Work(QStringLiteral("alacdec1"), outputPath);
            return All.Result;
        }
        qint16 TrackInfo(const QString& /*path*/, double& duration, qint32& /*rate*/, qint32& /*channels*/,
                         qint32& /*bits*/) override {
            duration = All.Duration;
            return 1;
        }
        void StopCodec() override { All.Calls.append(QStringLiteral("stop alacdec1")); }
        FakeCodecs& All;
    };
    struct FakeFlac : FlacDecoder {
        explicit FakeFlac(FakeCodecs& all) : All(all) {}
        void SetInputFile(const QString& /*path*/) override {}
        void SetOutputFile(const QString& path) override { Output = path; }
        void DecodeToWav() override { All.Work(QStringLiteral("FlacCodec1"), Output); }
        void StopCodec() override { All.Calls.append(QStringLiteral("stop FlacCodec1")); }
        qint32 TrackLength(const QString& /*path*/) override { return static_cast<qint32>(All.Duration); }
        FakeCodecs& All;
        QString Output;
    };
    struct FakeMpc : MpcDecoder {
        explicit FakeMpc(FakeCodecs& all) : All(all) {}
        void DecodeToWav(const QString& /*path*/, const QString& outputPath) override {
            All.Work(QStringLiteral("mpcdecoder1"), outputPath);
        }
        void StopCodec() override { All.Calls.append(QStringLiteral("stop mpcdecoder1")); }
        qint32 TrackLength(const QString& /*path*/) override { return static_cast<qint32>(All.Duration); }
        FakeCodecs& All;
    };
    struct FakeFlacOut : FlacEncoder {
        explicit FakeFlacOut(FakeCodecs& all) : All(all) {}
        void EncodeFromWav(const QString& wav, const QString& output, qint16 level) override {
            All.Encoded.append(wav);
            All.FlacLevels.push_back(level);
            All.Work(QStringLiteral("FlacCodec_Encoder1"), output);
        }
        FakeCodecs& All;
    };
    struct FakeMpcOut : MpcEncoder {
        explicit FakeMpcOut(FakeCodecs& all) : All(all) {}
        void SetQuality(qint16 /*quality*/) override { All.Calls.append(QStringLiteral("quality")); }
        void EncodeFromWav(const QString& wav, const QString& output) override {
            All.Encoded.append(wav);
            All.Work(QStringLiteral("mpcencoder1"), output);
        }
        void StopCodec() override { All.Calls.append(QStringLiteral("stop mpcencoder1")); }
        FakeCodecs& All;
    };
    struct FakeApe : ApeCodec {
        explicit FakeApe(FakeCodecs& all) : All(all) {}
        void CompressFile(const QString& wav, const QString& ape, qint32 level,
                          const ApeProgressCallback& progress, const qint32& killFlag) override {
            All.Encoded.append(wav);
            All.ApeLevels.push_back(level);
            Step(ape, progress, killFlag);
        }
        void DecompressFile(const QString& /*ape*/, const QString& wav, const ApeProgressCallback& progress,
                            const qint32& killFlag) override {
            Step(wav, progress, killFlag);
        }
        qint32 GetDurationTrack(const QString& /*path*/) override {
            return static_cast<qint32>(All.Duration);
        }
        void GetID3Tag(const QString& path, Id3Bytes& block) override {
            All.TagReads.append(QStringLiteral("GetID3Tag"));
            ApeCodec::GetID3Tag(path, block);
        }
        void Step(const QString& output, const ApeProgressCallback& progress, const qint32& killFlag) {
            progress(All.ApeStep);
            All.KillFlagAtStart = killFlag;
            All.Work(QStringLiteral("Ape"), output);
        }
        FakeCodecs& All;
    };
    struct WatchedTags : AudioInformation {
        explicit WatchedTags(FakeCodecs& all) : All(all) {}
        void LoadTag(const QString& path) override {
            All.TagReads.append(QStringLiteral("AudioInformation %1").arg(TagKind()));
            if (All.AtTagRead) All.AtTagRead();
            AudioInformation::LoadTag(path);
        }
        void SaveTag(const QString& path, Saving saving) override {
            All.TagsSaved.push_back(*this);
            AudioInformation::SaveTag(path, saving);
        }
        FakeCodecs& All;
    };

public:
    WatchedTags Tags{*this};
    FakeAac Aac{*this};
    FakeAlac Alac{*this};
    FakeFlac Flac{*this};
    FakeMpc Mpc{*this};
    FakeFlacOut FlacOut{*this};
    FakeMpcOut MpcOut{*this};
    FakeApe Ape{*this};
    qint32 ApeStep = 25500;
    qint32 KillFlagAtStart = -1;
};

// Language lines that say which line they are.
inline void NumberLanguageLines(int last = 100) {
    QStringList lines;
    for (int n = 0; n <= last; ++n) lines.append(QStringLiteral("line %1").arg(n));
    LanguageLines.Assign(lines);
}

}  // namespace Sonmira

#pragma once

#include "codecs/AudioStreams.h"
#include "platform/Failure.h"
#include "shell/LanguageFiles.h"

#include <QStringList>

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

    void OpenForRead(const QString& /*path*/) override {
        if (OpenFails) throw Failure(FailureNumber::Component);
        ++Opened;
        Given = 0;
    }
    AudioBlock ReadBlock(qint64 size) override {
        SizesAsked.push_back(size);
        if (Given == FailsAtBlock) throw Failure(FailureNumber::Component);
        AudioBlock block;
        if (Given++ < Blocks) block.Bytes.resize(static_cast<std::size_t>(BlockBytes));
        return block;
    }
    void CloseFile() override { ++Closed; }
    int SampleRate() const override { return 100; }
    int ChannelCount() const override { return 2; }
    qint64 ByteRate() const override { return BytesOfFrame; }
    qint64 StreamLength() const override { return Frames; }
    qint64 Length() const override { return Frames * 10; }
    int FormatCode() const override { return 0; }

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

    void OpenForWrite(const QString& path) override {
        if (OpenFails) throw Failure(FailureNumber::PathFileAccess);
        Path = path;
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
        if (CloseFails) throw Failure(FailureNumber::Component);
    }
};

// Language lines that say which line they are.
inline void NumberLanguageLines() {
    QStringList lines;
    for (int n = 0; n <= 100; ++n) lines.append(QStringLiteral("line %1").arg(n));
    LanguageLines.Assign(lines);
}

}  // namespace Sonmira

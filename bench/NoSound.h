#pragma once

#include "codecs/AudioStreams.h"

namespace Sonmira {

// A reader that takes every file and a writer that is never reached, so that only the walk is measured.
struct NoSound final : AudioSource, AudioSink {
    void OpenForRead(const QString& /*path*/) override {}
    AudioBlock ReadBlock(qint64 /*size*/) override { return {}; }
    void CloseFile() override {}
    int SampleRate() const override { return 44100; }
    int ChannelCount() const override { return 2; }
    qint64 ByteRate() const override { return 4; }
    qint64 StreamLength() const override { return 0; }
    qint64 Length() const override { return 0; }
    int FormatCode() const override { return 0; }
    void OpenForWrite(const QString& /*path*/) override {}
    void SetSourceFormat(int /*sampleRate*/, int /*channelCount*/) override {}
    void WriteBlock(const AudioBlock& /*block*/) override {}
    void SetFormatPCM(int /*frequency*/, int /*channels*/, int /*bits*/) override {}
};

}  // namespace Sonmira

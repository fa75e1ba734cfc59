#pragma once

#include "codecs/AudioStreams.h"

#include <chrono>

namespace Sonmira {

// Adds up the wall time that a call takes.
class CallTimer {
public:
    template <class Call>
    auto operator()(Call&& call) {
        const Scope scope{*this, std::chrono::steady_clock::now()};
        return call();
    }
    double Seconds() const { return std::chrono::duration<double>(Total).count(); }

private:
    struct Scope {
        CallTimer& Timer;
        std::chrono::steady_clock::time_point Start;
        ~Scope() { Timer.Total += std::chrono::steady_clock::now() - Start; }
    };
    std::chrono::steady_clock::duration Total{};
};

// The audio file object with a clock on every call that works, so that what the engine itself costs is the
// rest of the run.
class TimedSource final : public AudioSource {
public:
    explicit TimedSource(AudioSource& timed) : Inner(timed) {}
    double Seconds() const { return Timer.Seconds(); }

    void OpenForRead(const QString& path) override {
        Timer([&] { Inner.OpenForRead(path); });
    }
    AudioBlock ReadBlock(qint64 size) override {
        return Timer([&] { return Inner.ReadBlock(size); });
    }
    void CloseFile() override {
        Timer([&] { Inner.CloseFile(); });
    }
    int SampleRate() const override { return Inner.SampleRate(); }
    int ChannelCount() const override { return Inner.ChannelCount(); }
    qint64 ByteRate() const override { return Inner.ByteRate(); }
    qint64 StreamLength() const override { return Inner.StreamLength(); }
    qint64 Length() const override { return Inner.Length(); }
    int FormatCode() const override { return Inner.FormatCode(); }

private:
    AudioSource& Inner;
    CallTimer Timer;
};

class TimedSink final : public AudioSink {
public:
    explicit TimedSink(AudioSink& timed) : Inner(timed) {}
    double Seconds() const { return Timer.Seconds(); }

    void OpenForWrite(const QString& path) override {
        Timer([&] { Inner.OpenForWrite(path); });
    }
    void SetSourceFormat(int sampleRate, int channelCount) override {
        Timer([&] { Inner.SetSourceFormat(sampleRate, channelCount); });
    }
    void WriteBlock(const AudioBlock& block) override {
        Timer([&] { Inner.WriteBlock(block); });
    }
    void CloseFile() override {
        Timer([&] { Inner.CloseFile(); });
    }

    void SetFormatPCM(int frequency, int channels, int bits) override {
        Inner.SetFormatPCM(frequency, channels, bits);
    }

private:
    AudioSink& Inner;
    CallTimer Timer;
};

}  // namespace Sonmira

#include "codecs/MpcEncoder.h"

#include "codecs/WavDecoding.h"
#include "codecs/mpc/MpcReader.h"
#include "codecs/read/PcmReader.h"
#include "codecs/wav/WavWriter.h"
#include "platform/ChildProcess.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

int MusepackRate(int rate) {
    for (const int known : {32000, 37800, 44100, 48000}) {
        if (rate <= known) return known;
    }
    return rate % 44100 == 0 ? 44100 : 48000;
}

Failure EncoderFailure(const QString& text) {
    return {FailureNumber::Component, text};
}

// More than 16 bits where the samples are new ones.
PcmFormat MusepackInput(const StreamFormat& source, int bits) {
    const int rate = MusepackRate(source.Rate);
    const bool isConverted = source.Channels > 2 || rate != source.Rate;
    return {rate, std::min(source.Channels, 2), isConverted ? WidestBits : std::min(bits, WidestBits)};
}

qint64 FrameSizeOf(const PcmFormat& format) {
    return qint64{format.Channels} * format.Bits / 8;
}

// The header of the WAV that the program is given. It tells the length only where that is sure: the program
// reads no further.
std::vector<std::byte> HeaderFor(PcmReader& wav) {
    const std::optional<qint64> frames = wav.ExactLength();
    const qint64 size = frames.value_or(UnknownWavSize) * FrameSizeOf(wav.Format());
    return WavHeader(wav.Format(), size < UnknownWavSize - WavHeaderSize ? size : UnknownWavSize);
}

// Gives the program a WAV and waits for its end.
class Feeding {
public:
    Feeding(ChildProcess& encoder, PcmReader& wav) : Encoder(encoder), Wav(wav) {}

    // `goesOn` is asked many times a second. No answer after a stop.
    std::optional<ProgramEnding> Run(const std::function<bool()>& goesOn) {
        std::vector<std::byte> bytes = HeaderFor(Wav);
        do {
            if (!Send(bytes, goesOn)) break;
            bytes.clear();
        } while (Wav.Append(bytes));
        Encoder.CloseInput();
        std::optional<ProgramEnding> ending;
        while (!Stopped && !(ending = Encoder.WaitForEnd(WaitAtOnce))) Stopped = !goesOn();
        return ending;
    }

private:
    // False when the program reads no more or is to be stopped.
    bool Send(std::span<const std::byte> bytes, const std::function<bool()>& goesOn) {
        while (!bytes.empty()) {
            const std::optional<std::size_t> sent = Encoder.Send(bytes, WaitAtOnce);
            if (!sent) return false;
            bytes = bytes.subspan(*sent);
            Stopped = !goesOn();
            if (Stopped) return false;
        }
        return true;
    }

    ChildProcess& Encoder;
    PcmReader& Wav;
    bool Stopped = false;
};

// The program goes back to complete what it wrote.
void CheckIsRegular(const OutputFile& file) {
    struct stat status = {};
    if (::fstat(file.Number(), &status) != 0) throw WritingFailure(errno);
    if (!S_ISREG(status.st_mode)) throw WritingFailure(ENXIO);
}

void CheckEnding(ProgramEnding ending) {
    if (ending.Signal == SIGXFSZ) throw WritingFailure(EFBIG);
    if (ending.Signal != 0) throw EncoderFailure(u"The Musepack encoder was ended from outside"_s);
    if (!ending.IsGood()) throw EncoderFailure(u"The Musepack encoder failed"_s);
}

// The program takes no notice of a disk that takes no more.
void CheckIsWhole(const QString& path, qint64 frames) {
    if (LengthOfWholeMpc(InputFile(path)) == frames) return;
    struct statvfs disk = {};
    const bool isFull = ::statvfs(ToNative(path).constData(), &disk) == 0 && disk.f_bavail == 0;
    if (isFull) throw WritingFailure(ENOSPC);
    throw EncoderFailure(u"The Musepack encoder did not write the whole file"_s);
}

}  // namespace

void MpcEncoder::SetQuality(qint16 quality) {
    Chosen = std::clamp<qint16>(quality, 0, 10);
}

void MpcEncoder::EncodeFromWav(const QString& wav, const QString& output) {
    Stopped = false;
    WithMemoryChecked([&] {
        PcmReader input(std::make_shared<const InputFile>(wav), MusepackInput);
        input.GiveUpWhen([this] { return Stopped; });
        if (!IsProgramInstalled(u"mpcenc"_s)) {
            throw EncoderFailure(u"The Musepack encoder, the program mpcenc, is not installed"_s);
        }
        OutputFile file(output);
        CheckIsRegular(file);
        ChildProcess encoder({"mpcenc", "--silent", "--quality", QByteArray::number(Chosen), "-", "-"},
                             file.Number());
        const auto ending = Feeding(encoder, input).Run([&] {
            // A WAV without sound counts as begun, so that whoever listens can stop a program that hangs.
            const ProgressCount count(std::max<qint64>(input.Taken(), 1), input.Length());
            if (Progress) Progress(count.Total, count.Done);
            return !Stopped;
        });
        file.Close();
        if (!ending) return;
        CheckEnding(*ending);
        CheckIsWhole(output, input.Given());
        input.ReportFailure();
    });
}

}  // namespace Sonmira

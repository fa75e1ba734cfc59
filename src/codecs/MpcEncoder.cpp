#include "codecs/MpcEncoder.h"

#include "codecs/FileFailure.h"
#include "codecs/MediaReader.h"
#include "codecs/MemoryChecked.h"
#include "codecs/MpcStream.h"
#include "codecs/OutputFile.h"
#include "codecs/PcmPacker.h"
#include "codecs/WavDecoding.h"
#include "codecs/WavHeader.h"
#include "platform/ChildProcess.h"
#include "platform/FileRemoval.h"
#include "platform/NativePath.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 BlockSize = 64LL * 1024;
constexpr auto WaitAtOnce = std::chrono::milliseconds(30);

int MusepackRate(int rate) {
    for (const int known : {32000, 37800, 44100, 48000}) {
        if (rate <= known) return known;
    }
    return rate % 44100 == 0 ? 44100 : 48000;
}

Failure EncoderFailure(const QString& text) {
    return {FailureNumber::Component, text};
}

// The WAV as the one that the program takes: its header, and then the sound.
class WavForEncoder {
public:
    explicit WavForEncoder(std::shared_ptr<const InputFile> file)
        : Reader(std::move(file)),
          Converter(Reader.Format(),
                    {MusepackRate(Reader.Format().Rate), std::min(Reader.Format().Channels, 2)},
                    ResamplerPrecision::Bits28),
          Form(FormFor(Reader)),
          Packer(Form.Bits) {}

    // The length as the header tells it, if the file is one that does not lie about it.
    std::vector<std::byte> Header() {
        const qint64 rate = Reader.Format().Rate;
        const qint64 frames = (Reader.Length() * Form.Frequency + rate / 2) / rate;
        const qint64 size = frames * FrameSize();
        const bool isKnown = Reader.IsExact() && size < UnknownWavSize - WavHeaderSize;
        return WavHeader(Form, isKnown ? size : UnknownWavSize);
    }

    // The next bytes of sound; empty at the end. Keeps the failure of a WAV that is cut short until all of it
    // is given.
    std::vector<std::byte> Next() {
        std::vector<std::byte> packed;
        while (packed.empty() && !Ended) Packer.Pack(NextBlock(), packed);
        Given += static_cast<qint64>(packed.size());
        return packed;
    }

    qint64 Length() { return Reader.Length(); }
    // Frames of the file that were taken, and frames that came of them.
    qint64 Taken() const { return FramesTaken; }
    qint64 FramesGiven() const { return Given / FrameSize(); }
    void ReportFailure() const {
        if (Error) std::rethrow_exception(Error);
    }

private:
    static PcmFormat FormFor(const MediaReader& reader) {
        const StreamFormat source = reader.Format();
        const bool isConverted = source.Channels > 2 || MusepackRate(source.Rate) != source.Rate;
        const int bits = isConverted ? 24 : std::min(reader.Bits(), 24);
        return {MusepackRate(source.Rate), std::min(source.Channels, 2), bits};
    }

    AudioBlock NextBlock() {
        try {
            const auto most = static_cast<qint64>(Converter.SourceBytesAtOnce(SampleType::Int32));
            const AudioBlock block = Reader.Read(std::min(BlockSize, most));
            FramesTaken += static_cast<qint64>(block.Bytes.size() / Reader.FrameSize());
            Ended = block.IsEmpty();
            return Ended ? Converter.Finish() : Converter.Convert(block);
        } catch (const Failure&) {
            Ended = true;
            Error = std::current_exception();
            return Converter.Finish();
        }
    }

    qint64 FrameSize() const { return qint64{Form.Channels} * Form.Bits / 8; }

    MediaReader Reader;
    StreamConverter Converter;
    PcmFormat Form;
    PcmPacker Packer;
    qint64 FramesTaken = 0;
    qint64 Given = 0;
    std::exception_ptr Error;
    bool Ended = false;
};

// Removes the output where the encoding does not come to its end.
class Unfinished {
public:
    explicit Unfinished(const QString& path) : Path(path) {}
    ~Unfinished() {
        if (!Path.isEmpty()) PassOver([&] { DeleteFileOutright(Path); });
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    void Keep() { Path.clear(); }

private:
    QString Path;
};

// Gives the program all of its input and waits for its end. No answer after a stop.
std::optional<ChildProcess::Ending> Feed(ChildProcess& encoder, WavForEncoder& wav,
                                         const std::function<bool()>& goesOn) {
    std::vector<std::byte> bytes = wav.Header();
    bool reads = true;
    for (; reads && !bytes.empty(); bytes = wav.Next()) {
        std::span<const std::byte> left = bytes;
        while (reads && !left.empty()) {
            const std::optional<std::size_t> sent = encoder.Send(left, WaitAtOnce);
            reads = sent.has_value();
            left = left.subspan(sent.value_or(0));
            if (!goesOn()) return {};
        }
    }
    encoder.CloseInput();
    std::optional<ChildProcess::Ending> ending;
    while (!(ending = encoder.WaitForEnd(WaitAtOnce))) {
        if (!goesOn()) return {};
    }
    return ending;
}

// The program goes back to complete what it wrote, and nothing but a file may be removed after it.
void CheckIsRegular(const OutputFile& file) {
    struct stat status = {};
    if (::fstat(file.Number(), &status) != 0) throw WritingFailure(errno);
    if (!S_ISREG(status.st_mode)) throw WritingFailure(ENXIO);
}

void CheckEnding(ChildProcess::Ending ending) {
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
        WavForEncoder input(std::make_shared<const InputFile>(wav));
        if (!IsProgramInstalled(u"mpcenc"_s)) {
            throw EncoderFailure(u"The Musepack encoder, the program mpcenc, is not installed"_s);
        }
        OutputFile file(output);
        CheckIsRegular(file);
        Unfinished unfinished(output);
        ChildProcess encoder({"mpcenc", "--silent", "--quality", QByteArray::number(Chosen), "-", "-"},
                             file.Number());
        const auto ending = Feed(encoder, input, [&] {
            const ProgressCount count(input.Taken(), input.Length());
            if (Progress) Progress(count.Total, count.Done);
            return !Stopped;
        });
        file.Close();
        if (!ending) return;
        CheckEnding(*ending);
        CheckIsWhole(output, input.FramesGiven());
        unfinished.Keep();
        input.ReportFailure();
    });
}

}  // namespace Sonmira

#include "codecs/flac/FlacReader.h"

#include "codecs/sound/Id3v2Head.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Handles.h"

#include <FLAC/stream_decoder.h>

#include <array>

namespace Sonmira {

bool IsForFlacLibrary(const InputFile& file) {
    // The name of the format, the head of the first block, and of its content the bytes up to the width.
    std::array<std::byte, 22> head = {};
    if (file.ReadAt(BehindId3v2(file), head) != static_cast<std::ptrdiff_t>(head.size())) return false;
    const auto at = [&](std::size_t place) { return std::to_integer<unsigned>(head[place]); };
    const bool isFlac = at(0) == 'f' && at(1) == 'L' && at(2) == 'a' && at(3) == 'C' && (at(4) & 0x7F) == 0;
    const unsigned channels = (at(20) >> 1 & 7) + 1;
    const unsigned bits = ((at(20) & 1) << 4 | at(21) >> 4) + 1;
    return isFlac && (bits > 24 || (bits <= 8 && channels == 1));
}

class FlacReader::Library {
public:
    explicit Library(std::shared_ptr<const InputFile> file)
        : File(std::move(file)), Decoder(FLAC__stream_decoder_new()) {
        if (!Decoder) throw std::bad_alloc();
        FLAC__stream_decoder_set_md5_checking(Decoder.get(), 1);
        const auto code =
            FLAC__stream_decoder_init_stream(Decoder.get(), ReadBytes, nullptr, nullptr, nullptr, nullptr,
                                             TakeFrame, TakeMetadata, TakeError, this);
        if (code != FLAC__STREAM_DECODER_INIT_STATUS_OK) throw DamagedFile();
        const bool read = FLAC__stream_decoder_process_until_end_of_metadata(Decoder.get()) != 0;
        CheckReading();
        if (!read || Stream.Rate < 1 || Stream.Channels < 1) throw DamagedFile();
    }

    // Decodes one more frame behind what is there. False at the end.
    bool DecodeMore() {
        if (Ended) return false;
        const bool decoded = FLAC__stream_decoder_process_single(Decoder.get()) != 0;
        CheckReading();
        if (OutOfMemory) throw std::bad_alloc();
        Ended =
            !decoded || FLAC__stream_decoder_get_state(Decoder.get()) == FLAC__STREAM_DECODER_END_OF_STREAM;
        // The sum of the samples is compared here.
        if (Ended) IsSumRight = FLAC__stream_decoder_finish(Decoder.get()) != 0;
        IsDamaged = IsDamaged || (Ended && !IsSumRight);
        return !Ended;
    }

    StreamFormat Stream;
    int Bits = 0;
    qint64 Length = 0;
    qint64 FramesDecoded = 0;
    std::vector<std::byte> Samples;
    bool IsDamaged = false;
    bool HasSum = false;  // of its sound, in its head
    bool IsSumRight = false;

private:
    void CheckReading() const {
        if (Error != 0) throw ReadingFailure(Error);
    }

    static Library& Of(void* client) { return *static_cast<Library*>(client); }

    static FLAC__StreamDecoderReadStatus ReadBytes(const FLAC__StreamDecoder* /*decoder*/,
                                                   FLAC__byte target[], size_t* size, void* client) {
        Library& library = Of(client);
        const auto count =
            library.File->ReadAt(library.Position, std::as_writable_bytes(std::span(target, *size)));
        if (count < 0) {
            library.Error = static_cast<int>(-count);
            return FLAC__STREAM_DECODER_READ_STATUS_ABORT;
        }
        *size = static_cast<size_t>(count);
        library.Position += count;
        return count == 0 ? FLAC__STREAM_DECODER_READ_STATUS_END_OF_STREAM
                          : FLAC__STREAM_DECODER_READ_STATUS_CONTINUE;
    }

    static FLAC__StreamDecoderWriteStatus TakeFrame(const FLAC__StreamDecoder* /*decoder*/,
                                                    const FLAC__Frame* frame,
                                                    const FLAC__int32* const planes[], void* client) {
        Library& library = Of(client);
        const FLAC__FrameHeader& header = frame->header;
        const auto channels = static_cast<std::size_t>(library.Stream.Channels);
        // A frame of another form than the file's head says is none of it.
        if (header.channels != channels || static_cast<int>(header.bits_per_sample) != library.Bits) {
            library.IsDamaged = true;
            return FLAC__STREAM_DECODER_WRITE_STATUS_CONTINUE;
        }
        try {
            library.Append(planes, header.blocksize);
            return FLAC__STREAM_DECODER_WRITE_STATUS_CONTINUE;
        } catch (const std::exception&) {
            library.OutOfMemory = true;
            return FLAC__STREAM_DECODER_WRITE_STATUS_ABORT;
        }
    }

    void Append(const FLAC__int32* const planes[], std::size_t frames) {
        const auto channels = static_cast<std::size_t>(Stream.Channels);
        const std::size_t start = Samples.size();
        Samples.resize(start + frames * channels * sizeof(std::int32_t));
        auto* target = static_cast<std::int32_t*>(static_cast<void*>(Samples.data() + start));
        for (std::size_t i = 0; i < frames; ++i) {
            for (std::size_t channel = 0; channel < channels; ++channel) {
                *target++ =
                    static_cast<std::int32_t>(static_cast<std::uint32_t>(planes[channel][i]) << (32 - Bits));
            }
        }
        FramesDecoded += static_cast<qint64>(frames);
    }

    static void TakeMetadata(const FLAC__StreamDecoder* /*decoder*/, const FLAC__StreamMetadata* block,
                             void* client) {
        if (block->type != FLAC__METADATA_TYPE_STREAMINFO) return;
        Library& library = Of(client);
        const FLAC__StreamMetadata_StreamInfo& info = block->data.stream_info;
        library.Stream = {static_cast<int>(info.sample_rate), static_cast<int>(info.channels)};
        library.Bits = static_cast<int>(info.bits_per_sample);
        library.Length = static_cast<qint64>(info.total_samples);
        library.HasSum = std::any_of(std::begin(info.md5sum), std::end(info.md5sum),
                                     [](FLAC__byte byte) { return byte != 0; });
    }

    static void TakeError(const FLAC__StreamDecoder* /*decoder*/, FLAC__StreamDecoderErrorStatus /*status*/,
                          void* client) {
        Of(client).IsDamaged = true;
    }

    std::shared_ptr<const InputFile> File;
    CHandle<FLAC__StreamDecoder, FLAC__stream_decoder_delete> Decoder;
    qint64 Position = 0;
    int Error = 0;  // errno of the first failed reading
    bool OutOfMemory = false;
    bool Ended = false;
};

bool IsSumOfFlacRight(std::shared_ptr<const InputFile> file, const std::function<bool()>& givesUp) {
    constexpr qint64 framesATurn = 16;
    bool isRight = false;
    PassOver([&] {
        FlacReader::Library library(std::move(file));
        for (qint64 frames = 0; library.DecodeMore(); ++frames) {
            library.Samples.clear();
            // As long as all of the decoding before: the window must stay alive, and a stop be heard.
            if (frames % framesATurn == 0) YieldWhileScanning();
            if (givesUp && givesUp()) return;
        }
        isRight = library.HasSum && library.IsSumRight;
    });
    return isRight;
}

FlacReader::FlacReader(std::shared_ptr<const InputFile> file)
    : Handle(std::make_unique<Library>(std::move(file))) {}

FlacReader::~FlacReader() = default;

AudioBlock FlacReader::Read(qint64 size) {
    while (static_cast<qint64>(Handle->Samples.size()) < size && Handle->DecodeMore()) {
    }
    // At least one frame, unless the file is at its end.
    while (Handle->Samples.empty() && Handle->DecodeMore()) {
    }
    AudioBlock block{SampleType::Int32, std::move(Handle->Samples)};
    Handle->Samples.clear();
    const bool isWhole = Handle->HasSum && Handle->IsSumRight;
    const bool isCut = Handle->FramesDecoded < Handle->Length && !isWhole;
    if (block.IsEmpty() && (Handle->IsDamaged || isCut)) throw DamagedFile();
    return block;
}

const StreamFormat& FlacReader::Format() const {
    return Handle->Stream;
}

int FlacReader::Bits() const {
    return (Handle->Bits + 7) / 8 * 8;
}

qint64 FlacReader::Length() {
    return Handle->Length;
}

}  // namespace Sonmira

#include "codecs/mpc/MpcReader.h"

#include "codecs/sound/AudioBlock.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Handles.h"

#include <QByteArray>

#include <mpc/mpcdec.h>

#include <algorithm>
#include <limits>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

struct Number {
    qint64 Value = 0;
    qsizetype Bytes = 0;  // 0 where there is none
};

Number NumberAt(const QByteArray& bytes, qsizetype at) {
    constexpr qsizetype most = 9;  // 63 bits
    Number number;
    for (qsizetype i = 0; i < most && at + i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[at + i]);
        number.Value = number.Value << 7 | (byte & 0x7F);
        if ((byte & 0x80) == 0) return {number.Value, i + 1};
    }
    return {};
}

}  // namespace

std::optional<qint64> LengthOfWholeMpc(const InputFile& file) {
    if (BytesAt(file, 0, 4) != "MPCK") return {};
    std::optional<qint64> length;
    qint64 at = 4;
    while (true) {
        const QByteArray head = BytesAt(file, at, 32);
        const Number size = NumberAt(head, 2);
        if (size.Bytes == 0 || size.Value < 2 + size.Bytes || size.Value > file.Size() - at) return {};
        if (head.startsWith("SE")) return at + size.Value == file.Size() ? length : std::nullopt;
        if (head.startsWith("SH")) {
            const Number frames = NumberAt(head, 2 + size.Bytes + 5);
            if (frames.Bytes > 0) length = frames.Value;
        }
        at += size.Value;
    }
}

namespace {

// The file as the library wants it. Its positions have 32 bits.
struct InputState {
    std::shared_ptr<const InputFile> File;
    qint64 Position = 0;
    int Error = 0;  // errno of the first failed reading
};

InputState& StateOf(mpc_reader* reader) {
    return *static_cast<InputState*>(reader->data);
}

mpc_int32_t ReadBytes(mpc_reader* reader, void* target, mpc_int32_t size) {
    InputState& state = StateOf(reader);
    if (size <= 0) return 0;
    const std::span room(static_cast<std::byte*>(target), static_cast<std::size_t>(size));
    const auto count = state.File->ReadAt(state.Position, room);
    if (count < 0) {
        state.Error = static_cast<int>(-count);
        return 0;
    }
    state.Position += count;
    return static_cast<mpc_int32_t>(count);
}

mpc_bool_t SeekTo(mpc_reader* reader, mpc_int32_t offset) {
    if (offset < 0) return MPC_FALSE;
    StateOf(reader).Position = offset;
    return MPC_TRUE;
}

mpc_int32_t Tell(mpc_reader* reader) {
    return static_cast<mpc_int32_t>(StateOf(reader).Position);
}

mpc_int32_t GetSize(mpc_reader* reader) {
    constexpr qint64 most = std::numeric_limits<mpc_int32_t>::max();
    return static_cast<mpc_int32_t>(std::min(StateOf(reader).File->Size(), most));
}

mpc_bool_t CanSeek(mpc_reader* /*reader*/) {
    return MPC_TRUE;
}

// Rates that the format's headers can name.
bool IsRate(mpc_uint32_t rate) {
    return rate == 44100 || rate == 48000 || rate == 37800 || rate == 32000;
}

}  // namespace

class MpcReader::Library {
public:
    explicit Library(std::shared_ptr<const InputFile> file) : State{std::move(file)} {
        Demuxer.reset(mpc_demux_init(&Reader));
        if (State.Error != 0) throw ReadingFailure(State.Error);
        if (!Demuxer) {
            throw Failure(FailureNumber::Component,
                          u"The file is damaged or no Musepack file of version 7 or 8"_s);
        }
        mpc_demux_get_info(Demuxer.get(), &Info);
        if (!IsRate(Info.sample_freq) || Info.channels < 1 || Info.channels > 2) throw DamagedFile();
    }

    // The next frames as interleaved samples; none at the end or where the stream cannot be followed.
    std::span<const float> Next() {
        mpc_frame_info frame = {};
        frame.buffer = Buffer.data();
        // Frames that only prime the decoder are empty.
        do {
            const mpc_status status = mpc_demux_decode(Demuxer.get(), &frame);
            if (State.Error != 0) throw ReadingFailure(State.Error);
            if (status != MPC_STATUS_OK || frame.bits == -1) return {};
        } while (frame.samples == 0);
        const std::size_t samples = std::size_t{frame.samples} * Info.channels;
        return std::span<const float>(Buffer).first(std::min(samples, Buffer.size()));
    }

    InputState State;
    mpc_reader Reader = {ReadBytes, SeekTo, Tell, GetSize, CanSeek, &State};
    CHandle<mpc_demux, mpc_demux_exit> Demuxer;
    mpc_streaminfo Info = {};
    std::vector<float> Buffer = std::vector<float>(MPC_DECODER_BUFFER_LENGTH);
};

MpcReader::MpcReader(std::shared_ptr<const InputFile> file)
    : Handle(std::make_unique<Library>(std::move(file))),
      Stream{static_cast<int>(Handle->Info.sample_freq), static_cast<int>(Handle->Info.channels)} {}

MpcReader::~MpcReader() = default;

AudioBlock MpcReader::Read(qint64 size) {
    AudioBlock block{SampleType::Float32, {}};
    const auto channels = static_cast<std::size_t>(Stream.Channels);
    do {
        const std::span<const float> samples = Ended ? std::span<const float>() : Handle->Next();
        Ended = samples.empty();
        const auto bytes = std::as_bytes(samples);
        block.Bytes.insert(block.Bytes.end(), bytes.begin(), bytes.end());
        FramesGiven += static_cast<qint64>(samples.size() / channels);
    } while (!Ended && static_cast<qint64>(block.Bytes.size()) < size);
    if (block.IsEmpty() && FramesGiven < Length()) throw DamagedFile();
    return block;
}

qint64 MpcReader::Length() {
    return std::max<qint64>(mpc_streaminfo_get_length_samples(&Handle->Info), 0);
}

}  // namespace Sonmira

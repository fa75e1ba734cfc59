#include "Conversion.h"

#include "platform/Failure.h"
#include "support/Tool.h"

#include <cstring>
#include <stdexcept>

namespace Sonmira {

void ConvertFile(const QString& from, const QString& to, const FormatSetting& setFormat) {
    AudioFile reader;
    AudioFile writer;
    setFormat(writer);
    reader.OpenForRead(from);
    writer.OpenForWrite(Anew(to));
    writer.SetSourceFormat(reader.SampleRate(), reader.ChannelCount());
    const qint64 size = static_cast<qint64>(reader.SampleRate()) * reader.ChannelCount();
    for (AudioBlock block = reader.ReadBlock(size); !block.IsEmpty(); block = reader.ReadBlock(size)) {
        writer.WriteBlock(block);
    }
    writer.CloseFile();
    reader.CloseFile();
}

ReadFile ReadWhole(const QString& path) {
    AudioFile reader;
    reader.OpenForRead(path);
    ReadFile file{reader.SampleRate(), reader.ChannelCount()};
    file.StreamLength = reader.StreamLength();
    for (AudioBlock block = reader.ReadBlock(65536); !block.IsEmpty(); block = reader.ReadBlock(65536)) {
        file.Type = block.Type;
        file.Bytes.append(QByteArrayView(block.Bytes));
    }
    file.Frames = file.Bytes.size() / reader.ByteRate();
    return file;
}

QByteArray RawByFfmpeg(const QByteArray& nativePath, const QByteArray& format) {
    const ToolResult result =
        RunTool({"ffmpeg", "-v", "error", "-i", "file:" + nativePath, "-map", "0:a", "-f", format, "-"});
    if (result.ExitCode != 0) throw std::runtime_error(result.Errors.toStdString());
    return result.Output;
}

std::int64_t FramesByFfmpeg(const QByteArray& nativePath, int channels) {
    return RawByFfmpeg(nativePath, "s16le").size() / 2 / channels;
}

TestSound DecodedByFfmpeg(const QByteArray& nativePath) {
    const ToolResult probe = RunTool({"ffprobe", "-v", "error", "-select_streams", "a:0", "-show_entries",
                                      "stream=sample_rate,channels", "-of", "csv=p=0", "file:" + nativePath});
    const QList<QByteArray> numbers = probe.Output.trimmed().split(',');
    TestSound sound{numbers.value(0).toInt(), numbers.value(1).toInt(), {}};
    const QByteArray raw = RawByFfmpeg(nativePath, "f64le");
    sound.Samples.resize(static_cast<std::size_t>(raw.size()) / sizeof(double));
    std::memcpy(sound.Samples.data(), raw.constData(), sound.Samples.size() * sizeof(double));
    return sound;
}

QString FailureTextOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const Failure& failure) {
        return failure.Description;
    }
    return {};
}

}  // namespace Sonmira

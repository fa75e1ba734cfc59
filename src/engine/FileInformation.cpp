#include "engine/FileInformation.h"

#include "platform/Failure.h"
#include "shell/Paths.h"
#include "shell/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString MinutesAndSeconds(qint64 total) {
    return FormatNumber(total / 60, u"#00") + u':' + FormatNumber(total % 60, u"#00");
}

QString LengthOfStream(AudioSource& fileRenc, const QString& path) {
    fileRenc.OpenForRead(path);
    const double seconds = static_cast<double>(fileRenc.Length()) / 1000;
    QString text = MinutesAndSeconds(static_cast<qint64>(RoundHalfEven(seconds)));
    fileRenc.CloseFile();
    return text;
}

QString LengthOfAac(Components parts, const QString& path) {
    parts.AACDecoder1.SetInputFile(path);
    parts.AACDecoder1.SetOutputFile({});
    double duration = 0;
    qint32 unused = 0;
    if (parts.alacdec1.IsAlac(path) == 1) parts.alacdec1.TrackInfo(path, duration, unused, unused, unused);
    return duration == 0 ? u"-"_s : MinutesAndSeconds(static_cast<qint64>(duration));
}

QString LengthText(Components parts, const QString& path) {
    const auto endsIn = [&](QStringView ending) { return EndsInUpper(path, ending); };
    if (IsStreamReadable(path)) return LengthOfStream(parts.FileRenc, path);
    if (endsIn(u"AAC") || endsIn(u"ALAC")) return LengthOfAac(parts, path);
    if (endsIn(u"FLAC")) return MinutesAndSeconds(parts.FlacCodec1.TrackLength(path));
    if (endsIn(u"APE") || endsIn(u"APL")) return MinutesAndSeconds(parts.Ape.GetDurationTrack(path));
    return MinutesAndSeconds(parts.mpcdecoder1.TrackLength(path));
}

}  // namespace

QString ReadFileInformation(Components parts, const QString& path) {
    QString text = u"00:00"_s;
    const bool read = PassOver([&] { text = LengthText(parts, path); });
    if (!read) PassOver([&] { parts.FileRenc.CloseFile(); });
    return text;
}

}  // namespace Sonmira

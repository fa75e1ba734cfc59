#include "engine/FileInformation.h"

#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"

#include <QScopeGuard>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

bool IsAac(const QString& path) {
    return EndsInUpper(path, u"AAC") || EndsInUpper(path, u"ALAC");
}

double LengthOfStream(AudioSource& fileRenc, const QString& path) {
    const auto close = qScopeGuard([&] { PassOver([&] { fileRenc.CloseFile(); }); });
    fileRenc.OpenForRead(path);
    return static_cast<double>(fileRenc.Length()) / 1000;
}

double LengthOfAac(Components parts, const QString& path) {
    parts.AACDecoder1.SetInputFile(path);
    parts.AACDecoder1.SetOutputFile({});
    double duration = 0;
    qint32 unused = 0;
    if (parts.alacdec1.IsAlac(path) == 1) parts.alacdec1.TrackInfo(path, duration, unused, unused, unused);
    return duration;
}

}  // namespace

double ReadDuration(Components parts, const QString& path) {
    if (IsStreamReadable(path)) return LengthOfStream(parts.FileRenc, path);
    if (IsAac(path)) return LengthOfAac(parts, path);
    if (EndsInUpper(path, u"FLAC")) return parts.FlacCodec1.TrackLength(path);
    if (EndsInUpper(path, u"APE") || EndsInUpper(path, u"APL")) return parts.Ape.GetDurationTrack(path);
    return parts.mpcdecoder1.TrackLength(path);
}

QString MinutesAndSeconds(double seconds) {
    const auto total = static_cast<qint64>(RoundHalfEven(seconds));
    return FormatNumber(total / 60, u"#00") + u':' + FormatNumber(total % 60, u"#00");
}

QString ReadFileInformation(Components parts, const QString& path) {
    double seconds = 0;
    const bool read = PassOver([&] { seconds = ReadDuration(parts, path); });
    if (read && seconds == 0 && IsAac(path)) return u"-"_s;
    return MinutesAndSeconds(seconds);
}

}  // namespace Sonmira

#include "library/AudioFileNames.h"

#include "platform/Paths.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// No path ends in two of them.
constexpr InputFormat InputFormats[] = {
    {u"WAV", InputReader::Stream, TakenBy::Scan, false},   {u"WMA", InputReader::Stream, TakenBy::Scan, true},
    {u"MP3", InputReader::Stream, TakenBy::Scan, true},    {u"OGG", InputReader::Stream, TakenBy::Scan, true},
    {u"AVI", InputReader::Stream, TakenBy::Nobody, false}, {u"AAC", InputReader::Aac, TakenBy::Scan, false},
    {u"ALAC", InputReader::Aac, TakenBy::Drop, true},      {u"APE", InputReader::Ape, TakenBy::Scan, false},
    {u"APL", InputReader::Ape, TakenBy::Scan, false},      {u"FLAC", InputReader::Flac, TakenBy::Scan, false},
    {u"MPC", InputReader::Mpc, TakenBy::Drop, true},       {u"MP+", InputReader::Mpc, TakenBy::Drop, true},
};
constexpr InputFormat AnyOther;

}  // namespace

const InputFormat& InputFormatOf(const QString& path) {
    const auto* const found =
        std::find_if(std::begin(InputFormats), std::end(InputFormats),
                     [&](const InputFormat& format) { return EndsInUpper(path, format.Ending); });
    return found == std::end(InputFormats) ? AnyOther : *found;
}

bool IsStreamReadable(const QString& path) {
    return InputFormatOf(path).Reader == InputReader::Stream;
}

bool IsScannedAudioFile(const QString& name) {
    return InputFormatOf(name).Adding == TakenBy::Scan;
}

bool IsDroppedAudioFile(const QString& path) {
    return InputFormatOf(path).Adding != TakenBy::Nobody;
}

QString AudioFileFilter() {
    return u"Audio files (*.wav;*.mp3;*.ogg;*.wma;*.aac;*.ape;*.flac;*.mpc)"
           u"|*.wav;*.WAV;*.mp3;*.MP3;*.ogg;*.OGG;*.wma;*.WMA;*.aac;*.AAC;*.ape;*.APE;*.apl;*.APL;"
           u"*.flac;*.FLAC;*.mpc;*.MPC;*.mp+;*.MP+|"
           u"AAC Files(*.aac)|*.aac;*.AAC|"
           u"APE Files(*.ape)|*.APL;*.apl;*.ape;*.APE|"
           u"Flac Files(*.flac)|*.flac;*.flac|"
           u"MP3 Files(*.mp3)|*.mp3;*.MP3|"
           u"MPC Files(*.mpc)|*.mpc;*.MPC|"
           u"OGG Files(*.ogg)|*.ogg;*.OGG|"
           u"WAV Files(*.wav)|*.wav;*.WAV|"
           u"WMA Files(*.wma)|*.wma;*.WMA|"_s;
}

}  // namespace Sonmira

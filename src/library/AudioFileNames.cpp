#include "library/AudioFileNames.h"

#include "platform/Paths.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

bool EndsInOneOf(const QString& name, std::initializer_list<QStringView> tails) {
    return std::any_of(tails.begin(), tails.end(), [&](QStringView tail) { return EndsInUpper(name, tail); });
}

}  // namespace

bool IsScannedAudioFile(const QString& name) {
    return EndsInOneOf(name, {u"WAV", u"WMA", u"MP3", u"OGG", u"AAC", u"APE", u"APL", u"FLAC"});
}

bool IsDroppedAudioFile(const QString& path) {
    return IsScannedAudioFile(path) || EndsInOneOf(path, {u"MPC", u"MP+", u"ALAC"});
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

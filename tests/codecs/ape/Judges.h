#pragma once

#include <QByteArray>

// Decoders that know nothing of ours.
namespace Sonmira {

// The sound of a file as packed PCM of that width by FFmpeg, with every check sum checked; a text about the
// failure where there is one.
struct JudgedSound {
    QByteArray Pcm;
    QByteArray Complaint;
};
JudgedSound ApeByFfmpeg(const QByteArray& native, int bits);

// The Java decoder, where it is installed.
bool HasJavaApe();
// The WAV file that it decodes to; empty when it does not.
QByteArray WavByJavaApe(const QByteArray& native, const QByteArray& scratch);
// The file that it encodes a WAV to, level 1 to 5.
QByteArray ApeByJavaApe(const QByteArray& wav, int level, const QByteArray& scratch);
// Whether it finds the file's MD5 right.
bool IsVerifiedByJavaApe(const QByteArray& native);

}  // namespace Sonmira

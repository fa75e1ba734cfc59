#pragma once

#include "codecs/Conversion.h"
#include "support/Tool.h"

// What tests of damaged sources share.
namespace Sonmira {

// What a reader gives of a file, and the text of the failure that it ends with.
struct PartRead {
    qint64 Frames = 0;
    QString Failure;
};
PartRead ReadPart(const QString& path);

// The bytes of sound that the header of a plain WAV of 44 bytes counts, and that are there.
qint64 ClaimedBytes(const QByteArray& wav);
qint64 SoundBytes(const QByteArray& wav);

// A file of some seconds of noise in a format that `command` makes; "IN" and "OUT" in it stand for the files.
QByteArray MadeOf(const TestFolder& folder, const QByteArray& name, const QList<QByteArray>& command,
                  const TestSound& sound);

}  // namespace Sonmira

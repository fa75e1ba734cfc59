#include "LostSound.h"

#include "platform/Failure.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace Sonmira {

PartRead ReadPart(const QString& path) {
    PartRead part;
    part.Failure = FailureTextOf([&] {
        AudioFile file;
        file.OpenForRead(path);
        for (AudioBlock block = file.ReadBlock(65536); !block.IsEmpty(); block = file.ReadBlock(65536)) {
            part.Frames += static_cast<qint64>(block.Bytes.size()) / file.ByteRate();
        }
    });
    return part;
}

qint64 ClaimedBytes(const QByteArray& wav) {
    return wav.size() < 44 ? -1 : qFromLittleEndian<quint32>(wav.constData() + 40);
}

qint64 SoundBytes(const QByteArray& wav) {
    return wav.size() - 44;
}

QByteArray MadeOf(const TestFolder& folder, const QByteArray& name, const QList<QByteArray>& command,
                  const TestSound& sound) {
    folder.MakeFile("in.wav", WavOf(sound, WavKind::Signed16));
    QList<QByteArray> words = command;
    for (QByteArray& word : words) {
        if (word == "IN") word = folder.Native("in.wav");
        if (word == "OUT") word = folder.Native(name);
    }
    const ToolResult made = RunTool(words);
    EXPECT_EQ(made.ExitCode, 0) << made.Errors.constData();
    return ContentOf(folder.Native(name));
}

}  // namespace Sonmira

#include "MadeSources.h"

#include "support/Tool.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Sonmira {

namespace {

QList<QByteArray> FfmpegOptions(const QByteArray& ending) {
    if (ending == "avi") return {"-c:a", "pcm_s16le"};
    if (ending == "mp3") return {"-c:a", "libmp3lame", "-b:a", "192k"};
    if (ending == "ogg") return {"-c:a", "libvorbis", "-q:a", "6"};
    if (ending == "wma") return {"-c:a", "wmav2", "-b:a", "192k"};
    if (ending == "alac") return {"-c:a", "alac", "-f", "mp4"};
    if (ending == "flac") return {"-c:a", "flac"};
    return {"-c:a", "aac", "-b:a", "192k"};
}

}  // namespace

void MakeSource(const QByteArray& wav, const QByteArray& file) {
    const QByteArray ending = file.mid(file.lastIndexOf('.') + 1);
    QList<QByteArray> command =
        QList<QByteArray>{"ffmpeg", "-v", "error", "-y", "-i", wav} + FfmpegOptions(ending) + QList{file};
    if (ending == "wav") command = {"cp", wav, file};
    if (ending == "ape") command = {"jmac", "c2", wav, file};
    // The program knows its files by one ending only.
    const bool isMusepack = ending == "mpc" || ending == "mp+";
    if (isMusepack) command = {"mpcenc", "--silent", "--overwrite", "--quality", "7", wav, file + ".mpc"};
    const ToolResult made = RunTool(command);
    ASSERT_EQ(made.ExitCode, 0) << made.Errors.constData();
    if (isMusepack) std::filesystem::rename((file + ".mpc").toStdString(), file.toStdString());
}

}  // namespace Sonmira

#pragma once

#include "support/TestAudio.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <QList>

#include <gtest/gtest.h>

namespace Sonmira {

// Tests of tags: short files of every format that has them, made by other programs.
class TagFileTest : public ::testing::Test {
protected:
    static constexpr const char* Names[] = {"a.mp3", "a.ogg", "a.flac", "a.ape", "a.mpc",
                                            "a.wma", "a.wav", "a.aac",  "a.m4a"};

    // A file of that name; `options` go to ffmpeg where it makes the file.
    QString Make(const QByteArray& name, const QList<QByteArray>& options = {}) const {
        Folder.MakeFile("made/in.wav", WavOf(MakeTone(44100, 2, 22050, 440), WavKind::Signed16));
        const QByteArray wav = Folder.Native("made/in.wav");
        const QByteArray file = Folder.Native(name);
        QList<QByteArray> command =
            QList<QByteArray>{"ffmpeg", "-v", "error", "-y", "-i", wav} + options + QList{file};
        if (name.endsWith(".ape")) command = {"jmac", "c1", wav, file};
        if (name.endsWith(".mpc")) command = {"mpcenc", "--silent", "--overwrite", wav, file};
        if (name.endsWith(".wav")) command = {"cp", wav, file};
        const ToolResult made = RunTool(command);
        EXPECT_EQ(made.ExitCode, 0) << made.Errors.constData();
        return Folder.Path(name);
    }
    QByteArray Content(const QByteArray& name) const { return ContentOf(Folder.Native(name)); }
    // What another program reads: "tag:title=..." lines, all in lower case.
    QByteArray Probe(const QByteArray& name) const {
        return RunTool({"ffprobe", "-v", "error", "-show_entries", "format_tags:stream_tags", "-of",
                        "default=nw=1", Folder.Native(name)})
            .Output.toLower();
    }

    TestFolder Folder;
};

}  // namespace Sonmira

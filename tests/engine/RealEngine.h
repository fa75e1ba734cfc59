#pragma once

#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/Components.h"
#include "engine/JobDriver.h"
#include "engine/OutputFormats.h"
#include "engine/Run.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {

struct OutputFormat {
    QStringView Name;
    const char* Ending;
    bool FromWav;  // its encoder takes a WAV, so that other sources are copied to one first
};

inline constexpr OutputFormat OutputFormats[] = {
    {FormatName::Wav, "wav", false}, {FormatName::Mp3, "mp3", false}, {FormatName::Ogg, "ogg", false},
    {FormatName::Wma, "wma", false}, {FormatName::Ape, "ape", true},  {FormatName::Flac, "flac", true},
    {FormatName::Mpc, "mpc", true}};

// Whole runs with the real components, without a window. Outputs go into "out".
class RealEngine : public ::testing::Test {
protected:
    RealEngine() {
        NumberLanguageLines();
        Host.OutputFolder = Folder.MakeFolder("out");
        Codecs.Settings = {2000, 5, 5, true};
    }

    void AddMusic() { AddDirectory(Items, Host, Folder.Path("Music")); }
    // Only this file, by the command that takes files of any ending.
    void TakeFile(const QString& path) {
        if (Items.Records.FirstWithPath(path)) return;
        Items = {};
        AddFileRecord(Items, Host, path);
    }

    // Short and common parameters of each format.
    void SetFormat(QStringView format) {
        Host.Format = format.toString();
        if (format == FormatName::Mp3) Codecs.FileWenc.SetFormatMP3(44100, 192, 2);
        if (format == FormatName::Ogg) Codecs.FileWenc.SetFormatOggVorbis(44100, 2, {}, {}, {}, 600);
        if (format == FormatName::Wav) Codecs.FileWenc.SetFormatPCM(44100, 2, 16);
        if (format == FormatName::Wma) Codecs.FileWenc.SelectWmaFormat(45);
    }
    void Convert(QStringView format) {
        SetFormat(format);
        JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
    }

    const HeadlessHost::Row& Row(std::size_t number = 1) const { return Host.Rows.at(number - 1); }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    CodecSet Codecs;
    Collection Items;
};

}  // namespace Sonmira

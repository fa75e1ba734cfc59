// convert-folder SOURCE DESTINATION FORMAT
//
// Runs the real engine over a folder without a window, as a full run with default parameters, and prints
// what it took: seconds of the run, seconds inside the components, rows and failed rows. The destination
// is made. FORMAT is an item of the format list, such as Mp3 or
// "APE (MonKey's audio)".
#include "HeadlessHost.h"
#include "TimedComponents.h"
#include "engine/Components.h"
#include "engine/JobDriver.h"
#include "engine/OutputFormats.h"
#include "engine/Run.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <filesystem>

namespace {

using namespace Sonmira;

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Gives the encoders of that format what a user who chooses nothing gives them.
bool SetFormat(AudioFile& fileWenc, OutputSettings& settings, const QString& format) {
    settings = {2000, 5, 5};
    if (format == FormatName::Ape || format == FormatName::Flac || format == FormatName::Mpc) return true;
    if (format == FormatName::Mp3) {
        fileWenc.SetFormatMP3(44100, 128, 2);
    } else if (format == FormatName::Ogg) {
        fileWenc.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400);
    } else if (format == FormatName::Wav) {
        fileWenc.SetFormatPCM(44100, 2, 16);
    } else if (format == FormatName::Wma) {
        fileWenc.SelectWmaFormat(43);
    }
    return !fileWenc.FormatString().isEmpty();
}

int Convert(const char* source, const char* destination, const QString& format) {
    std::filesystem::create_directories(destination);
    CodecSet codecs;
    Sonmira::Run run;
    if (!SetFormat(codecs.FileWenc, codecs.Settings, format)) {
        std::fprintf(stderr, "no such format, or its encoder is missing\n");
        return 2;
    }
    LanguageLines.Assign(QStringList(101));

    HeadlessHost host;
    host.Format = format;
    host.OutputFolder = FromNative(std::filesystem::absolute(destination).string());
    Collection collection;
    auto start = std::chrono::steady_clock::now();
    AddDirectory(collection, host, FromNative(std::filesystem::canonical(source).string()));
    const double adding = SecondsSince(start);

    TimedSource reader(codecs.FileRenc);
    TimedSink writer(codecs.FileWenc);
    start = std::chrono::steady_clock::now();
    JobDriver(run, host, codecs.Parts(reader, writer), collection).RunAllConversions();
    const double running = SecondsSince(start);

    std::size_t failed = 0;
    for (const HeadlessHost::Row& row : host.Rows) failed += row.Icon == ErrorIcon ? 1 : 0;
    const double inside = reader.Seconds() + writer.Seconds();
    std::printf("seconds %.3f components %.3f engine %.3f adding %.3f rows %zu failed %zu\n", running, inside,
                running - inside, adding, host.Rows.size(), failed);
    return failed == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: convert-folder SOURCE DESTINATION FORMAT\n");
        return 2;
    }
    try {
        return Convert(argv[1], argv[2], FromNarrow(argv[3]));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "convert-folder: %s\n", failure.what());
        return 1;
    }
}

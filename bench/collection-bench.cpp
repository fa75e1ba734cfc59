// Adds and walks 1,000, 10,000 and 30,000 small files, in folders of 15, and prints what one file costs.
// Cost that grows with the collection shows as a last column well above 1.
#include "BenchSupport.h"
#include "HeadlessHost.h"
#include "NoSound.h"
#include "engine/Components.h"
#include "engine/JobDriver.h"
#include "engine/Run.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "library/Removal.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <filesystem>

namespace {

using namespace Sonmira;

template <class Work>
double MicrosecondsAFile(int count, Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const auto taken = std::chrono::steady_clock::now() - start;
    return std::chrono::duration<double, std::micro>(taken).count() / count;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    LanguageLines.Assign(QStringList(101));
    std::printf("%8s %22s %22s %22s %22s %14s\n", "files", "scan us/file (x first)", "drop us/file (x first)",
                "walk us/file (x first)", "remove us/file (x first)", "bytes/record");
    double first[4] = {};
    for (const int count : {1000, 10000, 30000}) {
        const QTemporaryDir folder;
        const std::filesystem::path root(folder.path().toStdString());
        MakeSmallFiles(root / "in", count);
        const QString source = FromNative((root / "in").string());

        HeadlessHost host;
        Collection scanned;
        const double bytesBefore = ResidentBytes();
        double cost[4];
        cost[0] = MicrosecondsAFile(count, [&] { AddDirectory(scanned, host, source); });
        const double bytesARecord = (ResidentBytes() - bytesBefore) / scanned.Records.UpperBound();

        QStringList paths;
        for (int n = 1; n <= scanned.Records.UpperBound(); ++n) {
            if (scanned.Records[n].IsFile) paths.append(scanned.Records[n].Path);
        }
        HeadlessHost dropHost;
        Collection dropped;
        cost[1] = MicrosecondsAFile(count, [&] { AddDropped(dropped, dropHost, paths); });

        NoSound none;
        CodecSet codecs;
        Sonmira::Run run;
        host.OutputFolder = FromNative((root / "out").string());
        std::filesystem::create_directories(root / "out");
        cost[2] = MicrosecondsAFile(
            count, [&] { JobDriver(run, host, codecs.Parts(none, none), scanned).RunAllConversions(); });

        // The whole tree at one go.
        cost[3] = MicrosecondsAFile(count, [&] { RemoveFromCollection(scanned, host, source); });

        std::printf("%8d", count);
        for (int n = 0; n < 4; ++n) {
            if (first[n] == 0) first[n] = cost[n];
            std::printf(" %14.2f (%5.2f)", cost[n], cost[n] / first[n]);
        }
        std::printf(" %14.0f\n", bytesARecord);
        if (scanned.Records.UpperBound() != 0 || dropped.FileCount != count) return 1;
    }
    return 0;
}

#pragma once

#include <QByteArray>

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace Sonmira {

// A sound file that was made elsewhere, with what another decoder says of it: one line of the list that lies
// beside the files. The files are no part of the source tree.
struct RealFile {
    QByteArray Path;
    int Rate = 0;
    int Channels = 0;
    QByteArray State;  // "yes", "errors" or "refused"
    qint64 Frames = 0;
    QByteArray Codec = {};
};

// Where they lie: the folder that SONMIRA_CORPUS names in the environment, none where that is empty; else the
// one that the build was told.
QByteArray RealFilesFolder();

// All of them; none where the folder is not there.
std::vector<RealFile> RealFiles();

void PrintTo(const RealFile& file, std::ostream* stream);

// A test's name for the file.
std::string NameOfRealFile(const ::testing::TestParamInfo<RealFile>& real);

}  // namespace Sonmira

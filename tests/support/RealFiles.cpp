#include "RealFiles.h"

#include <QFile>

#include <cctype>

namespace Sonmira {

QByteArray RealFilesFolder() {
    return qEnvironmentVariableIsSet("SONMIRA_CORPUS") ? qgetenv("SONMIRA_CORPUS") : SONMIRA_CORPUS;
}

std::vector<RealFile> RealFiles() {
    std::vector<RealFile> files;
    const QByteArray folder = RealFilesFolder();
    QFile list(QFile::decodeName(folder + "/MANIFEST.tsv"));
    if (folder.isEmpty() || !list.open(QIODevice::ReadOnly)) return files;
    const QList<QByteArray> header = list.readLine().trimmed().split('\t');
    const auto column = [&](const char* name) { return header.indexOf(QByteArray(name)); };
    while (!list.atEnd()) {
        const QList<QByteArray> fields = list.readLine().split('\t');
        if (fields.size() < header.size() - 1) continue;
        files.push_back({folder + '/' + fields.value(column("path")), fields.value(column("rate")).toInt(),
                         fields.value(column("channels")).toInt(),
                         fields.value(column("ffmpeg_decodes_cleanly")),
                         fields.value(column("ffmpeg_sample_frames")).trimmed().toLongLong(),
                         fields.value(column("codec"))});
    }
    return files;
}

void PrintTo(const RealFile& file, std::ostream* stream) {
    *stream << file.Path.constData();
}

std::string NameOfRealFile(const ::testing::TestParamInfo<RealFile>& real) {
    std::string name = std::to_string(real.index) + "_";
    for (const char c : real.param.Path.mid(real.param.Path.lastIndexOf('/') + 1)) {
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    }
    return name;
}

}  // namespace Sonmira

// ape-matrix: the long proof that files are right, for people to run: every level, width and channel count
// with every kind of sound, and the lengths around a frame, encoded, and decoded by FFmpeg, by the Java
// decoder and by our own. With a folder as argument, every WAV file in it too. Prints what is not bit for bit
// the same.
#include "Judges.h"
#include "Signals.h"
#include "codecs/ApeFunctions.h"
#include "codecs/ape/ApeFormat.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "support/TestFolder.h"

#include <QCoreApplication>

#include <cstdio>
#include <filesystem>

namespace {

using namespace Sonmira;

class Matrix {
public:
    void Try(const std::string& what, const QByteArray& wav, int bits, int level) {
        const QString source = Folder.MakeFile("in.wav", wav);
        const qint32 killFlag = 0;
        ++Files;
        try {
            CompressFile(source, Anew(Folder.Path("out.ape")), level, {}, killFlag);
            DecompressFile(Anew(Folder.Path("out.ape")), Folder.Path("back.wav"), {}, killFlag);
        } catch (const Failure& failure) {
            Complain(what, level, failure.what());
            return;
        }
        if (ContentOf(Folder.Native("back.wav")) != wav) Complain(what, level, "our own decoder differs");
        // No other decoder takes a file of no frames at all.
        const QByteArray pcm = wav.mid(44, wav.size() - 44);
        if (pcm.isEmpty()) return;
        const JudgedSound judged = ApeByFfmpeg(Folder.Native("out.ape"), bits);
        if (!judged.Complaint.isEmpty()) Complain(what, level, "ffmpeg: " + judged.Complaint);
        // The WAV may have a byte of padding.
        if (!pcm.startsWith(judged.Pcm) || pcm.size() > judged.Pcm.size() + 1) {
            Complain(what, level, "ffmpeg differs");
        }
        if (WavByJavaApe(Folder.Native("out.ape"), Folder.Native("java.wav")) != wav) {
            Complain(what, level, "jmac differs");
        }
    }

    void TrySignal(const std::string& name, int channels, std::int64_t blocks, WavKind kind, int bits,
                   int level) {
        Try(name + " " + std::to_string(channels) + " channels " + std::to_string(bits) + " bits " +
                std::to_string(blocks) + " blocks",
            WavOf(MakeApeSignal(name, channels, blocks), kind), bits, level);
    }

    // One file, by the Java decoder: the whole file must come back, header, chunks and all.
    void TryFile(const std::filesystem::path& path) {
        const QByteArray wav = ContentOf(QByteArray::fromStdString(path.string()));
        const qint32 killFlag = 0;
        for (const int level : {1000, 2000, 3000, 4000}) {
            try {
                CompressFile(FromNative(QByteArray::fromStdString(path.string())),
                             Anew(Folder.Path("out.ape")), level, {}, killFlag);
            } catch (const Failure& failure) {
                std::printf("%s: %s\n", path.filename().c_str(), failure.what());
                return;
            }
            ++Files;
            const bool isSame = WavByJavaApe(Folder.Native("out.ape"), Folder.Native("java.wav")) == wav;
            if (level == 1000)
                std::printf("%s: %s\n", path.filename().c_str(), isSame ? "the very file" : "decoded first");
            if (!IsVerifiedByJavaApe(Folder.Native("out.ape"))) Complain(path.filename(), level, "MD5");
            const JudgedSound judged = ApeByFfmpeg(Folder.Native("out.ape"), 16);
            if (!judged.Complaint.isEmpty()) Complain(path.filename(), level, "ffmpeg: " + judged.Complaint);
        }
    }

    void Complain(const std::string& what, int level, const QByteArray& text) {
        ++Complaints;
        std::printf("%s, level %d: %s\n", what.c_str(), level, text.constData());
        std::fflush(stdout);
    }

    int Files = 0;
    int Complaints = 0;

private:
    TestFolder Folder;
};

struct Width {
    WavKind Kind;
    int Bits;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Matrix matrix;
    const Width widths[] = {{WavKind::Unsigned8, 8}, {WavKind::Signed16, 16}, {WavKind::Signed24, 24}};
    if (argc > 1) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[1])) {
            if (entry.path().extension() == ".wav") matrix.TryFile(entry.path());
        }
    } else {
        for (const ApeLevel& level : ApeLevels) {
            for (const Width& width : widths) {
                if (level.Number == 5000 && width.Bits == 24) continue;
                for (const int channels : {1, 2}) {
                    for (const std::string& name : ApeSignalNames()) {
                        matrix.TrySignal(name, channels, name == "mixture" ? 600000 : 100001, width.Kind,
                                         width.Bits, level.Number);
                    }
                    const std::int64_t full = level.BlocksPerFrame;
                    for (const std::int64_t blocks :
                         {std::int64_t{0}, std::int64_t{1}, std::int64_t{2}, full - 1, full}) {
                        matrix.TrySignal("tones", channels, blocks, width.Kind, width.Bits, level.Number);
                    }
                    matrix.TrySignal("walk", channels, level.BlocksPerFrame + 1, width.Kind, width.Bits,
                                     level.Number);
                }
            }
        }
    }
    std::printf("%d files, %d complaints\n", matrix.Files, matrix.Complaints);
    return matrix.Complaints > 0 ? 1 : 0;
}

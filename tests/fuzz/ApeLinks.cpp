// Whatever a file says that names another one and a stretch of it: decoding it and its length end well or in
// a Failure, with no more sound than the other file has.
#include "FuzzTarget.h"
#include "codecs/ApeFunctions.h"
#include "platform/Failure.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"

using namespace Sonmira;

namespace {

const TestFolder& Folder() {
    static const TestFolder folder;
    return folder;
}

// The file that the seeds name.
qsizetype WholeBytes() {
    static const qsizetype bytes = [] {
        const QByteArray wav = WavOf(MakeSweep(8000, 1, 100000), WavKind::Unsigned8);
        CompressFile(Folder().MakeFile("whole.wav", wav), Anew(Folder().Path("whole.ape")), 1000, {}, 0);
        return wav.size();
    }();
    return bytes;
}

QByteArray LinkTo(const QByteArray& name, const QByteArray& start, const QByteArray& finish) {
    return "[Monkey's Audio Image Link File]\r\nImage File=" + name + "\r\nStart Block=" + start +
           "\r\nFinish Block=" + finish + "\r\n\r\n----- APE TAG (DO NOT TOUCH!!!) -----\r\n";
}

}  // namespace

QList<QByteArray> FuzzSeeds() {
    WholeBytes();
    return {LinkTo("whole.ape", "0", "100000"),    LinkTo("whole.ape", "100", "900"),
            LinkTo("whole.ape", "73000", "75000"), LinkTo("..\\whole.ape", "0", "1"),
            LinkTo("in.apl", "0", "100"),          LinkTo("whole.ape", "99999", "-1"),
            LinkTo("whole.ape", "5", "4294967295")};
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const qsizetype most = WholeBytes();
    const QString path = Folder().MakeFile("in.apl", InputOf(data, size));
    const bool isDecoded = PassOver([&] { DecompressFile(path, Anew(Folder().Path("out.wav")), {}, 0); });
    if (isDecoded && ContentOf(Folder().Native("out.wav")).size() > most) Found("More sound than there is");
    if (GetDurationTrack(path) < 0) Found("A length below nothing");
    return 0;
}

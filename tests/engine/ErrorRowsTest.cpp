#include "MadeSources.h"
#include "RealEngine.h"
#include "support/Tool.h"

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Files that no component can read, under every ending.
class ErrorRow : public RealEngine, public ::testing::WithParamInterface<const char*> {
protected:
    QByteArray Name() const { return QByteArray("song.") + GetParam(); }
    bool Is(std::initializer_list<const char*> endings) const {
        return std::any_of(endings.begin(), endings.end(),
                           [](const char* ending) { return QByteArray(ending) == GetParam(); });
    }

    // WMA and AAC have reasons of their own, whatever is wrong with the file.
    QString Reason(const QString& usual) const {
        if (Is({"wma"})) return u"line 97"_s;
        return Is({"aac"}) ? u"line 98"_s : usual;
    }

    void ExpectRefused(const QString& usual = u"line 99"_s) {
        Host.RemoveOriginal = true;
        for (const QStringView format : {FormatName::Wav, FormatName::Flac}) {
            Convert(format);
            ASSERT_EQ(Host.Rows.size(), 1U);
            EXPECT_EQ(Row().Icon, ErrorIcon);
            EXPECT_EQ(Row().Progress, Reason(usual));
            EXPECT_TRUE(Host.ControlsEnabled);
            EXPECT_FALSE(Run.Busy());
        }
        EXPECT_TRUE(std::filesystem::is_empty(Folder.Native("out").toStdString()));
    }
    void ExpectRefusedWith(const QByteArray& content) {
        TakeFile(Folder.MakeFile(Name(), content));
        ExpectRefused();
        EXPECT_EQ(ContentOf(Folder.Native(Name())), content);
    }

    // A source of three seconds in the format of that ending.
    QByteArray Made(const QByteArray& ending) const {
        Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 3L * 44100), WavKind::Signed16));
        MakeSource(Folder.Native("in.wav"), Folder.Native("made." + ending));
        return ContentOf(Folder.Native("made." + ending));
    }
    QByteArray EndingOfItsKind() const { return Is({"apl"}) ? QByteArray("ape") : QByteArray(GetParam()); }
};

TEST_P(ErrorRow, OfAMissingFileSaysThatItIsMissing) {
    TakeFile(Folder.MakeFile(Name()));
    std::filesystem::remove(Folder.Native(Name()).toStdString());
    ExpectRefused(u"line 95"_s);
}

TEST_P(ErrorRow, OfAnEmptyFileSaysThatItCannotBeRead) {
    ExpectRefusedWith({});
}

TEST_P(ErrorRow, OfATextSaysThatItCannotBeRead) {
    ExpectRefusedWith(QByteArray("The quick brown fox jumps over the lazy dog.\n").repeated(200));
}

TEST_P(ErrorRow, OfAFileCutInItsHeaderSaysThatItCannotBeRead) {
    ExpectRefusedWith(Made(EndingOfItsKind()).first(24));
}

TEST_P(ErrorRow, OfAFileWhoseHeaderIsNoiseSaysThatItCannotBeRead) {
    QByteArray content = Made(EndingOfItsKind());
    // What has no header of its own is found again behind the noise; all of it goes.
    const qsizetype size = Is({"mp3", "aac", "ogg"}) ? content.size() : 4096;
    ExpectRefusedWith(content.replace(0, size, QByteArray(size, '\x5A')));
}

// What a file holds counts, not its name, where the reader knows more than one format. The decoders that know
// theirs alone refuse it before anything is made of it.
TEST_P(ErrorRow, OfAMislabelledFileIsAReasonWhereItsSoundIsNotConverted) {
    const QByteArray contents[] = {Made("wav"), Made("mp3"), Made("flac")};
    for (const QByteArray& content : contents) {
        TakeFile(Folder.MakeFile(Name(), content));
        if (Is({"ape", "apl", "mpc", "mp+"})) {
            ExpectRefused();
            continue;
        }
        Host.RemoveOriginal = false;
        Convert(FormatName::Wav);
        EXPECT_EQ(Row().Icon, ConvertedIcon) << Row().Progress.toStdString();
        const auto out = static_cast<double>(ContentOf(Folder.Native("out/song.wav")).size());
        EXPECT_NEAR(out, 3 * 44100 * 4, 3000 * 4);
        std::filesystem::remove(Folder.Native("out/song.wav").toStdString());
    }
}

INSTANTIATE_TEST_SUITE_P(Of, ErrorRow,
                         ::testing::Values("wav", "avi", "mp3", "ogg", "wma", "m4a", "aac", "alac", "ape",
                                           "apl", "flac", "mpc", "mp+"),
                         [](const auto& ending) {
                             const std::string name = ending.param;
                             return name == "mp+" ? std::string("mpplus") : name;
                         });

class ProtectedFile : public RealEngine {
protected:
    QByteArray Made(const QByteArray& ending) const {
        Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 3L * 44100), WavKind::Signed16));
        MakeSource(Folder.Native("in.wav"), Folder.Native("made." + ending));
        return ContentOf(Folder.Native("made." + ending));
    }
    void ExpectRefused(const QByteArray& name, const QByteArray& content, const QString& reason) {
        TakeFile(Folder.MakeFile(name, content));
        Host.RemoveOriginal = true;
        Convert(FormatName::Mp3);
        EXPECT_EQ(Row().Icon, ErrorIcon);
        EXPECT_EQ(Row().Progress, reason);
        EXPECT_TRUE(NativeExists(Folder.Native(name)));
        EXPECT_TRUE(Host.ControlsEnabled);
    }
    // What encryption makes of the sound, as far as anybody without the key can tell.
    static void Scramble(QByteArray& content, qsizetype from, qsizetype end) {
        std::uint32_t state = 1;
        for (qsizetype n = from; n < end; ++n) {
            state = state * 1664525 + 1013904223;
            content[n] = static_cast<char>(content[n] ^ static_cast<char>(state >> 24));
        }
    }
    static QByteArray Number(qint64 value, int bytes) {
        QByteArray text;
        for (int n = 0; n < bytes; ++n) text += static_cast<char>(value >> (8 * n));
        return text;
    }
    // A WMA file with the object in its header that says that it is encrypted, and its sound so: all of each
    // packet but the headers at its start.
    static QByteArray Protected(QByteArray wma) {
        const auto number = [&](qsizetype at) {
            return qsizetype{static_cast<quint8>(wma[at])} |
                   qsizetype{static_cast<quint8>(wma[at + 1])} << 8 |
                   qsizetype{static_cast<quint8>(wma[at + 2])} << 16;
        };
        constexpr qsizetype PacketHeaders = 60;
        const qsizetype properties = wma.indexOf(QByteArray::fromHex("a1dcab8c47a9cf118ee400c00c205365"));
        const qsizetype packetSize = number(properties + 92);
        const qsizetype header = number(16);
        for (qsizetype at = header + 50; at + packetSize <= wma.size(); at += packetSize) {
            Scramble(wma, at + PacketHeaders, at + packetSize);
        }
        const QByteArray data = Number(8, 4) + "12345678" + Number(4, 4) + QByteArray("DRM\0", 4) +
                                Number(6, 4) + QByteArray("KeyId\0", 6) + Number(1, 4) + QByteArray(1, '\0');
        const QByteArray object =
            QByteArray::fromHex("fbb3112223bdd211b4b700a0c955fc6e") + Number(24 + data.size(), 8) + data;
        wma.replace(16, 8, Number(header + object.size(), 8)).replace(24, 4, Number(number(24) + 1, 4));
        return wma.insert(30, object);
    }
};

TEST_F(ProtectedFile, OfWmaSaysThatAWmaCannotBeRead) {
    ExpectRefused("song.wma", Protected(Made("wma")), u"line 97"_s);
}

TEST_F(ProtectedFile, OfWmaSaysThatSupportIsOffWhereItIs) {
    Codecs.Settings.WmaSupported = false;
    ExpectRefused("song.wma", Protected(Made("wma")), u"line 100"_s);
}

TEST_F(ProtectedFile, OfMp4SaysThatItCannotBeRead) {
    QByteArray m4a = Made("m4a");
    m4a.replace(m4a.indexOf("mp4a", m4a.indexOf("stsd")), 4, "drms");
    const qsizetype sound = m4a.indexOf("mdat") + 4;
    const qsizetype tables = m4a.indexOf("moov") - 4;
    Scramble(m4a, sound, tables > sound ? tables : m4a.size());
    ExpectRefused("song.m4p", m4a, u"line 99"_s);
}

}  // namespace
}  // namespace Sonmira

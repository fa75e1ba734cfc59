#include "codecs/tagging/Id3v2Check.h"

#include "platform/Failure.h"

#include <QString>

#include <algorithm>
#include <string_view>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype HeadSize = 10;
constexpr int WholeUnsynchronised = 0x80;
constexpr int HasExtension = 0x40;
constexpr int HasFooter = 0x10;
// Frames with frames in them; books have some hundred chapters.
constexpr int MostChapters = 1000;

// The frames of the first version that have a name today, four letters each.
constexpr std::string_view FirstVersion =
    "BUF CNT COM CRA EQU ETC GEO GP1 IPL MCI MLL MVI MVN PCS PIC POP REV RVA SLT STC TAL TBP TCM TCO TCP TCR "
    "TCT "
    "TDA TDR TDS TDY TEN TFT TID TIM TKE TLA TLE TMT TOA TOF TOL TOR TOT TP1 TP2 TP3 TP4 TPA TPB TRC TRD TRK "
    "TS2 "
    "TSA TSC TSI TSP TSS TST TT1 TT2 TT3 TXT TXX TYE UFI ULT WAF WAR WAS WCM WCP WFD WPB WXX";

// Frames that only our factory keeps.
constexpr std::string_view LostByTheLibrary = "EQU RVA TDA TIM TSI EQUA RVAD TRDA TSIZ";

int ByteAt(const QByteArray& bytes, qsizetype at) {
    return static_cast<unsigned char>(bytes[at]);
}

qint64 Number(const QByteArray& bytes, qsizetype at, int count, int bits) {
    qint64 number = 0;
    for (int n = 0; n < count; ++n) number = number << bits | (ByteAt(bytes, at + n) & ((1 << bits) - 1));
    return number;
}

[[noreturn]] void Refuse() {
    throw Failure(FailureNumber::Component, u"The tag holds parts that a save would lose"_s);
}

// Walks the frames of one tag.
class Frames {
public:
    Frames(const QByteArray& tag, FrameKeeping keeping)
        : Version(ByteAt(tag, 3)),
          Body(tag.sliced(HeadSize)),
          FrameHead(Version < 3 ? 6 : 10),
          IsLibraryAlone(keeping == FrameKeeping::OfTheLibraryAlone) {
        const int flags = ByteAt(tag, 5);
        // Compressed as a whole, which never came into use.
        if (Version < 3 && (flags & HasExtension) != 0) Refuse();
        if ((flags & WholeUnsynchronised) != 0 && Version < 4)
            Body.replace(QByteArray("\xFF\0", 2), QByteArray("\xFF", 1));
        if ((flags & HasFooter) != 0 && Version == 4) Body.chop(std::min(HeadSize, Body.size()));
        if ((flags & HasExtension) != 0 && Version >= 3 && Body.size() >= 4)
            At = Version == 3 ? Number(Body, 0, 4, 8) + 4 : Number(Body, 0, 4, 7);
    }

    void Check() {
        while (At < Body.size() && Body[At] != '\0') {
            if (!IsFrameAt(At)) Refuse();
            CheckKind();
            At += FrameHead + SizeAt(At);
        }
        if (At > Body.size()) Refuse();
        const auto padding = Body.sliced(At);
        if (std::any_of(padding.begin(), padding.end(), [](char c) { return c != '\0'; })) Refuse();
    }

private:
    bool IsNameAt(qsizetype at) const {
        const qsizetype length = Version < 3 ? 3 : 4;
        if (at + FrameHead > Body.size()) return false;
        return std::all_of(Body.begin() + at, Body.begin() + at + length,
                           [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
    }
    bool IsEndOrFrame(qsizetype at) const {
        return at == Body.size() || (at < Body.size() && (Body[at] == '\0' || IsNameAt(at)));
    }
    bool IsFrameAt(qsizetype at) const {
        return IsNameAt(at) && SizeAt(at) > 0 && SizeAt(at) <= Body.size() - at - FrameHead;
    }
    qint64 SizeAt(qsizetype at) const {
        if (Version < 3) return Number(Body, at + 3, 3, 8);
        if (Version == 3) return Number(Body, at + 4, 4, 8);
        // One widespread program counted the newest version's sizes in eights.
        const qint64 sevens = Number(Body, at + 4, 4, 7);
        const qint64 eights = Number(Body, at + 4, 4, 8);
        return IsEndOrFrame(at + FrameHead + sevens) || !IsEndOrFrame(at + FrameHead + eights) ? sevens
                                                                                               : eights;
    }
    void CheckKind() const {
        const std::string_view name(Body.constData() + At, Version < 3 ? 3 : 4);
        if (Version < 3 && FirstVersion.find(name) == std::string_view::npos) Refuse();
        if (IsLibraryAlone && LostByTheLibrary.find(name) != std::string_view::npos) Refuse();
        if (Version < 3) return;
        // Marked for programs that do not know such a frame; the library drops those that it knows, too.
        const int marked = Version == 3 ? 0x80 : 0x40;
        if (IsLibraryAlone && (ByteAt(Body, At + 8) & marked) != 0) Refuse();
        // Encrypted frames and those of a group lose the mark that tells so.
        const int flags = ByteAt(Body, At + 9);
        const int lost = Version == 3 ? 0x40 | 0x20 : 0x40 | 0x04;
        if ((flags & lost) != 0) Refuse();
    }

    int Version;
    QByteArray Body;
    qsizetype FrameHead;
    bool IsLibraryAlone;
    qsizetype At = 0;
};

}  // namespace

qint64 Id3v2Size(const QByteArray& bytes) {
    if (bytes.size() < HeadSize || !bytes.startsWith("ID3")) return 0;
    const bool hasFooter = ByteAt(bytes, 3) == 4 && (ByteAt(bytes, 5) & HasFooter) != 0;
    return HeadSize + Number(bytes, 6, 4, 7) + (hasFooter ? HeadSize : 0);
}

bool IsBottomless(const QByteArray& tag) {
    return tag.count("CHAP") + tag.count("CTOC") > MostChapters;
}

void CheckFramesAreKept(const QByteArray& tag, FrameKeeping keeping) {
    if (tag.size() < HeadSize || tag.size() != Id3v2Size(tag)) Refuse();
    Frames(tag, keeping).Check();
}

void CheckSoundFollows(const QByteArray& behind) {
    const auto at = std::find_if(behind.begin(), behind.end(), [](char c) { return c != '\0'; });
    const QByteArray next = behind.sliced(at - behind.begin());
    const auto byte = [&](qsizetype place) { return place < next.size() ? ByteAt(next, place) : 0; };
    const bool isSynchronised = (byte(0) == 0xFF || byte(0) == 0x56) && (byte(1) & 0xE0) == 0xE0;
    constexpr const char* Marks[] = {"TAG", "APETAGEX", "LYRICSBEGIN", "ADIF", "RIFF", "fLaC"};
    const bool isKnown = std::any_of(std::begin(Marks), std::end(Marks),
                                     [&](const char* mark) { return next.startsWith(mark); });
    if (!next.isEmpty() && !isSynchronised && !isKnown) Refuse();
}

}  // namespace Sonmira

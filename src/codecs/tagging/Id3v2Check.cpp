#include "codecs/tagging/Id3v2Check.h"

#include "codecs/tagging/Id3v2Parsing.h"
#include "platform/Failure.h"

#include <QString>

#include <algorithm>
#include <string_view>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// Frames with frames in them; books have some hundred chapters.
constexpr int MostChapters = 1000;

// The frames of the first version that have a name today, four letters each.
constexpr std::string_view FirstVersion =
    "BUF CNT COM CRA EQU ETC GEO GP1 IPL MCI MLL MVI MVN PCS PIC POP REV RVA SLT STC TAL TBP TCM TCO TCP TCR "
    "TCT "
    "TDA TDR TDS TDY TEN TFT TID TIM TKE TLA TLE TMT TOA TOF TOL TOR TOT TP1 TP2 TP3 TP4 TPA TPB TRC TRD TRK "
    "TS2 "
    "TSA TSC TSI TSP TSS TST TT1 TT2 TT3 TXT TXX TYE UFI ULT WAF WAR WAS WCM WCP WFD WPB WXX";

// Frames that some libraries drop.
constexpr std::string_view LostByTheLibrary = "EQU RVA TDA TIM TSI EQUA RVAD TRDA TSIZ";

int ByteAt(const QByteArray& bytes, qsizetype at) {
    return static_cast<unsigned char>(bytes[at]);
}

[[noreturn]] void Refuse() {
    throw Failure(FailureNumber::Component, u"The tag holds parts that a save would lose"_s);
}

void CheckKind(const Id3v2Frame& frame, int version, FrameKeeping keeping) {
    const std::string_view name(frame.Id.constData(), static_cast<std::size_t>(frame.Id.size()));
    const bool isLibraryAlone = keeping == FrameKeeping::OfTheLibraryAlone;
    if (version < 3 && FirstVersion.find(name) == std::string_view::npos) Refuse();
    if (isLibraryAlone && LostByTheLibrary.find(name) != std::string_view::npos) Refuse();
    if (version < 3) return;
    // Marked for programs that do not know such a frame.
    const int marked = version == 3 ? 0x80 : 0x40;
    if (isLibraryAlone && (ByteAt(frame.Bytes, 8) & marked) != 0) Refuse();
    // Encrypted frames and those of a group hang together with others.
    const int flags = ByteAt(frame.Bytes, 9);
    const int apart = version == 3 ? 0x40 | 0x20 : 0x40 | 0x04;
    if ((flags & apart) != 0) Refuse();
}

}  // namespace

bool IsBottomless(const QByteArray& tag) {
    return tag.count("CHAP") + tag.count("CTOC") > MostChapters;
}

void CheckFramesAreKept(const QByteArray& tag, FrameKeeping keeping) {
    if (tag.size() < Id3v2HeadSize || tag.size() != Id3v2Size(tag)) Refuse();
    const auto reading = ReadId3v2(tag);
    if (!reading) Refuse();
    for (const Id3v2Frame& frame : reading->Frames) CheckKind(frame, ByteAt(tag, 3), keeping);
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

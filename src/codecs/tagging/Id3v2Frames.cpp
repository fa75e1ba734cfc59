#include "codecs/tagging/Id3v2Frames.h"

#include <commentsframe.h>
#include <id3v2tag.h>
#include <textidentificationframe.h>
#include <unknownframe.h>
#include <urllinkframe.h>

#include <algorithm>
#include <iterator>

namespace Sonmira {

namespace {

namespace Id3v2 = TagLib::ID3v2;

// Frames of the newest version that the one before it has no place for.
constexpr const char* NewestOnly[] = {"ASPI", "EQU2", "RVA2", "SEEK", "SIGN", "TDRL", "TDTG",
                                      "TMOO", "TPRO", "TSOA", "TSOP", "TSOT", "TSST"};

// Frames of the version before it that the newest one has no place for.
constexpr const char* OlderOnly[] = {"EQUA", "RVAD", "TRDA", "TSIZ"};

bool IsAmong(const TagLib::ByteVector& id, const auto& names) {
    return std::any_of(std::begin(names), std::end(names), [&](const char* name) { return id == name; });
}

// Those of the first version that differ in the name alone.
struct Renamed {
    const char* Old;
    const char* Name;
};
constexpr Renamed FirstNames[] = {
    {"EQU", "EQUA"}, {"RVA", "RVAD"}, {"TDA", "TDAT"}, {"TIM", "TIME"}, {"TSI", "TSIZ"}};

// The library lets a factory change how a frame begins, but not name what it is handed.
struct OpenFactory : Id3v2::FrameFactory {
    using FrameFactory::updateFrame;
};
template <class Factory, class Head>
Head HeadOf(bool (Factory::*)(Head) const);
using FrameHead = decltype(HeadOf(&OpenFactory::updateFrame));

class KeepingFactory : public OpenFactory {
    bool updateFrame(FrameHead head) const override {
        const TagLib::ByteVector id = head->frameID();
        // The library drops every frame with this mark, which is meant for those that a program does not
        // know.
        head->setTagAlterPreservation(false);
        if (head->version() == 3 && IsAmong(id, OlderOnly)) return true;
        for (const Renamed& frame : FirstNames) {
            if (head->version() > 2 || id != frame.Old) continue;
            head->setFrameID(frame.Name);
            return true;
        }
        return OpenFactory::updateFrame(head);
    }
};

// The frame that holds a property, and a description with it where it is one of several.
struct FrameOfKey {
    const char* Key;
    const char* Frame;
};
constexpr FrameOfKey Frames[] = {{"TITLE", "TIT2"},         {"ARTIST", "TPE1"},    {"ALBUM", "TALB"},
                                 {"GENRE", "TCON"},         {"COPYRIGHT", "TCOP"}, {"DATE", "TDRC"},
                                 {"TRACKNUMBER", "TRCK"},   {"COMPOSER", "TCOM"},  {"ENCODEDBY", "TENC"},
                                 {"ORIGINALARTIST", "TOPE"}};

bool Holds(const Id3v2::Frame& frame, const TagLib::String& key) {
    const auto isNamed = [&](const TagLib::String& description, const char* plain) {
        return description.upper() == key || (description.isEmpty() && key == plain);
    };
    if (const auto* text = dynamic_cast<const Id3v2::UserTextIdentificationFrame*>(&frame))
        return text->description().upper() == key;
    if (const auto* comment = dynamic_cast<const Id3v2::CommentsFrame*>(&frame))
        return isNamed(comment->description(), "COMMENT");
    if (const auto* link = dynamic_cast<const Id3v2::UserUrlLinkFrame*>(&frame))
        return isNamed(link->description(), "URL");
    const TagLib::ByteVector id = frame.frameID();
    return std::any_of(std::begin(Frames), std::end(Frames),
                       [&](const FrameOfKey& one) { return key == one.Key && id == one.Frame; });
}

constexpr const char* Years[] = {"TDRC", "TDOR"};

// Four digits, and perhaps a day and a time behind them.
bool IsFullYear(const TagLib::String& text) {
    return text.size() >= 4 &&
           std::all_of(text.begin(), text.begin() + 4, [](wchar_t c) { return c >= L'0' && c <= L'9'; }) &&
           (text.size() == 4 || text.size() == 10 || text.size() >= 16);
}

// The first frame takes the field's text, and keeps its language, its description and its further texts.
void ChangeFirst(Id3v2::Frame& frame, const TagLib::String& text) {
    if (auto* texts = dynamic_cast<Id3v2::TextIdentificationFrame*>(&frame)) {
        TagLib::StringList list = texts->fieldList();
        if (!list.isEmpty()) list.erase(list.begin());
        list.prepend(text);
        texts->setText(list);
    } else {
        frame.setText(text);
    }
}

// The library joins a day and a time with the year before them, and drops those that stand alone.
void KeepSpareDates(Id3v2::Tag& tag) {
    const auto keep = [&](const char* id, unsigned int joinedLength) {
        const Id3v2::FrameList years = tag.frameList("TDRC");
        if (!years.isEmpty() && years.front()->toString().size() >= joinedLength) return;
        const Id3v2::FrameList dropped = tag.frameList(id);
        for (Id3v2::Frame* frame : dropped) {
            tag.addFrame(new Id3v2::UnknownFrame(frame->render()));
            tag.removeFrame(frame);
        }
    };
    keep("TDAT", 10);
    keep("TIME", 16);
}

}  // namespace

void ChangeFrames(Id3v2::Tag& tag, const TagLib::PropertyMap& changes) {
    KeepSpareDates(tag);
    for (const auto& [key, texts] : changes) {
        Id3v2::FrameList frames;
        for (Id3v2::Frame* frame : tag.frameList()) {
            if (Holds(*frame, key)) frames.append(frame);
        }
        if (texts.isEmpty()) {
            for (Id3v2::Frame* frame : frames) tag.removeFrame(frame);
        } else if (frames.isEmpty()) {
            tag.addFrame(Id3v2::Frame::createTextualFrame(key, texts));
        } else {
            ChangeFirst(*frames.front(), texts.front());
        }
    }
}

Id3v2::Version VersionToWrite(const Id3v2::Tag& tag) {
    const Id3v2::FrameListMap& frames = tag.frameListMap();
    // Years that are no year become one there, or nothing.
    const bool hasOddYear = std::any_of(std::begin(Years), std::end(Years), [&](const char* id) {
        return frames.contains(id) && !frames[id].isEmpty() && !IsFullYear(frames[id].front()->toString());
    });
    const bool isOld = !tag.isEmpty() && tag.header()->majorVersion() < 4;
    const bool hasNewest = std::any_of(std::begin(NewestOnly), std::end(NewestOnly),
                                       [&](const char* id) { return frames.contains(id); });
    return isOld && !hasNewest && !hasOddYear ? Id3v2::v3 : Id3v2::v4;
}

Id3v2::FrameFactory* KeepingFrames() {
    static KeepingFactory Factory;
    return &Factory;
}

}  // namespace Sonmira

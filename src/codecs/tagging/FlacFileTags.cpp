#include "codecs/tagging/Id3v1.h"
#include "codecs/tagging/Id3v1Values.h"
#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/Id3v2Parsing.h"
#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TaggedFile.h"
#include "codecs/tagging/VorbisComments.h"
#include "platform/Failure.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

class FlacFileTags : public TaggedFile {
public:
    explicit FlacFileTags(const QByteArray& file) : Stream(file), Blocks(Stream), AtEnd(Id3v1AtEnd(Stream)) {
        const auto found = CommentBlock();
        if (found != Blocks.All.end()) Comments.emplace(Stream.Bytes(found->At, found->Size));
    }

    TagValues Read(qint16 /*kind*/) override { return ValuesNow(); }
    bool IsUpToDate(qint16 kind, const TagValues& values) override { return Changes(kind, values).isEmpty(); }
    TagEdits Edits(qint16 kind, const TagValues& values) override { return EditsOf(Changes(kind, values)); }

    RawFields Raw() override {
        RawFields fields = Id3v1Fields(AtEnd);
        fields.append({"front", {}, Stream.Bytes(0, Blocks.Start)});
        if (Comments && Comments->IsWhole()) fields += Comments->Fields();
        const auto own = CommentBlock();
        for (auto block = Blocks.All.cbegin(); block != Blocks.All.cend(); ++block) {
            if (block == own && Comments->IsWhole()) continue;
            const QByteArray bytes = Stream.Bytes(block->At, block->Size);
            if (IsOurs(*block, bytes)) {
                for (RawField field : Id3v1Fields(bytes.sliced(MarkSize))) {
                    field.Name.prepend("block ");
                    fields.append(field);
                }
            } else if (block->Kind != FlacPadding || !IsEmpty(bytes)) {
                fields.append({QByteArray::number(block->Kind), {}, bytes});
            }
        }
        return fields;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        CheckFlacBlocks(Stream);
        const TagValues now = ValuesNow();
        const TagLib::PropertyMap changes = Changes(kind, values);
        const TagValues wanted = ValuesOf(Changed(Properties(), changes));
        // Where there were none, the new ones take the place of all other tags.
        const bool haveOthersSpoken = !Comments || Comments->Properties().isEmpty();
        const TagLib::PropertyMap written = haveOthersSpoken ? Changed(Properties(), changes) : changes;
        if (!Comments) Comments.emplace();
        Comments->Change(written);
        // A conversion reads these blocks, too, which must not go on to say what was changed.
        if (!AtEnd.isEmpty()) {
            ChangeId3v1(AtEnd, now, wanted);
            Stream.Replace(Stream.length() - AtEnd.size(), AtEnd.size(), AtEnd);
        }
        WriteBlocks(now, wanted);
        Stream.CheckWrites();
        return true;
    }

private:
    static constexpr qsizetype MarkSize = FlacId3Application.size();

    QList<FlacBlock>::const_iterator CommentBlock() const {
        return std::find_if(Blocks.All.cbegin(), Blocks.All.cend(),
                            [](const FlacBlock& block) { return block.Kind == FlacComments; });
    }
    static bool IsOurs(const FlacBlock& block, const QByteArray& bytes) {
        return block.Kind == FlacApplication && bytes.size() == MarkSize + Id3v1Size &&
               bytes.startsWith(QByteArrayView(FlacId3Application.data(), MarkSize)) &&
               bytes.sliced(MarkSize).startsWith("TAG");
    }
    static bool IsEmpty(const QByteArray& bytes) {
        return std::all_of(bytes.begin(), bytes.end(), [](char c) { return c == '\0'; });
    }
    static QByteArray HeadOf(int kind, qsizetype size) {
        constexpr qsizetype Most = (1 << 24) - 1;
        if (size > Most) throw Failure(FailureNumber::Component, u"The tag would be too large"_s);
        QByteArray head(1, static_cast<char>(kind));
        for (const int shift : {16, 8, 0}) head += static_cast<char>(size >> shift);
        return head;
    }

    TagLib::PropertyMap Properties() {
        if (Comments && !Comments->Properties().isEmpty()) return Comments->Properties();
        if (const qint64 size = Id3v2Size(Stream.Bytes(0, 10)); size > 0) {
            const auto front = Id3v2Frames::Parse(Stream.Bytes(0, size));
            if (front && !front->All().isEmpty()) return front->Properties();
        }
        TagLib::PropertyMap properties;
        if (AtEnd.isEmpty()) return properties;
        return ChangesTo(properties, ReadId3v1(AtEnd), 1);
    }
    TagValues ValuesNow() { return ValuesOf(Properties()); }
    TagLib::PropertyMap Changes(qint16 kind, const TagValues& values) {
        return ChangesTo(Properties(), values, kind);
    }

    // All blocks in their order, the padding as one behind them: where there is enough of that, the sound
    // stays where it is.
    void WriteBlocks(const TagValues& now, const TagValues& wanted) {
        constexpr qsizetype NewPadding = 4096;
        constexpr qsizetype HeadSize = 4;
        const QByteArray comments = Comments->Block();
        const auto own = CommentBlock();
        QByteArray bytes;
        qsizetype last = 0;
        const auto add = [&](int kind, const QByteArray& content) {
            last = bytes.size();
            bytes += HeadOf(kind, content.size()) + content;
        };
        for (auto block = Blocks.All.cbegin(); block != Blocks.All.cend(); ++block) {
            QByteArray content = block == own ? comments : Stream.Bytes(block->At, block->Size);
            if (block->Kind == FlacPadding && IsEmpty(content)) continue;
            if (IsOurs(*block, content)) {
                QByteArray tag = content.sliced(MarkSize);
                ChangeId3v1(tag, now, wanted);
                content = content.first(MarkSize) + tag;
            }
            add(block->Kind, content);
            if (block == Blocks.All.cbegin() && own == Blocks.All.cend()) add(FlacComments, comments);
        }
        const qint64 room = Blocks.End - Blocks.Start;
        const qint64 left = room - bytes.size();
        constexpr qint64 MostPadding = 1 << 20;
        if (left != 0) {
            const bool fits = left >= HeadSize && left - HeadSize <= MostPadding;
            add(FlacPadding, QByteArray(fits ? left - HeadSize : NewPadding, '\0'));
        }
        bytes[last] = static_cast<char>(bytes[last] | 0x80);
        Stream.Replace(Blocks.Start, room, bytes);
        Blocks = FlacBlocks(Stream);
    }

    TagStream Stream;
    FlacBlocks Blocks;
    QByteArray AtEnd;  // an ID3v1 tag
    std::optional<VorbisComments> Comments;
};

}  // namespace

std::unique_ptr<TaggedFile> OpenFlacFileTags(const QByteArray& file) {
    return std::make_unique<FlacFileTags>(file);
}

}  // namespace Sonmira

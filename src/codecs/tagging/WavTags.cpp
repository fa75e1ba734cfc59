#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/Id3v2Parsing.h"
#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TaggedFile.h"
#include "codecs/tagging/WavList.h"
#include "codecs/wav/WavLayout.h"
#include "platform/Failure.h"

#include <id3v2tag.h>
#include <wavfile.h>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The library's file with its chunks open to us.
struct ChunkFile : TagLib::RIFF::WAV::File {
    using TagLib::RIFF::File::chunkCount;
    using TagLib::RIFF::File::chunkData;
    using TagLib::RIFF::File::chunkName;
    using TagLib::RIFF::File::removeChunk;
    using TagLib::RIFF::File::setChunkData;
    using TagLib::RIFF::WAV::File::File;
};

QByteArray BytesOf(const TagLib::ByteVector& bytes) {
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

bool IsList(const QByteArray& name, const QByteArray& content) {
    return name == "LIST" && content.startsWith("INFO");
}
bool IsId3v2(const QByteArray& name, const QByteArray& /*content*/ = {}) {
    return name.toLower() == "id3 ";
}

// What the chunks with tags hold, in their order.
struct TagChunks {
    QList<QByteArray> Id3v2;
    QList<QByteArray> Lists;  // with the mark "INFO" in front
};

TagChunks ChunksOf(TagStream& file) {
    TagChunks found;
    RiffChunks chunks([&](qint64 position, qsizetype count) { return file.Bytes(position, count); });
    while (const auto chunk = chunks.Next()) {
        if (IsId3v2(chunk->Name)) {
            const QByteArray tag = file.Bytes(chunk->Start, chunk->Size);
            found.Id3v2.append(tag.first(std::min<qint64>(Id3v2Size(tag), tag.size())));
        }
        if (IsList(chunk->Name, file.Bytes(chunk->Start, 4)))
            found.Lists.append(file.Bytes(chunk->Start, chunk->Size));
    }
    return found;
}

class WavTags : public LibraryFile<ChunkFile> {
public:
    explicit WavTags(const QByteArray& file) : LibraryFile(file) { ReadChunks(); }

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }

    // ID3v2 has to say it, and the list no more than that.
    bool IsUpToDate(qint16 kind, const TagValues& values) override {
        return ChangesTo(FrontProperties(), values, kind).isEmpty() &&
               ChangesTo(Properties(), values, kind).isEmpty();
    }
    TagEdits Edits(qint16 kind, const TagValues& values) override {
        return EditsOf(ChangesTo(Properties(), values, kind));
    }

    RawFields Raw() override {
        RawFields fields = Front ? Front->Fields() : RawFields();
        if (List) fields += List->Fields();
        const TagChunks chunks = ChunksOf(Stream);
        if (!Front) AddWhole(fields, chunks.Id3v2);
        if (List && !List->IsWhole()) AddWhole(fields, chunks.Lists);
        for (unsigned n = 0; n < File.chunkCount(); ++n) {
            const QByteArray name = BytesOf(File.chunkName(n));
            if (name == "data" || IsId3v2(name)) continue;
            const QByteArray content = BytesOf(File.chunkData(n));
            if (!IsList(name, content)) fields.append({"chunk " + name, {}, content});
        }
        return fields;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        CheckChunks();
        const TagLib::PropertyMap now = Properties();
        const TagLib::PropertyMap changes = ChangesTo(now, values, kind);
        const TagLib::PropertyMap wanted = Changed(now, changes);
        if (!Front) Front.emplace();
        Front->Change(WithMissing(changes, wanted, Front->Properties()));
        if (!List) List.emplace();
        List->Change(WithMissing(changes, wanted, List->Properties()));
        const QByteArray old = ContentOf(IsId3v2);
        const qint64 room = std::min<qint64>(Id3v2Size(old), old.size());
        Put("ID3 ", IsId3v2, Front->All().isEmpty() ? QByteArray() : Front->Bytes(room) + old.sliced(room));
        Put("LIST", IsList, List->IsEmpty() ? QByteArray() : List->Content());
        return Saved(true);
    }

private:
    using IsChunk = bool (*)(const QByteArray& name, const QByteArray& content);

    void ReadChunks() {
        const TagChunks chunks = ChunksOf(Stream);
        if (!chunks.Id3v2.isEmpty()) Front = Id3v2Frames::Parse(chunks.Id3v2.front());
        if (!chunks.Lists.isEmpty()) List.emplace(chunks.Lists.front());
    }
    static void AddWhole(RawFields& fields, const QList<QByteArray>& chunks) {
        for (const QByteArray& chunk : chunks) fields.append({"whole", {}, chunk});
    }

    // Of two tags or lists nobody knows which one is read, and other programs drop some frames in files of
    // this kind.
    void CheckChunks() {
        const TagChunks chunks = ChunksOf(Stream);
        const bool isOneOfEach = chunks.Id3v2.size() <= 1 && chunks.Lists.size() <= 1;
        // The library stops at a damaged chunk and would put another tag behind it.
        const bool isSeen = NumberOf(IsId3v2).has_value() != chunks.Id3v2.isEmpty() &&
                            NumberOf(IsList).has_value() != chunks.Lists.isEmpty();
        if (!isOneOfEach || !isSeen || (List && !List->IsWhole()))
            throw Failure(FailureNumber::Component, u"The file holds a tag that a save would lose"_s);
        for (const QByteArray& tag : chunks.Id3v2) {
            if (!tag.isEmpty()) CheckFramesAreKept(tag, FrameKeeping::OfTheLibraryAlone);
        }
    }

    TagLib::PropertyMap FrontProperties() {
        return Front ? Front->Properties() : File.ID3v2Tag()->properties();
    }
    // What ID3v2 says, and what only the list says.
    TagLib::PropertyMap Properties() {
        TagLib::PropertyMap properties = FrontProperties();
        if (!List) return properties;
        for (const auto& [key, texts] : List->Properties()) {
            if (!properties.contains(key)) properties.insert(key, texts);
        }
        return properties;
    }
    // Each of the two tags takes what changes, and what it does not say yet.
    static TagLib::PropertyMap WithMissing(TagLib::PropertyMap changes, const TagLib::PropertyMap& wanted,
                                           const TagLib::PropertyMap& said) {
        for (const auto& [key, texts] : wanted) {
            if (!said.contains(key)) changes.insert(key, texts);
        }
        return changes;
    }

    std::optional<unsigned> NumberOf(IsChunk isWanted) {
        for (unsigned n = 0; n < File.chunkCount(); ++n) {
            const QByteArray name = BytesOf(File.chunkName(n));
            if (name == "data") continue;
            if (isWanted(name, BytesOf(File.chunkData(n)))) return n;
        }
        return {};
    }
    QByteArray ContentOf(IsChunk isWanted) {
        const auto number = NumberOf(isWanted);
        return number ? BytesOf(File.chunkData(*number)) : QByteArray();
    }
    void Put(const char* name, IsChunk isWanted, const QByteArray& content) {
        const TagLib::ByteVector bytes(content.constData(), static_cast<unsigned>(content.size()));
        const auto number = NumberOf(isWanted);
        if (number && content.isEmpty()) {
            File.removeChunk(*number);
        } else if (number) {
            File.setChunkData(*number, bytes);
        } else if (!content.isEmpty()) {
            File.setChunkData(name, bytes, isWanted == IsList);
        }
    }

    std::optional<Id3v2Frames> Front;
    std::optional<WavList> List;
};

}  // namespace

std::unique_ptr<TaggedFile> OpenWavTags(const QByteArray& file) {
    TagStream stream(file);
    const QList<QByteArray> tags = ChunksOf(stream).Id3v2;
    if (std::any_of(tags.begin(), tags.end(), IsNestedTooDeep)) return nullptr;
    return TryOpen<WavTags>(file);
}

}  // namespace Sonmira

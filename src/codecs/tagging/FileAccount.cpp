#include "codecs/tagging/FileAccount.h"

#include "codecs/read/MediaInput.h"
#include "codecs/tagging/ApeItems.h"
#include "platform/Handles.h"
#include "platform/Paths.h"

#include <QCryptographicHash>

#include <algorithm>
#include <string_view>

extern "C" {
#include <libavcodec/packet.h>
#include <libavformat/avformat.h>
}

namespace Sonmira {

namespace {

// What FFmpeg calls the fields, in the formats that have tags, and the texts that other programs write beside
// them for the same.
constexpr std::string_view FieldKeys[] = {"title",        "artist",
                                          "author",       "album",
                                          "comment",      "description",
                                          "copyright",    "url",
                                          "contact",      "encoded_by",
                                          "encodedby",    "encoded-by",
                                          "encoder",      "composer",
                                          "genre",        "date",
                                          "year",         "track",
                                          "tracknumber",  "originalartist",
                                          "tope",         "tyer",
                                          "tdat",         "time",
                                          "tdrc",         "wm/year",
                                          "wm/track",     "wm/tracknumber",
                                          "wm/authorurl", "wm/originalartist",
                                          "wm/genre",     "wm/albumtitle",
                                          "wm/composer",  "wm/encodedby",
                                          "icop",         "itch"};

bool IsField(const char* key) {
    const QByteArray lower = QByteArray(key).toLower();
    return std::find(std::begin(FieldKeys), std::end(FieldKeys), std::string_view(lower)) !=
           std::end(FieldKeys);
}

void AddTexts(std::multiset<QByteArray>& others, const AVDictionary* texts) {
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(texts, "", entry, AV_DICT_IGNORE_SUFFIX)) != nullptr) {
        if (IsField(entry->key)) continue;
        // A save turns texts of older programs into UTF-8.
        const QByteArray value(entry->value);
        others.insert(HoldsRawBytes(FromNarrow(value)) ? QString::fromLatin1(value).toUtf8() : value);
    }
}

QByteArray SumOf(const AVPacket& packet) {
    return QCryptographicHash::hash({packet.data, packet.size}, QCryptographicHash::Md5);
}

void AddOthers(std::multiset<QByteArray>& others, const AVFormatContext& container) {
    const std::string_view format = container.iformat->name;
    // Where frames of ID3v2 count their sizes in an odd way, what this library makes of them depends on what
    // follows; their bytes are accounted for as parts.
    if (format == "mp3" || format == "aac") return;
    // Of a WAV with both kinds of tags only the list is told.
    if (format != "wav") AddTexts(others, container.metadata);
    for (unsigned i = 0; i < container.nb_streams; ++i) {
        const AVStream& stream = *container.streams[i];
        AddTexts(others, stream.metadata);
        if (stream.attached_pic.size > 0) others.insert(SumOf(stream.attached_pic));
    }
    for (unsigned i = 0; i < container.nb_chapters; ++i) {
        others.insert(QByteArray::number(qint64{container.chapters[i]->start}));
        AddTexts(others, container.chapters[i]->metadata);
    }
}

QByteArray SumOfBytes(TagStream& file, qint64 end) {
    constexpr qint64 Piece = 1 << 20;
    QCryptographicHash sum(QCryptographicHash::Md5);
    for (qint64 at = 0; at < end; at += Piece) sum.addData(file.Bytes(at, std::min(Piece, end - at)));
    return sum.result();
}

QByteArray SumOfSound(MediaInput& input, const QByteArray& file) {
    const std::string_view format = input.Container().iformat->name;
    if (format == "ape" || format.starts_with("mpc")) {
        // Their demuxers take tags behind the sound for a part of it; before those nothing ever changes.
        TagStream stream(file);
        return SumOfBytes(stream, stream.length() - TagsAtEnd(stream));
    }
    const CHandleByAddress<AVPacket, av_packet_free> packet(av_packet_alloc());
    if (!packet) throw MediaFailure(AVERROR(ENOMEM));
    QCryptographicHash sum(QCryptographicHash::Md5);
    QByteArray last;
    while (input.Read(*packet)) {
        // Pictures of the tag come as packets, too.
        const AVStream& stream = *input.Container().streams[packet->stream_index];
        if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
            av_packet_unref(packet.get());
            continue;
        }
        sum.addData(last);
        last = QByteArray(static_cast<const char*>(static_cast<const void*>(packet->data)), packet->size);
        av_packet_unref(packet.get());
    }
    // An old tag behind the sound, of which some demuxers do not know.
    constexpr qsizetype Id3v1Size = 128;
    if (last.last(std::min(Id3v1Size, last.size())).startsWith("TAG")) last.chop(Id3v1Size);
    sum.addData(last);
    return sum.result();
}

}  // namespace

FileAccount AccountOf(const QByteArray& file, RawFields parts) {
    FileAccount account;
    account.Parts = std::move(parts);
    try {
        MediaInput input(std::make_shared<InputFile>(FromNative(file)));
        AddOthers(account.Others, input.Container());
        account.Sound = SumOfSound(input, file);
    } catch (const Failure& failure) {
        // What no demuxer knows tells nothing, neither before a save nor after it.
        if (failure.Number != FailureNumber::Component) throw;
        account.Others.clear();
    }
    return account;
}

bool KeepsAll(const FileAccount& before, const FileAccount& after, const TagEdits& edits) {
    return (before.Sound.isEmpty() || before.Sound == after.Sound) &&
           std::includes(after.Others.begin(), after.Others.end(), before.Others.begin(),
                         before.Others.end()) &&
           KeepsFields(before.Parts, after.Parts, edits);
}

}  // namespace Sonmira

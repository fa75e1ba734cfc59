#include "codecs/tagging/VorbisComments.h"

#include "codecs/tagging/Id3v2Parsing.h"
#include "codecs/tagging/TagProperties.h"
#include "platform/Failure.h"

#include <QString>
#include <QtEndian>

#include <algorithm>
#include <optional>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QByteArray KeyOf(const QByteArray& comment) {
    const qsizetype sign = comment.indexOf('=');
    return sign <= 0 ? QByteArray() : comment.first(sign).toUpper();
}

// A piece of `block` with its size in front; `at` goes behind it.
std::optional<QByteArray> SizedAt(const QByteArray& block, qint64& at) {
    if (at + 4 > block.size()) return {};
    const qint64 size = qFromLittleEndian<quint32>(block.constData() + at);
    if (size > block.size() - at - 4) return {};
    const QByteArray piece = block.sliced(at + 4, size);
    at += 4 + size;
    return piece;
}

QByteArray Number(qsizetype number) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(static_cast<quint32>(number), bytes.data());
    return bytes;
}

}  // namespace

VorbisComments::VorbisComments(const QByteArray& block) : WasWhole(false) {
    qint64 at = 0;
    const auto vendor = SizedAt(block, at);
    if (!vendor || at + 4 > block.size()) return;
    Vendor = *vendor;
    auto left = qFromLittleEndian<quint32>(block.constData() + at);
    for (at += 4; left > 0; --left) {
        const auto comment = SizedAt(block, at);
        if (!comment) return;
        Comments.append(*comment);
    }
    Rest = block.sliced(at);
    WasWhole = true;
}

TagLib::PropertyMap VorbisComments::Properties() const {
    TagLib::PropertyMap properties;
    for (const QByteArray& comment : Comments) {
        const QByteArray key = KeyOf(comment);
        if (!key.isEmpty()) properties[key.constData()].append(FromFileText(comment.sliced(key.size() + 1)));
    }
    return properties;
}

void VorbisComments::Change(const TagLib::PropertyMap& changes) {
    for (const auto& [key, texts] : changes) {
        const QByteArray name = ToFileText(key);
        const auto isWanted = [&](const QByteArray& comment) { return KeyOf(comment) == name; };
        for (const QByteArray& comment : Comments) {
            if (isWanted(comment)) CheckIsText(comment);
        }
        if (texts.isEmpty()) {
            ChangeFirst(Comments, isWanted, nullptr);
            continue;
        }
        const QByteArray fresh = name + '=' + ToFileText(texts.front());
        const bool isThere = std::any_of(Comments.begin(), Comments.end(), isWanted);
        // What follows the last comment may be a part of it whose size is damaged.
        const bool mayFollow =
            std::all_of(Rest.begin(), Rest.end(), [](char c) { return c == '\0' || c == '\1'; });
        if (isThere || mayFollow) {
            ChangeFirst(Comments, isWanted, &fresh);
        } else {
            Comments.prepend(fresh);
        }
    }
}

QByteArray VorbisComments::Block() const {
    QByteArray block = Number(Vendor.size()) + Vendor + Number(Comments.size());
    for (const QByteArray& comment : Comments) block += Number(comment.size()) + comment;
    return block + Rest;
}

RawFields VorbisComments::Fields() const {
    RawFields fields{{"vendor", {}, Vendor}, {"rest", {}, Rest}};
    for (const QByteArray& comment : Comments) fields.append({KeyOf(comment), KeyOf(comment), comment});
    return fields;
}

namespace {

constexpr qsizetype HeadSize = 4;
constexpr int MostBlocks = 100'000;

}  // namespace

FlacBlocks::FlacBlocks(TagStream& file) : Start(Id3v2Size(file.Bytes(0, 10)) + 4), End(Start) {
    for (bool isLast = false; !isLast;) {
        const QByteArray head = file.Bytes(End, HeadSize);
        if (head.size() < HeadSize || All.size() > MostBlocks) return;
        isLast = (head[0] & 0x80) != 0;
        qint64 size = 0;
        for (int n = 1; n < HeadSize; ++n) size = size << 8 | static_cast<unsigned char>(head[n]);
        if (size > file.length() - End - HeadSize) return;
        All.append({head[0] & 0x7F, End + HeadSize, size});
        End += HeadSize + size;
    }
    constexpr qint64 StreamSize = 34;
    const QByteArray next = file.Bytes(End, 2);
    const bool isSound = next.size() == 2 && next[0] == '\xFF' && (next[1] & 0xFC) == 0xF8;
    Fit = (isSound || End == file.length()) && All[0].Kind == 0 && All[0].Size >= StreamSize;
}

void CheckFlacBlocks(TagStream& file) {
    const FlacBlocks blocks(file);
    bool fit = blocks.Fit;
    for (const FlacBlock& block : blocks.All) {
        if (fit && block.Kind == FlacComments)
            fit = VorbisComments(file.Bytes(block.At, block.Size)).IsWhole();
    }
    if (!fit) {
        throw Failure(FailureNumber::Component,
                      u"The parts of the file are not of the size that it says, and a save would hurt it"_s);
    }
}

}  // namespace Sonmira

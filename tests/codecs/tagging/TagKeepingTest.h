#pragma once

#include "TagFiles.h"
#include "codecs/AudioInformation.h"

#include <QtEndian>

namespace Sonmira {

// Tests of what a save keeps: tags of given bytes, and a change of theirs.
class TagKeeping : public TagFileTest {
protected:
    static AudioInformation Load(const QString& path, qint16 kind = 2) {
        AudioInformation tag;
        tag.SetTagKind(kind);
        tag.LoadTag(path);
        return tag;
    }
    template <class Change>
    static void Edit(const QString& path, const Change& change, qint16 kind = 2) {
        AudioInformation tag = Load(path, kind);
        change(tag);
        tag.SaveTag(path);
    }

    static QByteArray BigEndian(quint32 number) {
        QByteArray bytes(4, '\0');
        qToBigEndian(number, bytes.data());
        return bytes;
    }
    static QByteArray LittleEndian(quint32 number) {
        QByteArray bytes(4, '\0');
        qToLittleEndian(number, bytes.data());
        return bytes;
    }
    // A frame of ID3v2.3.
    static QByteArray Frame(const QByteArray& id, const QByteArray& content) {
        return id + BigEndian(static_cast<quint32>(content.size())) + QByteArray(2, '\0') + content;
    }
    // An MP3 with these frames in a tag of version 2.3.
    QString MakeOldTag(const QByteArray& frames) {
        Make("plain.mp3", {"-map_metadata", "-1", "-write_id3v2", "0", "-id3v2_version", "0"});
        QByteArray head("ID3\3\0\0", 6);
        for (int n = 3; n >= 0; --n) head += static_cast<char>(frames.size() >> (7 * n) & 0x7F);
        return Folder.MakeFile("old.mp3", head + frames + Content("plain.mp3"));
    }
    static QByteArray Id3v1(const QByteArray& title, const QByteArray& artist, char genre) {
        const auto field = [](const QByteArray& text, int length) {
            return text.leftJustified(length, '\0', true);
        };
        return "TAG" + field(title, 30) + field(artist, 30) + field({}, 30) + field({}, 4) + field({}, 30) +
               genre;
    }
    // An APEv2 tag of one item.
    static QByteArray ApeTag(const QByteArray& key, const QByteArray& value) {
        const QByteArray item =
            LittleEndian(static_cast<quint32>(value.size())) + LittleEndian(0) + key + '\0' + value;
        const auto block = [&](quint32 flags) {
            return "APETAGEX" + LittleEndian(2000) + LittleEndian(static_cast<quint32>(item.size()) + 32) +
                   LittleEndian(1) + LittleEndian(flags) + QByteArray(8, '\0');
        };
        return block(0xA0000000U) + item + block(0x80000000U);
    }
    void Append(const QByteArray& name, const QByteArray& bytes) const {
        Folder.MakeFile(name, Content(name) + bytes);
    }
    // The list of a WAV file that knows nothing but that.
    static QByteArray InfoList(const QList<std::pair<QByteArray, QByteArray>>& texts) {
        QByteArray list = "INFO";
        for (const auto& [id, text] : texts) {
            QByteArray content = text + '\0';
            list += id + LittleEndian(static_cast<quint32>(content.size())) + content;
            if (content.size() % 2 != 0) list += '\0';
        }
        return "LIST" + LittleEndian(static_cast<quint32>(list.size())) + list;
    }
    QString MakeListedWav(const QList<std::pair<QByteArray, QByteArray>>& texts) {
        Make("a.wav");
        QByteArray wav = Content("a.wav") + InfoList(texts);
        qToLittleEndian(static_cast<quint32>(wav.size()) - 8, wav.data() + 4);
        return Folder.MakeFile("listed.wav", wav);
    }
};

}  // namespace Sonmira

#include "OtherEyes.h"

#include <QCryptographicHash>

#include <algorithm>
#include <memory>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

namespace Sonmira {

namespace {

// What a save of a title may change.
bool IsEdited(const QByteArray& key) {
    for (const char* edited :
         {"title", "date", "year", "track", "tracknumber", "tyer", "tdrc", "tory", "tdor"}) {
        if (key == edited || key == QByteArray("wm/") + edited) return true;
    }
    return false;
}

void AddTexts(std::multiset<QByteArray>& texts, const AVDictionary* dictionary) {
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(dictionary, "", entry, AV_DICT_IGNORE_SUFFIX)) != nullptr) {
        const QByteArray key = QByteArray(entry->key).toLower();
        if (!IsEdited(key)) texts.insert(key + '=' + QByteArray(entry->value));
    }
}

QByteArray SumOf(const AVPacket& packet) {
    return QCryptographicHash::hash({packet.data, packet.size}, QCryptographicHash::Md5);
}

}  // namespace

Account AccountBy(const QByteArray& file) {
    av_log_set_level(AV_LOG_QUIET);
    Account account;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    av_dict_set(&options, "format_whitelist", "wav,mp3,ogg,asf,aac,mov,ape,flac,mpc,mpc8", 0);
    AVFormatContext* opened = nullptr;
    const int code = avformat_open_input(&opened, ("file:" + file).constData(), nullptr, &options);
    av_dict_free(&options);
    if (code < 0) return account;
    const auto close = [](AVFormatContext* context) { avformat_close_input(&context); };
    const std::unique_ptr<AVFormatContext, decltype(close)> context(opened, close);
    if (avformat_find_stream_info(context.get(), nullptr) < 0) return account;
    account.Format = context->iformat->name;

    AddTexts(account.Texts, context->metadata);
    for (unsigned n = 0; n < context->nb_streams; ++n) {
        AddTexts(account.Texts, context->streams[n]->metadata);
        if (context->streams[n]->attached_pic.size > 0)
            account.Pictures.insert(SumOf(context->streams[n]->attached_pic));
    }
    for (unsigned n = 0; n < context->nb_chapters; ++n)
        AddTexts(account.Texts, context->chapters[n]->metadata);

    // These take the tags at the end for a part of the sound.
    if (account.Format == "ape" || account.Format.startsWith("mpc") || account.Format == "mp3" ||
        account.Format == "aac")
        return account;
    QCryptographicHash sum(QCryptographicHash::Md5);
    bool hasSound = false;
    AVPacket* packet = av_packet_alloc();
    for (int left = 10000; left > 0 && av_read_frame(context.get(), packet) >= 0; --left) {
        if (context->streams[packet->stream_index]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            sum.addData({packet->data, packet->size});
            hasSound = true;
        }
        av_packet_unref(packet);
    }
    av_packet_free(&packet);
    if (hasSound) account.Sound = sum.result();
    return account;
}

QByteArray WhatIsLost(const Account& before, const Account& after) {
    if (before.Format.isEmpty()) return {};
    if (before.Format != after.Format) return "The file has become one of another format";
    if (!before.Sound.isEmpty() && before.Sound != after.Sound) return "A save has changed the sound";
    if (!std::includes(after.Pictures.begin(), after.Pictures.end(), before.Pictures.begin(),
                       before.Pictures.end()))
        return "A save has lost a picture";
    for (const QByteArray& text : before.Texts) {
        if (!after.Texts.contains(text)) return "A save has lost a text: " + text;
    }
    return {};
}

}  // namespace Sonmira

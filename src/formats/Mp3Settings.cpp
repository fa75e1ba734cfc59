#include "formats/Mp3Settings.h"

#include "formats/FormatCaller.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"

#include <variant>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

using Property = std::variant<qint16 Mp3Parameters::*, qint32 Mp3Parameters::*, bool Mp3Parameters::*>;

// By their keys, which count from 1.
constexpr Property Properties[] = {
    &Mp3Parameters::AbrBitrate,       &Mp3Parameters::AthControl,        &Mp3Parameters::Bitrate,
    &Mp3Parameters::BitReservoir,     &Mp3Parameters::BlockTypesDiffer,  &Mp3Parameters::ChannelCount,
    &Mp3Parameters::Emphasis,         &Mp3Parameters::EncoderQuality,    &Mp3Parameters::ErrorProtection,
    &Mp3Parameters::SampleRate,       &Mp3Parameters::HighpassFrequency, &Mp3Parameters::HighpassWidth,
    &Mp3Parameters::LowpassFrequency, &Mp3Parameters::LowpassWidth,      &Mp3Parameters::ShortBlocks,
    &Mp3Parameters::StrictIso,        &Mp3Parameters::EnforceMinBitrate, &Mp3Parameters::StereoMode,
    &Mp3Parameters::MaxVbrBitrate,    &Mp3Parameters::VbrMethod,         &Mp3Parameters::VbrQuality,
    &Mp3Parameters::WriteVbrHeader};

void Take(qint16& value, const QString& text) {
    value = ToInteger16(text);
}
void Take(qint32& value, const QString& text) {
    value = ToInteger32(text);
}
void Take(bool& value, const QString& text) {
    value = ToFlag(text);
}

QString TextOf(bool value) {
    return FlagText(value);
}
QString TextOf(qint32 value) {
    return PlainNumber(value);
}

// Calls `visit` with each key and its property.
template <class Visit>
void ForEachKey(Visit&& visit) {
    int key = 0;
    for (const Property& property : Properties) {
        ++key;
        std::visit([&](auto member) { visit(PlainNumber(key), member); }, property);
    }
}

}  // namespace

bool ApplySavedMp3Format(const FormatCaller& caller, std::shared_ptr<Mp3Parameters>& parameters) {
    parameters = std::make_shared<Mp3Parameters>();
    ForEachKey([&](const QString& key, auto member) {
        PassOver([&] { Take((*parameters).*member, ReadIniValue(SettingsFile, u"Mp3"_s, key)); });
    });
    bool taken = false;
    PassOver([&] { taken = caller.FileWenc.SetFormatMP3Ex(parameters); });
    return taken;
}

void SaveMp3Format(const Mp3Parameters& parameters) {
    ForEachKey([&](const QString& key, auto member) {
        WriteIniValue(SettingsFile, u"Mp3"_s, key, TextOf(parameters.*member));
    });
}

}  // namespace Sonmira

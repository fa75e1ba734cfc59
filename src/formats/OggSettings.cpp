#include "formats/OggSettings.h"

#include "formats/FormatCaller.h"
#include "platform/Values.h"
#include "shell/Settings.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// More than the window starts with.
constexpr int QualityWithoutChoice = 400;

QString SavedKey(const QString& key) {
    return ReadIniValue(SettingsFile, u"OGG"_s, key);
}

void SetByQuality(const FormatCaller& caller, const OggChoice& choice) {
    caller.FileWenc.SetFormatOggVorbis(choice.Frequency, choice.Channels, {}, {}, {}, choice.Quality);
}

}  // namespace

void SaveOggChoice(const OggChoice& choice) {
    const int values[] = {choice.UsesQuality ? 1 : 0,
                          choice.UsesVbr ? 1 : 0,
                          choice.Frequency,
                          choice.Channels,
                          choice.Quality,
                          choice.Nominal,
                          choice.Minimum,
                          choice.Maximum};
    int key = 0;
    for (const int value : values) {
        WriteIniValue(SettingsFile, u"OGG"_s, PlainNumber(++key), PlainNumber(value));
    }
}

bool SetOggFormat(const FormatCaller& caller, const OggChoice& choice) {
    if (choice.UsesQuality) {
        SetByQuality(caller, choice);
        return true;
    }
    const int minimum = choice.UsesVbr ? choice.Minimum : 0;
    const int maximum = choice.UsesVbr ? choice.Maximum : 0;
    AudioFile& encoder = caller.FileWenc;
    if (!encoder.IsFormatOggVorbisAvailable(choice.Frequency, choice.Channels, choice.Nominal, minimum,
                                            maximum)) {
        return false;
    }
    if (choice.UsesVbr) {
        encoder.SetFormatOggVorbis(choice.Frequency, choice.Channels, choice.Nominal, minimum, maximum);
    } else {
        encoder.SetFormatOggVorbis(choice.Frequency, choice.Channels, choice.Nominal);
    }
    return true;
}

void ApplySavedOggFormat(const FormatCaller& caller) {
    const QString usesQuality = SavedKey(u"1"_s);
    if (usesQuality.isEmpty()) {
        caller.FileWenc.SetFormatOggVorbis(44100, 2, {}, {}, {}, QualityWithoutChoice);
        return;
    }
    // Where a damaged key fails below, no other format's sound must go out under the name of this one.
    caller.FileWenc.SetFormatOggVorbis(0, 0);
    OggChoice saved;
    saved.UsesQuality = LeadingNumber(usesQuality) == 1;
    saved.UsesVbr = LeadingNumber(SavedKey(u"2"_s)) == 1;
    saved.Frequency = ToInteger32(SavedKey(u"3"_s));
    saved.Channels = ToInteger32(SavedKey(u"4"_s));
    saved.Quality = ToInteger32(SavedKey(u"5"_s));
    saved.Nominal = ToInteger32(SavedKey(u"6"_s));
    saved.Minimum = ToInteger32(SavedKey(u"7"_s));
    saved.Maximum = ToInteger32(SavedKey(u"8"_s));
    if (!SetOggFormat(caller, saved)) SetByQuality(caller, saved);
}

}  // namespace Sonmira

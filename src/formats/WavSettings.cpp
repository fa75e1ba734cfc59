#include "formats/WavSettings.h"

#include "formats/FormatCaller.h"
#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

template <class Table>
int ValueAt(const Table& table, int place) {
    const bool isThere = place >= 0 && place < static_cast<int>(table.size());
    return isThere ? table[static_cast<std::size_t>(place)] : 0;
}

void TakeSaved(int& place, const QString& key) {
    PassOver([&] { place = ToInteger32(ReadIniValue(SettingsFile, u"Wav"_s, key)); });
}

}  // namespace

void SaveWavChoice(const WavChoice& choice) {
    const auto save = [](const QString& key, int place) {
        WriteIniValue(SettingsFile, u"Wav"_s, key, PlainNumber(place));
    };
    save(u"Frequency"_s, choice.Frequency);
    save(u"Channel"_s, choice.Channel);
    save(u"bits"_s, choice.Bits);
}

void SetWavFormat(const FormatCaller& caller, const WavChoice& choice) {
    caller.FileWenc.SetFormatPCM(ValueAt(WavFrequencies, choice.Frequency),
                                 ValueAt(WavChannels, choice.Channel), ValueAt(WavBits, choice.Bits));
    caller.ShowFormat();
}

WavChoice SavedWavChoice() {
    WavChoice choice;
    TakeSaved(choice.Frequency, u"Frequency"_s);
    TakeSaved(choice.Channel, u"Channel"_s);
    TakeSaved(choice.Bits, u"bits"_s);
    return choice;
}

}  // namespace Sonmira

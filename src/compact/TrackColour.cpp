#include "compact/TrackColour.h"

#include "platform/Failure.h"
#include "platform/Values.h"
#include "shell/Settings.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

const QString Section = u"Track"_s;
const QString Key = u"COLOR"_s;

}  // namespace

QColor ColourOf(qint32 number) {
    return {number & 0xFF, number >> 8 & 0xFF, number >> 16 & 0xFF};
}

qint32 ColourNumber(quint32 rgb) {
    return static_cast<qint32>((rgb & 0xFF) << 16 | (rgb & 0xFF00) | (rgb >> 16 & 0xFF));
}

qint32 SavedTrackColour() {
    const QString saved = ReadIniValue(SettingsFile, Section, Key);
    qint32 number = DefaultTrackColour;
    if (saved.isEmpty()) {
        SaveTrackColour(number);
    } else {
        PassOver([&] { number = ToInteger32(saved); });
    }
    return number;
}

void SaveTrackColour(qint32 number) {
    WriteIniValue(SettingsFile, Section, Key, NumberText(number));
}

}  // namespace Sonmira

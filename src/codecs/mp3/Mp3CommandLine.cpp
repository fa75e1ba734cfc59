// The command line of the MP3 encoder's own program, as far as it concerns how sound is encoded.
#include "codecs/mp3/Mp3Parameters.h"

#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <optional>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr int LeastBitrate = 8;
constexpr int MostBitrate = 320;

class Reader {
public:
    Reader(Mp3Parameters& parameters, const QStringList& words) : Set(parameters), Words(words) {}

    void Read() {
        while (!Words.isEmpty()) {
            const QString word = Words.takeFirst();
            if (word.startsWith(u"--")) {
                ReadLong(word.mid(2));
            } else if (word.size() > 1 && word.startsWith(u'-')) {
                ReadShort(word.mid(1));
            }
        }
    }

private:
    // The word behind an option where it can be its value, which is then used up.
    QString Value() {
        const bool isValue = !Words.isEmpty() && !Words.first().startsWith(u'-');
        return isValue ? Words.takeFirst() : QString();
    }

    // The next word, used up, where it is a number; "nan" is none.
    std::optional<double> NumberWord() {
        bool isNumber = false;
        const double value = Words.isEmpty() ? 0 : Words.first().toDouble(&isNumber);
        if (!isNumber || std::isnan(value)) return {};
        Words.removeFirst();
        return value;
    }

    // A number as the value, brought into its range; `take` is not called where there is none.
    template <class Take>
    void Number(int least, int most, Take&& take) {
        const std::optional<double> value = NumberWord();
        if (value) take(static_cast<qint16>(std::clamp<double>(*value, least, most)));
    }

    // A frequency, in kHz where it is small enough.
    template <class Take>
    void Frequency(Take&& take) {
        constexpr double SmallestInHz = 50;
        constexpr double Most = 48000;
        const std::optional<double> value = NumberWord();
        if (!value) return;
        const double hertz = *value < SmallestInHz ? *value * 1000 : *value;
        // The program means no filter by a negative number, and its own choice by 0.
        if (hertz == 0) {
            take(-1);
        } else {
            take(static_cast<qint32>(std::clamp(hertz, 0.0, Most)));
        }
    }

    // Letters may stand together; the value of one may follow it without a blank.
    void ReadShort(QString letters) {
        while (!letters.isEmpty()) {
            const char16_t letter = letters[0].unicode();
            letters.remove(0, 1);
            if (QStringView(u"bBVqme").contains(letter)) {
                if (!letters.isEmpty()) Words.prepend(letters);
                TakeValueOf(letter);
                return;
            }
            TakeLetter(letter);
        }
    }

    void TakeValueOf(char16_t letter) {
        switch (letter) {
            case u'b':
                Number(LeastBitrate, MostBitrate, [&](qint16 value) { Set.Bitrate = value; });
                break;
            case u'B':
                Number(LeastBitrate, MostBitrate, [&](qint16 value) { Set.MaxVbrBitrate = value; });
                break;
            case u'V':
                Number(0, 9, [&](qint16 value) {
                    Set.VbrQuality = value;
                    if (Set.VbrMethod == Mp3Parameters::None) Set.VbrMethod = Mp3Parameters::Default;
                });
                break;
            case u'q':
                Number(0, 9, [&](qint16 value) { Set.EncoderQuality = value; });
                break;
            case u'm':
                TakeMode(Value());
                break;
            case u'e':
                TakeEmphasis(Value());
                break;
            default:
                break;
        }
    }

    void TakeLetter(char16_t letter) {
        switch (letter) {
            case u'a':
                Set.ChannelCount = 1;
                break;
            case u'f':
                Set.EncoderQuality = 7;
                break;
            case u'h':
                Set.EncoderQuality = 2;
                break;
            case u'v':
                Set.VbrMethod = Mp3Parameters::Default;
                break;
            case u'F':
                Set.EnforceMinBitrate = true;
                break;
            case u'p':
                Set.ErrorProtection = true;
                break;
            case u't':
                Set.WriteVbrHeader = false;
                break;
            case u'T':
                Set.WriteVbrHeader = true;
                break;
            default:
                break;
        }
    }

    void TakeMode(QStringView mode) {
        if (mode == u"m") Set.ChannelCount = 1;
        static const std::map<QString, qint32> Modes = {{u"s"_s, 1}, {u"j"_s, 2}, {u"f"_s, 3}, {u"d"_s, 4}};
        const auto found = Modes.find(mode.toString());
        if (found == Modes.end()) return;
        Set.ChannelCount = 2;
        Set.StereoMode = found->second;
    }

    void TakeEmphasis(QStringView emphasis) {
        if (emphasis == u"n") Set.Emphasis = 0;
        if (emphasis == u"5") Set.Emphasis = 1;
        if (emphasis == u"c") Set.Emphasis = 2;
    }

    void ReadLong(const QString& option) {
        using Parameters = Mp3Parameters;
        const std::map<QString, std::function<void()>> options = {
            {u"abr"_s,
             [&] {
                 Number(LeastBitrate, MostBitrate, [&](qint16 value) {
                     Set.VbrMethod = Parameters::Abr;
                     Set.AbrBitrate = value;
                 });
             }},
            {u"cbr"_s, [&] { Set.VbrMethod = Parameters::None; }},
            {u"vbr-old"_s, [&] { Set.VbrMethod = Parameters::Old; }},
            {u"vbr-new"_s, [&] { Set.VbrMethod = Parameters::New; }},
            {u"vbr-mtrh"_s, [&] { Set.VbrMethod = Parameters::Mtrh; }},
            {u"r3mix"_s, [&] { Set.SetPreset(11); }},
            {u"preset"_s, [&] { TakePreset(); }},
            {u"alt-preset"_s, [&] { TakePreset(); }},
            {u"resample"_s,
             [&] { Frequency([&](qint32 hertz) { Set.SampleRate = NearestMp3SampleRate(hertz); }); }},
            {u"lowpass"_s, [&] { Frequency([&](qint32 hertz) { Set.LowpassFrequency = hertz; }); }},
            {u"highpass"_s, [&] { Frequency([&](qint32 hertz) { Set.HighpassFrequency = hertz; }); }},
            {u"lowpass-width"_s,
             [&] { Frequency([&](qint32 hertz) { Set.LowpassWidth = std::max(hertz, 0); }); }},
            {u"highpass-width"_s,
             [&] { Frequency([&](qint32 hertz) { Set.HighpassWidth = std::max(hertz, 0); }); }},
            {u"nores"_s, [&] { Set.BitReservoir = false; }},
            {u"strictly-enforce-ISO"_s, [&] { Set.StrictIso = true; }},
            {u"noshort"_s, [&] { Set.ShortBlocks = false; }},
            {u"short"_s, [&] { Set.ShortBlocks = true; }},
            {u"athonly"_s, [&] { Set.AthControl = 1; }},
            {u"noath"_s, [&] { Set.AthControl = 2; }},
            {u"athshort"_s, [&] { Set.AthControl = 3; }},
        };
        const auto found = options.find(option);
        if (found != options.end()) found->second();
    }

    // A name with "fast" or "cbr" before it, or an average bit rate.
    void TakePreset() {
        bool isFast = false;
        bool isConstant = false;
        while (!Words.isEmpty() && (Words.first() == u"fast" || Words.first() == u"cbr")) {
            (Words.first() == u"fast" ? isFast : isConstant) = true;
            Words.removeFirst();
        }
        const QString name = Value();
        bool isNumber = false;
        const int kilobits = std::clamp(name.toInt(&isNumber), LeastBitrate, MostBitrate);
        if (isNumber) {
            Set.VbrMethod = isConstant ? Mp3Parameters::None : Mp3Parameters::Abr;
            Set.AbrBitrate = static_cast<qint16>(kilobits);
            Set.Bitrate = kilobits;
            return;
        }
        static const std::map<QString, qint16> Presets = {
            {u"phone"_s, 1}, {u"sw"_s, 2}, {u"lw"_s, 2},      {u"mw-eu"_s, 2}, {u"am"_s, 3},
            {u"mw-us"_s, 3}, {u"fm"_s, 4}, {u"voice"_s, 5},   {u"radio"_s, 6}, {u"tape"_s, 7},
            {u"hifi"_s, 8},  {u"cd"_s, 9}, {u"studio"_s, 10}, {u"r3mix"_s, 11}};
        if (const auto found = Presets.find(name); found != Presets.end()) Set.SetPreset(found->second);
        if (name == u"medium") {
            Set.SetAltPreset(isFast ? 1 : 2);
            Set.VbrQuality = 4;
            Set.LowpassFrequency = 17500;
        }
        if (name == u"standard") Set.SetAltPreset(isFast ? 1 : 2);
        if (name == u"extreme") Set.SetAltPreset(isFast ? 3 : 4);
        if (name == u"insane") Set.SetAltPreset(5);
    }

    Mp3Parameters& Set;
    QStringList Words;
};

}  // namespace

void Mp3Parameters::SetCommandLine(const QString& line) {
    *this = {};
    Reader(*this, QProcess::splitCommand(line.simplified())).Read();
}

}  // namespace Sonmira

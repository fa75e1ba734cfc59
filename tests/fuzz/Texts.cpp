// Whatever bytes come as a text: a settings file keeps every line but the one that is set, a language file
// loads, a path and a text come back as they were, and a command line gives a setting that the encoder takes.
#include "FuzzTarget.h"
#include "codecs/mp3/Mp3Parameters.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"
#include "shell/LanguageFiles.h"
#include "support/TestFolder.h"

#include <QUrl>

using namespace Sonmira;
using namespace Qt::StringLiterals;

namespace {

// What a section, key and value of the settings may be is taken from the input as well.
void CheckSettings(const QByteArray& input) {
    if (ProfileText(input).Content() != input) Found("A settings file that was only read has changed");
    QString section = u"Options"_s;
    QString key = u"Folder"_s;
    if (const qsizetype line = input.indexOf('\n'); line > 0) {
        section = FromNarrow(input.first(line / 2));
        key = FromNarrow(input.first(line).sliced(line / 2));
    }
    const QByteArray value = input.last(std::min<qsizetype>(input.size(), 20));
    const QByteArray shown = QByteArray(value).replace('\r', ' ').replace('\n', ' ');
    ProfileText settings(input);
    const auto before = settings.Content();
    if (!settings.SetValue(section, key, value)) {
        if (settings.Content() != before) Found("A refused setting has changed the file");
        return;
    }
    const auto isKept = [&](const ProfileText& file) {
        const auto found = file.Value(section, key);
        // Only blanks may differ.
        return found && shown.contains(*found) &&
               QByteArray(*found).replace(' ', "").replace('\t', "") ==
                   QByteArray(shown).replace(' ', "").replace('\t', "");
    };
    if (!isKept(settings)) Found("A setting is not what was set");
    if (!isKept(ProfileText(settings.Content()))) Found("A setting is gone when the file is read again");
    ProfileText again(settings.Content());
    again.SetValue(section, key, value);
    if (again.Content() != settings.Content()) Found("A file grows by setting what it says");
}

void CheckLanguage(const QString& path) {
    LoadLanguageFile(path);
    if (LanguageLineOr(3, u"standard"_s).isEmpty()) Found("A line without a text");
    if (LanguageLineOr(1 << 20, u"standard"_s) != u"standard") Found("A line that is not there");
}

void CheckPaths(const QByteArray& input) {
    if (ToNarrow(FromNarrow(input)) != input) Found("A text has changed on the way");
    if (input.contains('\0')) return;
    const QByteArray native = '/' + input;
    const QString path = FromNative(native);
    if (ToNative(path) != native) Found("A path has changed on the way");
    if (path.contains(u'/')) Found("An inner path with a separator of the outer ones");
    ToNative(PathFromShown(ShownPath(path)));
    ShownName(path);
    const QByteArray encoded = "file://" + native.toPercentEncoding("/");
    QByteArray trimmed = native;
    while (trimmed.size() > 1 && trimmed.endsWith('/')) trimmed.chop(1);
    if (ToNative(PathFromUrl(QUrl::fromEncoded(encoded))) != trimmed && !native.startsWith("//"))
        Found("An address has changed on the way");
    PathFromUrl(QUrl::fromEncoded(input));
}

void CheckCommandLine(const QByteArray& input) {
    Mp3Parameters parameters;
    parameters.SetCommandLine(FromNarrow(input));
    const auto isWithin = [](int value, int least, int most) { return value >= least && value <= most; };
    if (!IsMp3Setting(parameters)) Found("A command line that gives no setting");
    if (!isWithin(parameters.Bitrate, 8, 320) || !isWithin(parameters.MaxVbrBitrate, 8, 320) ||
        !isWithin(parameters.AbrBitrate, 8, 320) || !isWithin(parameters.VbrQuality, 0, 9) ||
        !isWithin(parameters.EncoderQuality, 0, 9) || !isWithin(parameters.StereoMode, 1, 4) ||
        !isWithin(parameters.LowpassFrequency, -1, 48000) || !isWithin(parameters.LowpassWidth, 0, 48000))
        Found("A number beyond its range");
}

}  // namespace

QList<QByteArray> FuzzSeeds() {
    return {"[Options]\r\nFolder=C:\\Music\r\n; a remark\r\n\r\n[Other]\r\nkey = value\r\n",
            "\xEF\xBB\xBF[A]\nb=c\n[a]\nB=d\nno key\n=nothing\n",
            "File\nOpen\nClose\n\xE4\xF6\xFC\n\xC3\xA4\nlast",
            "home/music/a\\b/\xFF\xFE/\xEF\x81\x9C/Z:/c:",
            "-b 192 -m j -h --lowpass 17.5 -V2 --vbr-new -q 0 -e 5",
            "--preset fast extreme --abr 128 --resample 44.1 --preset cbr 192 \"-b\" '320'",
            "--alt-preset standard -B320 -F -p -t --highpass-width nan --lowpass 1e999 -b -5"};
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TestFolder folder;
    const QByteArray input = InputOf(data, size);
    CheckSettings(input);
    CheckLanguage(folder.MakeFile("in.lng", input));
    CheckPaths(input);
    CheckCommandLine(input);
    return 0;
}

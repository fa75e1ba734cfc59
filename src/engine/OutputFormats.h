#pragma once

#include <QStringView>

namespace Sonmira {

class Run;
class RunView;
struct Components;

// The output formats as the format list names them. These texts are keywords: they are compared exactly,
// stored in the settings and never translated.
namespace FormatName {

inline constexpr QStringView Mp3 = u"Mp3";
inline constexpr QStringView Ogg = u"Ogg";
inline constexpr QStringView Wav = u"Wav";
inline constexpr QStringView Wma = u"Wma";
inline constexpr QStringView Ape = u"APE (MonKey's audio)";
inline constexpr QStringView Flac = u"FLAC (Free Lossless Audio Codec)";
inline constexpr QStringView Mpc = u"Mpc (Musepack)";

}  // namespace FormatName

// What must be there for a format to be offered.
enum class OutputNeeds { Nothing, Lame, WmaSupport };
// How the input gets to the output: as a stream, whose format stands in FileWenc; the same for WMA, looked at
// before; by an encoder that takes a WAV.
enum class OutputRoad { Stream, Wma, FromWav };
// Where the tag comes from: of the file in hand, or of the tag page.
enum class OutputTag { OfFile, OfPage };

struct OutputRow {
    QStringView Name;
    QStringView Ending;
    OutputNeeds Needs;
    OutputRoad Road;
    OutputTag Tag;
    // Of OutputRoad::FromWav: encodes `wav` into `output`, by the level that was chosen (Musepack: by the
    // quality that a window set).
    void (*Encode)(Run& run, RunView& view, Components& parts, const QString& wav, const QString& output);
};

void EncodeToApe(Run& run, RunView& view, Components& parts, const QString& wav, const QString& output);
void EncodeToFlac(Run& run, RunView& view, Components& parts, const QString& wav, const QString& output);
void EncodeToMpc(Run& run, RunView& view, Components& parts, const QString& wav, const QString& output);

// In the order of the list.
inline constexpr OutputRow OutputTable[] = {
    {FormatName::Mp3, u"MP3", OutputNeeds::Lame, OutputRoad::Stream, OutputTag::OfFile, nullptr},
    {FormatName::Wav, u"WAV", OutputNeeds::Nothing, OutputRoad::Stream, OutputTag::OfFile, nullptr},
    {FormatName::Ogg, u"OGG", OutputNeeds::Nothing, OutputRoad::Stream, OutputTag::OfFile, nullptr},
    {FormatName::Ape, u"APE", OutputNeeds::Nothing, OutputRoad::FromWav, OutputTag::OfPage, EncodeToApe},
    {FormatName::Flac, u"FLAC", OutputNeeds::Nothing, OutputRoad::FromWav, OutputTag::OfPage, EncodeToFlac},
    {FormatName::Mpc, u"MPC", OutputNeeds::Nothing, OutputRoad::FromWav, OutputTag::OfPage, EncodeToMpc},
    {FormatName::Wma, u"WMA", OutputNeeds::WmaSupport, OutputRoad::Wma, OutputTag::OfFile, nullptr},
};

}  // namespace Sonmira

#pragma once

#include "formats/LevelLists.h"
#include "formats/OptionControls.h"

#include <QObject>

namespace Sonmira {

class OutputPanel;
struct OutputSettings;

// The behaviour of the output panel: which formats are offered, what a selection puts into the encoder,
// and how the output folder is chosen.
class OutputFormatSelector : public QObject {
    Q_OBJECT

public:
    // All outlive the selector. `fileWenc` and `settings` receive the format of each selection.
    OutputFormatSelector(OutputPanel& controls, AudioFile& fileWenc, OutputSettings& settings);

    // Fills the list of the WMA formats; to be done where WMA is supported.
    void FillComboWmaFormat() { Wma.Fill(); }
    // Adds the items of the format list: Mp3 only where its encoder library is installed, Wma where it is
    // supported.
    void FillComboOutFormat(bool wmaSupported);
    // Puts plain MP3 (44100 Hz, 128 kbit, stereo) into the encoder and shows its text.
    void SetPlainMp3();
    // Puts the saved MP3 parameters into the encoder and shows their text. False, with the earlier format
    // still in the encoder and no text, where the encoder library cannot be loaded.
    bool ApplySavedMp3();

    // Selects the item of that text and does what its click does, for a caller that answers for its failures:
    // those of the list's own event end in the failure report. Without such an item nothing happens.
    void SelectFormat(const QString& format);
    void ComboOutFormat_Click();
    void CheckOutPath_Click();
    void CmdSelectPath_Click();
    // Opens the options window of the selected format, and waits for its end.
    void CmdFormatParameter_Click();

private:
    OutputPanel& Panel;
    FormatCaller Caller;
    std::shared_ptr<Mp3Parameters> Mp3Params;
    LevelLists Levels;
    WmaList Wma;
};

}  // namespace Sonmira

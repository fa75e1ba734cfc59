#pragma once

#include "formats/LevelLists.h"
#include "formats/WmaList.h"

#include <QObject>

namespace Sonmira {

class AudioFile;
class OutputPanel;

// The behaviour of the output panel: which formats are offered, what a selection puts into the encoder,
// and how the output folder is chosen.
class OutputFormatSelector : public QObject {
    Q_OBJECT

public:
    // All outlive the selector. `fileWenc` and `levels` receive the format of each selection.
    OutputFormatSelector(OutputPanel& controls, AudioFile& fileWenc, EncoderLevels& levels);

    // Fills the list of the WMA formats; to be done where WMA is supported.
    void FillComboWmaFormat() { Wma.Fill(); }
    // Adds the items of the format list: Mp3 only where its encoder library is installed, Wma where it is
    // supported.
    void FillComboOutFormat(bool wmaSupported);
    // Puts plain MP3 (44100 Hz, 128 kbit, stereo) into the encoder and shows its text. Returns whether the
    // encoder took it.
    bool SetPlainMp3();

    void ComboOutFormat_Click();
    void CheckOutPath_Click();
    void CmdSelectPath_Click();

private:
    void ShowFormat();

    OutputPanel& Panel;
    AudioFile& FileWenc;
    LevelLists Levels;
    WmaList Wma;
    int AppliedItem = -1;  // the item of the list whose format the encoder holds
};

}  // namespace Sonmira

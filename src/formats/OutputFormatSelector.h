#pragma once

#include <QObject>

namespace Sonmira {

class AudioFile;
class OutputPanel;

// The behaviour of the output panel: which formats are offered, what a selection puts into the encoder,
// and how the output folder is chosen.
class OutputFormatSelector : public QObject {
    Q_OBJECT

public:
    // Both outlive the selector. `fileWenc` receives the format of each selection.
    OutputFormatSelector(OutputPanel& controls, AudioFile& fileWenc);

    // Adds the items of the format list: Mp3 only where its encoder library is installed.
    void FillComboOutFormat();
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
    int AppliedItem = -1;  // the item of the list whose format the encoder holds
};

}  // namespace Sonmira

#pragma once

#include <QObject>

namespace Sonmira {

class AudioFile;
class OutputPanel;

// The list of the WMA formats, which the encoder names. The place in the list is the format's number less 1.
class WmaList : public QObject {
    Q_OBJECT

public:
    // Both outlive this object.
    WmaList(OutputPanel& controls, AudioFile& fileWenc);

    // Fills the list; leaves the encoder with the last format.
    void Fill();
    // What selecting the format does: takes the saved number, or the default, and shows it.
    void ApplySavedWmaFormat();

private:
    void ComboWmaFormat_Click();

    OutputPanel& Panel;
    AudioFile& FileWenc;
};

}  // namespace Sonmira

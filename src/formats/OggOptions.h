#pragma once

#include "formats/OptionControls.h"

#include <QDialog>

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QSlider;

namespace Sonmira {

struct FormatCaller;

// What the Ogg Vorbis window edits, in the form of its eight keys in the settings file.
struct OggChoice {
    bool UsesQuality = false;
    bool UsesVbr = false;  // a managed stream between limits, where quality is not used
    int Frequency = 44100;
    int Channels = 2;
    int Quality = 300;  // 0 to 1000
    int Nominal = 128;  // kbit a second, as are the limits
    int Minimum = 128;
    int Maximum = 128;
};

// Writes the keys.
void SaveOggChoice(const OggChoice& choice);

// Gives the choice to the caller's encoder. False, and nothing is changed, where bit rates are chosen that
// Vorbis does not have.
bool SetOggFormat(const FormatCaller& caller, const OggChoice& choice);

// Gives the saved choice to the encoder, or quality 400 where none was saved. Bit rates that Vorbis does not
// have give way to the saved quality without a word. A key that is no number fails with TypeMismatch.
void ApplySavedOggFormat(const FormatCaller& caller);

class ChoiceList;

// The window of the Ogg Vorbis format. It always opens with its own choice, whatever was saved; only the
// frequency and the channels follow the caller.
class OggOptions : public QDialog {
    Q_OBJECT

public:
    explicit OggOptions(QWidget* owner);

    // Takes the caller and shows the choice to start with. Fails with InvalidPropertyValue where the caller's
    // frequency is none of the list.
    void Loader(const FormatCaller& caller);

    QGroupBox* frmFrequency;
    ChoiceList* cmbFrequency;
    QGroupBox* frmChMode;
    ChoiceList* cmbChMode;
    QGroupBox* frmOption;
    QCheckBox* chQuality;
    QCheckBox* chVbr;
    QLabel* lblBitrate;
    QSlider* sldrBitrate;
    QGroupBox* frmVbr;
    QLabel* lblMinBitrate;
    QSlider* sldrMinBitrate;
    QLabel* lblMaxBitrate;
    QSlider* sldrMaxBitrate;
    QGroupBox* frmQuality;
    QSlider* sldrQuality;
    QPushButton* cmdOk;
    QPushButton* cmdCancel;
    QPushButton* cmdApply;

private:
    void ConnectEvents();
    void chQuality_Click();
    void chVbr_Click();
    void ShowBitrates();
    // Whether the format was set; else the user was told.
    bool ApplyOggOptions();

    std::optional<FormatCaller> Caller;
    OggChoice Choice;
};

}  // namespace Sonmira

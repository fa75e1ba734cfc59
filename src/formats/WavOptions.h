#pragma once

#include "formats/OptionControls.h"

#include <QDialog>

#include <array>

class QButtonGroup;
class QPushButton;

namespace Sonmira {

struct FormatCaller;

// The WAV format as places in three groups of options: the settings file holds the places, not the values.
struct WavChoice {
    int Frequency = 3;
    int Channel = 1;
    int Bits = 5;
};

inline constexpr std::array WavFrequencies = {96000, 88200, 48000, 44100, 32000, 24000,
                                              22050, 16000, 12000, 11025, 8000,  6000};
inline constexpr std::array WavChannels = {1, 2};
inline constexpr std::array WavBits = {2, 3, 4, 5, 8, 16, 24, 32};

// Writes the keys.
void SaveWavChoice(const WavChoice& choice);

// Gives the format to the caller's encoder and shows what it says; a place outside its group stands for 0.
void SetWavFormat(const FormatCaller& caller, const WavChoice& choice);

// The saved places; a key that is missing or no number stands for that of CD sound.
WavChoice SavedWavChoice();

// The window of the WAV format.
class WavOptions : public QDialog {
    Q_OBJECT

public:
    explicit WavOptions(QWidget* owner);

    // Takes the caller and shows the saved choice. To be called before the window is shown.
    void LoadForm(const FormatCaller& caller);

    QButtonGroup* Option1;  // frequencies, by their places
    QButtonGroup* Option2;  // channels
    QButtonGroup* Option3;  // bits
    QPushButton* Command1;
    QPushButton* Command2;

private:
    void Command1_Click();
    void Command2_Click();
    void Form_Unload();
    void UseCdFormat();
    WavChoice Chosen() const;

    std::optional<FormatCaller> Caller;
};

}  // namespace Sonmira

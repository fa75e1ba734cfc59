#pragma once

#include "codecs/mp3/Mp3Parameters.h"
#include "formats/Mp3OptionsForm.h"
#include "formats/OptionControls.h"

#include <memory>

namespace Sonmira {

// The MP3 parameters in the settings file: 22 numbered keys.

struct FormatCaller;

// Makes new parameters of the saved keys and gives them to the caller's encoder; what comes back is the set
// in force. A key that is missing or damaged leaves its property as a new object has it. Nothing fails.
// Returns whether the encoder library could be loaded; else the earlier format stays.
bool ApplySavedMp3Format(const FormatCaller& caller, std::shared_ptr<Mp3Parameters>& parameters);

// Writes the keys.
void SaveMp3Format(const Mp3Parameters& parameters);

// The window of the MP3 format. It works on the parameters that are in force; what it applies goes to the
// encoder, to the settings and to the caller's summary.
class Mp3Options : public Mp3OptionsForm {
    Q_OBJECT

public:
    explicit Mp3Options(QWidget* owner);

    // Takes the caller and the parameters, and shows them. To be called before the window is shown. Fails
    // with InvalidPropertyValue for parameters that a control cannot show.
    void CallForm(const FormatCaller& caller, std::shared_ptr<Mp3Parameters> parameters);

    // The parameters in force.
    const std::shared_ptr<Mp3Parameters>& InForce() const { return Parameters; }

private:
    void ConnectEvents();
    void LoadMp3Options();
    void LoadFilters();
    void ApplyMp3Options();
    void TakeControls();
    void ShowBitrate();
    void ShowVbrBitrate();
    void chHFilt_Click();
    void chLFilt_Click();
    void cmbVBRCodingMethod_Click();

    std::optional<FormatCaller> Caller;
    std::shared_ptr<Mp3Parameters> Parameters;
    qint16 SelectedPreset = 1;
    qint16 SelectedAltPreset = 1;
};

}  // namespace Sonmira

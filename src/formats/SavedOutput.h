#pragma once

#include <QStringView>

class QAction;

namespace Sonmira {

class OutputFormatSelector;
class OutputPanel;
struct CodecSet;

// What the settings file remembers of the output, for every window that has an output panel.
class SavedOutput {
public:
    // All outlive this object.
    SavedOutput(OutputPanel& panel, OutputFormatSelector& selector, CodecSet& codecs, QAction& acceptWmaItem)
        : Panel(panel), FormatSelector(selector), Codecs(codecs), acceptWma(acceptWmaItem) {}

    // Restores support for WMA, the output folder, the mode and the format; what is not there yet gets its
    // default. A saved format of the text `mp3InOldFiles` is read as Mp3. A failure leaves what was not
    // reached as it was designed; the logo goes in any case. False where a support for WMA that is no flag
    // has ended this before the saved format: nothing is selected then.
    bool LoadSettings(QStringView mp3InOldFiles = {});

    // Writes the output folder, the mode and the format.
    void Keep() const;

private:
    QString RestoreWmaSupport();
    void RestoreOutputFolder();
    bool RestoreOutputFormat(const QString& wmaSupport, QStringView mp3InOldFiles);

    OutputPanel& Panel;
    OutputFormatSelector& FormatSelector;
    CodecSet& Codecs;
    QAction& acceptWma;
};

}  // namespace Sonmira

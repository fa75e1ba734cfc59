#pragma once

#include <QObject>

class QWidget;

namespace Sonmira {

class OutputPanel;
struct OutputSettings;

// The lists of the formats whose encoders have levels: one fixed choice each, which goes into the levels that
// the encoders are given, and into the settings at once.
class LevelLists : public QObject {
    Q_OBJECT

public:
    // Fills the lists. All outlive this object.
    LevelLists(OutputPanel& controls, OutputSettings& settings);

    // What selecting the format does: takes the saved level, or the default where there is none or a damaged
    // one, and shows it in the list, which is returned. A failure ends it in silence. No list for a format
    // that has none here.
    const QWidget* ApplySaved(const QString& format);

private:
    void ApplySavedApeFormat();
    void ApplySavedFlacFormat();
    void ApplySavedMpcFormat();
    void ComboAPEFormat_Click();
    void ComboFLACFormat_Click();
    void ComboMPCFormat_Click();

    OutputPanel& Panel;
    OutputSettings& Settings;
};

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

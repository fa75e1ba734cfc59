#pragma once

#include "codecs/AudioFile.h"
#include "platform/Failure.h"
#include "shell/widgets/InputBoxes.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include <array>
#include <memory>
#include <optional>

namespace Sonmira {

// What the options windows are built of.

template <class Control, class... Arguments>
Control* MakeControl(const QString& name, Arguments&&... arguments) {
    auto* control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(name);
    return control;
}

// A titled frame around a column.
QGroupBox* MakeFrame(const QString& name, const QString& caption);
// Adds a row to the column of a frame or page.
void AddRow(QWidget* page, std::initializer_list<QWidget*> row);

// Adds a grid to it, for rows whose controls stand below each other.
QGridLayout* AddGrid(QWidget* page);
// Adds the last row of a window, at its right end.
void AddButtons(QWidget* window, std::initializer_list<QPushButton*> buttons);

void EnableAll(bool enabled, std::initializer_list<QWidget*> controls);

// A horizontal slider over 0 to `most`, with ticks.
QSlider* MakeSlider(const QString& name, int most, int largeStep, int tick);
// One over the positions of the bit rate table.
QSlider* MakeBitrateSlider(const QString& name);
// The sample rates of MPEG audio, each with its frequency in Hz as data.
ChoiceList* MakeFrequencyList(const QString& name);
// Makes a group of options one stop of the tab key, at the chosen one, as the arrow keys choose in it. To be
// called when all are in it.
void MakeOneTabStop(QButtonGroup& options);
// Selects the item of that data; fails with InvalidPropertyValue where there is none.
void SelectData(ChoiceList& list, int data);

// Puts a value into a slider or an up-down; one outside its range fails with InvalidPropertyValue.
template <class Control>
void SetInRange(Control& control, int value) {
    if (value < control.minimum() || value > control.maximum()) {
        throw Failure(FailureNumber::InvalidPropertyValue);
    }
    control.setValue(value);
}

// "Current bitrate: 128 kbit", `what` being what stands before the colon.
QString BitrateText(const QString& what, int kilobits);

// What the positions of every bit rate slider stand for, in kbit a second. 40 and 80 have no position.
inline constexpr std::array BitrateTable = {8, 16, 24, 32, 48, 56, 64, 96, 112, 128, 160, 192, 224, 256, 320};

inline std::optional<int> PositionOfBitrate(int kilobits) {
    for (std::size_t position = 0; position < BitrateTable.size(); ++position) {
        if (BitrateTable[position] == kilobits) return static_cast<int>(position);
    }
    return {};
}

inline int BitrateAt(int position) {
    return BitrateTable.at(static_cast<std::size_t>(position));
}

// What an options window works on: the window that opened it, as far as it concerns a format.
struct FormatCaller {
    AudioFile& FileWenc;                     // takes the format
    QLineEdit& TextOutFormat;                // shows it; empty while a refused one is in force
    static constexpr int Frequency = 44100;  // what a window without a choice shows
    static constexpr int Channels = 2;

    void ShowFormat() const {
        TextOutFormat.setText(FileWenc.FormatString());
        TextOutFormat.setCursorPosition(0);  // where the box is too narrow, the codec is what must be seen
    }
};

}  // namespace Sonmira

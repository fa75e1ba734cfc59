#include "formats/OptionControls.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

QGroupBox* MakeFrame(const QString& name, const QString& caption) {
    auto* frame = MakeControl<QGroupBox>(name, caption);
    new QVBoxLayout(frame);
    return frame;
}

void AddRow(QWidget* page, std::initializer_list<QWidget*> row) {
    auto* line = new QHBoxLayout;
    for (QWidget* control : row) {
        const bool grows =
            qobject_cast<QSlider*>(control) != nullptr || qobject_cast<QGroupBox*>(control) != nullptr;
        line->addWidget(control, grows ? 1 : 0);
    }
    static_cast<QVBoxLayout*>(page->layout())->addLayout(line);
}

QGridLayout* AddGrid(QWidget* page) {
    auto* grid = new QGridLayout;
    static_cast<QVBoxLayout*>(page->layout())->addLayout(grid);
    return grid;
}

void AddButtons(QWidget* window, std::initializer_list<QPushButton*> buttons) {
    auto* line = new QHBoxLayout;
    line->addStretch(1);
    for (QPushButton* button : buttons) line->addWidget(button);
    static_cast<QVBoxLayout*>(window->layout())->addLayout(line);
}

void EnableAll(bool enabled, std::initializer_list<QWidget*> controls) {
    for (QWidget* control : controls) control->setEnabled(enabled);
}

QSlider* MakeSlider(const QString& name, int most, int largeStep, int tick) {
    auto* slider = MakeControl<QSlider>(name, Qt::Horizontal);
    slider->setRange(0, most);
    slider->setSingleStep(1);
    slider->setPageStep(largeStep);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(tick);
    return slider;
}

QSlider* MakeBitrateSlider(const QString& name) {
    return MakeSlider(name, static_cast<int>(BitrateTable.size()) - 1, 2, 1);
}

ChoiceList* MakeFrequencyList(const QString& name) {
    auto* list = MakeControl<ChoiceList>(name);
    const auto add = [&](const QString& text, int frequency) { list->addItem(text, frequency); };
    add(u"  8 000 Hz"_s, 8000);
    add(u"11 025 Hz"_s, 11025);
    add(u"12 000 Hz "_s, 12000);
    add(u"16 000 Hz"_s, 16000);
    add(u"22 050 Hz"_s, 22050);
    add(u"24 000 Hz"_s, 24000);
    add(u"32 000 Hz"_s, 32000);
    add(u"44 100 Hz"_s, 44100);
    add(u"48 000 Hz"_s, 48000);
    list->setAccessibleName(u"Sampling frequency"_s);
    return list;
}

void MakeOneTabStop(QButtonGroup& options) {
    const auto mark = [](QAbstractButton* option, bool chosen) {
        option->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    };
    for (QAbstractButton* option : options.buttons()) mark(option, option->isChecked());
    QObject::connect(&options, &QButtonGroup::buttonToggled, &options, mark);
}

void SelectData(ChoiceList& list, int data) {
    const int place = list.findData(data);
    if (place < 0) throw Failure(FailureNumber::InvalidPropertyValue);
    list.SelectPlace(place);
}

QString BitrateText(const QString& what, int kilobits) {
    return what + u": "_s + QString::number(kilobits) + u" kbit"_s;
}

}  // namespace Sonmira

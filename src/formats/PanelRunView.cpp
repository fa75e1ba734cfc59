#include "formats/PanelRunView.h"

#include "codecs/sound/SoundReader.h"
#include "formats/OutputPanel.h"
#include "platform/EventLoop.h"
#include "shell/widgets/InputBoxes.h"

#include <QCheckBox>

namespace Sonmira {

PanelRunView::PanelRunView(OutputPanel& panel) : Panel(panel) {
    WhileFilesAreScanned(YieldToEventLoop);
}

QString PanelRunView::TextOutPath() const {
    return Panel.TextOutPath->Text();
}
void PanelRunView::SetTextOutPath(const QString& folder) {
    Panel.TextOutPath->SetText(folder);
}
bool PanelRunView::CheckOutPath() const {
    return Panel.CheckOutPath->isChecked();
}
bool PanelRunView::Check2() const {
    return Panel.Check2->isChecked();
}
QString PanelRunView::ComboOutFormat() const {
    return Panel.ComboOutFormat->currentText();
}
void PanelRunView::Yield() {
    YieldToEventLoop();
}

}  // namespace Sonmira

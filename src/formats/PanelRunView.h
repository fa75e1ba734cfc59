#pragma once

#include "engine/RunView.h"

namespace Sonmira {

class OutputPanel;

// The part of a run's view that is the output panel, the same in every window, and the yield.
class PanelRunView : public RunView {
public:
    // Lets the event loop run in the long steps of the components, too, for as long as the program lives.
    explicit PanelRunView(OutputPanel& panel);

    QString TextOutPath() const override;
    void SetTextOutPath(const QString& folder) override;
    bool CheckOutPath() const override;
    bool Check2() const override;
    QString ComboOutFormat() const override;
    void Yield() override;

private:
    OutputPanel& Panel;
};

}  // namespace Sonmira

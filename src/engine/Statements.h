#pragma once

#include "platform/Failure.h"

namespace Sonmira {

// Runs the driver's statements. Until the first file is finished a failure is nobody's to handle here; from
// then on it is passed over, so that one file never ends the run of the others.
class Statements {
public:
    void PassFailuresOver() { PassesOver = true; }

    template <class Step>
    void operator()(Step&& step) const {
        if (PassesOver) {
            PassOver(step);
        } else {
            step();
        }
    }

private:
    bool PassesOver = false;
};

}  // namespace Sonmira

#include "platform/Clock.h"

#include <QDate>

namespace Sonmira {

namespace {
int overriddenYear = 0;
}

int CurrentYear() {
    return overriddenYear != 0 ? overriddenYear : QDate::currentDate().year();
}

void OverrideCurrentYear(int year) {
    overriddenYear = year;
}

}  // namespace Sonmira

#include "platform/widgets/QtDialogs.h"

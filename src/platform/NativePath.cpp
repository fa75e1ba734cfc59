#include "platform/NativePath.h"

#include "platform/ProfileFile.h"

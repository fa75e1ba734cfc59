#include "platform/FileRemoval.h"

#include "platform/FileSearch.h"

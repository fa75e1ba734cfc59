#include "shell/Settings.h"

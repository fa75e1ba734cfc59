#include "shell/Paths.h"

#include "shell/Values.h"

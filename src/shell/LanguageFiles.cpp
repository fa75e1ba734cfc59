#include "shell/LanguageFiles.h"

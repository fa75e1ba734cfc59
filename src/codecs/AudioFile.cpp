#include "codecs/AudioFile.h"

#include "shell/EncoderGate.h"

#include "platform/NarrowText.h"
namespace Sonmira {}

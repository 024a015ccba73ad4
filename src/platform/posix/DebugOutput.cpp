#include "platform/DebugOutput.h"

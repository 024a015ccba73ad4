#include "platform/Settings.h"

#pragma once

// The class is part of what plug-in authors get.

#include "sdk/TraceMessage.h"

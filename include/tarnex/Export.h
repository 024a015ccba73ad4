#pragma once

// Marks what a module exports. The only place outside src/platform that asks for the system.

#ifdef _WIN32
#define TARNEX_EXPORT __declspec(dllexport)
#else
#define TARNEX_EXPORT __attribute__((visibility("default")))
#endif

// A library that the check of the library's file refuses, for one reason each.

#ifdef _WIN32
#define SAMPLE_EXPORT extern "C" __declspec(dllexport)
#else
#define SAMPLE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

SAMPLE_EXPORT int GetTarnex() {
    return 0;
}

#ifdef SAMPLE_SECOND_EXPORT
SAMPLE_EXPORT int Another() {
    return 0;
}
#endif

#ifdef _WIN32
__attribute__((section(".shared"), shared, used)) volatile unsigned char g_first = 0;
#ifdef SAMPLE_SECOND_SHARED
__attribute__((section(".shared"), shared, used)) volatile unsigned char g_second = 0;
#endif
#endif

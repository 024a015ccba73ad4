// A library that carries the tracer and says what it is told.

#include "helpers/tracer/ModuleTracer.h"
#include "sdk/TraceMessage.h"
#include "tarnex/Export.h"

extern "C" TARNEX_EXPORT void Say(std::uint32_t level, const wchar_t* text) {
    helpers::TraceMessage(level).Append(std::wstring_view(text));
}

extern "C" TARNEX_EXPORT bool Attached() {
    return helpers::HasTracer();
}

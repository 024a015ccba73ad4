#pragma once

// What the two halves of the property set share: its lock, and how an operation ends.

#include "helpers/report/Report.h"
#include "platform/CriticalSection.h"
#include "sdk/PropertySet.h"

namespace base_types {

// Holds the set's critical section for a scope.
class PropertySet::Lock {
public:
    explicit Lock(PropertySet& set) : section_(set.criticalSection_) {
        platform::EnterCriticalSection(section_);
    }
    ~Lock() { platform::LeaveCriticalSection(section_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    void* section_;
};

// Runs the body of an operation whose exceptions go to the debugger output. `line` is part of a
// fixed text, not a place in this file.
template <class Body>
_eError RunWithDebuggerLine(const char* operation, int line, Body body) {
    try {
        return body();
    } catch (const Exception& exception) {
        helpers::ReportException(exception.code, "PropertySet", line, operation);
        return helpers::ReportPropertyError(exception.code);
    } catch (...) {
        helpers::ReportUnknownException("PropertySet", line, operation);
        return helpers::ReportPropertyError(eGenericException);
    }
}

}  // namespace base_types

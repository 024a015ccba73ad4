#pragma once

// Calls into plug-in code: whatever it throws becomes a finding.

#include <exception>
#include <string>
#include <utility>

#include "base_types/Errors.h"
#include "fx/Errors.h"
#include "helpers/report/Report.h"
#include "tarnex/Errors.h"
#include "vorel/Exception.h"

namespace tarnexctl {

// What the exception being handled is, in words. Call it from a handler alone.
inline std::string CurrentExceptionText() {
    try {
        throw;
    } catch (const fx::Exception& exception) {
        return "fx::Exception with " + helpers::ErrorName(exception.code);
    } catch (const base_types::Exception& exception) {
        return "base_types::Exception with " + helpers::ErrorName(exception.code);
    } catch (const tarnex::Exception& exception) {
        return "tarnex::Exception with " + helpers::ErrorName(exception.code);
    } catch (const vorel::Exception&) {
        return "vorel::Exception";
    } catch (const std::exception& exception) {
        return std::string("std::exception \"") + exception.what() + "\"";
    } catch (...) {
        return "an exception of unknown type";
    }
}

// Runs `call`; true when it came back. `onThrow` gets the exception's text.
template <typename Call, typename OnThrow>
bool Guarded(Call call, OnThrow onThrow) {
    try {
        call();
        return true;
    } catch (...) {
        onThrow(CurrentExceptionText());
        return false;
    }
}

}  // namespace tarnexctl

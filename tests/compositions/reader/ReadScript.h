#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "compositions/CompScript.h"
#include "compositions/ReadingObserver.h"
#include "support/WideTextPrinter.h"

std::shared_ptr<compositions::CompositionScript> ReadScript(
    std::string_view bytes, compositions::ReadingObserver* observer = nullptr);

std::string FileText(const std::string& path);

// The statements of each section; the four that a script must have start out with the least that
// reads. A section left null gets no header.
struct ScriptParts {
    const char* setup = "NAME = \"n\" CATEGORY = \"c\"";
    const char* sources = "";
    const char* effects = "";
    const char* structure = "OUTPUT = MIX";
    const char* properties = nullptr;
    const char* mapping = nullptr;
    const char* envelopes = nullptr;
    const char* timeline = nullptr;
};
std::string TextOf(const ScriptParts& parts);
std::shared_ptr<compositions::CompositionScript> ReadScript(const ScriptParts& parts);

// A tree as its script would write it.
std::wstring Written(const compositions::StructureNode& node);

std::vector<std::wstring> Written(const compositions::Names& names);

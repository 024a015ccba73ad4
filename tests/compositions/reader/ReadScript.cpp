#include "compositions/reader/ReadScript.h"

#include <fstream>
#include <sstream>

namespace {

void Append(std::string& text, const char* keyword, const char* statements) {
    if (statements) text += std::string("[") + keyword + "]\n" + statements + "\n";
}

}  // namespace

std::shared_ptr<compositions::CompositionScript> ReadScript(
    std::string_view bytes, compositions::ReadingObserver* observer) {
    return std::make_shared<compositions::CompositionScript>(bytes, observer);
}

std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string TextOf(const ScriptParts& parts) {
    std::string text;
    Append(text, "SETUP", parts.setup);
    Append(text, "SOURCES", parts.sources);
    Append(text, "EFFECTS", parts.effects);
    Append(text, "STRUCTURE", parts.structure);
    Append(text, "PROPERTIES", parts.properties);
    Append(text, "MAPPING", parts.mapping);
    Append(text, "ENVELOPES", parts.envelopes);
    Append(text, "TIMELINE", parts.timeline);
    return text;
}

std::shared_ptr<compositions::CompositionScript> ReadScript(const ScriptParts& parts) {
    return ReadScript(TextOf(parts));
}

std::wstring Written(const compositions::StructureNode& node) {
    std::wstring text(node.name.View());
    for (const compositions::StructureNode& input : node.inputs) {
        text += (&input == &node.inputs.front() ? L"(" : L",") + Written(input);
    }
    if (!node.inputs.empty()) text += L")";
    return text;
}

std::vector<std::wstring> Written(const compositions::Names& names) {
    std::vector<std::wstring> texts;
    for (const compositions::UpperName& name : names) texts.emplace_back(name.View());
    return texts;
}

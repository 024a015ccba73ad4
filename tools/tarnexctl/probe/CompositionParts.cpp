#include "probe/CompositionParts.h"

#include <iterator>

#include "compositions/CompScript.h"
#include "frame/Columns.h"
#include "frame/InputFile.h"
#include "frame/Text.h"
#include "probe/PropertyValue.h"

namespace tarnexctl {
namespace {

using compositions::CompositionScript;
using compositions::UpperName;

std::string Utf8(const UpperName& name) {
    return ToUtf8(name.View());
}

Json NameList(const compositions::Names& names) {
    Json list = Json::array();
    for (const UpperName& name : names) list.push_back(Utf8(name));
    return list;
}

template <typename Map>
Json KeyList(const Map& map) {
    Json list = Json::array();
    for (const auto& [name, value] : map) list.push_back(Utf8(name));
    return list;
}

Json PartsOf(const CompositionScript& script) {
    Json parts;
    parts["inputs"] = NameList(script.GetInputs());
    parts["numberedInputs"] = Json::object();
    for (const auto& [name, number] : script.GetNumberedInputs()) {
        parts["numberedInputs"][Utf8(name)] = number;
    }
    parts["mediaSources"] = KeyList(script.GetMediaSources());
    parts["effects"] = Json::object();
    for (const auto& [name, effect] : script.GetEffectInstances()) {
        parts["effects"][Utf8(name)] = ToUtf8(effect);
    }
    parts["mixes"] = NameList(script.GetMixes());
    parts["mappings"] = script.GetMappings().size();
    parts["envelopes"] = KeyList(script.GetEnvelopes());
    parts["timeline"] = script.GetTimelineEntries().size() + script.GetTimelineEvents().size();
    return parts;
}

// What the script declares; the composition object itself starts without properties.
Json PropertiesOf(const CompositionScript& script) {
    Json properties = Json::array();
    for (const compositions::PropertyRecord& record : script.GetProperties()) {
        properties.push_back({{"name", ToUtf8(record.name)},
                              {"access", AccessWords(record.access)},
                              {"value", ToUtf8(record.value)}});
    }
    return properties;
}

std::string Joined(const Json& values) {
    std::string joined;
    for (const auto& [key, value] : values.items()) {
        joined += joined.empty() ? "" : ", ";
        if (values.is_object()) {
            joined += key + " (" +
                      (value.is_string() ? value.template get<std::string>() : value.dump()) + ")";
        } else {
            joined += value.template get<std::string>();
        }
    }
    return joined.empty() ? "none" : Printable(joined);
}

void Print(Writer& out, const Json& parts, const Json& properties) {
    out << "\nParts:\n";
    out << "  inputs:          " << Joined(parts["inputs"]) << "\n";
    out << "  numbered inputs: " << Joined(parts["numberedInputs"]) << "\n";
    out << "  media sources:   " << Joined(parts["mediaSources"]) << "\n";
    out << "  effects:         " << Joined(parts["effects"]) << "\n";
    out << "  mixes:           " << Joined(parts["mixes"]) << "\n";
    out << "  envelopes:       " << Joined(parts["envelopes"]) << "\n";
    out << "  mappings:        " << parts["mappings"].dump() << "\n";
    out << "  timeline:        " << parts["timeline"].dump() << "\n\n";
    if (properties.empty()) {
        out << "No properties.\n";
        return;
    }
    Columns table({"PROPERTY", "ACCESS", "VALUE"});
    for (const Json& property : properties) {
        table.Add({property["name"].get<std::string>(), property["access"].get<std::string>(),
                   property["value"].get<std::string>()});
    }
    table.Print(out);
}

}  // namespace

ExitCode DescribeComposition(const std::string& script, Session& session) {
    std::ifstream file = OpenInput(ExistingFile(script), script);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    const CompositionScript read{std::string_view(bytes)};
    if (read.GetReadStatus() != 0) {
        throw Failure(ExitCode::kInputOutput,
                      "\"" + script + "\" is not a whole composition: " +
                          compositions::ReadStatusText(read.GetReadStatus()));
    }
    const Json parts = PartsOf(read);
    const Json properties = PropertiesOf(read);
    Print(session.Out(), parts, properties);
    session.Document()["parts"] = parts;
    session.Document()["properties"] = properties;
    return ExitCode::kFine;
}

}  // namespace tarnexctl

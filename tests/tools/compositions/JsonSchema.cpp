#include "compositions/JsonSchema.h"

#include <functional>

namespace tooltest {
namespace {

using tarnexctl::Json;

bool IsOfType(const Json& value, const std::string& type) {
    if (type == "object") return value.is_object();
    if (type == "array") return value.is_array();
    if (type == "string") return value.is_string();
    if (type == "boolean") return value.is_boolean();
    return type == "integer" && value.is_number_integer();
}

// Those that say nothing of a value, or are looked at with another one.
bool IsSilent(const std::string& keyword) {
    return keyword == "$schema" || keyword == "$defs" || keyword == "title" ||
           keyword == "description" || keyword == "properties" ||
           keyword == "additionalProperties" || keyword == "required";
}

}  // namespace

std::vector<std::string> JsonSchema::Check(const Json& document) {
    std::vector<std::string> errors;
    Check(schema_, document, "", "", errors);
    return errors;
}

void JsonSchema::Check(const Json& schema, const Json& value, const std::string& place,
                       const std::string& path, std::vector<std::string>& errors) {
    for (const auto& [keyword, wanted] : schema.items()) {
        CheckKeyword(keyword, wanted, value, place, path, errors);
    }
    if (schema.contains("properties") && value.is_object()) {
        CheckObject(schema, value, place, path, errors);
    }
}

void JsonSchema::CheckObject(const Json& schema, const Json& value, const std::string& place,
                             const std::string& path, std::vector<std::string>& errors) {
    for (const Json& key : schema.value("required", Json::array())) {
        if (!value.contains(key)) errors.push_back(place + ": no " + key.dump());
    }
    for (const auto& [key, member] : value.items()) {
        const std::string below = path + "/" + key;
        if (schema["properties"].contains(key)) {
            seen_.insert(below);
            Check(schema["properties"][key], member, place + "/" + key, below, errors);
        } else if (schema.value("additionalProperties", true) == false) {
            errors.push_back(place + ": the schema has no \"" + key + "\"");
        }
    }
}

void JsonSchema::CheckKeyword(const std::string& keyword, const Json& wanted, const Json& value,
                              const std::string& place, const std::string& path,
                              std::vector<std::string>& errors) {
    const auto expect = [&](bool holds) {
        if (!holds) errors.push_back(place + ": " + keyword + " " + wanted.dump());
    };
    if (keyword == "$ref") {
        const auto pointer = Json::json_pointer(wanted.get<std::string>().substr(1));
        Check(schema_.at(pointer), value, place, path, errors);
    } else if (keyword == "type") {
        expect(IsOfType(value, wanted));
    } else if (keyword == "const") {
        expect(value == wanted);
    } else if (keyword == "enum") {
        expect(std::find(wanted.begin(), wanted.end(), value) != wanted.end());
    } else if (keyword == "minimum") {
        expect(!value.is_number() || value.get<std::int64_t>() >= wanted.get<std::int64_t>());
    } else if (keyword == "maximum") {
        expect(!value.is_number() || value.get<std::int64_t>() <= wanted.get<std::int64_t>());
    } else if (keyword == "items") {
        for (std::size_t i = 0; value.is_array() && i < value.size(); ++i) {
            Check(wanted, value[i], place + "/" + std::to_string(i), path, errors);
        }
    } else if (keyword == "anyOf") {
        bool anyHolds = false;
        for (const Json& schema : wanted) {
            std::vector<std::string> own;
            Check(schema, value, place, path, own);
            anyHolds = anyHolds || own.empty();
        }
        expect(anyHolds);
    } else if (!IsSilent(keyword)) {
        errors.push_back("this check does not know the keyword " + keyword);
    }
}

std::set<std::string> JsonSchema::NeverSeen() const {
    std::set<std::string> unseen;
    const std::function<void(const Json&, const std::string&)> visit = [&](const Json& schema,
                                                                           const std::string& at) {
        if (schema.contains("$ref")) {
            const std::string pointer = schema["$ref"].get<std::string>().substr(1);
            visit(schema_.at(Json::json_pointer(pointer)), at);
        }
        if (schema.contains("items")) visit(schema["items"], at);
        for (const Json& either : schema.value("anyOf", Json::array())) visit(either, at);
        const Json properties = schema.value("properties", Json::object());
        for (const auto& [key, member] : properties.items()) {
            if (!seen_.contains(at + "/" + key)) unseen.insert(at + "/" + key);
            visit(member, at + "/" + key);
        }
    };
    visit(schema_, "");
    return unseen;
}

}  // namespace tooltest

#pragma once

// As much of JSON Schema as the project's own schema needs. A keyword that it does not know is an
// error, so that none is written in vain.

#include <set>
#include <string>
#include <vector>

#include "frame/Json.h"

namespace tooltest {

class JsonSchema {
public:
    explicit JsonSchema(tarnexctl::Json schema) : schema_(std::move(schema)) {}

    // What is wrong with the document, each with its place; empty when it is valid.
    std::vector<std::string> Check(const tarnexctl::Json& document);

    // The properties that the schema has and no checked document had, by their place in the schema.
    std::set<std::string> NeverSeen() const;

private:
    using Json = tarnexctl::Json;

    // `place` in the document, `path` in the schema.
    void Check(const Json& schema, const Json& value, const std::string& place,
               const std::string& path, std::vector<std::string>& errors);
    void CheckObject(const Json& schema, const Json& value, const std::string& place,
                     const std::string& path, std::vector<std::string>& errors);
    void CheckKeyword(const std::string& keyword, const Json& wanted, const Json& value,
                      const std::string& place, const std::string& path,
                      std::vector<std::string>& errors);

    Json schema_;
    std::set<std::string> seen_;
};

}  // namespace tooltest

#pragma once

// The values of one parsed command line, by the names that the command's record gives them.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tarnexctl {

class Arguments {
public:
    // Whether a switch was given ("--json").
    bool Has(const std::string& name) const;

    // The value of an option or argument; none when it was not given. The last one wins.
    std::optional<std::string> Value(const std::string& name) const;

    // The value, or what it is when not given.
    std::string ValueOr(const std::string& name, const std::string& otherwise) const;

    // Every value, in the order given.
    std::vector<std::string> Values(const std::string& name) const;

    // A whole number from `least` to `most`; none when not given. Ends the command as a usage
    // failure when it is anything else.
    std::optional<std::uint64_t> Number(const std::string& name, std::uint64_t least,
                                        std::uint64_t most) const;

    void Add(const std::string& name, std::string value);
    void SetSwitch(const std::string& name);

private:
    std::map<std::string, std::vector<std::string>> values_;
};

}  // namespace tarnexctl

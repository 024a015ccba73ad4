#include "frame/Arguments.h"

#include <charconv>
#include <utility>

#include "frame/ExitCode.h"

namespace tarnexctl {

bool Arguments::Has(const std::string& name) const {
    return values_.contains(name);
}

std::optional<std::string> Arguments::Value(const std::string& name) const {
    const auto found = values_.find(name);
    if (found == values_.end() || found->second.empty()) return std::nullopt;
    return found->second.back();
}

std::string Arguments::ValueOr(const std::string& name, const std::string& otherwise) const {
    return Value(name).value_or(otherwise);
}

std::vector<std::string> Arguments::Values(const std::string& name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? std::vector<std::string>{} : found->second;
}

std::optional<std::uint64_t> Arguments::Number(const std::string& name, std::uint64_t least,
                                               std::uint64_t most) const {
    const std::optional<std::string> text = Value(name);
    if (!text) return std::nullopt;
    std::uint64_t number = 0;
    const char* const end = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), end, number);
    if (error != std::errc() || rest != end || number < least || number > most) {
        throw Failure(ExitCode::kUsage, name + " takes a whole number from " +
                                            std::to_string(least) + " to " + std::to_string(most) +
                                            ", not \"" + *text + "\"");
    }
    return number;
}

void Arguments::Add(const std::string& name, std::string value) {
    values_[name].push_back(std::move(value));
}

void Arguments::SetSwitch(const std::string& name) {
    values_[name];
}

}  // namespace tarnexctl

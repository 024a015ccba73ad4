#pragma once

// Families of texts that would cost more than their size if anything were done the plain way.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {

struct Family {
    std::string name;
    std::function<std::string(std::size_t bytes)> make;
    std::int32_t status;  // that it reads with
};

inline std::string Repeated(std::string_view piece, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes) text += piece;
    return text;
}

// The piece with each @ replaced by a running number.
inline std::string Numbered(std::string_view piece, std::size_t bytes) {
    std::string text;
    for (std::size_t number = 0; text.size() < bytes; ++number) {
        for (char c : piece) {
            if (c == '@') {
                text += std::to_string(number);
            } else {
                text += c;
            }
        }
    }
    return text;
}

inline const std::string kSetup = "[SETUP] NAME = \"n\" CATEGORY = \"c\"\n";
inline const std::string kSources = "[SOURCES]\n";
inline const std::string kEffects = "[EFFECTS] E = \"e\"\n";
inline const std::string kStructure = "[STRUCTURE] OUTPUT = E\n";
inline const std::string kMandatory = kSetup + kSources + kEffects + kStructure;

// Text that belongs to no section, alone and behind a script whose optional sections are still
// looked for.
inline void AddTexts(std::vector<Family>& families) {
    const std::pair<const char*, const char*> texts[] = {
        {"blanks", " \n\t"},       {"open brackets", "["},     {"minus signs", "-"},
        {"identifiers", "ab "},    {"one open string", "\"a"}, {"comments", "; text\n"},
        {"open parentheses", "("}, {"comment marks", ";"},     {"header starts", "[SETU "}};
    for (const auto& [name, piece] : texts) {
        const bool isString = piece[0] == '"';
        const auto make = [piece = std::string(piece), isString](std::size_t bytes) {
            std::string text = Repeated(isString ? "a" : piece, bytes);
            if (isString) text.front() = '"';
            return text;
        };
        families.push_back({name, make, 1});
        families.push_back({std::string(name) + " behind a script",
                            [make](std::size_t bytes) { return kMandatory + "{ " + make(bytes); },
                            0});
    }
}

// The statements of one section, repeated.
inline void AddStatements(std::vector<Family>& families) {
    const auto add = [&](const char* name, std::string before, const char* statement,
                         std::string behind) {
        families.push_back(
            {name,
             [=](std::size_t bytes) { return before + Numbered(statement, bytes) + "\n" + behind; },
             0});
    };
    const std::string rest = kEffects + kStructure;
    add("SETUP statements", kSetup, "SPEED = 5 SWAP = TRUE %v% = REGS : {\"a\", \"b\"}\n",
        kSources + rest);
    add("SOURCES statements", kSetup + kSources,
        "N = @ I = INPUT B = BITMAP : \"a\" + \"b\" M = MOVIE : \"c\"\n", rest);
    add("EFFECTS statements", kSetup + kSources + kEffects, "M = MIX E = \"effect @\"\n",
        kStructure);
    add("STRUCTURE names", kMandatory, "(E, E(E, E)), E", "");
    families.back().make = [](std::size_t bytes) {
        return kMandatory + "(" + Repeated("E, E(E, E), ", bytes) + ")";
    };
    add("PROPERTIES statements", kMandatory + "[PROPERTIES]\n",
        "READ WRITE \"p@\" = 1.5 \"q\" = \"text\"\n", "");
    add("MAPPING statements", kMandatory + "[MAPPING]\n", "WRITE \"p\" = E.\"q@\"\n", "");
    add("MAPPING statement of many targets", kMandatory + "[MAPPING] \"p\" = E.\"q\"", ", E.\"q@\"",
        "");
    add("ENVELOPES statements", kMandatory + "[ENVELOPES]\n",
        "F@ = {2}, {0, 0, HERMITE, 1, 2}, {25, HOLD}\n", "");
    add("ENVELOPES statement of many keys", kMandatory + "[ENVELOPES] F = {2}",
        ", {@, 0.5, LINEAR}", ", {9, HOLD}");
    add("TIMELINE statements", kMandatory + "[TIMELINE]\n", "E.\"p@\" = 5\n", "");
    add("TIMELINE statement of many targets", kMandatory + "[TIMELINE] E.\"p\"", ", E.\"p@\"",
        " = 5");
    add("TIMELINE envelopes on many targets",
        kMandatory +
            "[ENVELOPES] F = {1}, {0, HOLD}\n"
            "[TIMELINE] E.\"p\"",
        ", E.\"p@\"", " = F");
}

// Look-ups: each of many names, or a name made for each of many words.
inline void AddLookUps(std::vector<Family>& families) {
    families.push_back({"inputs, each wired",
                        [](std::size_t bytes) {
                            return kSetup + kSources + Numbered("Input@ = INPUT\n", bytes / 2) +
                                   kEffects + kStructure + "(" +
                                   Numbered("Input@, ", bytes * 8 / 30) + ")";
                        },
                        0});
    families.push_back(
        {"MIX words",
         [](std::size_t bytes) { return kMandatory + "(" + Repeated("MIX, ", bytes) + ")"; }, 0});
    families.push_back({"nested parentheses",
                        [](std::size_t bytes) {
                            const std::size_t depth = bytes / 3;
                            return kMandatory + Repeated("(E", depth * 2) + std::string(depth, ')');
                        },
                        0});
    families.push_back({"MAPPING targets, then TIMELINE targets",
                        [](std::size_t bytes) {
                            return kMandatory + "[MAPPING] \"p\" = E.\"q\"" +
                                   Numbered(", E.\"q@\"", bytes / 2) +
                                   "\n[ENVELOPES] F = {1}, {0, HOLD}\n[TIMELINE]\n" +
                                   Numbered("E.\"p@\" = F\n", bytes / 2);
                        },
                        0});
}

inline const std::vector<Family>& HostileFamilies() {
    static const std::vector<Family> families = [] {
        std::vector<Family> all;
        AddTexts(all);
        AddStatements(all);
        AddLookUps(all);
        return all;
    }();
    return families;
}

}  // namespace bench

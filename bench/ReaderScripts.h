#pragma once

// The texts that bench/Reader.cpp reads.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

inline std::string TypicalScript() {
    return R"(; A name tag that slides over the picture and leaves again.
[SETUP]
NAME = "Lower Third"
CATEGORY = "Titles"
SPEED = 2
IS_FILTER = TRUE
%MediaFolder% = REGS : {"Software\Studio\Titles", "MediaFolder", "C:\Titles"}
%Station% = REGS : {"Software\Studio", "Station"}

[SOURCES]
Video = INPUT
Strap = BITMAP : %MediaFolder% + "\straps\" + %Station% + ".png"
Sparkle = MOVIE : %MediaFolder% + "\sparkle.avi"
Shade = BITMAP : "Shade.png"

[EFFECTS]
Slide = "Move\Geometry"
Name = "TextTitle\Video"
Role = "TextTitle\Video"
Tint = "Levels\Video"
Join = MIX

[STRUCTURE]
OUTPUT = Join(Video, Slide(MIX(Shade, Tint(Strap), MIX(Name, Role), Sparkle)))

[PROPERTIES]
READ WRITE "Name" = "A. Guest"
READ WRITE "Role" = "Guest"
READ WRITE ENVELOPED "Strength" = 0.75
READ WRITE EXPENSIVE "Shadow" = TRUE
READ NO_INTERPOLATION "Version" = 3

[MAPPING]
WRITE "Name" = Name."Text"
WRITE "Role" = Role."Text"
WRITE ENVELOPED "Strength" = Tint."White", Tint."Gamma"
WRITE EXPENSIVE "Shadow" = Name."Shadow", Role."Shadow"

[ENVELOPES]
SlideIn = {4}, {0, -0.4, COSINE}, {15, 0.0, HERMITE, 0, 0.5}, {235, 0.0, LINEAR}, {250, HOLD}
Fade = {3}, {0, 0, LINEAR}, {12.5, 1.0, HOLD}, {250, HOLD}

[TIMELINE]
Slide."X" = SlideIn
Slide."Opacity" = Fade
Name."Size" = 64
Role."Size" = 40
Name."Colour", Role."Colour" = -1
Name."Align", Role."Align" = "left"
Name."Folder" = %MediaFolder%
)";
}

// The same information.
inline std::string TypicalToml() {
    return R"(# A name tag that slides over the picture and leaves again.
[setup]
name = "Lower Third"
category = "Titles"
speed = 2
is_filter = true
[setup.regs]
MediaFolder = ['Software\Studio\Titles', "MediaFolder", 'C:\Titles']
Station = ['Software\Studio', "Station"]

[sources]
inputs = ["Video"]
Strap = {kind = "bitmap", path = [{reg = "MediaFolder"}, '\straps\', {reg = "Station"}, ".png"]}
Sparkle = {kind = "movie", path = [{reg = "MediaFolder"}, '\sparkle.avi']}
Shade = {kind = "bitmap", path = ["Shade.png"]}

[effects]
Slide = 'Move\Geometry'
Name = 'TextTitle\Video'
Role = 'TextTitle\Video'
Tint = 'Levels\Video'
mixes = ["Join"]

[structure]
output = {node = "Join", inputs = [{node = "Video"}, {node = "Slide", inputs = [{node = "mix", inputs = [{node = "Shade"}, {node = "Tint", inputs = [{node = "Strap"}]}, {node = "mix", inputs = [{node = "Name"}, {node = "Role"}]}, {node = "Sparkle"}]}]}]}

[properties]
Name = {access = ["read", "write"], value = "A. Guest"}
Role = {access = ["read", "write"], value = "Guest"}
Strength = {access = ["read", "write", "enveloped"], value = 0.75}
Shadow = {access = ["read", "write", "expensive"], value = true}
Version = {access = ["read", "no_interpolation"], value = 3}

[mapping]
Name = {access = ["write"], targets = [["Name", "Text"]]}
Role = {access = ["write"], targets = [["Role", "Text"]]}
Strength = {access = ["write", "enveloped"], targets = [["Tint", "White"], ["Tint", "Gamma"]]}
Shadow = {access = ["write", "expensive"], targets = [["Name", "Shadow"], ["Role", "Shadow"]]}

[envelopes]
SlideIn = {count = 4, keys = [[0, -0.4, "cosine"], [15, 0.0, "hermite", 0, 0.5], [235, 0.0, "linear"], [250, "hold"]]}
Fade = {count = 3, keys = [[0, 0, "linear"], [12.5, 1.0, "hold"], [250, "hold"]]}

[timeline]
entries = [
  {targets = [["Slide", "X"]], envelope = "SlideIn"},
  {targets = [["Slide", "Opacity"]], envelope = "Fade"},
  {targets = [["Name", "Size"]], value = 64},
  {targets = [["Role", "Size"]], value = 40},
  {targets = [["Name", "Colour"], ["Role", "Colour"]], value = -1},
  {targets = [["Name", "Align"], ["Role", "Align"]], value = "left"},
  {targets = [["Name", "Folder"]], variable = "MediaFolder"},
]
)";
}

// The text with its capitalised words, which are the names that its author chose, made longer by up
// to six letters. The same word becomes the same one wherever it stands in texts of one variant.
inline std::string Renamed(std::string_view text, unsigned variant) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    const auto isSmall = [](char c) { return c >= 'a' && c <= 'z'; };
    std::string renamed;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && isLetter(text[end])) ++end;
        if (end == at) {
            renamed += text[at++];
            continue;
        }
        const std::string_view word = text.substr(at, end - at);
        renamed += word;
        at = end;
        if (word.size() < 3 || isSmall(word[0]) || !isSmall(word[1])) continue;
        std::uint32_t hash = variant * 0x9E3779B1U;
        for (char c : word) hash = (hash ^ static_cast<std::uint8_t>(c)) * 0x01000193U;
        hash ^= hash >> 15;
        for (std::uint32_t more = hash % 7; more > 0; --more) {
            renamed += static_cast<char>('a' + (hash >> more) % 26);
        }
    }
    return renamed;
}

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

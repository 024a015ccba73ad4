#pragma once

// A typical script, the same information as TOML, and texts that differ from it in their words.

#include <cstdint>
#include <string>
#include <string_view>

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

}  // namespace bench

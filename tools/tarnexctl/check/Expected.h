#pragma once

// What could stand at a place of a script, in words.

#include <string>
#include <vector>

#include "check/FurthestMatch.h"
#include "check/Recording.h"

namespace tarnexctl {

// The forms of the section's statements, for the place where one would begin.
std::vector<std::string> StatementForms(Section section);

// What a match needs at the place where it failed.
std::vector<std::string> ExpectedWords(const FurthestMatch& furthest);

// The keywords among it.
std::vector<std::wstring_view> ExpectedKeywords(const FurthestMatch& furthest);

}  // namespace tarnexctl

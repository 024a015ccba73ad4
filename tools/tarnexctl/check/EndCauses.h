#pragma once

// The mistakes that are known to end a section, each with a code of its own.

#include <string>
#include <vector>

#include "check/Comments.h"
#include "check/Diagnostics.h"
#include "check/FurthestMatch.h"
#include "check/Subject.h"

namespace tarnexctl {

// A section's end at a text that is neither a statement nor a header.
struct SectionStop {
    Section section = Section::kSetup;
    const RecordedStatement* previous = nullptr;  // the last one in front of it
    std::size_t position = 0;                     // of the text that no statement takes
    FurthestMatch furthest;
    // The word or mark that no rule could take.
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Says why the section ends there, if one of the known mistakes explains it.
bool AddCause(const Subject& subject, const SectionStop& stop,
              const std::vector<std::string>& notRead, Diagnostics& diagnostics);

// What a comment does, with further lines of help.
void AddTrouble(const CommentTrouble& trouble, const std::vector<std::string>& help,
                Diagnostics& diagnostics);

// Whether a word stands where a text in quotes should.
bool WantsQuotes(const FurthestMatch& furthest, std::wstring_view found);

}  // namespace tarnexctl

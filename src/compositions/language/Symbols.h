#pragma once

// The numbers of the composition language: lexem kinds and grammar rules share one space.

#include <cstdint>

namespace compositions {

enum LexemKind : std::uint32_t {
    LxDigits = 0,
    LxMinus = 2,
    LxPlus = 3,
    LxPoint = 4,
    LxIdent = 6,
    LxQuote = 7,
    LxOpenBracket = 13,
    LxCloseBracket = 14,
    LxStringBody = 15,
    LxEquals = 18,
    LxPercent = 19,
    LxComma = 22,
    LxColon = 23,
    LxOpenBrace = 24,
    LxCloseBrace = 25,
    LxOpenParen = 40,
    LxCloseParen = 41,
};

enum Rule : std::uint32_t {
    R1 = 1,    // integer
    R5 = 5,    // number
    R8 = 8,    // string
    R9 = 9,    // quoted text
    R10 = 10,  // path part
    R11 = 11,  // path
    R12 = 12,  // bracketed name
    R16 = 16,  // SETUP: name = string
    R17 = 17,  // SETUP: name = name
    R20 = 20,  // variable
    R26 = 26,  // [SETUP]
    R27 = 27,  // register block
    R28 = 28,  // SETUP: variable definition
    R29 = 29,  // [PROPERTIES]
    R30 = 30,  // PROPERTIES: access words "name" = value
    R31 = 31,  // value
    R32 = 32,  // [SOURCES]
    R33 = 33,  // SOURCES: name = INPUT
    R34 = 34,  // SOURCES: name = BITMAP: path
    R35 = 35,  // SOURCES: name = MOVIE: path
    R36 = 36,  // [EFFECTS]
    R37 = 37,  // EFFECTS: name = MIX or string
    R38 = 38,  // [STRUCTURE]
    R39 = 39,  // STRUCTURE: OUTPUT =
    R42 = 42,  // [MAPPING]
    R43 = 43,  // names and a string
    R44 = 44,  // target
    R45 = 45,  // targets
    R46 = 46,  // MAPPING: access words "name" = targets
    R47 = 47,  // [ENVELOPES]
    R48 = 48,  // number in braces
    R49 = 49,  // key with value
    R50 = 50,  // key without value
    R51 = 51,  // keys
    R52 = 52,  // ENVELOPES: name = {count}, keys
    R53 = 53,  // [TIMELINE]
    R54 = 54,  // TIMELINE: targets =
    R55 = 55,  // TIMELINE: targets = value
    R56 = 56,  // SOURCES: name = integer
    R57 = 57,  // SETUP: name = integer
};

}  // namespace compositions

#include "compositions/QuirkyScripts.h"

#include <algorithm>

namespace tooltest {

std::string QuirkyScripts::Word() {
    return OneOf({"A", "b", "_x", "Mix2", "MIX0", "mix1", "In", "E1", "CAM_1", "x\xE9y", "Read",
                  "OUTPUT", "Input", "Linear", "Setup"});
}

std::string QuirkyScripts::Text() {
    if (headers_ && Below(8) == 0) {
        return OneOf({"\"[SOURCES] \"", "\"a[ setup ]\tb\"", "\"[Timeline] A\"", "\"[MAPPING] x\"",
                      "\"1 [effects]\nMore\"", "\"[PROPERTIES] \"", "\"[%Structure] \""});
    }
    return OneOf({"\"\"",       "\"a\"",     "\" lead\"",
                  "\"trail \"", "\"-x\"",    "\"%p%\"",
                  "\"a\\b\"",   "\"\\\"",    "\"n\xE4\xF6\xFF\"",
                  "\"1\"",      "\"MIX\"",   "\"Read\"",
                  "\"WRITE\"",  "\"a\nb\"",  "\"[\"",
                  "\"[SET\"",   "\"]\"",     "\"Two words\"",
                  "\"=\"",      "\"{a}\"",   "\"x;comment\n y\"",
                  "\"TRUE\"",   "\"(a,b)\"", std::string("\"z\0z\"", 5)});
}

std::string QuirkyScripts::Number() {
    return OneOf({"1", "-3", "- 3", "-x5", "1.5", "1 . 5",
                  "1.\xE9"
                  "5",
                  "12_3", "007", "-0.0", "999999999999", "-2147483648", "-\n7", "3.1_"});
}

std::string QuirkyScripts::Access() {
    return OneOf({"", "READ ", "write ", "READ WRITE ", "Enveloped ", "EXPENSIVE ",
                  "NO_INTERPOLATION READ ", "ENVELOPED NO_INTERPOLATION ", "Read Read "});
}

std::string QuirkyScripts::Declared(const std::string& word) {
    declared_.push_back(word);
    return word;
}

std::string QuirkyScripts::Setup() {
    return "NAME = " + OneOf({Text(), "\"n\""}) + " CATEGORY = " + OneOf({Text(), "\"c\""}) + "\n" +
           Several([&] {
               return OneOf(
                   {"SPEED = " + OneOf({"-5", "7", "- 3", "99999999999"}), "SWAP = " + Word(),
                    "IS_FILTER = FALSE", "Other = " + Text(),
                    "%" + Word() + "% = REGS : {" + Text() + ", " + Text() + "}",
                    "%" + Word() + "% = REGS : {" + Text() + ", " + Text() + "," + Text() + "}"});
           });
}

std::string QuirkyScripts::Sources() {
    const auto part = [&] { return Below(2) == 0 ? Text() : "%" + Word() + "%"; };
    return Several([&] {
        const std::string name = Declared(Word()) + " = ";
        const std::string kind = OneOf({"BITMAP : ", "movie : "});
        return name + OneOf({"INPUT", OneOf({"3", "-7", "- 3", "99999999999"}), kind + part(),
                             kind + part() + " + " + part()});
    });
}

std::string QuirkyScripts::Effects() {
    return Several(
        [&] {
            const std::string name = Declared(Word());
            if (Below(3) == 0) return name + " = mix";
            effects_.push_back(name);
            return name + " = " + OneOf({Text(), "\"Blur\\Video\""});
        },
        6);
}

std::string QuirkyScripts::Node(unsigned depth) {
    const bool made = declared_.empty() || Below(3) == 0;
    std::string node = made ? "Mix" : OneOf(declared_);
    if (depth > 0 && Below(2) == 0) {
        node += "(" + Several([&] { return Node(depth - 1) + OneOf({"", ","}); }, 3) + ")";
    }
    return node;
}

std::string QuirkyScripts::Structure() {
    if (Below(12) == 0) return "OUTPUT = \n";
    return "OUTPUT = " + (Below(4) == 0 ? Node(2) + ", " : "") + Node(3) + "\n";
}

std::string QuirkyScripts::Properties() {
    return Several([&] {
        const std::string value = OneOf({Text(), Number(), "TRUE", "false"});
        const std::string odd = OneOf({"", "", "", Word() + " ", Word() + " " + Word() + " "});
        return Access() + odd + Text() + " = " + value;
    });
}

std::string QuirkyScripts::Mapping() {
    if (effects_.empty()) return "";
    return Several([&] {
        std::string statement = Access() + OneOf({"", "", "Odd "}) + Text() + " = ";
        for (unsigned left = Below(3); left > 0; --left) {
            statement += OneOf(effects_) + "." + Text() + ", ";
        }
        return statement + OneOf(effects_) + " . " + Text();
    });
}

std::string QuirkyScripts::Envelopes() {
    return Several([&] {
        std::string statement = Word() + " = {" + Number() + "}";
        const auto kind = [&] {
            return OneOf({"LINEAR", "cosine", "Cubic", "HERMITE", "HOLD"}) +
                   (Below(3) == 0 ? ", " + Number() + ", " + Number() : "");
        };
        for (unsigned left = Below(4); left > 0; --left) {
            statement += ", {" + Number() + ", " + Number() + ", " + kind() + "}";
        }
        return statement + ", {" + Number() + ", " + kind() + "}";
    });
}

std::string QuirkyScripts::Timeline() {
    return Several(
        [&] {
            const std::string target = Word() + "." + Text();
            const std::string more = Below(3) == 0 ? ", " + Word() + "." + Text() : "";
            return target + more + " = " +
                   OneOf({Text(), Number(), "%" + Word() + "%", Word(), "{"});
        },
        6);
}

std::string QuirkyScripts::Next() {
    declared_.clear();
    effects_.clear();
    std::vector<std::string> sections = {"[SETUP]\n" + Setup(), "[ sources ] " + Sources(),
                                         "[Effects]\t" + Effects()};
    sections.push_back("[STRUCTURE]\n" + Structure());
    if (Below(4) != 0) sections.push_back("[PROPERTIES]\n" + Properties());
    if (Below(4) != 0) sections.push_back("[MAPPING]\n" + Mapping());
    if (Below(4) != 0) sections.push_back("[ENVELOPES]\n" + Envelopes());
    if (Below(4) != 0) sections.push_back("[TIMELINE]\n" + Timeline());
    if (Below(2) == 0) std::shuffle(sections.begin(), sections.end(), random_);
    std::string script;
    for (const std::string& section : sections) script += section + "\n";
    return script;
}

}  // namespace tooltest

#pragma once

#include <random>
#include <string>
#include <vector>

namespace tooltest {

// Scripts by seed that use all the odd corners of the language: texts that hold headers, bytes
// above 0x7F, words in the wrong place, numbers with blanks, several outermost nodes. Most of them
// read; sections of them end early.
class QuirkyScripts {
public:
    // `headers`: texts may hold the headers of sections.
    QuirkyScripts(unsigned seed, bool headers) : random_(seed), headers_(headers) {}

    std::string Next();

private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
    std::string OneOf(const std::vector<std::string>& choices) {
        return choices[Below(static_cast<unsigned>(choices.size()))];
    }
    template <class Step>
    std::string Several(Step step, unsigned most = 4) {
        std::string text;
        for (unsigned left = Below(most + 1); left > 0; --left) text += step() + OneOf({"\n", " "});
        return text;
    }

    std::string Word();
    std::string Text();
    std::string Number();
    std::string Access();
    std::string Declared(const std::string& word);

    std::string Setup();
    std::string Sources();
    std::string Effects();
    std::string Structure();
    std::string Node(unsigned depth);
    std::string Properties();
    std::string Mapping();
    std::string Envelopes();
    std::string Timeline();

    std::mt19937 random_;
    bool headers_;
    std::vector<std::string> declared_;
    std::vector<std::string> effects_;
};

}  // namespace tooltest

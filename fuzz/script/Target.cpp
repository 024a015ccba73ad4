// A script's bytes to its description. Short scripts are read by the plain reader, too, and must
// come to the same. By their size, some are read from a file as well, and some are the choices that
// make a grammar for the toolkit.

#include <sstream>
#include <string>

#include "Fuzz.h"
#include "TempFile.h"
#include "compositions/CompScript.h"
#include "compositions/language/CompPreprocessor.h"
#include "compositions/reader/PlainComparison.h"
#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/GrammarComparison.h"
#include "helpers/scripting/PlainInterpreter.h"
#include "helpers/scripting/ScriptFile.h"

using compositions::CompositionScript;

namespace {

constexpr std::size_t kPlainReaderLimit = 1500;  // it takes time by the square of the size
constexpr std::size_t kGrammarBytes = 400;

// Read through a file, a script comes to the same, as does what its interface hands out.
void CheckFile(const std::string& text, const CompositionScript& script) {
    static fuzz::TempFile scratch("script");
    scratch.Write(text);
    const CompositionScript::ScriptFile file(scratch.Path());
    fuzz::Check(file.loaded() == !text.empty(), "whether the file was read");
    const CompositionScript again(file);
    fuzz::Check(again.GetReadStatus() == script.GetReadStatus(), "the file's status");
    fuzz::Check(again.GetDescription() == script.GetDescription(), "the file's description");

    std::wostringstream cleaned;
    const bool isClean = compositions::CompPreprocessor().preprocess(file, cleaned);
    fuzz::Check(isClean && (text.empty() || cleaned.str() == plain::Preprocess(text)),
                "the cleaned text");

    const compositions::CompositionDescription& d = script.GetDescription();
    fuzz::Check(script.GetName() == d.name && script.GetCategory() == d.category &&
                    script.IsFilter() == d.isFilter && script.GetSpeed() == d.speed &&
                    script.GetSwap() == d.swap && script.GetInputs() == d.inputs &&
                    script.GetMediaSources() == d.mediaSources &&
                    script.GetEffectInstances() == d.effectInstances &&
                    script.GetMappings() == d.mappings && script.GetProperties() == d.properties &&
                    script.GetEnvelopes() == d.envelopes &&
                    script.GetTimelineEntries() == d.timelineEntries &&
                    script.GetTimelineEvents() == d.timelineEvents &&
                    script.GetStructure() == d.structure &&
                    script.GetNumberedInputs() == d.numberedInputs &&
                    script.GetMixes() == d.mixes && script.GetRegistryValues() == d.registryValues,
                "what the interface hands out");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    // Without any bytes there is no text at all, where the plain reader has a blank.
    if (size != 0 && size <= kPlainReaderLimit) {
        const PlainComparison comparison = CompareWithPlain(text);
        fuzz::Check(comparison.difference.empty(), "differs: " + comparison.difference);
    }
    const CompositionScript script{std::string_view(text)};
    if (size > kPlainReaderLimit || size % 8 == 0) CheckFile(text, script);
    if (size % 64 == 1) {
        generated::Random random(std::string_view(text).substr(0, kGrammarBytes));
        const std::string difference = DifferenceOnRandomGrammar(random, size % 128 == 1);
        fuzz::Check(difference.empty(), "differs: " + difference);
    }
    captured::TakeDebugged();
    captured::TakeTraced();
    return 0;
}

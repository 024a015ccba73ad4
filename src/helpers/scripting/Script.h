#pragma once

// A script's text, cleaned of comments and widened, on which lexems are read by position. For one
// thread at a time.

#include <memory>
#include <string>
#include <string_view>

#include "helpers/report/Report.h"
#include "helpers/scripting/ScriptCore.h"
#include "helpers/scripting/ScriptFile.h"
#include "helpers/scripting/TypeNames.h"

namespace helpers::scripting {

// Preprocessor: `bool preprocess(std::string_view, std::wstring&) const` turns a script's bytes
// into its text, the trailing blank and zero included; `kTypeName` is its name in reports.
// File: has `loaded()` and `Bytes()`, as ScriptFile. String: std::wstring.
template <class Preprocessor, class File, class String>
class Script : public ScriptCore {
public:
    // A file that is not loaded gives an object without a text, and a line in the debugger output.
    Script(const File& file, const String& blanks)
        : Script(file, std::make_shared<const Language>(Grammar(), blanks)) {}
    // From bytes in memory, as if they were a file's: none at all count as not loaded.
    Script(std::string_view bytes, const String& blanks)
        : Script(bytes, std::make_shared<const Language>(Grammar(), blanks)) {}

protected:
    Script(const File& file, std::shared_ptr<const Language> language)
        : ScriptCore(std::move(language)) {
        std::string_view bytes = file.Bytes();
        if (!bytes.empty()) bytes.remove_suffix(1);  // the preprocessor adds the blank itself
        Build(file.loaded(), bytes);
    }
    Script(std::string_view bytes, std::shared_ptr<const Language> language)
        : ScriptCore(std::move(language)) {
        Build(!bytes.empty() && bytes.size() < kTooLong, bytes);
    }

private:
    static constexpr std::size_t kTooLong = 0xFFFFFFFF;
    static constexpr int kNotLoadedLine = 159;

    void Build(bool loaded, std::string_view bytes) {
        if (!loaded) {
            const std::string name = OperationName<Preprocessor, File, String>("Script", "Script");
            ReportAssertion("Common/Helpers/Script", kNotLoadedLine, name.c_str());
            return;
        }
        String text;
        Preprocessor().preprocess(bytes, text);
        TakeText(std::move(text));
    }
};

}  // namespace helpers::scripting

#include <string>
#include <string_view>

#include "compositions/CompScriptSections.h"
#include "compositions/language/Symbols.h"
#include "helpers/tracer/TraceMessage.h"
#include "platform/CodePage.h"

namespace compositions {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kTraceBuffer = 1024;  // its terminator included

// The line ends where its buffer does, and each text at its first zero.
void TraceTitle(const CompositionDescription& description) {
    if (!helpers::TraceMessage::IsHeard()) return;
    const auto narrow = [](const WideText& text) {
        return platform::ToNarrow(std::wstring_view(text.c_str()).substr(0, kTraceBuffer),
                                  platform::CodePage::kAnsi);
    };
    std::string line = "-----------------\n" + narrow(description.name) + "/" +
                       narrow(description.category) + "\n---------------\n";
    if (line.size() >= kTraceBuffer) line.resize(kTraceBuffer - 1);
    helpers::TraceMessage().Append(line);
}

void ReadText(ScriptCursor& cursor, const Pieces& pieces, CompositionDescription& description) {
    if (IsKeyword(pieces[0], L"NAME"sv)) {
        description.name = pieces[1];
    } else if (IsKeyword(pieces[0], L"CATEGORY"sv)) {
        description.category = pieces[1];
    } else {
        return cursor.Skipped();
    }
    cursor.Taken();
}

void ReadSpeed(ScriptCursor& cursor, const Pieces& pieces, CompositionDescription& description) {
    if (!IsKeyword(pieces[0], L"SPEED"sv)) return cursor.Skipped();
    description.speed = NumberOf(pieces[1]);
    cursor.Taken();
}

std::int32_t ReadSwitch(ScriptCursor& cursor, const Pieces& pieces,
                        CompositionDescription& description) {
    if (IsKeyword(pieces[0], L"SWAP"sv)) {
        description.swap = true;  // whatever its value: authors rely on SWAP = FALSE setting it
    } else if (!IsKeyword(pieces[0], L"IS_FILTER"sv)) {
        cursor.Skipped();
        return status::kRead;
    } else if (IsKeyword(pieces[1], L"TRUE"sv)) {
        description.isFilter = true;
    } else if (IsKeyword(pieces[1], L"FALSE"sv)) {
        description.isFilter = false;
    } else {
        return cursor.Refused(status::kFaultyStatement, pieces[1]);
    }
    cursor.Taken();
    return status::kRead;
}

// Pieces: the variable, REGS, two strings and perhaps a third.
void ReadRegistryValue(ScriptCursor& cursor, const Pieces& pieces,
                       CompositionDescription& description) {
    const bool isTaken =
        (pieces.size() == 4 || pieces.size() == 5) && IsKeyword(pieces[1], L"REGS"sv);
    if (!isTaken) return cursor.Skipped();
    RegistryValue& value = description.registryValues[UpperName(pieces[0])];
    value.first = pieces[2];
    value.second = pieces[3];
    value.third = pieces.size() == 5 ? pieces[4] : std::wstring_view();
    cursor.Taken();
}

}  // namespace

std::int32_t ReadSetup(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kSetup, R26)) return status::kNoSetup;
    Pieces& pieces = cursor.Scratch();
    for (;;) {
        const TextForm form = cursor.NextAssignment();
        if (CanBe(form, TextForm::kString) && cursor.Match(R16, pieces)) {
            ReadText(cursor, pieces, description);
        } else if (CanBe(form, TextForm::kNumber) && cursor.Match(R57, pieces)) {
            ReadSpeed(cursor, pieces, description);
        } else if (CanBe(form, TextForm::kWord) && cursor.Match(R17, pieces)) {
            const std::int32_t result = ReadSwitch(cursor, pieces, description);
            if (result != status::kRead) return result;
        } else if (CanBe(form, TextForm::kVariable) && cursor.Match(R28, pieces)) {
            ReadRegistryValue(cursor, pieces, description);
        } else {
            break;
        }
    }
    if (description.name.empty() || description.category.empty()) return status::kNoNameOrCategory;
    TraceTitle(description);
    return status::kRead;
}

}  // namespace compositions

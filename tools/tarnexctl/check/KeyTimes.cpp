#include "check/KeyTimes.h"

#include <string>

namespace tarnexctl {
namespace {

// Every key's braces follow a comma: the n-th "{" behind the count's is the n-th key's.
ByteRange RangeOfKey(const Subject& subject, const RecordedStatement& statement,
                     std::size_t number) {
    const std::wstring_view text = subject.Text();
    const std::wstring_view name = subject.Record().Pieces(statement)[0];
    std::size_t brace = static_cast<std::size_t>(name.data() - text.data()) + name.size();
    for (std::size_t i = 0; i <= number + 1; ++i) {
        brace = text.find(L'{', brace) + 1;
        if (brace == 0) return statement.range;
    }
    const std::size_t close = text.find(L'}', brace);
    return close == text.npos ? statement.range : subject.RangeOf(brace - 1, close + 1);
}

}  // namespace

double NumberValue(std::wstring_view number) {
    double value = 0;
    double digitWorth = 0;  // of the next digit of the fraction
    for (const wchar_t character : number) {
        if (character == L'.') {
            digitWorth = 0.1;
        } else if (character >= L'0' && character <= L'9') {
            const double digit = character - L'0';
            value = digitWorth == 0 ? value * 10 + digit : value + digit * digitWorth;
            digitWorth /= 10;
        }
    }
    return number.starts_with(L'-') ? -value : value;
}

void CheckKeyTimes(const Subject& subject, const RecordedStatement& statement,
                   const compositions::Envelope& envelope, Diagnostics& diagnostics) {
    for (std::size_t i = 1; i < envelope.keys.size(); ++i) {
        const std::wstring_view before = envelope.keys[i - 1].time;
        const std::wstring_view time = envelope.keys[i].time;
        if (NumberValue(time) >= NumberValue(before)) continue;
        const ByteRange range =
            diagnostics.HasRoom() ? RangeOfKey(subject, statement, i) : statement.range;
        diagnostics.Add("C512", range,
                        "the time " + Unquoted(time) + " lies before " + Unquoted(before) +
                            ", the one in front of it");
    }
}

}  // namespace tarnexctl

#include "helpers/tracer/TraceMessage.h"

#include "platform/CodePage.h"

namespace helpers {

TraceMessage::TraceMessage(std::uint32_t level) : level_(level) {}

TraceMessage::~TraceMessage() {
    text_ += L"\n";
    (void)level_;
    (void)reserved_;
}

TraceMessage& TraceMessage::Append(std::string_view text) {
    text_ += platform::ToWide(text, platform::CodePage::kAnsi);
    return *this;
}

TraceMessage& TraceMessage::Append(std::wstring_view text) {
    text_ += text;
    return *this;
}

}  // namespace helpers

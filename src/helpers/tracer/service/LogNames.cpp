#include "helpers/tracer/service/LogNames.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/filesystem/path.hpp>

#include "platform/CodePage.h"
#include "platform/NativePath.h"

namespace helpers {

std::wstring LogStamp() {
    const boost::posix_time::ptime now = boost::posix_time::second_clock::local_time();
    const auto date = now.date().year_month_day();
    const auto time = now.time_of_day();
    const auto text = [](auto number) { return std::to_wstring(static_cast<int>(number)); };
    return text(date.year) + L"-" + text(date.month.as_number()) + L"-" +
           text(date.day.as_number()) + L" " + text(time.hours()) + L"-" + text(time.minutes()) +
           L"-" + text(time.seconds());
}

LogNames MakeLogNames(const std::wstring& executablePath) {
    const std::wstring name = L"trace_" + LogStamp() + L".log";
    const boost::filesystem::path program(platform::NativePath(executablePath));
    const std::wstring folder = platform::WidePath(program.parent_path().native());
    LogNames names;
    names.places = {{folder + L"/Logs", folder + L"/Logs/" + name},
                    {L"d:\\Logs", L"d:\\Logs\\" + name},
                    {L"", L"d:\\" + name}};
    names.firstLine =
        platform::ToNarrow(platform::WidePath(program.stem().native()), platform::CodePage::kAnsi) +
        "\n";
    return names;
}

}  // namespace helpers

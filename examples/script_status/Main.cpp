// Says how composition scripts read: the status of each and why it is refused.
//
//     script_status FILE...
//
// 0 when all are whole, 1 when one is not.

#include <cstdio>
#include <filesystem>

#include "compositions/CompScript.h"
#include "compositions/language/CompInterpreter.h"

int main(int count, char** arguments) {
    bool whole = true;
    for (int i = 1; i < count; ++i) {
        const std::filesystem::path path = arguments[i];
        const compositions::CompositionScript::ScriptFile file(path.wstring());
        if (!file.loaded()) {
            std::printf("%s: cannot be read\n", arguments[i]);
            whole = false;
            continue;
        }
        const compositions::CompositionScript script(file);
        const std::int32_t status = script.GetReadStatus();
        std::printf("%s: status %d, %s\n", arguments[i], static_cast<int>(status),
                    compositions::ReadStatusText(status));
        whole = whole && status == compositions::status::kRead;
    }
    return whole ? 0 : 1;
}

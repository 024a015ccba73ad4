#pragma once

// The user's settings of the conversion of scripts to archives, read anew for every load.

#include <string>

namespace compositions {

// A value that is absent or cannot be read is empty. Each means something only as exactly "1".
struct ConverterSettings {
    std::wstring convertor;
    std::wstring type;
    std::wstring saveFx;

    // No value has more than 259 characters.
    bool AreWithinLimits() const;
    // Scripts are read as if there were no archives.
    bool IsConverting() const;
    // Besides, the archive of each script that is read is written beside it.
    bool WritesArchives() const;
};

// Any thread. Throws std::bad_alloc.
ConverterSettings ReadConverterSettings();

}  // namespace compositions

#pragma once

// The settings in force for the present user, as the library reads them.

#include <optional>
#include <string>
#include <vector>

#include "probe/Findings.h"

namespace tarnexctl {

struct SettingValue {
    std::string key;
    std::string name;
    std::optional<std::string> value;  // none when it is absent or of no use
    std::string meaning;               // what it does, as it stands
};

struct SettingsReport {
    std::string store;  // the registry, or the file
    std::vector<SettingValue> values;
    bool tracing = false;
    std::string tracingWords;
    std::string archiveWords;
    std::vector<Finding> findings;
};

SettingsReport ReadSettingsReport();

struct FolderReport {
    std::string folder;
    std::string purpose;
    bool exists = false;
    bool writable = false;  // files can be made in it, or it can be made
};

// Where the log of a host in `programFolder` goes, in the order in which the places are tried.
std::vector<FolderReport> ReadLogFolders(const std::string& programFolder);

FolderReport ReadFolder(const std::string& folder, const std::string& purpose);

}  // namespace tarnexctl

#pragma once

// A composition's description, read from a script or from an archive, whichever the file holds.

#include <cstdint>
#include <memory>
#include <string>

#include "compositions/CompScript.h"
#include "frame/Session.h"

namespace tarnexctl {

struct LoadedDescription {
    std::string file;  // as the user named it
    bool isArchive = false;
    std::int32_t archiveVersion = 0;
    std::shared_ptr<const compositions::CompositionScript> script;

    const compositions::CompositionDescription& Get() const { return script->GetDescription(); }
};

// All bytes of a plain file that the user named; a Failure when there is none or it cannot be read.
std::string ReadInput(const std::string& name);

// A Failure when a script has more bytes than this program reads of one.
void RequireScriptSize(const std::string& name, std::uint64_t bytes);

// Whether bytes are an archive's: all of its signature, whatever comes behind it.
bool IsArchive(std::string_view bytes);

// A Failure when the file cannot be read, holds a damaged archive, or nothing of a script. A script
// that is refused still has a description: what was read of it until then.
LoadedDescription LoadDescription(const std::string& name);

// Says on standard error what is missing in the description, because its script was refused or a
// section of it ended at a statement that was. True when nothing is.
bool ReportStatuses(const LoadedDescription& loaded, Session& session);

}  // namespace tarnexctl

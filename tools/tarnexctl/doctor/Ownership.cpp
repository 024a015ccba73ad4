#include "doctor/Ownership.h"

#include <algorithm>

#include "binary/ImportSearch.h"
#include "frame/Text.h"
#include "platform/LibraryHolders.h"
#include "platform/OwnerByte.h"
#include "probe/ChildRun.h"

namespace tarnexctl {
namespace {

std::vector<Holder> HoldersOf(const std::string& library) {
    std::string problem;
    const LibraryImage image = ReadLibraryImage(ReadWholeFile(ToPath(library), problem));
    const ImageSection* const section = image.FindSection(platform::kOwnerSection);
    std::vector<Holder> holders;
    for (const platform::LibraryHolder& found : platform::FindLibraryHolders(library)) {
        Holder holder = {found.process, found.program, std::nullopt};
        unsigned char byte = 0;
        if (section != nullptr &&
            platform::ReadProcessByte(found.process, found.base + section->address, byte)) {
            holder.owner = byte != 0;
        }
        holders.push_back(std::move(holder));
    }
    return holders;
}

OwnershipState StateOf(const std::vector<Holder>& holders) {
    const auto is = [](std::optional<bool> what) {
        return [what](const Holder& holder) { return holder.owner == what; };
    };
    if (std::any_of(holders.begin(), holders.end(), is(true))) return OwnershipState::kTaken;
    const bool allRefused = std::all_of(holders.begin(), holders.end(), is(false));
    return !holders.empty() && allRefused ? OwnershipState::kStuck : OwnershipState::kUnknown;
}

}  // namespace

const char* OwnershipName(OwnershipState state) {
    switch (state) {
        case OwnershipState::kFree:
            return "free";
        case OwnershipState::kTaken:
            return "taken";
        case OwnershipState::kStuck:
            return "taken by a process that was itself refused";
        case OwnershipState::kUnknown:
            return "taken by an unknown process";
        case OwnershipState::kNoLibrary:
            return "not known";
    }
    return "not known";
}

Ownership AskOwnership(const std::string& library, std::uint32_t timeoutMs) {
    Ownership ownership;
    const ChildOutcome outcome = RunOwnChild({"ownership-child", "--", library}, timeoutMs);
    const Json* const owned = outcome.Find("owned");
    if (owned == nullptr) {
        ownership.problem =
            outcome.findings.empty() ? "it has no GetTarnex" : outcome.findings.front().detail;
        return ownership;
    }
    if (owned->get<bool>()) {
        ownership.state = OwnershipState::kFree;
        return ownership;
    }
    ownership.holders = HoldersOf(library);
    ownership.state = StateOf(ownership.holders);
    return ownership;
}

}  // namespace tarnexctl

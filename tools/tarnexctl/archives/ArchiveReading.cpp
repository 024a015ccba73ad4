#include "archives/ArchiveReading.h"

#include <algorithm>
#include <cstring>

#include "compositions/ArchiveBody.h"
#include "compositions/ArchiveException.h"
#include "compositions/ArchiveHeader.h"
#include "compositions/ScriptArchive.h"
#include "frame/ExitCode.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

using compositions::kArchiveHeaderBytes;
using compositions::kArchiveSignature;

// What is wrong with the signature and the version, if anything.
std::optional<ArchiveDamage> ReadHeader(std::string_view bytes, std::int32_t& version) {
    const auto differs = std::mismatch(kArchiveSignature.begin(), kArchiveSignature.end(),
                                       bytes.begin(), bytes.end());
    const auto same = static_cast<std::uint64_t>(differs.second - bytes.begin());
    if (differs.first != kArchiveSignature.end() && differs.second != bytes.end()) {
        return ArchiveDamage{same, "this is not an archive's signature"};
    }
    if (bytes.size() < kArchiveHeaderBytes) {
        return ArchiveDamage{bytes.size(), "the file ends in its header"};
    }
    std::memcpy(&version, bytes.data() + kArchiveSignature.size(), sizeof version);
    if (version < compositions::ScriptArchive::kFirstUsableVersion) {
        return ArchiveDamage{kArchiveSignature.size(),
                             "there is no version " + std::to_string(version)};
    }
    return std::nullopt;
}

ArchiveDamage DamageOf(const compositions::ArchiveFault& fault, std::uint64_t bytes,
                       std::size_t fields) {
    const std::string where = std::string(" in the field \"") + kArchiveFields.at(fields - 1) + '"';
    if (!fault.isCount) return {kArchiveHeaderBytes + fault.offset, "the file ends" + where};
    const std::uint64_t behind = bytes - fault.offset - sizeof fault.count;
    return {kArchiveHeaderBytes + fault.offset,
            "a count of " + std::to_string(fault.count) + where + " that the " +
                Count(behind, "byte", "bytes") + " behind it cannot hold"};
}

}  // namespace

ArchiveReading ReadArchive(std::string_view bytes) {
    ArchiveReading reading;
    reading.damage = ReadHeader(bytes, reading.version);
    if (reading.damage) return reading;
    const std::string_view body = bytes.substr(kArchiveHeaderBytes);
    try {
        const std::size_t taken =
            compositions::LoadArchiveBody(body, reading.description, &reading.fieldOffsets);
        reading.end = kArchiveHeaderBytes + taken;
    } catch (const compositions::arch_exception& error) {
        reading.damage = DamageOf(error.Fault(), body.size(), reading.fieldOffsets.size());
    }
    for (std::uint64_t& offset : reading.fieldOffsets) offset += kArchiveHeaderBytes;
    return reading;
}

ArchiveReading ReadWholeArchive(const std::string& name, std::string_view bytes) {
    if (!bytes.starts_with(kArchiveSignature)) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is no archive");
    }
    ArchiveReading reading = ReadArchive(bytes);
    if (reading.damage) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is a damaged archive: byte " +
                                                  std::to_string(reading.damage->offset) + ", " +
                                                  reading.damage->reason);
    }
    return reading;
}

}  // namespace tarnexctl

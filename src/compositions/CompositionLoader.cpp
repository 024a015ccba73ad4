#include "compositions/CompositionLoader.h"

#include <optional>
#include <utility>

#include "compositions/ArchivePath.h"
#include "compositions/ArchiveWriter.h"
#include "compositions/ConverterSettings.h"
#include "compositions/ScriptArchive.h"
#include "helpers/scripting/ScriptFile.h"
#include "platform/File.h"
#include "platform/FileMove.h"

namespace compositions {
namespace {

// Which files a load is about.
struct LoadPlan {
    bool converting = false;
    bool writesArchive = false;
    std::wstring openPath;  // the archive when archives are written, else the path itself
};

// Nothing when something is too long: lengths count only where the settings ask for conversion.
std::optional<LoadPlan> MakePlan(const std::wstring& path, const ConverterSettings& settings) {
    LoadPlan plan{false, false, path};
    if (settings.convertor.empty()) return plan;
    if (!settings.AreWithinLimits()) return std::nullopt;
    if (!settings.IsConverting()) return plan;
    std::optional<std::wstring> archivePath = ArchivePathOf(path);
    if (!archivePath) return std::nullopt;
    plan.converting = true;
    if (settings.WritesArchives()) {
        plan.writesArchive = true;
        plan.openPath = std::move(*archivePath);
    }
    return plan;
}

bool IsRead(const std::shared_ptr<CompositionScript>& reader) {
    return reader != nullptr && reader->GetReadStatus() == status::kRead;
}

// Fails no load, whatever happens.
void WriteBeside(const std::wstring& script, const std::wstring& archive,
                 const CompositionScript& reader) {
    try {
        // A script that is called like its archive is all there is of the composition.
        if (platform::IsSameFile(script, archive)) return;
        static_cast<void>(WriteArchive(archive, reader.GetDescription()));
    } catch (...) {
        // The old archive stays, as where the disk is full.
    }
}

std::shared_ptr<CompositionScript> ReadPlanned(const std::wstring& path, const LoadPlan& plan) {
    std::uint64_t openTime = 0;
    std::uint64_t pathTime = 0;
    const bool openExists = platform::LastWriteTime(plan.openPath, openTime);
    const bool pathExists = platform::LastWriteTime(path, pathTime);
    const bool useArchive = openExists && (!pathExists || openTime >= pathTime);

    std::shared_ptr<CompositionScript> reader;
    // While archives are being converted to, they are never read, however new they are.
    if (useArchive && !plan.converting) reader = ReadCompositionArchive(plan.openPath);
    if (IsRead(reader) || !pathExists) return reader;
    reader = ReadCompositionScript(path);
    if (plan.writesArchive && IsRead(reader)) WriteBeside(path, plan.openPath, *reader);
    return reader;
}

}  // namespace

std::shared_ptr<CompositionScript> ReadCompositionScript(const std::wstring& path) {
    const helpers::scripting::ScriptFile<std::wstring> file(path);
    return std::make_shared<CompositionScript>(file);
}

std::shared_ptr<CompositionScript> ReadCompositionArchive(const std::wstring& path) {
    if (!platform::IsPlainFile(path)) return nullptr;  // opening a pipe would wait for a writer
    ScriptArchive archive(path, true);
    if (archive.Version() < ScriptArchive::kFirstUsableVersion) return nullptr;
    CompositionDescription description;
    const bool whole = archive.serialize(description);
    return std::make_shared<CompositionScript>(std::move(description),
                                               whole ? status::kRead : kDamagedArchive);
}

bool LoadCompositionDescription(const std::wstring& path, CompositionEntry& entry) {
    const std::optional<LoadPlan> plan = MakePlan(path, ReadConverterSettings());
    if (!plan) return false;
    std::shared_ptr<CompositionScript> reader = ReadPlanned(path, *plan);
    if (!IsRead(reader)) return false;
    entry = CompositionEntry(std::move(reader));
    return true;
}

}  // namespace compositions

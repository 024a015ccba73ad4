#pragma once

// The description of one composition, read from a script or taken over from an archive. Built on
// one thread; from then on it never changes and any thread may read it.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "compositions/CompositionDescription.h"
#include "compositions/ICompositionReader.h"
#include "compositions/ReadStatus.h"

namespace helpers::scripting {
template <class String>
class ScriptFile;
}

namespace compositions {

class CompInterpreter;
class ReadingObserver;

class CompositionScript final : public ICompositionReader {
public:
    using ScriptFile = helpers::scripting::ScriptFile<std::wstring>;

    // Reads the script once, whatever it holds; the read status tells how it went. The file is not
    // needed any more afterwards. A file that was not loaded reads as an empty script. Throws
    // std::bad_alloc, and what an observer throws.
    explicit CompositionScript(const ScriptFile& file, ReadingObserver* observer = nullptr);
    // The same for a script in memory: the bytes that its file would hold.
    explicit CompositionScript(std::string_view bytes, ReadingObserver* observer = nullptr);
    // Takes over a description that was read before; there is no script behind it. Its sections
    // count as not read.
    explicit CompositionScript(CompositionDescription description,
                               std::int32_t readStatus = status::kRead);
    CompositionScript(const CompositionScript&) = delete;
    CompositionScript& operator=(const CompositionScript&) = delete;

    std::wstring GetName() const override { return std::wstring(description_.name); }
    std::wstring GetCategory() const override { return std::wstring(description_.category); }
    bool IsFilter() const override { return description_.isFilter; }
    std::int32_t GetSpeed() const override { return description_.speed; }
    bool GetSwap() const override { return description_.swap; }
    std::int32_t GetReadStatus() const override { return readStatus_; }
    const Names& GetInputs() const override { return description_.inputs; }
    const MediaSources& GetMediaSources() const override { return description_.mediaSources; }
    const EffectInstances& GetEffectInstances() const override {
        return description_.effectInstances;
    }
    const Mappings& GetMappings() const override { return description_.mappings; }
    const Properties& GetProperties() const override { return description_.properties; }
    const Envelopes& GetEnvelopes() const override { return description_.envelopes; }
    const TimelineEntries& GetTimelineEntries() const override {
        return description_.timelineEntries;
    }
    const TimelineEvents& GetTimelineEvents() const override { return description_.timelineEvents; }
    const StructureNode& GetStructure() const override { return description_.structure; }
    const NumberedInputs& GetNumberedInputs() const override { return description_.numberedInputs; }
    const Names& GetMixes() const override { return description_.mixes; }
    const RegistryValues& GetRegistryValues() const override { return description_.registryValues; }

    // All of the above at once, as an archive saves it.
    const CompositionDescription& GetDescription() const { return description_; }
    // Each section's own status, those that the read status leaves out included.
    const SectionStatuses& GetSectionStatuses() const { return sectionStatuses_; }

private:
    void Read(std::string_view bytes, ReadingObserver* observer);

    std::shared_ptr<CompInterpreter> interpreter_;
    std::int32_t readStatus_ = status::kNotRead;
    CompositionDescription description_;
    SectionStatuses sectionStatuses_;
};

}  // namespace compositions

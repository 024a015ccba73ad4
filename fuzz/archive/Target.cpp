// An archive file's bytes to a description, against the plain reader of archives. What was read is
// written and read again.

#include <string>

#include "Fuzz.h"
#include "TempFile.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"

using compositions::CompositionDescription;
using compositions::ScriptArchive;

namespace {

constexpr std::size_t kPlainReaderLimit = 20000;  // it calls itself for every nested node

void CheckSavesAndLoads(CompositionDescription& description, fuzz::TempFile& file) {
    ScriptArchive saving(file.Path(), false);
    fuzz::Check(saving.serialize(description) && saving.Close(), "cannot be saved");
    ScriptArchive loading(file.Path(), true);
    CompositionDescription again;
    fuzz::Check(loading.serialize(again), "what was saved does not load");
    fuzz::Check(again == description, "what was saved loads differently");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::TempFile file("archive");
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    file.Write(bytes);
    CompositionDescription description;
    std::int32_t version = 0;
    bool whole = false;
    {
        ScriptArchive archive(file.Path(), true);
        version = archive.Version();
        whole = archive.serialize(description);
    }
    if (size <= kPlainReaderLimit) {
        const plain::Reading expected = plain::Read(bytes);
        fuzz::Check(version == expected.version, "another version");
        fuzz::Check(whole == expected.whole, whole ? "read to its end" : "not read to its end");
        fuzz::Check(!whole || plain::Of(description) == expected.description, "reads differently");
    }
    if (whole) CheckSavesAndLoads(description, file);
    return 0;
}

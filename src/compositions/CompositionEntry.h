#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace compositions {

class ICompositionReader;

// One composition of the catalogue, its description shared with every effect made of it.
struct CompositionEntry {
    CompositionEntry() = default;
    explicit CompositionEntry(std::shared_ptr<ICompositionReader> description);

    std::shared_ptr<ICompositionReader> reader;
    std::wstring name;
    std::wstring category;
    std::uint64_t inputs = 0;  // numbered ones left out, unlike in the effect's descriptor
};

}  // namespace compositions

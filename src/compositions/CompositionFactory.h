#pragma once

// The built-in factory of compositions: turns composition scripts into effects and keeps a
// catalogue of those that the host registered. Caller serialises.

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "compositions/CompositionEntry.h"
#include "compositions/ICompositionEngine.h"
#include "fx/IVorelFXFactory.h"

namespace compositions {

class CompositionFactory : public fx::IVorelFXFactory {
public:
    // `folder` is where compositions that are registered by name are looked for. It is not scanned:
    // the catalogue starts empty.
    explicit CompositionFactory(const std::wstring& folder);
    CompositionFactory(const CompositionFactory&) = delete;
    CompositionFactory& operator=(const CompositionFactory&) = delete;

    /* 0 */ ~CompositionFactory() override;

    // The number of compositions in the catalogue. Indexes run over registrations, so that of two
    // with the same name and category both have an index and one counts.
    /* 1 */ std::uint32_t GetFXCount() override;

    // The composition's name, a backslash and its category; empty for an unknown index.
    /* 2 */ std::wstring GetFXName(std::uint64_t index) override;

    // Creates a registered composition. fx::eWrongFXIdx, fx::eCouldNotCreateFX when an exception
    // came in between; `out` is unchanged then. Failures are reported.
    /* 3 */ fx::_eError CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) override;

    // Creates a composition from a script or archive file, by the rule of
    // LoadCompositionDescription; the catalogue takes no note of it. fx::eCouldNotCreateFX,
    // reported, when that is not possible; `out` is unchanged then.
    /* 4 */ virtual fx::_eError CreateFX(const std::wstring& path,
                                         std::shared_ptr<fx::IBaseFX>& out);

    // Reads the script at the path `composition`, or of that name in the folder, and adds it to the
    // catalogue. True when it was added: `name` is its full name then, and it has the last index.
    // False when this very path was registered before: `name` is the composition it gave then and
    // nothing is read. False with `name` unchanged when there is no such script or it is faulty.
    // Reports nothing. Throws std::bad_alloc, nothing changed.
    bool RegisterComposition(const std::wstring& composition, bool isPath, std::wstring& name);

    // Has every composition made from now on completed by `engine`; null leaves them as they are
    // made.
    void SetEngine(std::shared_ptr<ICompositionEngine> engine) { engine_ = std::move(engine); }

    // What every factory made from now on starts with; null, as at first, for no engine. The
    // library's one factory is made when a host first asks for it: an engine that is linked into
    // the library calls this while its static objects are built.
    static void SetDefaultEngine(std::shared_ptr<ICompositionEngine> engine);

private:
    using Catalogue = std::map<std::wstring, CompositionEntry>;  // by full name

    void Store(const std::wstring& path, std::wstring id, CompositionEntry entry);
    std::shared_ptr<fx::IBaseFX> Make(std::shared_ptr<ICompositionReader> reader) const;

    std::wstring folder_;
    Catalogue catalogue_;
    std::map<std::uint64_t, std::wstring> indexMap_;  // registrations, to full names
    std::map<std::wstring, std::wstring> pathMap_;    // paths as registered, to full names
    std::shared_ptr<ICompositionEngine> engine_;
};

}  // namespace compositions

#pragma once

// The process's plug-in manager and the one function that the library exports.

#include <cstdint>
#include <memory>
#include <string>

#include "tarnex/Errors.h"
#include "tarnex/Export.h"

namespace tarnex {

class GlobalFXFactory;

class ITarnex {
public:
    // Hands out the global effect factory. The first call builds it: the plug-in libraries named in
    // `pluginList` (each name followed by "|") are loaded from `pluginDirectory`, in that order,
    // and `compositionsFolder` becomes the folder of registered compositions. Later calls return
    // the same factory whatever they pass. Call it from one thread first: no lock guards the first
    // call.
    //
    // eSuccess even when the factory came out not valid; its operations then answer
    // fx::eInvalidFxFactoryObject. On any error `out` is unchanged and a later call tries again.
    /* 0 */ virtual _eError GetFXFactory(const std::wstring& pluginDirectory,
                                         const std::wstring& pluginList,
                                         const std::wstring& compositionsFolder,
                                         std::uint64_t reserved,
                                         std::shared_ptr<GlobalFXFactory>& out) = 0;
    /* 1 */ virtual ~ITarnex() = default;
};

}  // namespace tarnex

// Hands out the process's manager. eSuccess, too, in a process that loaded the library while
// another process had it loaded: `out` then stays as it was and the log says
// eTarnexLockedByOtherProcess. eGenericError when memory runs out: `out` is unchanged and a later
// call tries again.
extern "C" TARNEX_EXPORT tarnex::_eError GetTarnex(std::shared_ptr<tarnex::ITarnex>& out);

#pragma once

// The process's plug-in manager: builds the global effect factory once and hands it out. Caller
// serialises; the first GetFXFactory must not race with another.

#include <cstdint>
#include <memory>
#include <string>

#include "tarnex/ITarnex.h"

namespace tarnex {

class TarnexImpl : public ITarnex {
public:
    TarnexImpl();
    ~TarnexImpl() override;

    _eError GetFXFactory(const std::wstring& pluginDirectory, const std::wstring& pluginList,
                         const std::wstring& compositionsFolder, std::uint64_t reserved,
                         std::shared_ptr<GlobalFXFactory>& out) override;

private:
    std::shared_ptr<GlobalFXFactory> factory_;  // empty until the first GetFXFactory succeeded
};

}  // namespace tarnex

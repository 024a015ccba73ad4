#include "EffectTable.h"

#include <cinttypes>
#include <cstdio>

#include "Text.h"

namespace host {

void PrintEffects(tarnex::GlobalFXFactory& factory) {
    std::list<tarnex::EffectRecord> effects;
    const tarnex::_eError code = factory.GetEffects(effects);
    if (code != tarnex::eSuccess) {
        std::printf("  no list: %s\n", Name(code).c_str());
        return;
    }
    std::printf("  index  %-28s flags  inputs  enabled\n", "name");
    for (const tarnex::EffectRecord& effect : effects) {
        std::printf("  %5" PRIu64 "  %-28s  0x%02X  %6" PRIu64 "  %s\n", effect.index,
                    Utf8(effect.name).c_str(), static_cast<unsigned>(effect.flags), effect.inputs,
                    effect.enabled ? "yes" : "no");
    }
}

}  // namespace host

#pragma once

// The base of an effect in a plug-in: derive, bind the effect's members as properties in the
// constructor, done. Threads: hosts may read and set properties from any thread; the rest is
// serialised by the caller.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "fx/EffectDescriptor.h"
#include "sdk/PropertyEffect.h"
#include "sdk/TypedProperty.h"

namespace fx {

// Valid from construction on; SetValid(false) says otherwise. The slots of the rendering engine
// keep the defaults of fx::IBaseFX until the effect overrides them.
class EffectBase : public PropertyEffect {
public:
    const EffectDescriptor* GetDescriptor() override { return &descriptor_; }

protected:
    // `id` is the effect's full name, `flags` are EffectFlags bits, `inputs` counts its inputs.
    EffectBase(std::wstring id, std::uint32_t flags, std::uint32_t inputs)
        : descriptor_{flags, inputs, std::move(id)} {
        SetValid(true);
    }

    // Makes a member of the effect a property: std::int32_t, float, bool, std::int64_t or
    // std::wstring. Sets it to the default value if one is given. Throws std::bad_alloc.
    template <class T>
    void Bind(const std::wstring& name, T& member, base_types::PropertyOptions<T> options = {}) {
        AddProperty(name,
                    std::make_unique<base_types::TypedProperty<T>>(&member, std::move(options)));
    }

    // Makes `size` bytes of the effect a property that is read and written as raw bytes.
    void BindRaw(std::wstring name, void* bytes, std::int32_t size,
                 std::uint32_t access = base_types::kReadWrite) {
        AddProperty(std::move(name),
                    std::make_unique<base_types::RawProperty>(bytes, size, access));
    }

private:
    EffectDescriptor descriptor_;
};

}  // namespace fx

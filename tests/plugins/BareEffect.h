#pragma once

// An effect and a factory with nothing in them, written against the public interfaces alone: what
// the test plug-ins are made of. Each plug-in overrides the one thing that it does differently.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fx/IBaseFX.h"
#include "fx/IVorelFXFactory.h"
#include "tarnex/Export.h"

namespace test_plugins {

using base_types::PropertyInfo;
using Error = base_types::_eError;

// Knows no property.
class BareEffect : public fx::IBaseFX {
public:
    explicit BareEffect(std::wstring id, std::uint32_t flags = 4, std::uint64_t inputs = 1) {
        descriptor_.flags = flags;
        descriptor_.inputs = inputs;
        descriptor_.id = std::move(id);
    }

    const fx::EffectDescriptor* GetDescriptor() override { return &descriptor_; }
    bool IsValid() override { return true; }

    Error GetProperties(std::vector<std::wstring>& names) override {
        names.clear();
        return base_types::eSuccess;
    }
    Error GetPropertyInfo(const std::wstring&, PropertyInfo*) override { return kUnknown; }
    Error GetProperty(const std::wstring&, void*, std::int32_t, std::int32_t*) override {
        return kUnknown;
    }
    Error GetProperty(const std::wstring&, std::wstring&) override { return kUnknown; }
    Error GetProperty(const std::wstring&, std::int64_t&) override { return kUnknown; }
    Error GetProperty(const std::wstring&, bool&) override { return kUnknown; }
    Error GetProperty(const std::wstring&, float&) override { return kUnknown; }
    Error GetProperty(const std::wstring&, std::int32_t&) override { return kUnknown; }
    Error SetProperty(const std::wstring&, const void*, std::int32_t) override { return kUnknown; }
    Error SetProperty(const std::wstring&, const std::wstring&) override { return kUnknown; }
    Error SetProperty(const std::wstring&, std::int64_t) override { return kUnknown; }
    Error SetProperty(const std::wstring&, bool) override { return kUnknown; }
    Error SetProperty(const std::wstring&, float) override { return kUnknown; }
    Error SetProperty(const std::wstring&, std::int32_t) override { return kUnknown; }
    Error GetPropertyRange(const std::wstring&, std::int64_t*, std::int64_t*) override {
        return kUnknown;
    }
    Error GetPropertyRange(const std::wstring&, float*, float*) override { return kUnknown; }
    Error GetPropertyRange(const std::wstring&, std::int32_t*, std::int32_t*) override {
        return kUnknown;
    }

private:
    static constexpr Error kUnknown = base_types::ePropertyNotFound;
    fx::EffectDescriptor descriptor_;
};

class BareFactory : public fx::IVorelFXFactory {
public:
    explicit BareFactory(std::vector<std::wstring> ids) : ids_(std::move(ids)) {}

    std::uint32_t GetFXCount() override { return static_cast<std::uint32_t>(ids_.size()); }
    std::wstring GetFXName(std::uint64_t index) override {
        return index < ids_.size() ? ids_[index] : std::wstring();
    }
    fx::_eError CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) override {
        if (index >= ids_.size()) {
            return fx::eWrongFXIdx;
        }
        out = std::make_shared<BareEffect>(ids_[index]);
        return fx::eSuccess;
    }

private:
    std::vector<std::wstring> ids_;
};

}  // namespace test_plugins

extern "C" TARNEX_EXPORT fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out);

// One effect that breaks as many rules as an effect can break without dying of it. It also writes
// to the standard output, which is not its own.

#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "fx/IVorelFXFactory.h"
#include "tarnex/Export.h"

namespace {

using base_types::_eError;
using base_types::eSuccess;

std::int32_t g_shared = 0;  // one value for all instances

class Unruly : public fx::IBaseFX {
public:
    _eError GetProperties(std::vector<std::wstring>& names) override {
        names = {L"Shared", L"Shared", L"Sealed", L"Hidden"};
        return eSuccess;
    }

    _eError GetPropertyInfo(const std::wstring& name, base_types::PropertyInfo* info) override {
        std::uint32_t access = base_types::eAccessRead | base_types::eAccessWrite;
        if (name == L"Sealed") access = base_types::eAccessRead;
        if (name == L"Hidden") access = base_types::eAccessWrite;
        *info = {2, 0, access, base_types::ePropertyInt};  // an int has four bytes
        return eSuccess;
    }

    // Whatever the name and the rights are.
    _eError GetProperty(const std::wstring&, std::int32_t& value) override {
        value = g_shared;
        return eSuccess;
    }
    _eError GetProperty(const std::wstring&, float&) override { return eSuccess; }
    _eError GetProperty(const std::wstring&, bool&) override {
        return base_types::ePointerCastFailure;
    }
    _eError GetProperty(const std::wstring&, std::int64_t&) override {
        return base_types::ePointerCastFailure;
    }
    _eError GetProperty(const std::wstring&, std::wstring&) override {
        return base_types::ePointerCastFailure;
    }
    // Writes past a small buffer.
    _eError GetProperty(const std::wstring&, void* buffer, std::int32_t,
                        std::int32_t* copied) override {
        std::memset(buffer, 0, 8);
        *copied = 8;
        return eSuccess;
    }

    _eError SetProperty(const std::wstring&, std::int32_t value) override {
        g_shared = value;
        return eSuccess;
    }
    _eError SetProperty(const std::wstring&, float) override { return eSuccess; }
    _eError SetProperty(const std::wstring&, bool) override { return eSuccess; }
    _eError SetProperty(const std::wstring&, std::int64_t) override { return eSuccess; }
    _eError SetProperty(const std::wstring&, const std::wstring&) override { return eSuccess; }
    _eError SetProperty(const std::wstring&, const void*, std::int32_t) override {
        return eSuccess;
    }

    _eError GetPropertyRange(const std::wstring&, std::int32_t* min, std::int32_t* max) override {
        *min = 5;
        *max = 9;
        return eSuccess;
    }
    _eError GetPropertyRange(const std::wstring&, float*, float*) override {
        return base_types::ePropertyMinMaxNotSpecified;
    }
    _eError GetPropertyRange(const std::wstring&, std::int64_t*, std::int64_t*) override {
        return base_types::ePropertyMinMaxNotSpecified;
    }

    bool IsValid() override { return true; }
    const fx::EffectDescriptor* GetDescriptor() override { return &descriptor_; }
    fx::_eError GetOutput(std::shared_ptr<fx::IRenderTarget>&) override {
        return fx::eNotImplemented;  // and leaves the pointer full
    }
    fx::_eError Reset() override { throw std::runtime_error("no reset"); }

private:
    fx::EffectDescriptor descriptor_{132, 1, L""};
};

class Factory : public fx::IVorelFXFactory {
public:
    std::uint32_t GetFXCount() override { return 1; }
    std::wstring GetFXName(std::uint64_t) override { return L"Unruly"; }
    fx::_eError CreateFX(std::uint64_t, std::shared_ptr<fx::IBaseFX>& out) override {
        out = std::make_shared<Unruly>();
        return fx::eSuccess;
    }
};

}  // namespace

extern "C" TARNEX_EXPORT fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    std::puts("{\"done\": true}");
    std::fflush(stdout);
    out = std::make_shared<Factory>();
    return fx::eSuccess;
}

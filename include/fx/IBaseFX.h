#pragma once

// An effect object. Plug-ins implement it, the library implements it for compositions, hosts and
// the rendering engine call it. The slot order is fixed. Threads: caller serialises, but for the
// property operations of an effect built on the library's property set.

#include <exception>
#include <memory>

#include "base_types/IPropertySet.h"
#include "base_types/IValidator.h"
#include "fx/EffectDescriptor.h"
#include "fx/Errors.h"

namespace fx {

class IBaseFX;

// Engine objects that only their shared pointers cross this interface.
class IRenderTarget;
class IRenderContext;

// Thrown by the default body of IBaseFX::GetRenderCost.
class NotImplementedException : public std::exception {
public:
    const char* what() const noexcept override { return "not implemented"; }
};

class IBaseFX : public base_types::IPropertySet, public base_types::IValidator {
public:
    // Never null in a usable effect; owned by the effect and valid while it lives.
    /* 25 */ virtual const EffectDescriptor* GetDescriptor() = 0;

    // The rest serves the rendering engine. An effect that does not take part keeps the defaults:
    // out-pointers are emptied and eNotImplemented comes back.
    /* 26 */ virtual _eError GetOutput(std::shared_ptr<IRenderTarget>& out) {
        out.reset();
        return eNotImplemented;
    }
    /* 27 */ virtual _eError GetPreview(std::shared_ptr<IRenderTarget>& out) {
        out.reset();
        return eNotImplemented;
    }
    /* 28 */ virtual _eError CloneEffect(std::shared_ptr<IBaseFX>& out) {
        out.reset();
        return eNotImplemented;
    }
    /* 29 */ virtual void OnDeviceLost(IRenderContext*) {}
    /* 30 */ virtual void OnDeviceReset(IRenderContext*) {}
    /* 31 */ virtual _eError BeginRender() { return eNotImplemented; }
    /* 32 */ virtual _eError EndRender() { return eNotImplemented; }
    // Throws NotImplementedException by design: the only default that lets an exception out.
    /* 33 */ virtual int GetRenderCost() { throw NotImplementedException(); }
    /* 34 */ virtual _eError Reset() { return eNotImplemented; }
};

}  // namespace fx

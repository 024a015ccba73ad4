#include "tarnex/TarnexImpl.h"

#include "helpers/report/Report.h"
#include "tarnex/GlobalFxFactory.h"
#include "vorel/Exception.h"

namespace tarnex {

namespace {

constexpr char kGetFxFactory[] = "tarnex::TarnexImpl::GetFXFactory";

// The factory's deleter: a plain function of this module, so that the last holder, whichever module
// it is in, destroys the factory here.
void DestroyGlobalFXFactory(GlobalFXFactory* factory) {
    delete factory;
}

}  // namespace

TarnexImpl::TarnexImpl() = default;
TarnexImpl::~TarnexImpl() = default;

_eError TarnexImpl::GetFXFactory(const std::wstring& pluginDirectory,
                                 const std::wstring& pluginList,
                                 const std::wstring& compositionsFolder, std::uint64_t reserved,
                                 std::shared_ptr<GlobalFXFactory>& out) {
    try {
        if (factory_ == nullptr) {
            factory_ = std::shared_ptr<GlobalFXFactory>(
                new GlobalFXFactory(pluginDirectory, pluginList, compositionsFolder, reserved),
                &DestroyGlobalFXFactory);
        }
        out = factory_;
        return eSuccess;
    } catch (const Exception& exception) {
        return helpers::ReportTarnexError(exception.code, kGetFxFactory);
    } catch (const vorel::Exception&) {
        return helpers::ReportTarnexError(eVorelExceptionCatched, kGetFxFactory);
    } catch (...) {
        return helpers::ReportTarnexError(eNonInterfaceException, kGetFxFactory);
    }
}

}  // namespace tarnex

#include "compositions/CompositionFactory.h"

#include "helpers/report/Report.h"

namespace compositions {

namespace {

constexpr char kCreateFx[] = "compositions::CompositionFactory::CreateFX";

}  // namespace

// The catalogue is empty and stays so: scripts are not read yet.
CompositionFactory::CompositionFactory(const std::wstring& folder) : folder_(folder) {}

CompositionFactory::~CompositionFactory() = default;

std::uint32_t CompositionFactory::GetFXCount() {
    return 0;
}

std::wstring CompositionFactory::GetFXName(std::uint64_t) {
    return {};
}

fx::_eError CompositionFactory::CreateFX(std::uint64_t, std::shared_ptr<fx::IBaseFX>&) {
    return helpers::ReportFxError(fx::eWrongFXIdx, kCreateFx);
}

fx::_eError CompositionFactory::CreateFX(const std::wstring&, std::shared_ptr<fx::IBaseFX>&) {
    return helpers::ReportFxError(fx::eCouldNotCreateFX, kCreateFx);
}

bool CompositionFactory::RegisterComposition(const std::wstring&, bool, std::wstring&) {
    return false;
}

}  // namespace compositions

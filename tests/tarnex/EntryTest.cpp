// The entry point by itself: the flag, the reports and the manager are this test's.

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <utility>

#include "helpers/report/Report.h"
#include "platform/LibraryAttach.h"
#include "platform/MachineFlag.h"
#include "platform/OwnerByte.h"
#include "tarnex/TarnexImpl.h"

namespace {

std::string reports;
std::function<void()> failReport;  // once

}  // namespace

bool platform::TakeMachineFlag() {
    return false;
}

unsigned char& platform::OwnerByte() {
    static unsigned char owner = 1;
    return owner;
}

tarnex::_eError helpers::ReportTarnexError(tarnex::_eError code, const char* operation) {
    if (const auto fail = std::exchange(failReport, nullptr)) {
        fail();
    }
    reports += std::to_string(code) + " " + operation + "\n";
    return code;
}

tarnex::TarnexImpl::TarnexImpl() = default;
tarnex::TarnexImpl::~TarnexImpl() = default;
tarnex::_eError tarnex::TarnexImpl::GetFXFactory(const std::wstring&, const std::wstring&,
                                                 const std::wstring&, std::uint64_t,
                                                 std::shared_ptr<GlobalFXFactory>&) {
    return eNotImplemented;
}

namespace {

TEST(Entry, RefusalReturnsSuccessReportsAndLeavesThePointer) {
    platform::OnLibraryAttach();
    const auto mine = std::make_shared<tarnex::TarnexImpl>();
    std::shared_ptr<tarnex::ITarnex> out = mine;
    reports.clear();
    EXPECT_EQ(GetTarnex(out), tarnex::eSuccess);
    EXPECT_EQ(out, mine);
    EXPECT_EQ(reports, "7 tarnex::GetTarnex\n");
}

TEST(Entry, ManagerExceptionIsReportedAndItsCodeReturned) {
    platform::OnLibraryAttach();
    std::shared_ptr<tarnex::ITarnex> out;
    reports.clear();
    failReport = [] { throw tarnex::Exception(tarnex::eGenericError); };
    EXPECT_EQ(GetTarnex(out), tarnex::eGenericError);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(reports, "10 tarnex::GetTarnex\n");
}

TEST(Entry, OtherExceptionsAreNotCaught) {
    platform::OnLibraryAttach();
    std::shared_ptr<tarnex::ITarnex> out;
    failReport = [] { throw std::bad_alloc(); };
    EXPECT_THROW(GetTarnex(out), std::bad_alloc);
    EXPECT_EQ(out, nullptr);
}

}  // namespace

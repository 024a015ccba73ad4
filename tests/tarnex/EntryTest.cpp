// The entry point by itself: the flag, the reports and the manager are this test's.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <new>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "helpers/report/Report.h"
#include "platform/LibraryAttach.h"
#include "platform/MachineFlag.h"
#include "platform/OwnerByte.h"
#include "platform/Thread.h"
#include "tarnex/TarnexImpl.h"

namespace {

std::string reports;
std::function<void()> failReport;  // once
std::atomic<bool> isSlow{false};   // a manager takes its time to be made
std::atomic<int> managers{0};      // made since then

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

tarnex::TarnexImpl::TarnexImpl() {
    if (!isSlow) return;
    // Time enough for the others to come here, too, if they could.
    managers.fetch_add(1);
    for (int i = 0; i < 50 && managers < 2; ++i) platform::SleepMs(1);
}
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

TEST(Entry, ThreadsThatAskAtOnceGetOneManager) {
    platform::OwnerByte() = 1;
    isSlow = true;
    std::vector<std::shared_ptr<tarnex::ITarnex>> found(8);
    std::atomic<std::size_t> ready{0};
    std::vector<std::thread> threads;
    for (std::shared_ptr<tarnex::ITarnex>& out : found) {
        threads.emplace_back([&] {
            for (++ready; ready < found.size();) std::this_thread::yield();
            EXPECT_EQ(GetTarnex(out), tarnex::eSuccess);
        });
    }
    for (std::thread& thread : threads) thread.join();
    isSlow = false;
    EXPECT_EQ(managers, 1);
    EXPECT_NE(found[0], nullptr);
    EXPECT_EQ(found, std::vector(found.size(), found[0]));
}

}  // namespace

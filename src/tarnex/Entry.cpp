// The library's one exported function, and what is done when a process loads the library.

#include <atomic>
#include <memory>
#include <new>

#include "helpers/report/Report.h"
#include "platform/LibraryAttach.h"
#include "platform/MachineFlag.h"
#include "platform/OwnerByte.h"
#include "tarnex/ITarnex.h"
#include "tarnex/TarnexImpl.h"

namespace {

constexpr char kGetTarnex[] = "tarnex::GetTarnex";

// Storage that static termination leaves alone: the manager, the factory and every plug-in object
// they hold live until the process ends, because plug-in code must not run that late.
union ManagerStorage {
    constexpr ManagerStorage() : manager() {}
    ~ManagerStorage() {}
    std::shared_ptr<tarnex::TarnexImpl> manager;
};
constinit ManagerStorage g_Tarnex;

// Held while the manager is looked for or made. A flag, since a mutex is destroyed too early.
class Making {
public:
    Making() {
        while (flag_.test_and_set(std::memory_order_acquire)) flag_.wait(true);
    }
    ~Making() {
        flag_.clear(std::memory_order_release);
        flag_.notify_one();
    }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

private:
    static constinit inline std::atomic_flag flag_{};
};

// Makes the manager unless it is there; false when there is no memory for it. Any thread.
bool HasManager() noexcept {
    try {
        const Making making;
        if (g_Tarnex.manager == nullptr) g_Tarnex.manager = std::make_shared<tarnex::TarnexImpl>();
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace

void platform::OnLibraryAttach() noexcept {
    if (platform::TakeMachineFlag()) {
        static_cast<void>(HasManager());  // the first call tries again: the load never fails
    } else {
        platform::OwnerByte() = 0;
    }
}

extern "C" tarnex::_eError GetTarnex(std::shared_ptr<tarnex::ITarnex>& out) {
    try {
        if (platform::OwnerByte() != 0) {
            if (!HasManager()) return helpers::ReportTarnexError(tarnex::eGenericError, kGetTarnex);
            out = g_Tarnex.manager;
        } else {
            // The refusal shows in the log and in the untouched `out` alone: hosts rely on the code
            // being eSuccess.
            (void)helpers::ReportTarnexError(tarnex::eTarnexLockedByOtherProcess, kGetTarnex);
        }
        return tarnex::eSuccess;
    } catch (const tarnex::Exception& exception) {
        return helpers::ReportTarnexError(exception.code, kGetTarnex);
    }
}

#include "platform/CriticalSection.h"

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <new>

namespace platform {
namespace {

// One word. The waiting goes straight to the kernel, not through std::atomic's wait: that counts
// its waiters per module, and a section is entered from one module and left by another.
using Word = std::atomic<std::uint32_t>;
static_assert(sizeof(Word) <= kCriticalSectionSize && Word::is_always_lock_free);

constexpr std::uint32_t kFree = 0;
constexpr std::uint32_t kHeld = 1;
constexpr std::uint32_t kHeldAndAwaited = 2;

Word& Section(void* storage) {
    return *static_cast<Word*>(storage);
}

void Futex(Word& word, int operation, std::uint32_t value) {
    syscall(SYS_futex, &word, operation, value, nullptr, nullptr, 0);
}

void EnterContended(Word& word) {
    // acquire; pairs with the release in LeaveCriticalSection.
    while (word.exchange(kHeldAndAwaited, std::memory_order_acquire) != kFree) {
        Futex(word, FUTEX_WAIT_PRIVATE, kHeldAndAwaited);
    }
}

}  // namespace

void InitializeCriticalSection(void* storage) {
    new (storage) Word(kFree);
}

void DeleteCriticalSection(void* storage) {
    Section(storage).~Word();
}

void EnterCriticalSection(void* storage) {
    Word& word = Section(storage);
    std::uint32_t expected = kFree;
    // acquire; pairs with the release in LeaveCriticalSection.
    if (!word.compare_exchange_strong(expected, kHeld, std::memory_order_acquire,
                                      std::memory_order_relaxed)) {
        EnterContended(word);
    }
}

void LeaveCriticalSection(void* storage) {
    Word& word = Section(storage);
    // release; pairs with the acquire of the thread that enters next.
    if (word.exchange(kFree, std::memory_order_release) == kHeldAndAwaited) {
        Futex(word, FUTEX_WAKE_PRIVATE, 1);
    }
}

}  // namespace platform

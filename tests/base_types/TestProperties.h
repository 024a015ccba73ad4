#pragma once

// Properties that a test can watch or that misbehave.

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <future>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "helpers/report/CapturedOutput.h"
#include "sdk/PropertySet.h"
#include "sdk/TypedProperty.h"

namespace test {

using base_types::PropertyOptions;
using base_types::PropertySet;
using base_types::TypedProperty;

template <class T>
void Add(PropertySet& set, std::wstring name, T value,
         std::uint32_t access = base_types::kReadWrite) {
    PropertyOptions<T> options;
    options.access = access;
    auto property = std::make_unique<TypedProperty<T>>(options);
    property->Assign(&value);
    set.AddProperty(std::move(name), std::move(property));
}

// Runs `action` in every virtual operation, which may throw.
class ActingProperty : public base_types::Property {
public:
    ActingProperty(std::int32_t type, std::function<void()> action)
        : Property({4, 0, base_types::kReadWrite, type}, &value_), action_(std::move(action)) {}

    void* Value() override {
        action_();
        return &value_;
    }
    void Assign(const void*) override { action_(); }
    bool Range(void* min, void*) override {
        *static_cast<std::int32_t*>(min) = 77;
        action_();
        return true;
    }
    bool Default(void* out) override {
        *static_cast<std::int32_t*>(out) = 77;
        action_();
        return true;
    }

private:
    std::int32_t value_ = 0;
    std::function<void()> action_;
};

// Has no value.
class HollowProperty : public base_types::Property {
public:
    explicit HollowProperty(std::int32_t type)
        : Property({4, 0, base_types::kReadWrite, type}, nullptr) {}

    void* Value() override { return nullptr; }
    void Assign(const void*) override {}
    bool Range(void*, void*) override { return false; }
    bool Default(void*) override { return false; }
};

// Notes its destruction.
class CountedProperty : public TypedProperty<std::int32_t> {
public:
    explicit CountedProperty(int& alive) : alive_(alive) { ++alive_; }
    ~CountedProperty() override { --alive_; }

private:
    int& alive_;
};

inline std::wstring NamedLine(const std::wstring& operation, const std::wstring& code,
                              const std::wstring& property) {
    return L"Operation \"base_types::PropertySet::" + operation + L"\" returned error <" + code +
           L">, property: \"" + property + L"\"";
}

inline std::wstring PlainLine(const std::wstring& operation, const std::wstring& code) {
    return L"Operation \"base_types::PropertySet::" + operation + L"\" returned error <" + code +
           L">";
}

inline std::vector<std::wstring> NamesOf(PropertySet& set) {
    std::vector<std::wstring> names;
    set.GetProperties(names);
    return names;
}

// Uses the set from another thread; a lock that was never released ends the program.
inline void ExpectUnlocked(PropertySet& set) {
    auto done = std::async(std::launch::async, [&] { return NamesOf(set).size(); });
    if (done.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
        std::cerr << "The set is still locked" << std::endl;
        std::_Exit(1);
    }
    done.get();
}

}  // namespace test

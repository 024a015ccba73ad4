#pragma once

// A named value of the settings store. Any thread; caller serialises one object.

#include <cstdint>
#include <string>

#include "helpers/regs/StringConverter.h"
#include "platform/Settings.h"

namespace helpers::regs {

// Names a value: the path of its key, and its name there.
class RegValBase {
public:
    RegValBase(std::wstring keyPath, std::wstring name)
        : keyPath_(std::move(keyPath)), name_(std::move(name)) {}
    virtual ~RegValBase() = default;

    const std::wstring& KeyPath() const { return keyPath_; }
    const std::wstring& Name() const { return name_; }

protected:
    std::uint32_t setting_ = 1;  // always 1 in this library
    std::wstring keyPath_;
    std::wstring name_;
};

template <typename Value, typename Converter>
class RegValue;

template <>
class RegValue<std::wstring, StringConverter> : public RegValBase {
public:
    using RegValBase::RegValBase;

    // Reads the value below the open key `key`. False, with Value() unchanged, when there is none,
    // when it is empty, or when it cannot be a string. Throws only for want of memory.
    bool Read(platform::SettingsKey key);

    const std::wstring& Value() const { return value_; }

private:
    std::wstring value_;
};

}  // namespace helpers::regs

#include <algorithm>
#include <set>
#include <vector>

#include "frame/Text.h"
#include "probe/Conformance.h"
#include "probe/Guarded.h"
#include "probe/PropertyValue.h"

namespace tarnexctl {
namespace {

using base_types::_eError;
using base_types::eSuccess;
using base_types::IPropertySet;
using base_types::PropertyInfo;

constexpr std::size_t kGuardBytes = 64;
constexpr unsigned char kGuard = 0xA5;
constexpr std::int32_t kLargestRawTest = 1 << 20;

std::int32_t SizeOfType(std::int32_t type) {
    switch (type) {
        case base_types::ePropertyInt:
            return 4;
        case base_types::ePropertyFloat:
            return 4;
        case base_types::ePropertyBool:
            return 1;
        case base_types::ePropertyInt64:
            return 8;
        case base_types::ePropertyString:
            return sizeof(std::wstring);
        default:
            return 0;
    }
}

// The checks of one property. Each assumes no more than what the record says.
class PropertyCheck {
public:
    PropertyCheck(IPropertySet& set, IPropertySet& other, const std::wstring& name,
                  const std::string& effect, ChildReport& report)
        : set_(set),
          other_(other),
          name_(name),
          which_(effect + ", property \"" + ToUtf8(name) + "\""),
          report_(report) {}

    void Run() {
        report_.Step("the properties of " + which_);
        if (set_.GetPropertyInfo(name_, &info_) != eSuccess) return report_.Add("P404", which_);
        CheckRaw();
        const auto form = EmptyValueOf(info_.type);
        if (!form) return report_.Add("P412", which_ + ": type code " + std::to_string(info_.type));
        form_ = *form;
        if (info_.size != SizeOfType(info_.type)) {
            report_.Add("P411", which_ + ": " + std::to_string(info_.size) + " bytes for " +
                                    TypeName(info_.type));
        }
        range_ = GetRange(set_, name_, form_);
        CheckReading();
        CheckOtherForms();
        CheckRange();
        CheckWriting();
        CheckInstances();
    }

private:
    bool Readable() const { return (info_.access & base_types::eAccessRead) != 0; }
    bool Writable() const { return (info_.access & base_types::eAccessWrite) != 0; }

    std::string With(_eError code) const { return which_ + ": " + helpers::ErrorName(code); }

    void CheckReading() {
        PropertyValue value = form_;
        const _eError code = GetValue(set_, name_, value);
        if (Readable() && code != eSuccess) report_.Add("P406", With(code));
        if (!Readable() && code == eSuccess) report_.Add("P407", which_);
        if (code == eSuccess) value_ = value;
    }

    void CheckOtherForms() {
        for (std::int32_t type = base_types::ePropertyInt; type <= base_types::ePropertyString;
             ++type) {
            if (type == info_.type) continue;
            PropertyValue value = *EmptyValueOf(type);
            if (GetValue(set_, name_, value) == eSuccess) {
                report_.Add("P410", which_ + " as " + TypeName(type));
            }
        }
    }

    bool OutsideRange(const PropertyValue& value) const {
        return range_ && (IsBelow(value, range_->first) || IsBelow(range_->second, value));
    }

    void CheckRange() {
        if (range_ && IsBelow(range_->second, range_->first)) return report_.Add("P415", which_);
        if (value_ && OutsideRange(*value_)) {
            report_.Add("P413", which_ + ": " + ValueDocument(*value_).dump());
        }
        PropertyValue standard = form_;
        if (GetDefault(set_, name_, standard) != eSuccess) return;
        default_ = standard;
        if (OutsideRange(standard)) {
            report_.Add("P414", which_ + ": " + ValueDocument(standard).dump());
        }
    }

    // A value that the property should take: its own, else its default, else its minimum.
    std::optional<PropertyValue> Acceptable() const {
        if (value_ && !OutsideRange(*value_)) return value_;
        if (default_ && !OutsideRange(*default_)) return default_;
        if (range_) return range_->first;
        return std::nullopt;
    }

    void CheckWriting() {
        const std::optional<PropertyValue> value = Acceptable();
        const _eError code = SetValue(set_, name_, value.value_or(form_));
        if (!Writable()) {
            if (code == eSuccess) report_.Add("P409", which_);
            return;
        }
        if (!value) return;  // nothing is known of what it takes
        if (code != eSuccess) return report_.Add("P408", With(code));
        PropertyValue kept = form_;
        if (Readable() && GetValue(set_, name_, kept) == eSuccess && !IsSame(kept, *value)) {
            report_.Add("P416", which_ + ": " + ValueDocument(*value).dump() + " became " +
                                    ValueDocument(kept).dump());
        }
    }

    // Another acceptable value than the present one.
    std::optional<PropertyValue> Different() const {
        if (const bool* flag = std::get_if<bool>(&*value_)) return PropertyValue(!*flag);
        if (!range_) return std::nullopt;
        return IsSame(range_->first, *value_) ? range_->second : range_->first;
    }

    void CheckInstances() {
        if (!Readable() || !Writable() || !value_) return;
        const std::optional<PropertyValue> changed = Different();
        PropertyValue before = form_;
        if (!changed || IsSame(*changed, *value_)) return;
        (void)SetValue(set_, name_, *value_);  // as it was before anything was written
        if (GetValue(other_, name_, before) != eSuccess) return;
        if (SetValue(set_, name_, *changed) != eSuccess) return;
        PropertyValue after = form_;
        if (GetValue(other_, name_, after) == eSuccess && !IsSame(before, after)) {
            report_.Add("P418", which_);
        }
        (void)SetValue(set_, name_, *value_);  // as it was, as far as the property lets us
    }

    // A buffer one byte short of the value, and one of no size, between guard bytes.
    void CheckRaw() {
        if (info_.size <= 0 || info_.size > kLargestRawTest) return;
        for (const std::int32_t size : {info_.size, info_.size - 1, 0}) {
            std::vector<unsigned char> bytes(static_cast<std::size_t>(size) + kGuardBytes, kGuard);
            std::int32_t copied = 0;
            const _eError code = set_.GetProperty(name_, bytes.data(), size, &copied);
            const bool intact = std::all_of(bytes.begin() + size, bytes.end(),
                                            [](unsigned char byte) { return byte == kGuard; });
            if (!intact || (code == eSuccess && (copied < 0 || copied > size))) {
                return report_.Add("P417",
                                   which_ + ": a buffer of " + std::to_string(size) + " bytes");
            }
        }
    }

    IPropertySet& set_;
    IPropertySet& other_;
    const std::wstring& name_;
    std::string which_;
    ChildReport& report_;
    PropertyInfo info_ = {};
    PropertyValue form_;
    std::optional<std::pair<PropertyValue, PropertyValue>> range_;
    std::optional<PropertyValue> value_;
    std::optional<PropertyValue> default_;
};

// The name with the case of its first ASCII letter changed; empty when it has none.
std::wstring OtherCase(std::wstring name) {
    for (wchar_t& c : name) {
        const bool letter = (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
        if (!letter) continue;
        c = static_cast<wchar_t>(c ^ 0x20);
        return name;
    }
    return {};
}

void CheckUnknown(IPropertySet& set, const std::wstring& name, const std::string& effect,
                  ChildReport& report) {
    const std::string which = effect + ", \"" + ToUtf8(name) + "\"";
    report.Step("an unknown property of " + which);
    PropertyInfo info = {};
    unsigned char raw[16] = {};
    std::int32_t copied = 0;
    bool refused = set.GetPropertyInfo(name, &info) != eSuccess &&
                   set.GetProperty(name, raw, 8, &copied) != eSuccess &&
                   set.SetProperty(name, raw, 8) != eSuccess;
    for (std::int32_t type = base_types::ePropertyInt; type <= base_types::ePropertyString;
         ++type) {
        PropertyValue value = *EmptyValueOf(type);
        refused = refused && GetValue(set, name, value) != eSuccess &&
                  SetValue(set, name, value) != eSuccess &&
                  GetDefault(set, name, value) != eSuccess && !GetRange(set, name, value);
    }
    refused = refused && set.GetPropertyDefault(name, static_cast<void*>(raw)) != eSuccess;
    if (!refused) report.Add("P405", which);
}

std::vector<std::wstring> NamesOf(IPropertySet& set, const std::string& effect,
                                  ChildReport& report) {
    report.Step("GetProperties of " + effect);
    std::vector<std::wstring> names = {L"left over"};
    const _eError code = set.GetProperties(names);
    if (code != eSuccess) {
        report.Add("P401", effect + ": " + helpers::ErrorName(code));
        return {};
    }
    return names;
}

void CheckAll(IPropertySet& first, IPropertySet& second, const std::string& effect,
              ChildReport& report) {
    const std::vector<std::wstring> names = NamesOf(first, effect, report);
    std::set<std::wstring> unique;
    for (const std::wstring& name : names) {
        if (name.empty()) report.Add("P403", effect);
        if (!unique.insert(name).second) report.Add("P402", effect + ": \"" + ToUtf8(name) + "\"");
    }
    const std::vector<std::wstring> others = NamesOf(second, effect, report);
    if (std::set<std::wstring>(others.begin(), others.end()) != unique) report.Add("P419", effect);
    for (const std::wstring& name : unique) {
        PropertyCheck(first, second, name, effect, report).Run();
    }
    CheckUnknown(first, L"no property has this name", effect, report);
    if (names.empty()) return;
    const std::wstring otherCase = OtherCase(names.front());
    if (!otherCase.empty() && !unique.contains(otherCase)) {
        CheckUnknown(first, otherCase, effect, report);
    }
}

}  // namespace

void CheckProperties(IPropertySet& first, IPropertySet& second, const std::string& effect,
                     ChildReport& report) {
    Guarded([&] { CheckAll(first, second, effect, report); },
            [&](const std::string& what) {
                report.Add("P307", effect + ", a property operation: " + what);
            });
}

}  // namespace tarnexctl

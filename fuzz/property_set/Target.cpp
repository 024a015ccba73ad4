// Sequences of calls on two property sets, each beside a model of it.

#include <limits>
#include <memory>
#include <type_traits>

#include "Fuzz.h"
#include "helpers/report/CapturedOutput.h"
#include "property_set/Model.h"
#include "sdk/PropertySet.h"
#include "sdk/TypedProperty.h"

using namespace base_types;

namespace {

constexpr std::int32_t kMostRawBytes = 64;

template <class T>
T Make(fuzz::Input& input) {
    if constexpr (std::is_same_v<T, std::wstring>) {
        std::wstring text(input.Below(40), L'\0');
        for (wchar_t& character : text) character = static_cast<wchar_t>(input.Byte());
        return text;
    } else if constexpr (std::is_same_v<T, bool>) {
        return input.Flag();
    } else {
        const std::uint64_t bits = input.LongNumber();
        T value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
}

template <class T>
model::Value ValueOf(const T& value) {
    if constexpr (std::is_same_v<T, std::wstring>) {
        return {value, {}};
    } else {
        model::Value bytes;
        bytes.bytes.resize(sizeof value);
        std::memcpy(bytes.bytes.data(), &value, sizeof value);
        return bytes;
    }
}

template <class T>
bool Same(const T& value, const model::Value& expected) {
    if constexpr (std::is_same_v<T, bool>) {
        return value == (expected.bytes.at(0) != 0);  // a raw set may have left any byte
    } else {
        const model::Value got = ValueOf(value);
        return got.text == expected.text && got.bytes == expected.bytes;
    }
}

class Run {
public:
    Run(const std::uint8_t* data, std::size_t size) : input_(data, size) {
        for (auto& set : sets_) set = std::make_shared<PropertySet>();
    }

    void Play() {
        captured::TakeTraced();
        captured::TakeDebugged();
        while (!input_.IsEmpty()) Step();
        for (const std::size_t each : {0, 1}) Use(each), CompareNames();
    }

private:
    void Use(std::size_t which) {
        real_ = sets_[which].get();
        model_ = &models_[which];
        other_ = 1 - which;
    }

    void Step() {
        const unsigned choice = input_.Byte();
        Use(choice >> 7);
        switch (choice % 8) {
            case 0:
            case 1:
                return AddAny();
            case 2:
                return Typed();
            case 3:
                return RawGet();
            case 4:
                return RawSet();
            case 5:
                return Info();
            case 6:
                return CompareNames();
            default:
                return Whole();
        }
    }

    std::wstring Name() {
        const std::uint8_t choice = input_.Byte();
        if (choice >= 16) return {static_cast<wchar_t>(L'a' + choice % 16)};
        return Make<std::wstring>(input_);
    }

    template <class Call>
    void Typed(Call call) {
        switch (input_.Below(5)) {
            case 0:
                return call(std::int32_t{});
            case 1:
                return call(float{});
            case 2:
                return call(bool{});
            case 3:
                return call(std::int64_t{});
            default:
                return call(std::wstring{});
        }
    }

    void AddAny() {
        switch (input_.Below(8)) {
            case 0:
                return AddRaw();
            case 1:
                return AddHollow();
            default:
                return Typed([&](auto value) { AddTyped<decltype(value)>(); });
        }
    }
    void AddRaw() {
        const auto size = static_cast<std::int32_t>(input_.Below(kMostRawBytes + 1));
        const std::uint32_t access = input_.Byte();
        model::Entry entry{Name()};
        entry.info = {size, 0, access, ePropertyRaw};
        entry.value.bytes.resize(static_cast<std::size_t>(size));
        real_->AddProperty(entry.name, std::make_unique<RawProperty>(size, access));
        model_->Add(std::move(entry));
    }
    void AddHollow() {
        model::Entry entry{Name()};
        entry.isHollow = true;
        real_->AddProperty(entry.name, nullptr);
        model_->Add(std::move(entry));
    }
    template <class T>
    void AddTyped() {
        PropertyOptions<T> options;
        options.access = input_.Byte();
        options.extra = input_.Byte();
        model::Entry entry{Name()};
        entry.info = {static_cast<std::int32_t>(sizeof(T)), options.extra, options.access,
                      kTypeOf<T>};
        entry.value = ValueOf(T{});
        if (input_.Flag()) {
            options.defaultValue = Make<T>(input_);
            entry.defaultValue = ValueOf(*options.defaultValue);
            entry.value = *entry.defaultValue;
        }
        if (input_.Flag()) {
            options.range.emplace(Make<T>(input_), Make<T>(input_));
            entry.range.emplace(ValueOf(options.range->first), ValueOf(options.range->second));
        }
        real_->AddProperty(entry.name, std::make_unique<TypedProperty<T>>(std::move(options)));
        model_->Add(std::move(entry));
    }

    void Typed() {
        const unsigned operation = input_.Below(4);
        const std::wstring name = Name();
        Typed([&](auto value) {
            using T = decltype(value);
            switch (operation) {
                case 0:
                    return Get<T>(name);
                case 1:
                    return Set<T>(name);
                case 2:
                    return Default<T>(name);
                default:
                    if constexpr (!std::is_same_v<T, bool> && !std::is_same_v<T, std::wstring>) {
                        return Range<T>(name);
                    }
            }
        });
    }
    template <class T>
    void Get(const std::wstring& name) {
        const bool force = input_.Flag();
        const T before = Make<T>(input_);
        T value = before;
        const model::Answer expected = model_->Access(name, kTypeOf<T>, eAccessRead, force);
        Expect(real_->GetProperty(name, value, force), expected);
        const bool went = expected.code == eSuccess;
        fuzz::Check(Same(value, went ? model_->Find(name)->value : ValueOf(before)), "a value");
    }
    template <class T>
    void Set(const std::wstring& name) {
        const bool force = input_.Flag();
        const T value = Make<T>(input_);
        const model::Answer expected = model_->Access(name, kTypeOf<T>, eAccessWrite, force);
        Expect(real_->SetProperty(name, value, force), expected);
        if (expected.code == eSuccess) model_->Find(name)->value = ValueOf(value);
    }
    template <class T>
    void Default(const std::wstring& name) {
        const T before = Make<T>(input_);
        T value = before;
        const bool isNull = input_.Below(8) == 7;
        const model::Answer expected = model_->RangeOrDefault(name, kTypeOf<T>, false, !isNull);
        Expect(real_->GetPropertyDefault(name, isNull ? nullptr : &value), expected);
        const bool went = expected.code == eSuccess;
        fuzz::Check(Same(value, went ? *model_->Find(name)->defaultValue : ValueOf(before)),
                    "a default value");
    }
    template <class T>
    void Range(const std::wstring& name) {
        T min = Make<T>(input_);
        T max = min;
        const model::Value before = ValueOf(min);
        const unsigned nulls = input_.Below(16);
        const model::Answer expected = model_->RangeOrDefault(name, kTypeOf<T>, true, nulls < 14);
        Expect(real_->GetPropertyRange(name, nulls == 14 ? nullptr : &min,
                                       nulls == 15 ? nullptr : &max),
               expected);
        if (expected.code == eSuccess) {
            const auto& range = *model_->Find(name)->range;
            fuzz::Check(Same(min, range.first) && Same(max, range.second), "a range");
        } else {
            fuzz::Check(Same(min, before) && Same(max, before), "a range that was not there");
        }
    }

    std::int32_t Size() {
        const unsigned choice = input_.Byte();
        if (choice == 255) return std::numeric_limits<std::int32_t>::max();
        if (choice == 254) return std::numeric_limits<std::int32_t>::min();
        return static_cast<std::int32_t>(choice % 80) - 4;
    }
    void RawGet() {
        const std::wstring name = Name();
        const std::int32_t size = Size();
        const unsigned nulls = input_.Below(16);
        unsigned char buffer[kMostRawBytes];
        std::memset(buffer, 0xA5, sizeof buffer);
        std::int32_t copied = -77;
        const model::Answer expected = model_->RawAccess(name, eAccessRead, nulls < 14);
        Expect(real_->GetProperty(name, nulls == 14 ? nullptr : buffer, size,
                                  nulls == 15 ? nullptr : &copied),
               expected);
        std::size_t count = 0;
        if (expected.code == eSuccess) {
            const model::Entry& entry = *model_->Find(name);
            count = model::PropertySet::BytesToMove(entry, size);
            fuzz::Check(copied == static_cast<std::int32_t>(count), "the number of bytes");
            fuzz::Check(std::equal(buffer, buffer + count, entry.value.bytes.begin()), "raw bytes");
        } else {
            fuzz::Check(copied == -77, "a number of bytes without success");
        }
        fuzz::Check(std::all_of(buffer + count, buffer + kMostRawBytes,
                                [](unsigned char byte) { return byte == 0xA5; }),
                    "bytes behind the value");
    }
    void RawSet() {
        const std::wstring name = Name();
        const std::int32_t size = Size();
        const bool isNull = input_.Below(16) == 15;
        unsigned char data[kMostRawBytes] = {};
        const std::string_view given = input_.Bytes(input_.Below(kMostRawBytes + 1));
        std::memcpy(data, given.data(), given.size());
        const model::Answer expected = model_->RawAccess(name, eAccessWrite, !isNull);
        Expect(real_->SetProperty(name, isNull ? nullptr : static_cast<const void*>(data), size),
               expected);
        if (expected.code == eSuccess) {
            model::Entry& entry = *model_->Find(name);
            std::copy_n(data, model::PropertySet::BytesToMove(entry, size),
                        entry.value.bytes.begin());
        }
    }

    void Info() {
        const std::wstring name = Name();
        const bool isNull = input_.Below(16) == 15;
        PropertyInfo info{1, 2, 3, 4};
        PropertyInfo wanted = info;
        const model::Answer expected = model_->Info(name, isNull ? nullptr : &wanted);
        Expect(real_->GetPropertyInfo(name, isNull ? nullptr : &info), expected);
        fuzz::Check(std::memcmp(&info, &wanted, sizeof info) == 0, "the record");
    }
    void CompareNames() {
        std::vector<std::wstring> names{L"before"};
        Expect(real_->GetProperties(names), {eSuccess, false});
        fuzz::Check(names == model_->Names(), "the names or their order");
    }
    void Whole() {
        switch (input_.Below(8)) {
            case 0:
                real_->Clear();
                return model_->Clear();
            case 1:
                return Expect(real_->CopyPropertiesFrom(nullptr), {eNotImplemented, false});
            case 2:  // from itself
                Expect(real_->CopyPropertiesFrom(sets_[1 - other_]), {eSuccess, false});
                return model_->CopyFrom(*model_);
            default:
                Expect(real_->CopyPropertiesFrom(sets_[other_]), {eSuccess, false});
                return model_->CopyFrom(models_[other_]);
        }
    }

    static void Expect(_eError code, const model::Answer& expected) {
        fuzz::Check(code == expected.code,
                    "code " + std::to_string(code) + " and not " + std::to_string(expected.code));
        fuzz::Check(captured::TakeTraced().size() == (expected.isReported ? 1u : 0u),
                    "the number of reports");
    }

    fuzz::Input input_;
    std::shared_ptr<PropertySet> sets_[2];
    model::PropertySet models_[2];
    PropertySet* real_ = nullptr;
    model::PropertySet* model_ = nullptr;
    std::size_t other_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Run(data, size).Play();
    captured::TakeDebugged();
    return 0;
}

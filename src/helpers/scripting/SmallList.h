#pragma once

// A list of plain values that needs no memory of its own before it holds more than a few. Not for
// several threads at once.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace helpers::scripting {

template <class Value, std::size_t kFew>
class SmallList {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    SmallList() = default;
    SmallList(const SmallList&) = delete;
    SmallList& operator=(const SmallList&) = delete;

    bool empty() const { return begin_ == end_; }
    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
    Value& operator[](std::size_t index) { return begin_[index]; }
    const Value& operator[](std::size_t index) const { return begin_[index]; }
    Value& back() { return end_[-1]; }
    const Value* begin() const { return begin_; }
    const Value* end() const { return end_; }

    void push_back(Value value) {
        if (end_ == limit_) [[unlikely]]
            Grow();
        *end_++ = value;
    }
    void pop_back() { --end_; }
    // The size is at most the one that the list has.
    void CutTo(std::size_t size) { end_ = begin_ + size; }
    void clear() { end_ = begin_; }

private:
    // Values are made when they are put in.
    union Few {
        Few() {}
        Value values[kFew];
    };

    void Grow() {
        const std::size_t count = size();
        std::unique_ptr<Value[]> more(new Value[2 * (count + kFew)]);
        std::copy(begin_, end_, more.get());
        more_ = std::move(more);
        begin_ = more_.get();
        end_ = begin_ + count;
        limit_ = begin_ + 2 * (count + kFew);
    }

    Few few_;
    std::unique_ptr<Value[]> more_;
    Value* begin_ = few_.values;
    Value* end_ = few_.values;
    Value* limit_ = few_.values + kFew;
};

}  // namespace helpers::scripting

#pragma once

namespace base_types {

// Holds a validity flag for a class that answers IValidator::IsValid with it. No virtual
// operations. Caller serialises.
class Validator {
protected:
    explicit Validator(bool valid = false) : valid_(valid) {}
    ~Validator() = default;

    bool Valid() const { return valid_; }
    void SetValid(bool valid) { valid_ = valid; }

private:
    bool valid_;
};

}  // namespace base_types

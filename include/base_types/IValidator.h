#pragma once

namespace base_types {

// Says whether an object is usable. Any thread, unless the implementing class says otherwise.
class IValidator {
public:
    /* 0 */ virtual ~IValidator() = default;
    /* 1 */ virtual bool IsValid() = 0;
};

}  // namespace base_types

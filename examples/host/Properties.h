#pragma once

#include "base_types/IPropertySet.h"

namespace host {

// Prints type, access, range, default and value of every property.
void PrintProperties(base_types::IPropertySet& properties);

// Gives every property another value, through the form that is its own, and prints what came back
// before and after.
void ChangeProperties(base_types::IPropertySet& properties);

}  // namespace host

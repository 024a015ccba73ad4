#pragma once

// The byte that says whether this process owns the manager. It has an image section of its own, an
// ordinary one, not shared, so that a tool can find it in another process by the section's name.

namespace platform {

inline constexpr char kOwnerSection[] = ".owner";

// 1 until this process was found to be a later one.
unsigned char& OwnerByte();

}  // namespace platform

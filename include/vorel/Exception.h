#pragma once

// The engine core's exception, as far as the plug-in manager knows it: its type alone counts.

namespace vorel {

// Thrown by the engine core below a plug-in. The manager reports it as eVorelExceptionCatched and
// reads nothing of it.
class Exception {};

}  // namespace vorel

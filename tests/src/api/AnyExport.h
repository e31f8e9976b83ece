/**
 * All exports behind one call: arguments are made up, out variables lie in marked memory, so that
 * a test can say of every export that it fails and touches nothing.
 */
#ifndef TELVO_TESTS_SRC_API_ANYEXPORT_H
#define TELVO_TESTS_SRC_API_ANYEXPORT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

struct Attempt {
    std::int64_t result = 0; // a pointer counts as its address
    bool touchedMemory = false;
};

/// @param cameraId     every 32-bit argument has this value, the camera id among them
/// @param nullPointer  index, among the arguments, of the one pointer that shall be null
using AnyCall =
    std::function<Attempt(std::int32_t cameraId, std::optional<std::size_t> nullPointer)>;

struct AnyExport {
    std::string name;
    std::int64_t failure; // result for an unknown id: -1, or 0 where that is null or a count
    AnyCall call;
    std::vector<bool> isPointer; // by argument; functions and `void*`, which no one reads, are not
};

/// Every export but expConnectGrabber, which takes an id to make it known.
const std::vector<AnyExport>& exportsWithKnownId();

/// Whether an export of this name gives an address, which is null when it fails.
bool returnsPointer(const std::string& name);

#endif

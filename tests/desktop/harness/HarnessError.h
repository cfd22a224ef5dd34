#pragma once

#include <ostream>
#include <string>

namespace velmorand::desktop {

/// Why a part of the test desktop could not be had, as a text for the failure message of a test.
struct HarnessError {
    std::string message;
};

inline std::ostream& operator<<(std::ostream& stream, const HarnessError& error) {
    return stream << error.message;
}

}  // namespace velmorand::desktop

#pragma once

#include <string>

namespace velmorand {

/// Why a stored value could not be read: a missing key or a wrong type, as a sentence for the log.
struct DecodingError {
    std::string description;

    bool operator==(const DecodingError&) const = default;
};

}  // namespace velmorand

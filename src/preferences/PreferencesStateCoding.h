#pragma once

#include "base/DecodingError.h"
#include "preferences/PreferencesState.h"

#include <expected>
#include <string>
#include <string_view>

namespace velmorand {

/// Why a record cannot be written, as a sentence for the log.
struct EncodingError {
    std::string description;

    bool operator==(const EncodingError&) const = default;
};

/// The stored form of the user's settings: one JSON object, without white space, of all eight settings in the order of
/// the record's fields. `clampToVisibleArea` is "snapToVisibleArea" in the document and must stay so for the documents
/// that exist. Text that is not valid UTF-8 is written with U+FFFD in its place. Fails for a number that is not finite.
[[nodiscard]] std::expected<std::string, EncodingError> encodePreferencesState(const PreferencesState& state);

/// Reads a stored document and normalises the record.
///
/// A shortcut that cannot be read is left out, and shortcuts that are no object are the default ones. Any other value of
/// the wrong type fails the document. Settings that are absent or null have their defaults, and unknown keys are ignored.
/// Of a repeated setting the last one counts; of a repeated shortcut the last one that can be read.
[[nodiscard]] std::expected<PreferencesState, DecodingError> decodePreferencesState(std::string_view document);

}  // namespace velmorand

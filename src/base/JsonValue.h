#pragma once

#include "base/DecodingError.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace velmorand {

/// A JSON document as it is written: members in their order, repeated keys and all, and numbers as their digits, so
/// that the reader of a format decides what each of them means.
class JsonValue {
public:
    /// The digits of a number, valid as JSON.
    struct Number {
        std::string digits;
    };
    using Array = std::vector<JsonValue>;
    using Member = std::pair<std::string, JsonValue>;
    using Object = std::vector<Member>;
    using Content = std::variant<std::nullptr_t, bool, Number, std::string, Array, Object>;

    /// Null.
    JsonValue() = default;
    explicit JsonValue(Content content) : content_(std::move(content)) {}
    [[nodiscard]] static JsonValue text(std::string_view text) { return JsonValue(std::string(text)); }
    [[nodiscard]] static JsonValue number(std::uint32_t value);
    /// In the fewest digits that stand for exactly this value, which must be finite.
    [[nodiscard]] static JsonValue number(double value);

    /// Reads a document of valid UTF-8, with or without a byte-order mark. Fails, saying where, when it is not JSON, and
    /// when it is longer or nested deeper than any document of ours.
    [[nodiscard]] static std::expected<JsonValue, DecodingError> parse(std::string_view document);

    /// The document that `parse` reads as this value, without white space.
    [[nodiscard]] std::string write() const;

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::nullptr_t>(content_); }
    [[nodiscard]] std::optional<bool> asBoolean() const;
    /// Absent for anything but a number, and for one that is too large.
    [[nodiscard]] std::optional<double> asDouble() const;
    /// A whole number in range, however it is written: 8, 8.0 and 8e0 are the same. Absent for anything else.
    [[nodiscard]] std::optional<std::uint32_t> asUnsigned() const;
    /// Null for anything else.
    [[nodiscard]] const std::string* asString() const { return std::get_if<std::string>(&content_); }
    [[nodiscard]] const Array* asArray() const { return std::get_if<Array>(&content_); }
    [[nodiscard]] const Object* asObject() const { return std::get_if<Object>(&content_); }

    [[nodiscard]] const Content& content() const { return content_; }

    /// The last member of an object with this key; null without one.
    [[nodiscard]] const JsonValue* member(std::string_view key) const;

private:
    Content content_;
};

}  // namespace velmorand

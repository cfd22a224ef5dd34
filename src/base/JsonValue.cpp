#include "base/JsonValue.h"

#include "base/UnicodeText.h"

#include <fmt/format.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <ranges>
#include <span>

namespace velmorand {
namespace {

constexpr std::size_t longestDocument = 16U << 20U;
constexpr std::size_t deepestNesting = 64;

/// The end of the digits that begin at `start`.
std::size_t endOfDigits(std::string_view text, std::size_t start) {
    return std::min(text.find_first_not_of("0123456789", start), text.size());
}

/// How many characters at the front of the text are a number as JSON writes it.
std::size_t lengthOfNumber(std::string_view text) {
    const std::size_t start = text.starts_with('-') ? 1 : 0;
    const bool isZero = text.substr(start).starts_with('0');
    std::size_t end = isZero ? start + 1 : endOfDigits(text, start);
    if (end == start) return 0;
    if (text.substr(end).starts_with('.')) {
        const std::size_t afterFraction = endOfDigits(text, end + 1);
        if (afterFraction > end + 1) end = afterFraction;
    }
    if (text.substr(end).starts_with('e') || text.substr(end).starts_with('E')) {
        const std::string_view sign = text.substr(end + 1, 1);
        const std::size_t digits = end + (sign == "+" || sign == "-" ? 2 : 1);
        const std::size_t afterExponent = endOfDigits(text, digits);
        if (afterExponent > digits) end = afterExponent;
    }
    return end;
}

/// What follows the string that begins at `start`, or the end of the document.
std::size_t endOfString(std::string_view document, std::size_t start) {
    std::size_t end = document.find_first_of("\"\\", start + 1);
    while (end != std::string_view::npos && document[end] == '\\') end = document.find_first_of("\"\\", end + 2);
    return end == std::string_view::npos ? document.size() : end + 1;
}

/// A document with its numbers beside it.
struct DividedDocument {
    /// The document with 0 and blanks in each number's place.
    std::string text;
    /// In their order.
    std::vector<std::string_view> numbers;
};

/// RapidJSON refuses the whole document when no double holds one of its numbers, also one that nobody reads. So it does
/// not get to see them.
DividedDocument divide(std::string_view document) {
    DividedDocument result{std::string(document), {}};
    for (std::size_t at = 0; at < document.size();) {
        if (document[at] == '"') {
            at = endOfString(document, at);
        } else if (const std::size_t length = lengthOfNumber(document.substr(at)); length > 0) {
            result.numbers.push_back(document.substr(at, length));
            std::ranges::fill_n(result.text.begin() + static_cast<std::ptrdiff_t>(at),
                                static_cast<std::ptrdiff_t>(length), ' ');
            result.text[at] = '0';
            at += length;
        } else {
            ++at;
        }
    }
    return result;
}

/// Builds the value from the parser's events. An event that answers false ends the parsing.
class Builder {
public:
    /// The document's numbers must outlive the builder.
    explicit Builder(std::span<const std::string_view> numbers) : numbers_(numbers) {}

    // NOLINTBEGIN(readability-identifier-naming): the parser calls them by these names
    bool Null() { return add(nullptr); }
    bool Bool(bool value) { return add(value); }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        // The parser lets the second half of a surrogate pair pass without the first.
        return isValidUtf8({text, length}) && add(std::string(text, length));
    }
    bool StartObject() { return open(JsonValue::Object{}); }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        open_.back().key.assign(text, length);
        return isValidUtf8({text, length});
    }
    bool EndObject(rapidjson::SizeType /*members*/) { return close(); }
    bool StartArray() { return open(JsonValue::Array{}); }
    bool EndArray(rapidjson::SizeType /*elements*/) { return close(); }

    /// Every number comes as 0.
    bool Uint(unsigned /*value*/) {
        const std::string_view digits = numbers_.front();
        numbers_ = numbers_.subspan(1);
        return add(JsonValue::Number{std::string(digits)});
    }
    bool RawNumber(const char* /*text*/, rapidjson::SizeType /*length*/, bool /*copy*/) { return false; }
    bool Int(int /*value*/) { return false; }
    bool Int64(std::int64_t /*value*/) { return false; }
    bool Uint64(std::uint64_t /*value*/) { return false; }
    bool Double(double /*value*/) { return false; }
    // NOLINTEND(readability-identifier-naming)

    [[nodiscard]] bool isTooDeep() const { return isTooDeep_; }
    JsonValue takeResult() { return std::move(result_); }

private:
    /// An object or a list whose end has not come yet, and the key of the member to come.
    struct Container {
        std::variant<JsonValue::Object, JsonValue::Array> content;
        std::string key;
    };

    bool add(JsonValue::Content content) {
        JsonValue value(std::move(content));
        if (open_.empty()) {
            result_ = std::move(value);
        } else if (auto* object = std::get_if<JsonValue::Object>(&open_.back().content)) {
            object->emplace_back(std::move(open_.back().key), std::move(value));
        } else {
            std::get<JsonValue::Array>(open_.back().content).push_back(std::move(value));
        }
        return true;
    }

    template <typename Content>
    bool open(Content content) {
        isTooDeep_ = open_.size() == deepestNesting;
        if (!isTooDeep_) open_.push_back({std::move(content), {}});
        return !isTooDeep_;
    }

    bool close() {
        auto content = std::move(open_.back().content);
        open_.pop_back();
        return std::visit([this](auto& each) { return add(std::move(each)); }, content);
    }

    std::span<const std::string_view> numbers_;
    std::vector<Container> open_;
    bool isTooDeep_ = false;
    JsonValue result_;
};

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

rapidjson::SizeType lengthOf(std::string_view text) {
    return static_cast<rapidjson::SizeType>(text.size());
}

void writeValue(const JsonValue& value, Writer& writer);

/// One function for each kind of content.
struct ContentWriter {
    Writer& writer;

    void operator()(std::nullptr_t) const { writer.Null(); }
    void operator()(bool value) const { writer.Bool(value); }
    void operator()(const JsonValue::Number& number) const {
        writer.RawValue(number.digits.data(), number.digits.size(), rapidjson::kNumberType);
    }
    void operator()(const std::string& text) const { writer.String(text.data(), lengthOf(text)); }
    void operator()(const JsonValue::Array& elements) const {
        writer.StartArray();
        for (const JsonValue& element : elements) writeValue(element, writer);
        writer.EndArray();
    }
    void operator()(const JsonValue::Object& members) const {
        writer.StartObject();
        for (const auto& [key, value] : members) {
            writer.Key(key.data(), lengthOf(key));
            writeValue(value, writer);
        }
        writer.EndObject();
    }
};

void writeValue(const JsonValue& value, Writer& writer) {
    std::visit(ContentWriter{writer}, value.content());
}

/// The power of ten that a number's exponent names, or one that is as good as it for `isTiny`; 0 without an exponent.
std::int64_t exponentOf(std::string_view digits) {
    const std::size_t letter = digits.find_first_of("eE");
    if (letter == std::string_view::npos) return 0;
    digits.remove_prefix(letter + (digits.substr(letter + 1).starts_with('+') ? 2 : 1));
    constexpr std::int64_t farAway = std::numeric_limits<std::int32_t>::max();
    std::int64_t exponent = digits.starts_with('-') ? -farAway : farAway;
    std::from_chars(digits.data(), digits.data() + digits.size(), exponent);  // leaves it as it is when it does not fit
    return std::clamp(exponent, -farAway, farAway);
}

/// Whether a number that no double holds is too close to zero, not too far from it.
bool isTiny(std::string_view digits) {
    const std::string_view mantissa = digits.substr(0, digits.find_first_of("eE"));
    const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
    const auto firstDigit = static_cast<std::int64_t>(mantissa.find_first_of("123456789"));
    return point - firstDigit + exponentOf(digits) < 0;
}

std::string describe(const rapidjson::ParseResult& result, bool isTooDeep) {
    if (isTooDeep) return fmt::format("The document is nested deeper than {} levels.", deepestNesting);
    const bool isBadText = result.Code() == rapidjson::kParseErrorTermination;
    const auto code = isBadText ? rapidjson::kParseErrorStringUnicodeSurrogateInvalid : result.Code();
    return fmt::format("{} (at byte {})", rapidjson::GetParseError_En(code), result.Offset());
}

}  // namespace

std::expected<JsonValue, DecodingError> JsonValue::parse(std::string_view document) {
    if (document.size() > longestDocument)
        return std::unexpected(DecodingError{fmt::format("The document is longer than {} bytes.", longestDocument)});
    // The parser takes a zero byte for the end.
    if (document.contains('\0')) return std::unexpected(DecodingError{"The document holds a zero byte."});
    if (document.starts_with("\xEF\xBB\xBF")) document.remove_prefix(3);
    const DividedDocument divided = divide(document);
    rapidjson::MemoryStream bytes(divided.text.data(), divided.text.size());
    rapidjson::Reader reader;
    Builder builder(divided.numbers);
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    const rapidjson::ParseResult result = reader.Parse<flags>(bytes, builder);
    if (result.IsError()) return std::unexpected(DecodingError{describe(result, builder.isTooDeep())});
    return builder.takeResult();
}

JsonValue JsonValue::number(std::uint32_t value) {
    return JsonValue(Number{fmt::format("{}", value)});
}

JsonValue JsonValue::number(double value) {
    return JsonValue(Number{fmt::format("{}", value)});
}

std::string JsonValue::write() const {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writeValue(*this, writer);
    return {buffer.GetString(), buffer.GetSize()};
}

std::optional<bool> JsonValue::asBoolean() const {
    const auto* value = std::get_if<bool>(&content_);
    return value == nullptr ? std::nullopt : std::optional(*value);
}

std::optional<double> JsonValue::asDouble() const {
    const auto* number = std::get_if<Number>(&content_);
    if (number == nullptr) return std::nullopt;
    double value = 0;
    const char* end = number->digits.data() + number->digits.size();
    const auto [rest, error] = std::from_chars(number->digits.data(), end, value);
    if (error == std::errc::result_out_of_range && isTiny(number->digits)) return 0;
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

std::optional<std::uint32_t> JsonValue::asUnsigned() const {
    const auto value = asDouble();
    constexpr double largest = std::numeric_limits<std::uint32_t>::max();
    if (!value || *value < 0 || *value > largest || std::trunc(*value) != *value) return std::nullopt;
    return static_cast<std::uint32_t>(*value);
}

const JsonValue* JsonValue::member(std::string_view key) const {
    const Object* object = asObject();
    if (object == nullptr) return nullptr;
    for (const auto& [name, value] : std::views::reverse(*object)) {
        if (name == key) return &value;
    }
    return nullptr;
}

}  // namespace velmorand

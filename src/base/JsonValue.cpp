#include "base/JsonValue.h"

#include <fmt/format.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <ranges>

namespace velmorand {
namespace {

constexpr std::size_t longestDocument = 1U << 20U;
constexpr std::size_t deepestNesting = 64;

/// Builds the value from the parser's events. An event that answers false ends the parsing.
class Builder {
public:
    bool Null() { return add(nullptr); }
    bool Bool(bool value) { return add(value); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        return add(JsonValue::Number{std::string(text, length)});
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) { return add(std::string(text, length)); }
    bool StartObject() { return open(JsonValue::Object{}); }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        open_.back().key.assign(text, length);
        return true;
    }
    bool EndObject(rapidjson::SizeType /*members*/) { return close(); }
    bool StartArray() { return open(JsonValue::Array{}); }
    bool EndArray(rapidjson::SizeType /*elements*/) { return close(); }

    // Numbers come as their digits only.
    bool Int(int /*value*/) { return false; }
    bool Uint(unsigned /*value*/) { return false; }
    bool Int64(std::int64_t /*value*/) { return false; }
    bool Uint64(std::uint64_t /*value*/) { return false; }
    bool Double(double /*value*/) { return false; }

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
        if (open_.size() == deepestNesting) return false;
        open_.push_back({std::move(content), {}});
        return true;
    }

    bool close() {
        auto content = std::move(open_.back().content);
        open_.pop_back();
        return std::visit([this](auto& each) { return add(std::move(each)); }, content);
    }

    std::vector<Container> open_;
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

/// Whether a number too far from what a double holds is so by being close to zero.
bool isTiny(std::string_view digits) {
    const std::size_t exponent = digits.find_first_of("eE");
    if (exponent != std::string_view::npos) return digits.substr(exponent + 1).starts_with('-');
    return digits.starts_with("0.") || digits.starts_with("-0.");
}

std::string describe(const rapidjson::ParseResult& result) {
    if (result.Code() == rapidjson::kParseErrorTermination)
        return fmt::format("The document is nested deeper than {} levels.", deepestNesting);
    return fmt::format("{} (at byte {})", rapidjson::GetParseError_En(result.Code()), result.Offset());
}

}  // namespace

std::expected<JsonValue, DecodingError> JsonValue::parse(std::string_view document) {
    if (document.size() > longestDocument)
        return std::unexpected(DecodingError{fmt::format("The document is longer than {} bytes.", longestDocument)});
    // The parser takes a zero byte for the end.
    if (document.contains('\0')) return std::unexpected(DecodingError{"The document holds a zero byte."});
    if (document.starts_with("\xEF\xBB\xBF")) document.remove_prefix(3);
    rapidjson::MemoryStream bytes(document.data(), document.size());
    rapidjson::Reader reader;
    Builder builder;
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
    const rapidjson::ParseResult result = reader.Parse<flags>(bytes, builder);
    if (result.IsError()) return std::unexpected(DecodingError{describe(result)});
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

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velmorand {

/// Writes what a settings manager publishes (XSETTINGS), in either byte order.
class XSettingsBytes {
public:
    explicit XSettingsBytes(bool isBigEndian = false) : isBigEndian_(isBigEndian) {
        bytes_.push_back(isBigEndian ? 1 : 0);
        bytes_.resize(4);
        number(4711, 4);  // the serial
        number(0, 4);     // the count
    }

    XSettingsBytes& integer(std::string_view name, std::int32_t value) {
        begin(0, name);
        number(static_cast<std::uint32_t>(value), 4);
        return *this;
    }
    XSettingsBytes& text(std::string_view name, std::string_view value) {
        begin(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    XSettingsBytes& color(std::string_view name) {
        begin(2, name);
        for (const std::uint32_t part : {1U, 2U, 3U, 65535U}) number(part, 2);
        return *this;
    }
    /// The beginning of a setting of any kind, without its value.
    XSettingsBytes& begin(std::uint8_t kind, std::string_view name) {
        setCount(++count_);
        bytes_.push_back(kind);
        bytes_.push_back(0);
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(17, 4);  // the serial of its last change
        return *this;
    }
    /// Claims this many settings, whatever follows.
    XSettingsBytes& setCount(std::uint32_t count) {
        const std::vector<std::uint8_t> rest(bytes_.begin() + 12, bytes_.end());
        bytes_.resize(8);
        number(count, 4);
        bytes_.insert(bytes_.end(), rest.begin(), rest.end());
        return *this;
    }
    XSettingsBytes& number(std::uint32_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t place = isBigEndian_ ? size - 1 - i : i;
            bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * place)));
        }
        return *this;
    }

    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

private:
    void padded(std::string_view characters) {
        bytes_.insert(bytes_.end(), characters.begin(), characters.end());
        bytes_.resize((bytes_.size() + 3) / 4 * 4);
    }

    bool isBigEndian_;
    std::uint32_t count_ = 0;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace velmorand

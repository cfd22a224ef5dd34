#include "base/JsonValue.h"
#include "base/UnicodeText.h"
#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "preferences/PreferencesStateCoding.h"

#include <string>
#include <string_view>

namespace velmorand {
namespace {

void checkDocument(std::string_view text) {
    const auto value = JsonValue::parse(text);
    if (!value) {
        require(!value.error().description.empty(), "a document that is refused is told why");
        require(!decodePreferencesState(text), "what is no document is no record");
        return;
    }
    require(isValidUtf8(text), "a document is text");
    const std::string written = value->write();
    const auto read = JsonValue::parse(written);
    require(read && read->write() == written, "a document is the same after it was written");
    require(decodePreferencesState(written) == decodePreferencesState(text),
            "a document stands for the same record after it was written");
}

void checkRecord(std::string_view text) {
    const auto state = decodePreferencesState(text);
    if (!state) {
        require(!state.error().description.empty(), "a record that is refused is told why");
        return;
    }
    require(normalized(*state) == *state, "a record that was read is normalised");
    require(normalized(completed(*state)) == completed(*state), "it stays so when it is completed");
    const auto document = encodePreferencesState(*state);
    require(document.has_value(), "a record that was read can be stored");
    require(decodePreferencesState(*document) == state, "a record is the same after it was stored");
    require(decodePreferencesState("\xEF\xBB\xBF" + *document) == state, "a byte-order mark does not matter");
    require(!decodePreferencesState(document->substr(0, document->size() - 1)), "a document without its end is none");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const std::string text = input.remainingText();
    velmorand::checkDocument(text);
    velmorand::checkRecord(text);
    return 0;
}

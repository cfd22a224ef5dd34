#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/DesktopEntryText.h"

#include <string>

namespace velmorand {
namespace {

void checkEntry(const std::string& text) {
    const AutostartEntry entry = parseAutostartEntry(text);
    require(parseAutostartEntry("# comment\n\n" + text) == entry, "comments and empty lines do not matter");
    require(parseAutostartEntry(text + "\n[Other]\nType=Application\nExec=other\nTryExec=other\nHidden=true\n") ==
                entry,
            "other groups do not matter");
    require(parseAutostartEntry("[Desktop Entry]\nHidden=true\n" + text).isSwitchedOff, "a hidden entry is off");
    require(!entry.program || !entry.program->empty(), "a program is absent or has a name");
    require(unescapedValue(text).size() <= text.size(), "an escape stands for one character");
}

void checkProgram(const std::string& path) {
    const auto exec = execValueFor(path);
    if (!exec) return;
    require(exec->find('\n') == std::string::npos, "a value is one line");
    const auto entry = parseAutostartEntry(registeringEntry("org.example.Editor", *exec));
    require(entry.isApplication && !entry.isSwitchedOff, "what is registered counts");
    const bool isStartedByAnother = path.find('%') != std::string::npos;
    require(entry.program == (isStartedByAnother ? "/usr/bin/env" : path), "what is registered names the program");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const std::string text = input.remainingText();
    velmorand::checkEntry(text);
    velmorand::checkProgram("/" + text);
    return 0;
}

#include "shortcuts/GlobalHotKeyRegistrar.h"

#include <fmt/format.h>

#include <utility>

namespace velmorand {

std::string GlobalHotKeyError::description() const {
    switch (which) {
        case Case::handlerInstallFailed:
            return fmt::format("Could not install the keyboard shortcut handler (error {}).", status);
        case Case::registrationFailed: return fmt::format("Could not register the shortcut (error {}).", status);
    }
    std::unreachable();
}

}  // namespace velmorand

#include "desktop/contract/X11DesktopUnderContract.h"
#include "desktop/harness/SettingsFile.h"

#include <stdexcept>

/// The installed applications of the X11 desktop under contract.
namespace velmorand::desktop {
namespace {

void writeEntry(const std::filesystem::path& file, const std::string& text) {
    const auto written = writeSettingsFile(file, text);
    if (!written) throw std::runtime_error(written.error().message);
}

}  // namespace

std::filesystem::path X11DesktopUnderContract::entryFolder() const {
    return std::filesystem::path(desktop_->environment().at("XDG_DATA_HOME")) / "applications";
}

/// However coarse the clock of the file system is.
void X11DesktopUnderContract::markEntriesChanged() {
    ++entryAge_;
    std::filesystem::last_write_time(entryFolder(), std::filesystem::file_time_type::clock::now() + entryAge_);
}

std::filesystem::path X11DesktopUnderContract::install(const ContractApplication& application) {
    std::filesystem::path location = entryFolder() / (application.identifier + ".desktop");
    writeEntry(location, "[Desktop Entry]\nType=Application\nExec=/usr/bin/false\nName=" + application.name +
                             "\nIcon=" + application.icon + (application.isListed ? "\n" : "\nNoDisplay=true\n"));
    markEntriesChanged();
    return location;
}

void X11DesktopUnderContract::uninstall(const std::filesystem::path& location) {
    std::filesystem::remove(location);
    markEntriesChanged();
}

void X11DesktopUnderContract::breakApplication(const std::filesystem::path& location) {
    writeEntry(location, "[Desktop Entry]\nType=Appl");
    markEntriesChanged();
}

}  // namespace velmorand::desktop

#include "desktop/contract/X11DesktopUnderContract.h"
#include "desktop/harness/SettingsFile.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

/// The installed applications of the X11 desktop under contract, and what they are registered for.
namespace velmorand::desktop {
namespace {

void writeFile(const std::filesystem::path& file, const std::string& text) {
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
    writeFile(location, "[Desktop Entry]\nType=Application\nExec=/usr/bin/false\nName=" + application.name +
                            "\nIcon=" + application.icon + (application.isListed ? "\n" : "\nNoDisplay=true\n"));
    markEntriesChanged();
    return location;
}

void X11DesktopUnderContract::uninstall(const std::filesystem::path& location) {
    std::filesystem::remove(location);
    markEntriesChanged();
}

void X11DesktopUnderContract::breakApplication(const std::filesystem::path& location) {
    writeFile(location, "[Desktop Entry]\nType=Appl");
    markEntriesChanged();
}

std::filesystem::path X11DesktopUnderContract::autostartFile() const {
    return std::filesystem::path(desktop_->environment().at("XDG_CONFIG_HOME")) / "autostart" /
           VELMORAND_IDENTIFIER ".desktop";
}

/// An entry of the user's that is hidden counts before one that this machine may have.
void X11DesktopUnderContract::setInstalled(bool installed) {
    writeFile(entryFolder() / VELMORAND_IDENTIFIER ".desktop",
              std::string("[Desktop Entry]\nType=Application\nName=Velmorand\nExec=velmorand\n") +
                  (installed ? "" : "Hidden=true\n"));
}

void X11DesktopUnderContract::switchOffLoginItem() {
    std::ofstream(autostartFile(), std::ios::app) << "Hidden=true\n";
}

bool X11DesktopUnderContract::startsAtLogin() {
    std::ifstream file(autostartFile());
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return text.contains("\nExec=") && !text.contains("\nHidden=true\n");
}

void X11DesktopUnderContract::setMailProgram(bool isThere) {
    // The machine may have one of its own.
    setenv("XDG_DATA_DIRS", (desktop_->folder() / "no-data").c_str(), 1);
    const std::filesystem::path data = desktop_->environment().at("XDG_DATA_HOME");
    const std::filesystem::path entry = data / "applications/org.example.Mail.desktop";
    if (!isThere) {
        std::filesystem::remove(entry);
        return;
    }
    const std::filesystem::path program = desktop_->folder() / "write-mail";
    writeFile(program, "#!/bin/sh\necho \"$1\" >>'" + mailFile().native() + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    writeFile(entry, "[Desktop Entry]\nType=Application\nName=Mail\nMimeType=x-scheme-handler/mailto;\nExec=" +
                         program.native() + " %u\n");
    const std::filesystem::path configuration = desktop_->environment().at("XDG_CONFIG_HOME");
    writeFile(configuration / "mimeapps.list",
              "[Default Applications]\nx-scheme-handler/mailto=org.example.Mail.desktop\n");
}

std::vector<std::string> X11DesktopUnderContract::begunMails() {
    std::vector<std::string> mails;
    std::ifstream file(mailFile());
    for (std::string line; std::getline(file, line);) mails.push_back(line);
    return mails;
}

}  // namespace velmorand::desktop

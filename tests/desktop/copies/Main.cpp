#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace {

/// Prints the texts of the platform's data, and does not answer.
int printPlatformData(sd_bus_message* message, void* /*data*/, sd_bus_error* /*error*/) {
    sd_bus_message_enter_container(message, 'a', "{sv}");
    const char* key = nullptr;
    const char* text = nullptr;
    while (sd_bus_message_read(message, "{sv}", &key, "s", &text) > 0) std::printf("%s %s\n", key, text);
    std::printf("activated\n");
    std::fflush(stdout);
    return 1;
}

int printAndAnswer(sd_bus_message* message, void* data, sd_bus_error* error) {
    printPlatformData(message, data, error);
    return sd_bus_reply_method_return(message, nullptr);
}

using Description = std::array<sd_bus_vtable, 3>;

constexpr Description description(sd_bus_message_handler_t activate) {
    return {{
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Activate", "a{sv}", "", activate, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    }};
}

const Description answering = description(printAndAnswer);
const Description keepingQuiet = description(printPlatformData);

}  // namespace

/// Takes the name of Velmorand on the session bus, says "owns" and keeps it. With "answers" it prints what it is activated
/// with, with "quiet" it prints that and does not answer, with "refuses" it knows no such call, and with "silent" it reads nothing.
int main(int argumentCount, char** arguments) {
    const std::string_view behaviour = argumentCount > 1 ? arguments[1] : "";
    sd_bus* bus = nullptr;
    if (sd_bus_open_user(&bus) < 0) return 1;
    if (behaviour == "answers" || behaviour == "quiet") {
        const Description& description = behaviour == "answers" ? answering : keepingQuiet;
        sd_bus_add_object_vtable(bus, nullptr, "/app/velmorand/Velmorand", "org.freedesktop.Application",
                                 description.data(), nullptr);
    }
    if (sd_bus_request_name(bus, "app.velmorand.Velmorand", 0) < 0) return 1;
    std::printf("owns\n");
    std::fflush(stdout);
    while (behaviour == "silent") pause();
    while (sd_bus_process(bus, nullptr) > 0 || sd_bus_wait(bus, UINT64_MAX) >= 0) {}
    return 0;
}

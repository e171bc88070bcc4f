// A keyboard for the Wayland session of the tests, as xdotool is for X11. It
// makes one virtual keyboard on the compositor's seat, with the US layout,
// prints "ready", then reads commands on its standard input, one a line, and
// answers each with "ok" (or "error <why>") once the keys are pressed:
//   type TEXT   types TEXT into the focused window, Shift where needed
//   key NAME    presses one key (Return, Escape, Tab, BackSpace)
// Only characters of the US layout can be typed (the same rule as for xdotool
// in the X11 runs). One keyboard for the whole run, as a person has: each new
// keyboard's first key moves the focus out of the focused window and back.
#include "virtual-keyboard-unstable-v1-client-protocol.h"

#include <wayland-client.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <thread>

#include <sys/mman.h>
#include <unistd.h>

namespace {

const char *const keymap = "xkb_keymap {\n"
                           "  xkb_keycodes { include \"evdev+aliases(qwerty)\" };\n"
                           "  xkb_types { include \"complete\" };\n"
                           "  xkb_compat { include \"complete\" };\n"
                           "  xkb_symbols { include \"pc+us+inet(evdev)\" };\n"
                           "};\n";

// Linux input key codes of the US layout.
constexpr uint32_t leftShift = 42;
constexpr uint32_t shiftMask = 1; // Shift is the first modifier of the keymap

struct Stroke
{
    uint32_t key;
    bool shift;
};

std::optional<Stroke> strokeFor(char c)
{
    static const std::string rows[] = {"1234567890-=", "qwertyuiop[]", "asdfghjkl;'`", "zxcvbnm,./"};
    static const std::string shiftedRows[] = {"!@#$%^&*()_+", "QWERTYUIOP{}", "ASDFGHJKL:\"~", "ZXCVBNM<>?"};
    static const uint32_t firstKey[] = {2, 16, 30, 44};
    for (int row = 0; row < 4; ++row) {
        if (auto at = rows[row].find(c); at != std::string::npos)
            return Stroke{firstKey[row] + uint32_t(at), false};
        if (auto at = shiftedRows[row].find(c); at != std::string::npos)
            return Stroke{firstKey[row] + uint32_t(at), true};
    }
    switch (c) {
    case ' ':
        return Stroke{57, false};
    case '\\':
        return Stroke{43, false};
    case '|':
        return Stroke{43, true};
    default:
        return std::nullopt;
    }
}

const std::map<std::string, uint32_t> namedKeys{{"Return", 28}, {"Escape", 1}, {"Tab", 15}, {"BackSpace", 14}};

struct Globals
{
    wl_seat *seat = nullptr;
    zwp_virtual_keyboard_manager_v1 *manager = nullptr;
};

void announce(void *data, wl_registry *registry, uint32_t name, const char *interface, uint32_t)
{
    auto *globals = static_cast<Globals *>(data);
    if (std::strcmp(interface, wl_seat_interface.name) == 0 && !globals->seat)
        globals->seat = static_cast<wl_seat *>(wl_registry_bind(registry, name, &wl_seat_interface, 1));
    else if (std::strcmp(interface, zwp_virtual_keyboard_manager_v1_interface.name) == 0)
        globals->manager = static_cast<zwp_virtual_keyboard_manager_v1 *>(
            wl_registry_bind(registry, name, &zwp_virtual_keyboard_manager_v1_interface, 1));
}

void withdraw(void *, wl_registry *, uint32_t) { }

const wl_registry_listener registryListener{announce, withdraw};

uint32_t now()
{
    using namespace std::chrono;
    return uint32_t(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

} // namespace

int main()
{
    wl_display *display = wl_display_connect(nullptr);
    if (!display) {
        std::fprintf(stderr, "wayland_keyboard: no Wayland compositor at $WAYLAND_DISPLAY\n");
        return 1;
    }
    Globals globals;
    wl_registry *registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &registryListener, &globals);
    wl_display_roundtrip(display);
    if (!globals.seat || !globals.manager) {
        std::fprintf(stderr, "wayland_keyboard: the compositor offers no seat or no virtual keyboards\n");
        return 1;
    }
    zwp_virtual_keyboard_v1 *keyboard =
        zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(globals.manager, globals.seat);

    const size_t size = std::strlen(keymap) + 1;
    const int fd = memfd_create("keymap", MFD_CLOEXEC);
    if (fd < 0 || write(fd, keymap, size) != ssize_t(size)) {
        std::perror("wayland_keyboard: keymap");
        return 1;
    }
    zwp_virtual_keyboard_v1_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, fd, uint32_t(size));
    close(fd);
    wl_display_roundtrip(display);

    const auto press = [&](uint32_t key, uint32_t state) {
        zwp_virtual_keyboard_v1_key(keyboard, now(), key, state);
        wl_display_roundtrip(display);
        std::this_thread::sleep_for(std::chrono::milliseconds(8));
    };
    const auto strike = [&](Stroke stroke) {
        if (stroke.shift) {
            press(leftShift, WL_KEYBOARD_KEY_STATE_PRESSED);
            zwp_virtual_keyboard_v1_modifiers(keyboard, shiftMask, 0, 0, 0);
        }
        press(stroke.key, WL_KEYBOARD_KEY_STATE_PRESSED);
        press(stroke.key, WL_KEYBOARD_KEY_STATE_RELEASED);
        if (stroke.shift) {
            press(leftShift, WL_KEYBOARD_KEY_STATE_RELEASED);
            zwp_virtual_keyboard_v1_modifiers(keyboard, 0, 0, 0, 0);
        }
    };

    // The first key makes this the seat's keyboard, which moves the focus out
    // of the focused window and back: done once here, before the windows the
    // tests type into are open (some close when they lose the focus).
    press(leftShift, WL_KEYBOARD_KEY_STATE_PRESSED);
    press(leftShift, WL_KEYBOARD_KEY_STATE_RELEASED);
    std::printf("ready\n");
    std::fflush(stdout);

    char buffer[4096];
    while (std::fgets(buffer, sizeof buffer, stdin)) {
        std::string line(buffer);
        if (!line.empty() && line.back() == '\n')
            line.pop_back();
        const std::string command = line.substr(0, line.find(' '));
        const std::string argument =
            line.find(' ') == std::string::npos ? std::string() : line.substr(line.find(' ') + 1);
        std::string error;
        if (command == "type") {
            for (char c : argument)
                if (!strokeFor(c))
                    error = std::string("'") + c + "' is not on the US keyboard";
            if (error.empty())
                for (char c : argument)
                    strike(*strokeFor(c));
        } else if (command == "key" && namedKeys.count(argument)) {
            strike(Stroke{namedKeys.at(argument), false});
        } else {
            error = "unknown command: " + line;
        }
        std::printf("%s\n", error.empty() ? "ok" : ("error " + error).c_str());
        std::fflush(stdout);
    }

    zwp_virtual_keyboard_v1_destroy(keyboard);
    zwp_virtual_keyboard_manager_v1_destroy(globals.manager);
    wl_seat_destroy(globals.seat);
    wl_registry_destroy(registry);
    wl_display_roundtrip(display);
    wl_display_disconnect(display);
    return 0;
}

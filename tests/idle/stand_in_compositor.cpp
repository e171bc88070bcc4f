// A stand-in Wayland compositor for the idle-time tests: it offers a seat
// and, unless started with --no-idle-notifier, ext_idle_notifier_v1. It
// prints "ready <socket>" once clients can connect and "notification <ms>"
// for each idle notification a client asks for; the lines "idle" and
// "resume" on its standard input send idled and resumed to every
// notification, as a real compositor would on a quiet seat and new input.
#include "ext-idle-notify-v1-server-protocol.h"

#include <wayland-server.h>

#include <cstdio>
#include <cstring>
#include <list>
#include <string>

#include <unistd.h>

namespace {

std::list<wl_resource *> notifications;
std::string pendingInput;

void destroyResource(wl_client *, wl_resource *resource)
{
    wl_resource_destroy(resource);
}

const struct ext_idle_notification_v1_interface notificationRequests = {destroyResource};

void getIdleNotification(wl_client *client, wl_resource *, uint32_t id, uint32_t timeout, wl_resource *)
{
    wl_resource *notification = wl_resource_create(client, &ext_idle_notification_v1_interface, 1, id);
    notifications.push_back(notification);
    wl_resource_set_implementation(notification, &notificationRequests, nullptr,
                                   [](wl_resource *gone) { notifications.remove(gone); });
    std::printf("notification %u\n", timeout);
    std::fflush(stdout);
}

const struct ext_idle_notifier_v1_interface notifierRequests = {destroyResource, getIdleNotification};

// The seat's own requests (pointer, keyboard, touch) are never made here.
const struct wl_seat_interface seatRequests = {nullptr, nullptr, nullptr, destroyResource};

int readCommands(int fd, uint32_t, void *data)
{
    auto *display = static_cast<wl_display *>(data);
    char buffer[256];
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    if (got <= 0) {
        wl_display_terminate(display);
        return 0;
    }
    pendingInput.append(buffer, size_t(got));
    for (size_t end; (end = pendingInput.find('\n')) != std::string::npos; pendingInput.erase(0, end + 1)) {
        const std::string command = pendingInput.substr(0, end);
        for (wl_resource *notification : notifications) {
            if (command == "idle")
                ext_idle_notification_v1_send_idled(notification);
            else if (command == "resume")
                ext_idle_notification_v1_send_resumed(notification);
        }
    }
    wl_display_flush_clients(display);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const bool withNotifier = !(argc > 1 && std::strcmp(argv[1], "--no-idle-notifier") == 0);
    wl_display *display = wl_display_create();
    const char *socket = display ? wl_display_add_socket_auto(display) : nullptr;
    if (!socket)
        return 1;
    wl_global_create(display, &wl_seat_interface, 1, nullptr, [](wl_client *client, void *, uint32_t, uint32_t id) {
        wl_resource_set_implementation(wl_resource_create(client, &wl_seat_interface, 1, id), &seatRequests, nullptr,
                                       nullptr);
    });
    if (withNotifier) {
        wl_global_create(
            display, &ext_idle_notifier_v1_interface, 1, nullptr, [](wl_client *client, void *, uint32_t, uint32_t id) {
                wl_resource_set_implementation(wl_resource_create(client, &ext_idle_notifier_v1_interface, 1, id),
                                               &notifierRequests, nullptr, nullptr);
            });
    }
    wl_event_loop_add_fd(wl_display_get_event_loop(display), STDIN_FILENO, WL_EVENT_READABLE, readCommands, display);
    std::printf("ready %s\n", socket);
    std::fflush(stdout);
    wl_display_run(display);
    wl_display_destroy_clients(display);
    wl_display_destroy(display);
    return 0;
}

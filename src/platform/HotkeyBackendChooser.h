#pragma once

#include "hotkeys/GlobalHotkeyBackend.h"

#include <QDBusConnection>
#include <memory>

namespace tarnwell::platform {

// Picks how global hot keys reach the desktop, in this order: the
// GlobalShortcuts portal where it is offered, KDE's kglobalaccel where it
// runs, an X11 key grab on xcb sessions. None (a Wayland compositor without
// the portal): no back end; the choice is logged either way.
std::unique_ptr<GlobalHotkeyBackend> chooseHotkeyBackend(const QDBusConnection &bus, QObject *parent = nullptr);

} // namespace tarnwell::platform

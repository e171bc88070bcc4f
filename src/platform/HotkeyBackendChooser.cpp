#include "HotkeyBackendChooser.h"

#include "KGlobalAccelHotkeyBackend.h"
#include "PortalHotkeyBackend.h"
#include "X11HotkeyBackend.h"
#include "kit/Logging.h"

#include <QGuiApplication>

namespace tarnwell::platform {

std::unique_ptr<GlobalHotkeyBackend> chooseHotkeyBackend(const QDBusConnection &bus, QObject *parent)
{
    if (const uint version = PortalHotkeyBackend::version(bus)) {
        qCInfo(lcHotkeys).noquote()
            << QStringLiteral("Global hotkeys through the GlobalShortcuts portal (version %1)").arg(version);
        return std::make_unique<PortalHotkeyBackend>(bus, parent);
    }
    if (KGlobalAccelHotkeyBackend::available(bus)) {
        qCInfo(lcHotkeys).noquote() << QStringLiteral("Global hotkeys through kglobalaccel");
        return std::make_unique<KGlobalAccelHotkeyBackend>(bus, parent);
    }
    if (auto x11 = X11HotkeyBackend::create(parent)) {
        qCInfo(lcHotkeys).noquote() << QStringLiteral("Global hotkeys through X11 key grabs");
        return x11;
    }
    qCWarning(lcHotkeys).noquote()
        << QStringLiteral("No global hotkey service on platform %1 (no shortcuts portal, no kglobalaccel, not X11)")
               .arg(QGuiApplication::platformName());
    return nullptr;
}

} // namespace tarnwell::platform

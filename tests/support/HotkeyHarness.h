// The hot-key manager over a back end the test chooses, on an in-memory
// store, with every action it announces collected in `fired`.
#pragma once

#include "hotkeys/HotkeyManager.h"
#include "kit/NamedNotifications.h"
#include "persistence/PersistenceController.h"
#include "settings/AppSettingsStore.h"

#include <QStringList>

struct HotkeyHarness
{
    explicit HotkeyHarness(tarnwell::GlobalHotkeyBackend *backend, tarnwell::LocalKeyMonitor *monitor = nullptr)
        : manager(settings, center, backend, monitor)
    {
        center.observe(
            QString::fromLatin1(tarnwell::HotkeyManager::Constants::firedNotification), &center,
            [this](const QVariantMap &info) { fired.append(info.value(QStringLiteral("action")).toString()); });
    }

    tarnwell::PersistenceController store{true};
    tarnwell::AppSettingsStore settings{store};
    tarnwell::NamedNotifications center;
    tarnwell::HotkeyManager manager;
    QStringList fired;
};

#pragma once

#include "SettingsModels.h"
#include "SyncSettingsModel.h"
#include "WindowController.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QPointer>

class QQuickWindow;

namespace tarnwell {

class AppSettingsStore;
class RoutineRepository;
class RoutinesModel;
class SoundService;
class UiEngine;

// The settings window: General, Reminders, Hotkeys, Routines, Sync,
// Permissions and About, one tab each, over one small model a tab. The models are made
// at the first show; Escape closes an open form first, then the window.
class SettingsWindowController : public tarnwell::WindowController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
public:
    struct Services
    {
        AppSettingsStore &settings;
        SoundService &sounds;
        RoutineRepository &routines;
        UiEngine &ui;
        // Asked when the Hotkeys tab is first made: the back end's name
        // ("" for none), and how to register the settings anew.
        std::function<QString()> hotkeyBackend;
        HotkeySettingsModel::Reload reloadHotkeys;
        PermissionsModel::Probe probePermissions;
        QString version;
        QString dataFolder;
        // The Sync tab's: none (a test, a build without sync) shows it as not available.
        SyncService *sync = nullptr;
        SyncSettingsModel::Discover discoverCalendars = {};
    };
    // The tabs, in their order; a link's section names one ("hotkeys").
    static const QStringList &tabNames();

    explicit SettingsWindowController(Services services, QObject *parent = nullptr);

    // Shows the window on `tab` (one of tabNames(); anything else keeps the
    // tab shown last).
    void show(const QString &tab = {});
    void retranslate();

    GeneralSettingsModel *general() const { return m_general; }
    ReminderSettingsModel *reminders() const { return m_reminders; }
    HotkeySettingsModel *hotkeys() const { return m_hotkeys; }
    PermissionsModel *permissions() const { return m_permissions; }
    RoutinesModel *routines() const { return m_routines; }
    SyncSettingsModel *sync() const { return m_sync; }

private:
    void makeModels();

    Services m_services;
    GeneralSettingsModel *m_general = nullptr;
    ReminderSettingsModel *m_reminders = nullptr;
    HotkeySettingsModel *m_hotkeys = nullptr;
    PermissionsModel *m_permissions = nullptr;
    AboutModel *m_about = nullptr;
    RoutinesModel *m_routines = nullptr;
    SyncSettingsModel *m_sync = nullptr;
};

} // namespace tarnwell

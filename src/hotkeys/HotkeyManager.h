#pragma once

#include "GlobalHotkeyBackend.h"
#include "HotkeyConflict.h"

#include <QHash>
#include <QObject>
#include <optional>

namespace tarnwell {

class AppSettingsStore;
class NamedNotifications;

// Registers the two user-bound global hot keys from the settings and posts
// "Tarnwell.hotkey.fired" (user info "action": the action's raw value) on
// every press. Without a back end (no portal, no kglobalaccel, no X11) it
// still checks the settings and registers nothing.
class HotkeyManager : public QObject
{
    Q_OBJECT
public:
    using Action = HotkeyAction;
    struct Constants
    {
        static constexpr const char *firedNotification = "Tarnwell.hotkey.fired";
        static constexpr const char *actionKey = "action";
    };

    HotkeyManager(AppSettingsStore &settings, NamedNotifications &center, GlobalHotkeyBackend *backend,
                  LocalKeyMonitor *localMonitor, QObject *parent = nullptr);
    ~HotkeyManager() override;

    // Checks both settings; on a conflict logs it, returns it and keeps the
    // registrations in force. Otherwise registers both anew.
    std::optional<HotkeyConflict> reload();
    // Drops every registration and the local monitor (termination).
    void unregisterAll();
    // Another back end (the session bus it lived on was replaced): the old
    // one's registrations are dropped; reload() registers on the new one.
    void setBackend(GlobalHotkeyBackend *backend);

    const QHash<Action, HotkeyCombo> &globalHotkeys() const { return m_globalHotkeys; }
    bool localMonitorInstalled() const { return m_localMonitorInstalled; }
    GlobalHotkeyBackend *backend() const { return m_backend; }

    // For the user: `hotkey` did not become `action`'s because it is taken.
    static QString takenMessage(Action action, const RecordedHotkey &hotkey);
    // The command a desktop shortcut can run instead, where no back end exists.
    static QString desktopShortcutCommand(Action action);

Q_SIGNALS:
    // The desktop or another program already uses the combination of `hotkey`.
    void takenBySystem(tarnwell::HotkeyAction action, const tarnwell::RecordedHotkey &hotkey);

private:
    void registerAction(Action action, const QString &text, QList<HotkeyBinding> &bindings);
    void onPressed(Action action);
    void onRefused(Action action);

    AppSettingsStore &m_settings;
    NamedNotifications &m_center;
    GlobalHotkeyBackend *m_backend;
    LocalKeyMonitor *m_localMonitor;
    QHash<Action, HotkeyCombo> m_globalHotkeys;
    QHash<Action, QString> m_texts;
    bool m_localMonitorInstalled = false;
};

} // namespace tarnwell

#pragma once

#include <QObject>
#include <QString>

namespace tarnwell {

class AppSettingsStore;

// Keeps launch at login in step with the loginItemEnabled setting: an XDG
// autostart entry, written atomically when on and removed when off.
class LoginItemService : public QObject
{
    Q_OBJECT
public:
    // `command` is what the autostart entry runs (the program's absolute path).
    LoginItemService(AppSettingsStore &settings, QString command, QObject *parent = nullptr);

    // Brings the autostart entry in line with the setting and follows its changes.
    void start();
    // $XDG_CONFIG_HOME/autostart/org.tarnwell.Tarnwell.desktop
    static QString autostartPath();
    bool isRegistered() const;

private:
    void apply();

    AppSettingsStore &m_settings;
    QString m_command;
    bool m_started = false;
};

} // namespace tarnwell

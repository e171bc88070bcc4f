#pragma once

#include "hotkeys/HotkeyAction.h"
#include "hotkeys/HotkeyConflict.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QStringList>
#include <QVariantList>
#include <functional>
#include <optional>

namespace tarnwell {

class AppSettingsStore;
class SoundService;

// The settings window's tabs over the settings store: every change goes
// through AppSettingsStore, whose observers (appearance, language, login
// item, idle monitor, label, widget) act on it; each model follows the
// store's change signal, so the window shows a change made anywhere.

// General: language, appearance, launch at login, the workday end, the
// tray title, time away.
class GeneralSettingsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY changed)
    Q_PROPERTY(QVariantList languages READ languages NOTIFY languagesChanged)
    Q_PROPERTY(QString appearance READ appearance WRITE setAppearance NOTIFY changed)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY changed)
    Q_PROPERTY(bool workdayEndEnabled READ workdayEndEnabled WRITE setWorkdayEndEnabled NOTIFY changed)
    Q_PROPERTY(QString workdayEndText READ workdayEndText NOTIFY changed)
    Q_PROPERTY(int menuBarMaxChars READ menuBarMaxChars WRITE setMenuBarMaxChars NOTIFY changed)
    Q_PROPERTY(bool minimalIdleMode READ minimalIdleMode WRITE setMinimalIdleMode NOTIFY changed)
    Q_PROPERTY(int idleThresholdMinutes READ idleThresholdMinutes WRITE setIdleThresholdMinutes NOTIFY changed)
    Q_PROPERTY(bool editHistory READ editHistory WRITE setEditHistory NOTIFY changed)
public:
    struct Constants
    {
        // A workday end switched on without a time before starts at 17:00.
        static constexpr int defaultWorkdayEnd = 17 * 60;
    };

    explicit GeneralSettingsModel(AppSettingsStore &settings, QObject *parent = nullptr);

    QString language() const;
    void setLanguage(const QString &stored);
    // [{value: "system", text: "Same as the system"}, {value: "de", text: "Deutsch"}, ...]:
    // each language in its own name.
    QVariantList languages() const;
    QString appearance() const;
    void setAppearance(const QString &stored);
    bool launchAtLogin() const;
    void setLaunchAtLogin(bool on);
    bool workdayEndEnabled() const;
    void setWorkdayEndEnabled(bool on);
    // "17:30"; the last time chosen, also while switched off.
    QString workdayEndText() const;
    // Takes "17:30", "1730" or "9:05"; returns the error to show, or "".
    Q_INVOKABLE QString setWorkdayEndText(const QString &text);
    int menuBarMaxChars() const;
    void setMenuBarMaxChars(int characters);
    bool minimalIdleMode() const;
    void setMinimalIdleMode(bool on);
    int idleThresholdMinutes() const;
    void setIdleThresholdMinutes(int minutes);
    // Whether the tasks of past days may be changed in the popover.
    bool editHistory() const;
    void setEditHistory(bool on);

    static std::optional<int> parseTime(const QString &text);
    void retranslate() { Q_EMIT languagesChanged(); }

Q_SIGNALS:
    void changed();
    // Only the name of "system" changes with the language.
    void languagesChanged();

private:
    AppSettingsStore &m_settings;
    int m_lastWorkdayEnd = Constants::defaultWorkdayEnd;
};

// Reminders: notifications, the warning before the planned end, the
// chime, and the minutes of "+N".
class ReminderSettingsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool notificationsEnabled READ notificationsEnabled WRITE setNotificationsEnabled NOTIFY changed)
    Q_PROPERTY(int warningMinutes READ warningMinutes WRITE setWarningMinutes NOTIFY changed)
    Q_PROPERTY(bool soundEnabled READ soundEnabled WRITE setSoundEnabled NOTIFY changed)
    Q_PROPERTY(QString chime READ chime WRITE setChime NOTIFY changed)
    Q_PROPERTY(QString warningChime READ warningChime WRITE setWarningChime NOTIFY changed)
    Q_PROPERTY(QString completionChime READ completionChime WRITE setCompletionChime NOTIFY changed)
    Q_PROPERTY(int volumePercent READ volumePercent WRITE setVolumePercent NOTIFY changed)
    Q_PROPERTY(QStringList chimes READ chimes CONSTANT)
    Q_PROPERTY(int overtimeMinutes READ overtimeMinutes WRITE setOvertimeMinutes NOTIFY changed)
public:
    ReminderSettingsModel(AppSettingsStore &settings, SoundService &sounds, QObject *parent = nullptr);

    bool notificationsEnabled() const;
    void setNotificationsEnabled(bool on);
    int warningMinutes() const;
    void setWarningMinutes(int minutes);
    bool soundEnabled() const;
    void setSoundEnabled(bool on);
    QString chime() const;
    void setChime(const QString &name);
    // Each event's chime as it plays now (the time-up chime until one is chosen).
    QString warningChime() const;
    void setWarningChime(const QString &name);
    QString completionChime() const;
    void setCompletionChime(const QString &name);
    int volumePercent() const;
    void setVolumePercent(int percent);
    QStringList chimes() const;
    int overtimeMinutes() const;
    void setOvertimeMinutes(int minutes);
    // Plays `name` as the event would (0 time up, 1 warning, 2 completion).
    Q_INVOKABLE void preview(const QString &name, int event = 0);

Q_SIGNALS:
    void changed();

private:
    AppSettingsStore &m_settings;
    SoundService &m_sounds;
};

// Hotkeys: a recorder for each of the two global hot keys, the popover's
// fixed shortcuts, and how the desktop is reached.
class HotkeySettingsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString togglePopover READ togglePopover NOTIFY changed)
    Q_PROPERTY(QString quickAdd READ quickAdd NOTIFY changed)
    Q_PROPERTY(QString togglePopoverMessage READ togglePopoverMessage NOTIFY changed)
    Q_PROPERTY(QString quickAddMessage READ quickAddMessage NOTIFY changed)
    Q_PROPERTY(QVariantList builtIns READ builtIns NOTIFY changed)
    Q_PROPERTY(QString backend READ backend CONSTANT)
    Q_PROPERTY(QString togglePopoverCommand READ togglePopoverCommand CONSTANT)
    Q_PROPERTY(QString quickAddCommand READ quickAddCommand CONSTANT)
public:
    // Registers the settings anew and answers what stands in the way.
    using Reload = std::function<std::optional<HotkeyConflict>()>;

    HotkeySettingsModel(AppSettingsStore &settings, QString backend, Reload reload, QObject *parent = nullptr);

    // The display forms ("Super+Shift+J").
    QString togglePopover() const;
    QString quickAdd() const;
    QString togglePopoverMessage() const { return m_messages[0]; }
    QString quickAddMessage() const { return m_messages[1]; }
    // [{keys: "Ctrl+Return", label: "Complete active task"}, ...]
    QVariantList builtIns() const;
    // "x11", "portal", "kglobalaccel", or "" where there is none.
    QString backend() const { return m_backend; }
    QString togglePopoverCommand() const;
    QString quickAddCommand() const;

    // A key press of the recorder as hot-key text ("cmd+shift+j"); "" when
    // it is only a modifier, has no modifier, or is a key we cannot bind.
    // `scanCode` tells a shifted digit on keyboards where Shift+1 gives "!".
    Q_INVOKABLE static QString recordedText(int key, int modifiers, int scanCode = 0);
    Q_INVOKABLE static QString display(const QString &text);
    // Stores `text` for the action ("togglePopover" or "quickAdd") unless it
    // conflicts with the other one, then registers both; the message that
    // follows (a conflict, a refusal) shows under the recorder.
    Q_INVOKABLE void apply(const QString &action, const QString &text);
    Q_INVOKABLE void restoreDefault(const QString &action);
    // The desktop refused a registered combination (arrives later for the portal).
    void noteTaken(HotkeyAction action, const QString &message);
    void retranslate() { Q_EMIT changed(); }

Q_SIGNALS:
    void changed();

private:
    AppSettingsStore &m_settings;
    QString m_backend;
    Reload m_reload;
    QString m_messages[2];
};

// What the desktop offers right now, as the composition root finds it.
struct DesktopFacts
{
    bool statusItem = false; // a panel took our StatusNotifierItem
    bool notificationServer = false;
    bool notificationActions = false;
    bool idleSource = false;
    bool sessionEvents = false; // logind on the system bus
    QString hotkeyBackend; // "" for none
    bool loginItemEnabled = false;
    bool loginItemRegistered = false;
    QString autostartPath;
};

// What works on this desktop: one line a facility, with its state, what it
// means and what to do about it.
class PermissionsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QVariantList facilities READ facilities NOTIFY changed)
public:
    enum class State { working, limited, missing };
    Q_ENUM(State)
    struct Facility
    {
        QString id;
        State state = State::missing;
        QString title;
        QString explanation;
        QString fix; // empty when there is nothing to do
    };
    using Probe = std::function<DesktopFacts()>;
    // The facilities in the order shown, with their texts.
    static QList<Facility> describe(const DesktopFacts &facts);

    explicit PermissionsModel(Probe probe, QObject *parent = nullptr);

    // [{id, state: "working"|"limited"|"missing", title, explanation, fix}]
    QVariantList facilities() const { return m_facilities; }
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void changed();

private:
    Probe m_probe;
    QVariantList m_facilities;
};

// About: version, licence, the data folder and where the logs go.
class AboutModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString dataFolder READ dataFolder CONSTANT)
    Q_PROPERTY(QString exportCommand READ exportCommand CONSTANT)
public:
    AboutModel(QString version, QString dataFolder, QObject *parent = nullptr);

    QString version() const { return m_version; }
    QString dataFolder() const { return m_dataFolder; }
    QString exportCommand() const;
    Q_INVOKABLE bool openDataFolder() const;

private:
    QString m_version;
    QString m_dataFolder;
};

} // namespace tarnwell

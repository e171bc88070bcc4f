#include "SettingsModels.h"

#include "hotkeys/HotkeyManager.h"
#include "hotkeys/HotkeyParser.h"
#include "kit/Logging.h"
#include "services/SoundService.h"
#include "settings/AppSettingsStore.h"

#include <QDesktopServices>
#include <QDir>
#include <QHash>
#include <QRegularExpression>
#include <QUrl>
#include <algorithm>
#include <array>

namespace tarnwell {

namespace {

const std::array<TarnwellLanguageOption, 6> languageOptions{
    TarnwellLanguageOption::system, TarnwellLanguageOption::english, TarnwellLanguageOption::turkish,
    TarnwellLanguageOption::german, TarnwellLanguageOption::spanish, TarnwellLanguageOption::french};

} // namespace

// ---- General

GeneralSettingsModel::GeneralSettingsModel(AppSettingsStore &settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
{
    if (const auto end = m_settings.workdayEndMinutes())
        m_lastWorkdayEnd = *end;
    connect(&m_settings, &AppSettingsStore::settingChanged, this, &GeneralSettingsModel::changed);
}

QString GeneralSettingsModel::language() const
{
    return storedText(m_settings.language());
}

void GeneralSettingsModel::setLanguage(const QString &stored)
{
    for (TarnwellLanguageOption option : languageOptions)
        if (storedText(option) == stored && option != m_settings.language())
            m_settings.setLanguage(option);
}

QVariantList GeneralSettingsModel::languages() const
{
    QVariantList out;
    for (TarnwellLanguageOption option : languageOptions) {
        const QString code = storedText(option);
        QString name;
        if (option == TarnwellLanguageOption::system) {
            //: Settings, General: language option that follows the desktop's language
            //% "Same as the desktop"
            name = qtTrId("settings.general.language.system");
        } else {
            // Each language by its own name, the same in every language.
            static const QHash<QString, QString> autonyms{{QStringLiteral("en"), QStringLiteral("English")},
                                                          {QStringLiteral("tr"), QStringLiteral("Türkçe")},
                                                          {QStringLiteral("de"), QStringLiteral("Deutsch")},
                                                          {QStringLiteral("es"), QStringLiteral("Español")},
                                                          {QStringLiteral("fr"), QStringLiteral("Français")}};
            name = autonyms.value(code, code);
        }
        out.append(QVariantMap{{QStringLiteral("value"), code}, {QStringLiteral("text"), name}});
    }
    return out;
}

QString GeneralSettingsModel::appearance() const
{
    return storedText(m_settings.theme());
}

void GeneralSettingsModel::setAppearance(const QString &stored)
{
    const TarnwellAppearance appearance = appearanceFromStored(stored);
    if (appearance != m_settings.theme())
        m_settings.setTheme(appearance);
}

bool GeneralSettingsModel::launchAtLogin() const
{
    return m_settings.loginItemEnabled();
}

void GeneralSettingsModel::setLaunchAtLogin(bool on)
{
    if (on != m_settings.loginItemEnabled())
        m_settings.setLoginItemEnabled(on);
}

bool GeneralSettingsModel::workdayEndEnabled() const
{
    return m_settings.workdayEndMinutes().has_value();
}

void GeneralSettingsModel::setWorkdayEndEnabled(bool on)
{
    if (on == workdayEndEnabled())
        return;
    if (on)
        m_settings.setWorkdayEndMinutes(m_lastWorkdayEnd);
    else
        m_settings.setWorkdayEndMinutes(std::nullopt);
}

QString GeneralSettingsModel::workdayEndText() const
{
    const int minutes = m_settings.workdayEndMinutes().value_or(m_lastWorkdayEnd);
    return QStringLiteral("%1:%2")
        .arg(minutes / 60, 2, 10, QLatin1Char('0'))
        .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

std::optional<int> GeneralSettingsModel::parseTime(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*(\\d{1,2})\\s*[:.h]?\\s*(\\d{2})\\s*$"));
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const int hours = match.captured(1).toInt();
    const int minutes = match.captured(2).toInt();
    if (hours > 23 || minutes > 59)
        return std::nullopt;
    return hours * 60 + minutes;
}

QString GeneralSettingsModel::setWorkdayEndText(const QString &text)
{
    const auto minutes = parseTime(text);
    if (!minutes)
        //: Settings, General: the typed workday end is not a time of day
        //% "Type a time of day such as 17:30."
        return qtTrId("settings.general.workdayEnd.invalid");
    m_lastWorkdayEnd = *minutes;
    if (m_settings.workdayEndMinutes() != minutes)
        m_settings.setWorkdayEndMinutes(*minutes);
    else
        Q_EMIT changed();
    return {};
}

int GeneralSettingsModel::menuBarMaxChars() const
{
    return m_settings.menuBarMaxChars();
}

void GeneralSettingsModel::setMenuBarMaxChars(int characters)
{
    if (characters != m_settings.menuBarMaxChars())
        m_settings.setMenuBarMaxChars(std::clamp(characters, 0, 64));
}

bool GeneralSettingsModel::minimalIdleMode() const
{
    return m_settings.minimalIdleMode();
}

void GeneralSettingsModel::setMinimalIdleMode(bool on)
{
    if (on != m_settings.minimalIdleMode())
        m_settings.setMinimalIdleMode(on);
}

int GeneralSettingsModel::idleThresholdMinutes() const
{
    return m_settings.idleThresholdMinutes();
}

void GeneralSettingsModel::setIdleThresholdMinutes(int minutes)
{
    if (minutes != m_settings.idleThresholdMinutes())
        m_settings.setIdleThresholdMinutes(minutes);
}

bool GeneralSettingsModel::editHistory() const
{
    return m_settings.editHistoryEnabled();
}

void GeneralSettingsModel::setEditHistory(bool on)
{
    if (on != m_settings.editHistoryEnabled())
        m_settings.setEditHistoryEnabled(on);
}

// ---- Reminders

ReminderSettingsModel::ReminderSettingsModel(AppSettingsStore &settings, SoundService &sounds, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_sounds(sounds)
{
    connect(&m_settings, &AppSettingsStore::settingChanged, this, &ReminderSettingsModel::changed);
}

bool ReminderSettingsModel::notificationsEnabled() const
{
    return m_settings.notificationsEnabled();
}

void ReminderSettingsModel::setNotificationsEnabled(bool on)
{
    if (on != m_settings.notificationsEnabled())
        m_settings.setNotificationsEnabled(on);
}

int ReminderSettingsModel::warningMinutes() const
{
    return m_settings.preEndWarningMinutes();
}

void ReminderSettingsModel::setWarningMinutes(int minutes)
{
    if (minutes != m_settings.preEndWarningMinutes())
        m_settings.setPreEndWarningMinutes(std::max(0, minutes));
}

bool ReminderSettingsModel::soundEnabled() const
{
    return m_settings.soundEnabled();
}

void ReminderSettingsModel::setSoundEnabled(bool on)
{
    if (on != m_settings.soundEnabled())
        m_settings.setSoundEnabled(on);
}

QString ReminderSettingsModel::chime() const
{
    return SoundService::resolve(m_settings.chimeSoundName());
}

void ReminderSettingsModel::setChime(const QString &name)
{
    if (SoundService::soundNames().contains(name) && name != m_settings.chimeSoundName())
        m_settings.setChimeSoundName(name);
}

QStringList ReminderSettingsModel::chimes() const
{
    return SoundService::soundNames();
}

int ReminderSettingsModel::overtimeMinutes() const
{
    return m_settings.overtimePresetMinutes();
}

void ReminderSettingsModel::setOvertimeMinutes(int minutes)
{
    if (minutes != m_settings.overtimePresetMinutes())
        m_settings.setOvertimePresetMinutes(std::max(1, minutes));
}

QString ReminderSettingsModel::warningChime() const
{
    return m_sounds.chimeFor(SoundService::Cue::warning);
}

void ReminderSettingsModel::setWarningChime(const QString &name)
{
    if (SoundService::soundNames().contains(name) && name != m_settings.warningChimeName())
        m_settings.setWarningChimeName(name);
}

QString ReminderSettingsModel::completionChime() const
{
    return m_sounds.chimeFor(SoundService::Cue::completion);
}

void ReminderSettingsModel::setCompletionChime(const QString &name)
{
    if (SoundService::soundNames().contains(name) && name != m_settings.completionChimeName())
        m_settings.setCompletionChimeName(name);
}

int ReminderSettingsModel::volumePercent() const
{
    return m_settings.chimeVolumePercent();
}

void ReminderSettingsModel::setVolumePercent(int percent)
{
    if (percent != m_settings.chimeVolumePercent())
        m_settings.setChimeVolumePercent(percent);
}

void ReminderSettingsModel::preview(const QString &name, int event)
{
    const auto cue = event == 1 ? SoundService::Cue::warning
        : event == 2            ? SoundService::Cue::completion
                                : SoundService::Cue::end;
    m_sounds.preview(name, cue);
}

// ---- Hotkeys

HotkeySettingsModel::HotkeySettingsModel(AppSettingsStore &settings, QString backend, Reload reload, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_backend(std::move(backend))
    , m_reload(std::move(reload))
{
    connect(&m_settings, &AppSettingsStore::settingChanged, this, [this](const QString &setting) {
        if (setting.startsWith(QLatin1String("hotkey")))
            Q_EMIT changed();
    });
}

QString HotkeySettingsModel::togglePopover() const
{
    return HotkeyChordFormatter::display(m_settings.hotkeyTogglePopover());
}

QString HotkeySettingsModel::quickAdd() const
{
    return HotkeyChordFormatter::display(m_settings.hotkeyQuickAdd());
}

QVariantList HotkeySettingsModel::builtIns() const
{
    QVariantList out;
    for (const BuiltInShortcut &shortcut : builtInShortcuts())
        out.append(QVariantMap{{QStringLiteral("keys"), QString::fromLatin1(shortcut.keys)},
                               {QStringLiteral("label"), qtTrId(shortcut.labelId)}});
    return out;
}

QString HotkeySettingsModel::togglePopoverCommand() const
{
    return HotkeyManager::desktopShortcutCommand(HotkeyAction::togglePopover);
}

QString HotkeySettingsModel::quickAddCommand() const
{
    return HotkeyManager::desktopShortcutCommand(HotkeyAction::quickAdd);
}

QString HotkeySettingsModel::recordedText(int key, int modifiers, int scanCode)
{
    QStringList pieces;
    const auto mods = Qt::KeyboardModifiers::fromInt(modifiers);
    if (mods & Qt::MetaModifier)
        pieces << QStringLiteral("cmd");
    if (mods & Qt::ControlModifier)
        pieces << QStringLiteral("ctrl");
    if (mods & Qt::AltModifier)
        pieces << QStringLiteral("alt");
    if (mods & Qt::ShiftModifier)
        pieces << QStringLiteral("shift");
    if (pieces.isEmpty())
        return {};

    QString token;
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        token = QChar(u'a' + (key - Qt::Key_A));
    else if (key >= Qt::Key_0 && key <= Qt::Key_9)
        token = QChar(u'0' + (key - Qt::Key_0));
    else if (scanCode >= 10 && scanCode <= 19) // the digit row (evdev + 8), whatever Shift made of it
        token = QChar(scanCode == 19 ? u'0' : char16_t(u'1' + (scanCode - 10)));
    else {
        switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            token = QStringLiteral("return");
            break;
        case Qt::Key_Escape:
            token = QStringLiteral("escape");
            break;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            token = QStringLiteral("tab");
            break;
        case Qt::Key_Space:
            token = QStringLiteral("space");
            break;
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            token = QStringLiteral("delete");
            break;
        case Qt::Key_Up:
            token = QStringLiteral("up");
            break;
        case Qt::Key_Down:
            token = QStringLiteral("down");
            break;
        case Qt::Key_Left:
            token = QStringLiteral("left");
            break;
        case Qt::Key_Right:
            token = QStringLiteral("right");
            break;
        default:
            return {};
        }
    }
    pieces << token;
    return pieces.join(QLatin1Char('+'));
}

QString HotkeySettingsModel::display(const QString &text)
{
    return HotkeyChordFormatter::display(text);
}

void HotkeySettingsModel::apply(const QString &action, const QString &text)
{
    const auto which = hotkeyActionFromRaw(action);
    if (!which || (*which != HotkeyAction::togglePopover && *which != HotkeyAction::quickAdd))
        return;
    const int slot = *which == HotkeyAction::togglePopover ? 0 : 1;
    const QString toggle = slot == 0 ? text : m_settings.hotkeyTogglePopover();
    const QString quick = slot == 1 ? text : m_settings.hotkeyQuickAdd();
    m_messages[0].clear();
    m_messages[1].clear();
    // A combination that cannot work is not stored: what is registered stays.
    if (const auto conflict = HotkeyConflict::check(toggle, quick)) {
        m_messages[slot] = conflict->message();
        Q_EMIT changed();
        return;
    }
    if (slot == 0 && text != m_settings.hotkeyTogglePopover())
        m_settings.setHotkeyTogglePopover(text);
    else if (slot == 1 && text != m_settings.hotkeyQuickAdd())
        m_settings.setHotkeyQuickAdd(text);
    if (m_reload) {
        if (const auto conflict = m_reload())
            m_messages[slot] = conflict->message();
    }
    Q_EMIT changed();
}

void HotkeySettingsModel::restoreDefault(const QString &action)
{
    apply(action,
          action == rawValue(HotkeyAction::togglePopover)
              ? QString::fromLatin1(AppSettingsStore::Defaults::hotkeyTogglePopover)
              : QString::fromLatin1(AppSettingsStore::Defaults::hotkeyQuickAdd));
}

void HotkeySettingsModel::noteTaken(HotkeyAction action, const QString &message)
{
    if (action != HotkeyAction::togglePopover && action != HotkeyAction::quickAdd)
        return;
    m_messages[action == HotkeyAction::togglePopover ? 0 : 1] = message;
    Q_EMIT changed();
}

// ---- Permissions

PermissionsModel::PermissionsModel(Probe probe, QObject *parent)
    : QObject(parent)
    , m_probe(std::move(probe))
{
    refresh();
}

void PermissionsModel::refresh()
{
    m_facilities.clear();
    if (m_probe) {
        const auto facilities = describe(m_probe());
        for (const Facility &f : facilities) {
            const char *state = f.state == State::working ? "working"
                : f.state == State::limited               ? "limited"
                                                          : "missing";
            m_facilities.append(QVariantMap{{QStringLiteral("id"), f.id},
                                            {QStringLiteral("state"), QString::fromLatin1(state)},
                                            {QStringLiteral("title"), f.title},
                                            {QStringLiteral("explanation"), f.explanation},
                                            {QStringLiteral("fix"), f.fix}});
        }
    }
    Q_EMIT changed();
}

QList<PermissionsModel::Facility> PermissionsModel::describe(const DesktopFacts &facts)
{
    QList<Facility> out;

    Facility tray;
    tray.id = QStringLiteral("statusItem");
    //: Settings, Permissions: the tray icon facility
    //% "Tray icon"
    tray.title = qtTrId("settings.permissions.tray");
    if (facts.statusItem) {
        tray.state = State::working;
        //: Settings, Permissions: the panel shows our tray icon
        //% "The panel shows Tarnwell's icon with the task in hand and its countdown."
        tray.explanation = qtTrId("settings.permissions.tray.working");
    } else {
        tray.state = State::limited;
        //: Settings, Permissions: no panel takes tray icons of the modern kind
        //% "No panel on this desktop takes status icons, so Tarnwell falls back on the older tray, which may show only the icon."
        tray.explanation = qtTrId("settings.permissions.tray.missing");
        //: Settings, Permissions: how to get a panel that shows tray icons
        //% "On GNOME, switch on the AppIndicator extension (gnome-shell-extension-appindicator) and log in again."
        tray.fix = qtTrId("settings.permissions.tray.fix");
    }
    out << tray;

    Facility notes;
    notes.id = QStringLiteral("notifications");
    //: Settings, Permissions: the desktop notifications facility
    //% "Notifications"
    notes.title = qtTrId("settings.permissions.notifications");
    if (facts.notificationServer) {
        if (facts.notificationActions) {
            notes.state = State::working;
            //: Settings, Permissions: notifications show with their buttons
            //% "The end of a plan is announced with Done and more-time buttons."
            notes.explanation = qtTrId("settings.permissions.notifications.working");
        } else {
            notes.state = State::limited;
            //: Settings, Permissions: notifications show, but the server shows no buttons
            //% "Notifications show, but this desktop leaves out their buttons: complete or extend from the tray instead."
            notes.explanation = qtTrId("settings.permissions.notifications.noActions");
        }
    } else {
        notes.state = State::missing;
        //: Settings, Permissions: no notification server
        //% "No notification service runs, so the end of a plan is only heard (the chime) and seen in the tray."
        notes.explanation = qtTrId("settings.permissions.notifications.missing");
        //: Settings, Permissions: how to get notifications
        //% "Start your desktop's notification service (on minimal desktops, for example dunst or mako)."
        notes.fix = qtTrId("settings.permissions.notifications.fix");
    }
    out << notes;

    Facility idle;
    idle.id = QStringLiteral("idle");
    //: Settings, Permissions: the idle time facility
    //% "Time away"
    idle.title = qtTrId("settings.permissions.idle");
    idle.state = facts.idleSource ? State::working : State::missing;
    idle.explanation = facts.idleSource
        //: Settings, Permissions: idle time can be read
        //% "A stretch without keyboard or mouse while the timer runs is noticed and offered to subtract."
        ? qtTrId("settings.permissions.idle.working")
        //: Settings, Permissions: idle time cannot be read
        //% "This desktop does not tell programs how long you have been away, so time away is not offered to subtract. Sleep and lock still pause the timer."
        : qtTrId("settings.permissions.idle.missing");
    out << idle;

    Facility sleep;
    sleep.id = QStringLiteral("session");
    //: Settings, Permissions: the sleep and lock facility
    //% "Sleep and screen lock"
    sleep.title = qtTrId("settings.permissions.session");
    sleep.state = facts.sessionEvents ? State::working : State::missing;
    if (facts.sessionEvents) {
        //: Settings, Permissions: sleep and lock pause the timer
        //% "The timer pauses when the computer sleeps or the screen locks, and resumes after a short break."
        sleep.explanation = qtTrId("settings.permissions.session.working");
    } else {
        //: Settings, Permissions: sleep and lock are not reported
        //% "Sleep and screen lock are not reported (no logind), so the timer runs on through them."
        sleep.explanation = qtTrId("settings.permissions.session.missing");
        //: Settings, Permissions: what to do without sleep and lock reports
        //% "Pause the timer before you step away."
        sleep.fix = qtTrId("settings.permissions.session.fix");
    }
    out << sleep;

    Facility keys;
    keys.id = QStringLiteral("hotkeys");
    //: Settings, Permissions: the global hot keys facility
    //% "Global hot keys"
    keys.title = qtTrId("settings.permissions.hotkeys");
    keys.state = facts.hotkeyBackend.isEmpty() ? State::missing : State::working;
    if (!facts.hotkeyBackend.isEmpty()) {
        //: Settings, Permissions: global hot keys work
        //% "The hot keys of the Hotkeys tab work in every program."
        keys.explanation = qtTrId("settings.permissions.hotkeys.working");
    } else {
        //: Settings, Permissions: no global hot keys
        //% "This desktop lets no program set global hot keys."
        keys.explanation = qtTrId("settings.permissions.hotkeys.missing");
        //: Settings, Permissions: how to get hot keys without a global hot-key service
        //% "Add shortcuts in the desktop's keyboard settings that run the commands shown in the Hotkeys tab."
        keys.fix = qtTrId("settings.permissions.hotkeys.fix");
    }
    out << keys;

    Facility login;
    login.id = QStringLiteral("autostart");
    //: Settings, Permissions: the start at login facility
    //% "Start at login"
    login.title = qtTrId("settings.permissions.autostart");
    if (!facts.loginItemEnabled) {
        login.state = State::limited;
        //: Settings, Permissions: start at login is switched off
        //% "Switched off: start Tarnwell yourself after logging in."
        login.explanation = qtTrId("settings.permissions.autostart.off");
        //: Settings, Permissions: where start at login is switched on
        //% "Switch it on in the General tab."
        login.fix = qtTrId("settings.permissions.autostart.fix");
    } else if (facts.loginItemRegistered) {
        login.state = State::working;
        //: Settings, Permissions: the autostart entry is in place; %1 = its file
        //% "Tarnwell starts when you log in (%1)."
        login.explanation = qtTrId("settings.permissions.autostart.working").arg(facts.autostartPath);
    } else {
        login.state = State::missing;
        //: Settings, Permissions: the autostart entry could not be written; %1 = its file
        //% "The autostart entry %1 could not be written."
        login.explanation = qtTrId("settings.permissions.autostart.missing").arg(facts.autostartPath);
    }
    out << login;
    return out;
}

// ---- About

AboutModel::AboutModel(QString version, QString dataFolder, QObject *parent)
    : QObject(parent)
    , m_version(std::move(version))
    , m_dataFolder(std::move(dataFolder))
{
}

QString AboutModel::exportCommand() const
{
    return QStringLiteral("tarnwell export --format json -o tarnwell.json");
}

bool AboutModel::openDataFolder() const
{
    QDir().mkpath(m_dataFolder);
    const bool opened = QDesktopServices::openUrl(QUrl::fromLocalFile(m_dataFolder));
    qCInfo(lcServices).noquote() << (opened ? QStringLiteral("Opened the data folder %1")
                                            : QStringLiteral("Could not open the data folder %1"))
                                        .arg(m_dataFolder);
    return opened;
}

} // namespace tarnwell

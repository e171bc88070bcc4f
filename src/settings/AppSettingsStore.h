#pragma once

#include "persistence/AppSettings.h"

#include <QObject>
#include <QString>
#include <optional>

namespace tarnwell {

class PersistenceController;

// Appearance setting; `system` is stored as "auto" (existing rows depend on it).
enum class TarnwellAppearance { system, light, dark };
// Interface language setting; identity is the stored text.
enum class TarnwellLanguageOption { system, english, turkish, german, spanish, french };

QString storedText(TarnwellAppearance appearance);
TarnwellAppearance appearanceFromStored(const std::optional<QString> &text);
QString storedText(TarnwellLanguageOption language);
TarnwellLanguageOption languageFromStored(const QString &text);

// The single settings row, with typed properties. Every write announces the
// coming change (settingWillChange), sets the row, saves through the
// controller (a failure is logged and the value stays changed in memory),
// then reports it (settingChanged).
class AppSettingsStore : public QObject
{
    Q_OBJECT
public:
    struct Defaults
    {
        static constexpr int workdayEndMinutes = -1;
        static constexpr int idleThresholdMinutes = 10;
        static constexpr bool minimalIdleMode = false;
        static constexpr int preEndWarningMinutes = 0;
        static constexpr int overtimePresetMinutes = 10;
        static constexpr int skipBreakPresetMinutes = 5;
        static constexpr bool notificationsEnabled = true;
        static constexpr bool soundEnabled = true;
        static constexpr const char *chimeSoundName = "Glass";
        static constexpr const char *hotkeyTogglePopover = "cmd+shift+j";
        static constexpr const char *hotkeyQuickAdd = "cmd+shift+a";
        static constexpr int menuBarMaxChars = 16;
        static constexpr const char *sortMode = "manual";
        static constexpr const char *theme = "auto";
        static constexpr const char *language = "system";
        static constexpr bool loginItemEnabled = false;
        static constexpr bool onboardingCompleted = false;
        static constexpr bool editHistoryEnabled = false;
        static constexpr int chimeVolumePercent = 100;
    };

    explicit AppSettingsStore(PersistenceController &controller, QObject *parent = nullptr);

    AppSettings *row() const { return m_row; }

    // Minutes after midnight (0...1439), or none when the workday has no end.
    std::optional<int> workdayEndMinutes() const;
    void setWorkdayEndMinutes(std::optional<qint64> minutes);
    int idleThresholdMinutes() const { return m_row->idleThresholdMinutes(); }
    void setIdleThresholdMinutes(qint64 minutes);
    bool minimalIdleMode() const { return m_row->minimalIdleMode(); }
    void setMinimalIdleMode(bool on);
    int preEndWarningMinutes() const { return m_row->preEndWarningMinutes(); }
    void setPreEndWarningMinutes(qint64 minutes);
    int overtimePresetMinutes() const { return m_row->overtimePresetMinutes(); }
    void setOvertimePresetMinutes(qint64 minutes);
    int skipBreakPresetMinutes() const { return m_row->skipBreakPresetMinutes(); }
    void setSkipBreakPresetMinutes(qint64 minutes);
    bool notificationsEnabled() const { return m_row->notificationsEnabled(); }
    void setNotificationsEnabled(bool on);
    bool soundEnabled() const { return m_row->soundEnabled(); }
    void setSoundEnabled(bool on);
    QString chimeSoundName() const { return m_row->chimeSoundName(); }
    void setChimeSoundName(const QString &name);
    QString hotkeyTogglePopover() const { return m_row->hotkeyTogglePopover(); }
    void setHotkeyTogglePopover(const QString &text);
    QString hotkeyQuickAdd() const { return m_row->hotkeyQuickAdd(); }
    void setHotkeyQuickAdd(const QString &text);
    int menuBarMaxChars() const { return m_row->menuBarMaxChars(); }
    void setMenuBarMaxChars(qint64 characters);
    QString sortMode() const { return m_row->sortMode(); }
    void setSortMode(const QString &mode);
    TarnwellAppearance theme() const { return appearanceFromStored(m_row->theme()); }
    void setTheme(TarnwellAppearance appearance);
    TarnwellLanguageOption language() const { return languageFromStored(m_row->language()); }
    void setLanguage(TarnwellLanguageOption language);
    bool loginItemEnabled() const { return m_row->loginItemEnabled(); }
    void setLoginItemEnabled(bool on);
    bool onboardingCompleted() const { return m_row->onboardingCompleted(); }
    void setOnboardingCompleted(bool done);
    bool editHistoryEnabled() const { return m_row->editHistoryEnabled(); }
    void setEditHistoryEnabled(bool on);
    // The chime of the ending-soon warning and of a completion; none plays
    // the time-up chime (chimeSoundName).
    std::optional<QString> warningChimeName() const { return m_row->warningChimeName(); }
    void setWarningChimeName(const std::optional<QString> &name);
    std::optional<QString> completionChimeName() const { return m_row->completionChimeName(); }
    void setCompletionChimeName(const std::optional<QString> &name);
    // The chimes' volume, 0 to 100 percent; written values are clamped.
    int chimeVolumePercent() const;
    void setChimeVolumePercent(qint64 percent);

Q_SIGNALS:
    // Emitted before the row changes; `setting` is the attribute name.
    void settingWillChange(const QString &setting);
    // Emitted after the row changed and the save was attempted.
    void settingChanged(const QString &setting);

private:
    template<typename Apply>
    void change(const char *setting, Apply &&apply);

    PersistenceController &m_controller;
    AppSettings *m_row = nullptr;
};

} // namespace tarnwell

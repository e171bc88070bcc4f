#pragma once

#include "ManagedObject.h"

namespace tarnwell {

// The single row of user settings. Defaults and rules live in the settings store.
class AppSettings final : public ManagedObject
{
public:
    enum Attribute {
        Id,
        WorkdayEndMinutes,
        IdleThresholdMinutes,
        MinimalIdleMode,
        PreEndWarningMinutes,
        OvertimePresetMinutes,
        SkipBreakPresetMinutes,
        NotificationsEnabled,
        SoundEnabled,
        ChimeSoundName,
        HotkeyTogglePopover,
        HotkeyQuickAdd,
        MenuBarMaxChars,
        SortMode,
        Theme,
        Language,
        LoginItemEnabled,
        OnboardingCompleted,
        EditHistoryEnabled,
        WarningChimeName,
        CompletionChimeName,
        ChimeVolumePercent,
    };

    AppSettings();
    static const EntityDescription &description();

    qint32 workdayEndMinutes() const { return int32(WorkdayEndMinutes); }
    void setWorkdayEndMinutes(qint32 v) { setValue(WorkdayEndMinutes, v); }
    qint32 idleThresholdMinutes() const { return int32(IdleThresholdMinutes); }
    void setIdleThresholdMinutes(qint32 v) { setValue(IdleThresholdMinutes, v); }
    bool minimalIdleMode() const { return boolean(MinimalIdleMode); }
    void setMinimalIdleMode(bool v) { setValue(MinimalIdleMode, v); }
    qint32 preEndWarningMinutes() const { return int32(PreEndWarningMinutes); }
    void setPreEndWarningMinutes(qint32 v) { setValue(PreEndWarningMinutes, v); }
    qint32 overtimePresetMinutes() const { return int32(OvertimePresetMinutes); }
    void setOvertimePresetMinutes(qint32 v) { setValue(OvertimePresetMinutes, v); }
    qint32 skipBreakPresetMinutes() const { return int32(SkipBreakPresetMinutes); }
    void setSkipBreakPresetMinutes(qint32 v) { setValue(SkipBreakPresetMinutes, v); }
    bool notificationsEnabled() const { return boolean(NotificationsEnabled); }
    void setNotificationsEnabled(bool v) { setValue(NotificationsEnabled, v); }
    bool soundEnabled() const { return boolean(SoundEnabled); }
    void setSoundEnabled(bool v) { setValue(SoundEnabled, v); }
    QString chimeSoundName() const { return string(ChimeSoundName); }
    void setChimeSoundName(const QString &v) { setValue(ChimeSoundName, v); }
    QString hotkeyTogglePopover() const { return string(HotkeyTogglePopover); }
    void setHotkeyTogglePopover(const QString &v) { setValue(HotkeyTogglePopover, v); }
    QString hotkeyQuickAdd() const { return string(HotkeyQuickAdd); }
    void setHotkeyQuickAdd(const QString &v) { setValue(HotkeyQuickAdd, v); }
    qint32 menuBarMaxChars() const { return int32(MenuBarMaxChars); }
    void setMenuBarMaxChars(qint32 v) { setValue(MenuBarMaxChars, v); }
    QString sortMode() const { return string(SortMode); }
    void setSortMode(const QString &v) { setValue(SortMode, v); }
    std::optional<QString> theme() const { return optString(Theme); }
    void setTheme(const std::optional<QString> &v) { setValue(Theme, fromOptional(v)); }
    QString language() const { return string(Language); }
    void setLanguage(const QString &v) { setValue(Language, v); }
    bool loginItemEnabled() const { return boolean(LoginItemEnabled); }
    void setLoginItemEnabled(bool v) { setValue(LoginItemEnabled, v); }
    bool onboardingCompleted() const { return boolean(OnboardingCompleted); }
    void setOnboardingCompleted(bool v) { setValue(OnboardingCompleted, v); }
    bool editHistoryEnabled() const { return boolean(EditHistoryEnabled); }
    void setEditHistoryEnabled(bool v) { setValue(EditHistoryEnabled, v); }
    std::optional<QString> warningChimeName() const { return optString(WarningChimeName); }
    void setWarningChimeName(const std::optional<QString> &v) { setValue(WarningChimeName, fromOptional(v)); }
    std::optional<QString> completionChimeName() const { return optString(CompletionChimeName); }
    void setCompletionChimeName(const std::optional<QString> &v) { setValue(CompletionChimeName, fromOptional(v)); }
    std::optional<qint32> chimeVolumePercent() const { return optInt32(ChimeVolumePercent); }
    void setChimeVolumePercent(const std::optional<qint32> &v) { setValue(ChimeVolumePercent, fromOptional(v)); }
};

} // namespace tarnwell

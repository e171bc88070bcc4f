#pragma once

#include "DurationCompletionNotifier.h"

#include <QString>

namespace tarnwell {

class AppSettingsStore;
class NotificationCenter;

// Turns the countdown's events into desktop notifications: the completion
// with the done and extend actions, the ending-soon warning, and its
// withdrawal. Nothing is sent while notifications are off in the settings;
// the countdown and its chime do not depend on it.
class NotificationService final : public DurationCompletionNotifier
{
public:
    struct Constants
    {
        static constexpr const char *category = "DURATION_COMPLETE";
        static constexpr const char *doneAction = "DONE";
        static constexpr const char *extendAction = "PLUS_TEN";
        static constexpr const char *userInfoTaskID = "taskID";
        static constexpr const char *completionPrefix = "tarnwell.duration.";
        static constexpr const char *warningPrefix = "tarnwell.warning.";
        static constexpr int fallbackExtendMinutes = 10;
    };

    NotificationService(NotificationCenter &center, AppSettingsStore &settingsStore);

    void notifyDurationComplete(Task &task) override;
    void notifyEndingSoon(Task &task, int minutesLeft) override;
    void withdrawEndingSoon(const std::optional<QUuid> &taskID) override;

    // The minutes the extend action adds: the overtime preset, or 10 below 1.
    static int extendMinutes(const AppSettingsStore &settingsStore);
    // The extend action's title for `minutes`.
    static QString extendTitle(int minutes);

private:
    NotificationCenter &m_center;
    AppSettingsStore &m_settings;
};

} // namespace tarnwell

#include "NotificationService.h"

#include "NotificationCenter.h"
#include "persistence/Task.h"
#include "settings/AppSettingsStore.h"

namespace tarnwell {

namespace {

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}

// A task without an id still gets stable-looking identifiers for this notice.
QString taskIdText(const Task &task)
{
    return idText(task.id().isNull() ? QUuid::createUuid() : task.id());
}

QString titleOf(const Task &task)
{
    const QString title = task.title().trimmed();
    //% "Your task"
    //: Notification title used when the task has no title
    return title.isEmpty() ? qtTrId("notification.untitled") : title;
}

} // namespace

NotificationService::NotificationService(NotificationCenter &center, AppSettingsStore &settingsStore)
    : m_center(center)
    , m_settings(settingsStore)
{
}

int NotificationService::extendMinutes(const AppSettingsStore &settingsStore)
{
    const int preset = settingsStore.overtimePresetMinutes();
    return preset < 1 ? Constants::fallbackExtendMinutes : preset;
}

QString NotificationService::extendTitle(int minutes)
{
    //% "+%n min"
    //: Notification action: extend duration by N minutes
    return qtTrId("notification.plusTen", minutes);
}

void NotificationService::notifyDurationComplete(Task &task)
{
    if (!m_settings.notificationsEnabled())
        return;
    const QString id = taskIdText(task);
    NotificationContent content;
    content.identifier = QLatin1String(Constants::completionPrefix) + id;
    content.title = titleOf(task);
    //% "%n minute(s) done"
    //: Notification body: N minutes done
    content.body = qtTrId("notification.minutesDone", int(task.durationMinutes().value_or(0)));
    if (!m_center.supportsActions())
        //% "Mark it done or add time from the Tarnwell tray icon."
        //: Second line of the time-is-up notification on desktops that show no buttons on notifications
        content.body += QLatin1Char('\n') + qtTrId("notification.actInTray");
    content.category = QLatin1String(Constants::category);
    //% "Done"
    //: Notification action: mark task done
    content.actions = {{QLatin1String(Constants::doneAction), qtTrId("notification.done")},
                       {QLatin1String(Constants::extendAction), extendTitle(extendMinutes(m_settings))}};
    content.taskID = id;
    content.urgency = NotificationContent::Urgency::critical;
    m_center.deliver(content);
}

void NotificationService::notifyEndingSoon(Task &task, int minutesLeft)
{
    if (!m_settings.notificationsEnabled())
        return;
    const QString id = taskIdText(task);
    NotificationContent content;
    content.identifier = QLatin1String(Constants::warningPrefix) + id;
    content.title = titleOf(task);
    //% "%n minute(s) left"
    //: Notification body: N minutes left on the task
    content.body = qtTrId("notification.endingSoon", minutesLeft);
    content.taskID = id;
    content.urgency = NotificationContent::Urgency::normal;
    m_center.deliver(content);
}

void NotificationService::withdrawEndingSoon(const std::optional<QUuid> &taskID)
{
    if (!taskID)
        return;
    m_center.remove(QLatin1String(Constants::warningPrefix) + idText(*taskID));
}

} // namespace tarnwell

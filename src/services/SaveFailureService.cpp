#include "SaveFailureService.h"

#include "kit/Logging.h"

namespace tarnwell {

SaveFailureService::SaveFailureService(StoreContext &context, NotificationCenter &notifications,
                                       std::function<bool()> notificationsReachable, int retryMilliseconds,
                                       QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_notifications(notifications)
    , m_notificationsReachable(std::move(notificationsReachable))
{
    m_retry.setInterval(retryMilliseconds);
    connect(&m_retry, &QTimer::timeout, this, &SaveFailureService::retry);
    connect(&context, &StoreContext::saveFailed, this, &SaveFailureService::failed);
    connect(&context, &StoreContext::didSave, this, &SaveFailureService::saved);
}

QString SaveFailureService::noticeTitle()
{
    //: Notification title when the data file cannot be written (disk full, folder not writable)
    //% "Tarnwell cannot save"
    return qtTrId("store.saveFailed.title");
}

QString SaveFailureService::noticeBody()
{
    //: Notification text and tray tooltip line while saving fails; the changes are not lost
    //% "The disk is full or cannot be written. Your changes are kept and saved as soon as there is room again."
    return qtTrId("store.saveFailed.body");
}

void SaveFailureService::retry()
{
    if (!m_context.hasChanges()) {
        // Nothing pending any more (the changes were undone): the episode is over.
        if (m_failing)
            saved();
        return;
    }
    try {
        m_context.save();
    } catch (const StoreError &) {
        // Counted and logged by failed(); the timer tries again.
    }
}

void SaveFailureService::failed(const StoreError &error)
{
    ++m_failures;
    if (m_failing) {
        qCWarning(lcPersistence).noquote()
            << QStringLiteral("Save failed again (%1 in a row): %2").arg(m_failures).arg(error.description());
        return;
    }
    m_failing = true;
    qCCritical(lcPersistence).noquote()
        << QStringLiteral("Save failed: %1 (%2) - %3; the changes stay in memory and are saved again every %4 s")
               .arg(error.domain())
               .arg(error.code())
               .arg(error.description())
               .arg(m_retry.interval() / 1000.0);
    m_retry.start();
    if (m_notificationsReachable && m_notificationsReachable()) {
        NotificationContent content;
        content.identifier = QString::fromLatin1(Constants::notificationIdentifier);
        content.title = noticeTitle();
        content.body = noticeBody();
        content.urgency = NotificationContent::Urgency::critical;
        m_notifications.deliver(content);
        m_notified = true;
        qCInfo(lcPersistence).noquote() << QStringLiteral("Told the user in a notification that saving fails");
    } else {
        m_warning = noticeBody();
        qCInfo(lcPersistence).noquote() << QStringLiteral(
            "No notification server; the tray tooltip says that saving fails");
        Q_EMIT warningChanged(m_warning);
    }
}

void SaveFailureService::saved()
{
    if (!m_failing)
        return;
    m_failing = false;
    m_retry.stop();
    qCInfo(lcPersistence).noquote()
        << QStringLiteral("Saved again after %1 failed attempts; the kept changes are on disk").arg(m_failures);
    m_failures = 0;
    if (m_notified) {
        m_notifications.remove(QString::fromLatin1(Constants::notificationIdentifier));
        m_notified = false;
    }
    if (!m_warning.isEmpty()) {
        m_warning.clear();
        Q_EMIT warningChanged(m_warning);
    }
}

} // namespace tarnwell

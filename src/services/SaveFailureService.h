#pragma once

#include "NotificationCenter.h"
#include "persistence/StoreContext.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace tarnwell {

// Watches the store's saves. When one fails (a full disk, a folder that
// became read-only) the changes stay pending in the context; this service
// logs the failure, tells the user once per episode (a desktop notification
// when a notification server is there, otherwise `warning()`, which the
// status item shows in its tooltip), and saves again on a timer until a save
// goes through, whoever makes it. Then the notice is taken back.
class SaveFailureService : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *notificationIdentifier = "tarnwell.store.saveFailed";
        static constexpr int retryMilliseconds = 30000;
    };

    SaveFailureService(StoreContext &context, NotificationCenter &notifications,
                       std::function<bool()> notificationsReachable,
                       int retryMilliseconds = Constants::retryMilliseconds, QObject *parent = nullptr);

    // Whether the last save failed and nothing has been saved since.
    bool isFailing() const { return m_failing; }
    // What the tooltip should say while saving fails and no notification
    // could be shown; empty otherwise.
    const QString &warning() const { return m_warning; }
    // Saves the pending changes now; a failure keeps the episode going.
    void retry();

    static QString noticeTitle();
    static QString noticeBody();

Q_SIGNALS:
    void warningChanged(const QString &warning);

private:
    void failed(const StoreError &error);
    void saved();

    StoreContext &m_context;
    NotificationCenter &m_notifications;
    std::function<bool()> m_notificationsReachable;
    QTimer m_retry;
    bool m_failing = false;
    bool m_notified = false;
    int m_failures = 0;
    QString m_warning;
};

} // namespace tarnwell

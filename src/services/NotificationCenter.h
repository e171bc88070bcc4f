#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

namespace tarnwell {

// A button on a notification.
struct NotificationAction
{
    QString identifier;
    QString title;

    friend bool operator==(const NotificationAction &, const NotificationAction &) = default;
};

// One notification as the focus engine asks for it. Delivering a second one
// with the same identifier replaces the first.
struct NotificationContent
{
    enum class Urgency { low, normal, critical };

    QString identifier;
    QString title;
    QString body;
    QString category; // "DURATION_COMPLETE", or empty
    QList<NotificationAction> actions; // the buttons, in order; a click on the notification is "default"
    QString taskID; // the task's id as a UUID string
    Urgency urgency = Urgency::normal;
};

// What the user did with a notification.
struct NotificationResponse
{
    QString requestIdentifier;
    QString actionIdentifier; // "DONE", "PLUS_TEN", or "default" for a click on the notification
    QString taskID;
    QByteArray activationToken; // lets the window that opens take the focus (Wayland); may be empty
};

// The desktop's notification facility. A back end that cannot reach the
// desktop drops what it is given (and says so in the log once).
class NotificationCenter : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *defaultAction = "default";
    };

    using QObject::QObject;

    // Whether the desktop shows action buttons; until it has said, assumed.
    virtual bool supportsActions() const = 0;
    // Whether a notification would be seen now (a server runs or can be started).
    virtual bool isReachable() const { return true; }
    virtual void deliver(const NotificationContent &content) = 0;
    // Takes back the notification with this identifier, if it is shown.
    virtual void remove(const QString &identifier) = 0;

Q_SIGNALS:
    void responded(const tarnwell::NotificationResponse &response);
};

} // namespace tarnwell

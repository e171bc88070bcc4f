#pragma once

#include <QObject>
#include <QString>

namespace tarnwell {

// The login session going away and coming back: sleep and wake, screen lock
// and unlock, switching to another user and back. A back end with no source
// simply never signals.
class SessionEvents : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    // Whether the session's screen is locked right now.
    virtual bool screenIsLocked() const = 0;

Q_SIGNALS:
    // Receivers act at once: a sleep is held back only until they return.
    // `why` is for the log ("sleep", "lock", "inactive", "screensaver").
    void wentAway(const QString &why);
    void cameBack(const QString &why);
};

} // namespace tarnwell

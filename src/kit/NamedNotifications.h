#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

namespace tarnwell {

// In-process requests between components that do not know each other, by
// name ("Tarnwell.hotkey.fired") with a user-info map. Main thread only;
// observers run at once, in the order they subscribed.
class NamedNotifications : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    void post(const QString &name, const QVariantMap &userInfo = {}) { Q_EMIT posted(name, userInfo); }

    // Calls `handler(userInfo)` for every post of `name` while `context` lives.
    template<typename Handler>
    QMetaObject::Connection observe(const QString &name, const QObject *context, Handler handler)
    {
        return connect(this, &NamedNotifications::posted, context,
                       [name, handler = std::move(handler)](const QString &posted, const QVariantMap &userInfo) {
                           if (posted == name)
                               handler(userInfo);
                       });
    }

Q_SIGNALS:
    void posted(const QString &name, const QVariantMap &userInfo);
};

} // namespace tarnwell

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwell {

// One button press of the widget, as one JSON file in the commands folder,
// named after its id ("<ID>.json"). Keys in this order, all required.
struct WidgetCommand
{
    enum class Action { complete, toggleTimer };

    QUuid id;
    Action action = Action::complete;
    QUuid taskID;
    QDateTime requestedAt;

    // "complete" or "toggleTimer".
    static QString rawValue(Action action);
    static std::optional<Action> actionFromRawValue(const QString &raw);

    // A fresh command for a press at `now`.
    static WidgetCommand make(Action action, const QUuid &taskID, const QDateTime &now);
    QString fileName() const;
    static QString fileName(const QUuid &id);

    QByteArray encode() const;
    // None when a key is missing or malformed, or the action is unknown.
    static std::optional<WidgetCommand> decode(const QByteArray &json);

    friend bool operator==(const WidgetCommand &a, const WidgetCommand &b)
    {
        return a.id == b.id && a.action == b.action && a.taskID == b.taskID &&
            a.requestedAt.toSecsSinceEpoch() == b.requestedAt.toSecsSinceEpoch();
    }
};

} // namespace tarnwell

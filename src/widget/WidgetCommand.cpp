#include "WidgetCommand.h"

#include "TarnwellSharedJSON.h"

namespace tarnwell {

namespace json = TarnwellSharedJSON;

QString WidgetCommand::rawValue(Action action)
{
    switch (action) {
    case Action::complete:
        return QStringLiteral("complete");
    case Action::toggleTimer:
        return QStringLiteral("toggleTimer");
    }
    return {};
}

std::optional<WidgetCommand::Action> WidgetCommand::actionFromRawValue(const QString &raw)
{
    for (const Action action : {Action::complete, Action::toggleTimer}) {
        if (rawValue(action) == raw)
            return action;
    }
    return std::nullopt;
}

WidgetCommand WidgetCommand::make(Action action, const QUuid &taskID, const QDateTime &now)
{
    return {QUuid::createUuid(), action, taskID, QDateTime::fromSecsSinceEpoch(now.toSecsSinceEpoch(), Qt::UTC)};
}

QString WidgetCommand::fileName(const QUuid &id)
{
    return json::uuid(id) + QStringLiteral(".json");
}

QString WidgetCommand::fileName() const
{
    return fileName(id);
}

QByteArray WidgetCommand::encode() const
{
    return json::ObjectWriter()
        .add("id", id)
        .add("action", rawValue(action))
        .add("taskID", taskID)
        .add("requestedAt", requestedAt)
        .finish();
}

std::optional<WidgetCommand> WidgetCommand::decode(const QByteArray &bytes)
{
    const auto object = json::object(bytes);
    if (!object)
        return std::nullopt;
    const auto id = json::uuid(object->value(QLatin1String("id")));
    const auto raw = json::string(object->value(QLatin1String("action")));
    const auto action = raw ? actionFromRawValue(*raw) : std::nullopt;
    const auto taskID = json::uuid(object->value(QLatin1String("taskID")));
    const auto requestedAt = json::date(object->value(QLatin1String("requestedAt")));
    if (!id || !action || !taskID || !requestedAt)
        return std::nullopt;
    return WidgetCommand{*id, *action, *taskID, *requestedAt};
}

} // namespace tarnwell

#include "AutomationArguments.h"

#include <QRegularExpression>

namespace tarnwell::AutomationArguments {

QString text(const QString &value, const QString &field)
{
    if (value.size() > Limits::textUnits)
        //: A text handed in by a script or the command line is too long; %1 is the field, %2 the limit
        //% "“%1” is too long: at most %2 characters."
        throw ArgumentError(qtTrId("error.argument.tooLong").arg(field).arg(Limits::textUnits));
    if (value.contains(QChar(u'\0')))
        //: A text handed in by a script contains a NUL character; %1 is the field
        //% "“%1” contains a NUL character."
        throw ArgumentError(qtTrId("error.argument.nul").arg(field));
    return value;
}

std::optional<int> plannedMinutes(qint64 minutes)
{
    if (minutes <= 0)
        return std::nullopt;
    if (minutes > Limits::plannedMinutes)
        //: Planned minutes handed in by a script are too many; %1 is the limit
        //% "Planned minutes must be at most %1."
        throw ArgumentError(qtTrId("error.argument.minutes").arg(Limits::plannedMinutes));
    return int(minutes);
}

std::optional<QDate> day(const QString &value)
{
    if (value.isEmpty())
        return std::nullopt;
    static const QRegularExpression form(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
    const QDate date = QDate::fromString(value, Qt::ISODate);
    if (value.size() != 10 || !form.match(value).hasMatch() || !date.isValid())
        //: A day handed in by a script or the command line is not a date; %1 is what was given
        //% "“%1” is not a date of the form YYYY-MM-DD."
        throw ArgumentError(qtTrId("error.argument.date").arg(value.left(40)));
    return date;
}

std::optional<QUuid> taskId(const QString &value)
{
    if (value.isEmpty())
        return std::nullopt;
    static const QRegularExpression form(
        QStringLiteral("^\\{?[0-9a-fA-F]{8}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{12}\\}?$"));
    const bool braced = value.startsWith(u'{');
    const bool closed = value.endsWith(u'}');
    const QUuid id = QUuid::fromString(value);
    if (value.size() > 38 || !form.match(value).hasMatch() || braced != closed || id.isNull())
        //: A task id handed in by a script is not a UUID; %1 is what was given
        //% "“%1” is not a task id (a UUID such as 0f8fad5b-d9cb-469f-a165-70867728950e)."
        throw ArgumentError(qtTrId("error.argument.taskId").arg(value.left(40)));
    return id;
}

ExportFormat exportFormat(const QString &value)
{
    if (value == QLatin1String("json"))
        return ExportFormat::json;
    if (value == QLatin1String("csv"))
        return ExportFormat::csv;
    if (value == QLatin1String("ics"))
        return ExportFormat::ics;
    //: An export format that does not exist was asked for; %1 is what was given
    //% "Unknown format “%1”: use json, csv or ics."
    throw ArgumentError(qtTrId("error.argument.format").arg(value.left(40)));
}

void dayRange(const std::optional<QDate> &from, const std::optional<QDate> &to)
{
    if (from && to && *from > *to)
        //: An export range whose start comes after its end; %1 and %2 are the dates
        //% "The start date %1 comes after the end date %2."
        throw ArgumentError(qtTrId("error.argument.range").arg(from->toString(Qt::ISODate), to->toString(Qt::ISODate)));
}

} // namespace tarnwell::AutomationArguments

#pragma once

#include <QDate>
#include <QString>
#include <QUuid>

#include <exception>
#include <optional>

namespace tarnwell {

// A request from outside (the bus, the command line) that is malformed before
// any rule of the store is asked: too long, out of range, not a date or id.
// The message is in the installed language.
class ArgumentError : public std::exception
{
public:
    explicit ArgumentError(QString message)
        : m_message(std::move(message))
    {
    }
    const QString &message() const { return m_message; }
    const char *what() const noexcept override { return "invalid argument"; }

private:
    QString m_message;
};

// Checks of the values that other programs hand in. Every function either
// returns the value in its checked form or throws ArgumentError.
namespace AutomationArguments {

struct Limits
{
    // Longer texts are refused before trimming or counting characters; the
    // title rule itself (200 characters) stays the repository's.
    static constexpr qsizetype textUnits = 2000;
    static constexpr int plannedMinutes = 9999;
    static constexpr qsizetype documentBytes = 64 * 1024 * 1024;
};

enum class ExportFormat { json, csv, ics };

// A title, quick-add line or other free text: at most textUnits UTF-16 units,
// no NUL characters.
QString text(const QString &value, const QString &field);
// Planned minutes: 0 or less means unplanned; above the limit is refused.
std::optional<int> plannedMinutes(qint64 minutes);
// "" means none; otherwise exactly YYYY-MM-DD of a real date.
std::optional<QDate> day(const QString &value);
// "" means none; otherwise a UUID in its 36-character form, with or without braces.
std::optional<QUuid> taskId(const QString &value);
ExportFormat exportFormat(const QString &value);
// Both ends optional; a start after the end is refused.
void dayRange(const std::optional<QDate> &from, const std::optional<QDate> &to);

} // namespace AutomationArguments
} // namespace tarnwell

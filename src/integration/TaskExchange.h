#pragma once

#include "kit/Calendar.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <exception>
#include <optional>

namespace tarnwell {

class Day;
class DayRepository;
class StoreContext;

// A file that cannot be imported; the message names the line and the field.
class ImportError : public std::exception
{
public:
    explicit ImportError(QString message)
        : m_message(std::move(message))
    {
    }
    const QString &message() const { return m_message; }
    const char *what() const noexcept override { return "import refused"; }

private:
    QString m_message;
};

// Export of days, tasks and routines (JSON, CSV) and import of the JSON form.
// The JSON keeps every stored field and every id, so an export imported into
// an empty store gives the same days, tasks and routines.
namespace TaskExchange {

struct Constants
{
    static constexpr const char *format = "tarnwell-export";
    static constexpr int version = 1;
};

struct Range
{
    std::optional<QDate> from;
    std::optional<QDate> to;
};

// Days of the range (every day when open), oldest first.
QList<Day *> daysIn(DayRepository &days, const Range &range);

QByteArray exportJson(StoreContext &context, DayRepository &days, const Range &range, const QDateTime &now);
// One row per completed task: day, title, planned and actual minutes.
QByteArray exportCsv(DayRepository &days, const Range &range);

// A checked import file, nothing written yet.
struct TaskRecord
{
    QUuid id;
    QString title;
    std::optional<QString> notes;
    std::optional<qint32> durationMinutes;
    bool urgent = false;
    qint32 orderIndex = 0;
    bool completed = false;
    std::optional<QDateTime> completedAt;
    bool archived = false;
    std::optional<qint32> actualSecondsFocused;
    std::optional<QDateTime> activeStartedAt;
    bool actualEditedManually = false;
    std::optional<qint32> awaySecondsDiscarded;
    std::optional<QDateTime> dueDate;
    std::optional<QDateTime> rolledFromDate;
    std::optional<QUuid> routineItemID;
    QDateTime createdAt;
    QDateTime updatedAt;
};
struct DayRecord
{
    QUuid id;
    QDate date;
    std::optional<QDateTime> createdAt;
    QList<TaskRecord> tasks;
};
struct RoutineItemRecord
{
    QUuid id;
    QString title;
    std::optional<QString> notes;
    std::optional<qint32> durationMinutes;
    qint32 orderIndex = 0;
};
struct RoutineRecord
{
    QUuid id;
    QString name;
    qint32 orderIndex = 0;
    qint16 repeatWeekdays = 0;
    std::optional<QDateTime> lastAppliedDate;
    std::optional<QDateTime> createdAt;
    std::optional<QDateTime> updatedAt;
    QList<RoutineItemRecord> items;
};
struct Document
{
    QList<DayRecord> days;
    QList<RoutineRecord> routines;
};

// Reads and checks the whole file; throws ImportError. Touches no store.
Document read(const QByteArray &json);

struct ImportSummary
{
    int days = 0; // days created
    int tasks = 0; // tasks added
    int routines = 0; // routines added
    int skipped = 0; // tasks and routines whose id the store already holds
};
// Adds what the store does not hold yet, in one save. A failed save throws the
// store's error and leaves the store as it was.
ImportSummary apply(const Document &document, StoreContext &context, DayRepository &days);

} // namespace TaskExchange
} // namespace tarnwell

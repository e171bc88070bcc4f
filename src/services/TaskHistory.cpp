#include "TaskHistory.h"

#include "kit/Logging.h"
#include "persistence/Day.h"
#include "persistence/StoreContext.h"
#include "persistence/Task.h"

#include <QSqlError>
#include <QSqlQuery>

namespace tarnwell {

TaskHistory::TaskHistory(StoreContext &context, Calendar calendar)
    : m_context(context)
    , m_calendar(std::move(calendar))
{
}

QList<TaskHistoryHit> TaskHistory::search(const QString &text, int limit) const
{
    const QString needle = text.trimmed();
    QList<TaskHistoryHit> hits;
    if (needle.isEmpty() || limit <= 0)
        return hits;
    static const QString columns =
        QStringLiteral("SELECT t.id, t.title, d.date, t.completed, t.actual_seconds_focused, t.duration_minutes "
                       "FROM tasks t JOIN days d ON d.id = t.day_id ");
    QSqlQuery query(m_context.database());
    query.setForwardOnly(true);
    if (needle.toUcs4().size() >= Limits::shortestIndexed) {
        // The text as one phrase: the trigram index matches it anywhere in a title.
        QString phrase = needle;
        phrase.replace(QLatin1Char('"'), QLatin1String("\"\""));
        query.prepare(columns +
                      QStringLiteral("JOIN task_titles k ON k.task_id = t.id WHERE k.id IN "
                                     "(SELECT rowid FROM task_title_search WHERE task_title_search MATCH ? "
                                     "ORDER BY rowid DESC LIMIT ?) ORDER BY d.date DESC, t.order_index"));
        query.addBindValue(QString(QLatin1Char('"') + phrase + QLatin1Char('"')));
    } else {
        QString pattern = needle;
        pattern.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
            .replace(QLatin1Char('%'), QLatin1String("\\%"))
            .replace(QLatin1Char('_'), QLatin1String("\\_"));
        query.prepare(columns +
                      QStringLiteral("WHERE t.rowid IN (SELECT rowid FROM tasks WHERE title LIKE ? ESCAPE '\\' "
                                     "ORDER BY rowid DESC LIMIT ?) ORDER BY d.date DESC, t.order_index"));
        query.addBindValue(QString(QLatin1Char('%') + pattern + QLatin1Char('%')));
    }
    query.addBindValue(limit);
    if (!query.exec()) {
        qCWarning(lcServices).noquote() << QStringLiteral("History search failed: %1").arg(query.lastError().text());
        return hits;
    }
    while (query.next()) {
        TaskHistoryHit hit;
        hit.id = QUuid(query.value(0).toString());
        hit.title = query.value(1).toString();
        hit.day = m_calendar.date(QDateTime::fromMSecsSinceEpoch(query.value(2).toLongLong(), Qt::UTC));
        hit.completed = query.value(3).toBool();
        hit.focusedSeconds = std::max<qint64>(0, query.value(4).toLongLong());
        if (!query.value(5).isNull())
            hit.plannedMinutes = query.value(5).toInt();
        hits.append(hit);
    }
    return hits;
}

bool TaskHistory::editable(const Task &task, const QDateTime &today, bool editHistoryEnabled)
{
    if (editHistoryEnabled)
        return true;
    const Day *day = task.day();
    return !day || day->date() >= today;
}

} // namespace tarnwell

#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "services/QuickAddSyntaxParser.h"

#include <QObject>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace tarnwell {

class DayRepository;
class TaskRepository;

// The line being typed into a quick-add field, read on every edit: its title
// and the chips for duration, day and urgency, or the reason it cannot be
// added. commit() adds it as a task.
class QuickAddDraft : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString title READ title NOTIFY parsedChanged)
    Q_PROPERTY(QString durationText READ durationText NOTIFY parsedChanged)
    Q_PROPERTY(int dayOffset READ dayOffset NOTIFY parsedChanged)
    Q_PROPERTY(QString dayLabel READ dayLabel NOTIFY parsedChanged)
    Q_PROPERTY(bool urgent READ urgent NOTIFY parsedChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(bool canCommit READ canCommit NOTIFY parsedChanged)
    Q_PROPERTY(int defaultDayOffset READ defaultDayOffset WRITE setDefaultDayOffset NOTIFY parsedChanged)
public:
    struct Limits
    {
        static constexpr int lastDayOffset = 6;
    };

    QuickAddDraft(TaskRepository &tasks, DayRepository &days, Calendar calendar, Clock clock,
                  QObject *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);

    QString title() const;
    // "45m", "1h 30m"; empty without a duration.
    QString durationText() const;
    // The day the line or the user chose, 0...6; -1 when none was chosen.
    int dayOffset() const;
    // "Today", "Tomorrow" or a weekday name; empty when no day was chosen.
    QString dayLabel() const;
    bool urgent() const;
    QString error() const { return m_error; }
    bool canCommit() const { return m_parsed.has_value() && m_error.isEmpty(); }
    const std::optional<QuickAddResult> &parsed() const { return m_parsed; }

    // Where a line without a day goes, in days from today (the day a list
    // shows); 0 by default.
    int defaultDayOffset() const { return m_defaultDayOffset; }
    void setDefaultDayOffset(int offset);

    // The user picked another day (0...6); -1 goes back to the line's own.
    Q_INVOKABLE void overrideDayOffset(int offset);
    // The label of the day `offset` days from today, for a day picker.
    Q_INVOKABLE QString dayLabelFor(int offset) const;
    // Adds the line as a task on today plus its day offset. On success the
    // line is cleared and true returned; otherwise `error` tells why.
    Q_INVOKABLE bool commit();

Q_SIGNALS:
    void textChanged();
    void parsedChanged();
    void errorChanged();
    void committed(const QUuid &taskID, int dayOffset);

private:
    void reparse();
    void setError(const QString &error);

    TaskRepository &m_tasks;
    DayRepository &m_days;
    Calendar m_calendar;
    Clock m_clock;
    QString m_text;
    std::optional<QuickAddResult> m_parsed;
    std::optional<int> m_pickedDay;
    int m_defaultDayOffset = 0;
    QString m_error;
};

} // namespace tarnwell

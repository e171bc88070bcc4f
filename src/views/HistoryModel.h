#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;
class PopoverModel;
class Task;
class TaskHistory;

// The popover's history: a past day's summary line, whether its tasks may be
// changed (editHistoryEnabled), the correction of a past task's measured
// time, and the search over titles whose results open their day.
class HistoryModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isPast READ isPast NOTIFY dayChanged)
    Q_PROPERTY(bool canEdit READ canEdit NOTIFY dayChanged)
    Q_PROPERTY(QString daySummary READ daySummary NOTIFY dayChanged)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY resultsChanged)
    // [{id, title, date, detail, completed, dayOffset}]
    Q_PROPERTY(QVariantList results READ results NOTIFY resultsChanged)
    Q_PROPERTY(QString resultsLine READ resultsLine NOTIFY resultsChanged)
public:
    HistoryModel(PopoverModel &popover, ActiveTaskService &activeTasks, AppSettingsStore &settings,
                 TaskHistory &history, Calendar calendar, Clock clock, QObject *parent = nullptr);

    bool isPast() const;
    bool canEdit() const;
    QString daySummary() const;
    QString query() const { return m_query; }
    void setQuery(const QString &query);
    QVariantList results() const { return m_results; }
    QString resultsLine() const;

    // The popover shows the day of a result.
    Q_INVOKABLE void openResult(int dayOffset);
    // The measured time of a past task, typed as planned time is ("25", "1h 5m");
    // returns the text to show in place, empty when saved.
    Q_INVOKABLE QString correctFocus(const QString &id, const QString &duration);
    // The focused time as the editor's field shows it.
    Q_INVOKABLE QString focusText(const QString &id) const;

Q_SIGNALS:
    void dayChanged();
    void resultsChanged();

private:
    Task *task(const QString &id) const;
    void runSearch();

    PopoverModel &m_popover;
    ActiveTaskService &m_activeTasks;
    AppSettingsStore &m_settings;
    TaskHistory &m_history;
    Calendar m_calendar;
    Clock m_clock;
    QString m_query;
    QVariantList m_results;
};

} // namespace tarnwell

#pragma once

#include "kit/Clock.h"
#include "WindowController.h"
#include "services/ReviewStatistics.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QPointer>
#include <QVariantList>

class QQuickWindow;

namespace tarnwell {

class UiEngine;

// The review window's facade: one week or month at a time, its four buckets
// (with what the chart draws), verdicts, worst offenders and the count of
// unplanned tasks. Reads the statistics afresh on every move.
class ReviewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool monthly READ monthly WRITE setMonthly NOTIFY changed)
    Q_PROPERTY(QString periodTitle READ periodTitle NOTIFY changed)
    Q_PROPERTY(bool isCurrent READ isCurrent NOTIFY changed)
    Q_PROPERTY(QVariantList buckets READ buckets NOTIFY changed)
    Q_PROPERTY(double chartMaxMinutes READ chartMaxMinutes NOTIFY changed)
    Q_PROPERTY(QVariantList offenders READ offenders NOTIFY changed)
    Q_PROPERTY(int sampleCount READ sampleCount NOTIFY changed)
    Q_PROPERTY(QString summaryLine READ summaryLine NOTIFY changed)
    Q_PROPERTY(QString unplannedLine READ unplannedLine NOTIFY changed)
public:
    ReviewModel(ReviewStatistics &statistics, Calendar calendar, Clock clock, QObject *parent = nullptr);

    bool monthly() const { return m_period.kind == ReviewPeriod::Kind::month; }
    void setMonthly(bool monthly);
    QString periodTitle() const;
    bool isCurrent() const;
    // [{title, count, plannedMinutes, actualMinutes, plannedText, actualText, ratioText, verdict, tone}]
    QVariantList buckets() const { return m_buckets; }
    double chartMaxMinutes() const { return m_chartMax; }
    // [{title, date, plannedText, actualText, overrunText}]
    QVariantList offenders() const { return m_offenders; }
    int sampleCount() const { return m_summary.sampleCount; }
    QString summaryLine() const;
    QString unplannedLine() const;
    const ReviewSummary &summary() const { return m_summary; }

    Q_INVOKABLE void previous();
    Q_INVOKABLE void next();
    Q_INVOKABLE void current();
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void changed();

private:
    Qt::DayOfWeek firstDayOfWeek() const;
    void load(const ReviewPeriod &period);

    ReviewStatistics &m_statistics;
    Calendar m_calendar;
    Clock m_clock;
    ReviewPeriod m_period;
    ReviewSummary m_summary;
    QVariantList m_buckets;
    QVariantList m_offenders;
    double m_chartMax = 0;
};

// The review window, made at its first show.
class ReviewWindowController : public tarnwell::WindowController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
public:
    ReviewWindowController(ReviewModel &model, UiEngine &ui, QObject *parent = nullptr);

    void show();

private:
    ReviewModel &m_model;
};

} // namespace tarnwell

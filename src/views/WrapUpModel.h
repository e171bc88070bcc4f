#pragma once

#include "WindowController.h"
#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "persistence/TaskRepository.h"
#include "services/WrapUp.h"

#include <QObject>
#include <QPointer>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <optional>

class QQuickWindow;

namespace tarnwell {

class ActiveTaskService;
class UiEngine;
class WrapUpOffer;

// The end-of-day wrap-up's facade: today's done tasks, focused time against
// the plan, how close the estimates came, what is left, and the two ways to
// end the day ("move the rest to tomorrow", undoable, and "done for today").
class WrapUpModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString dayTitle READ dayTitle NOTIFY changed)
    Q_PROPERTY(int doneCount READ doneCount NOTIFY changed)
    Q_PROPERTY(QString doneLine READ doneLine NOTIFY changed)
    Q_PROPERTY(QString focusedText READ focusedText NOTIFY changed)
    Q_PROPERTY(QString plannedLine READ plannedLine NOTIFY changed)
    Q_PROPERTY(QString accuracyLine READ accuracyLine NOTIFY changed)
    Q_PROPERTY(QString accuracyTone READ accuracyTone NOTIFY changed)
    // [{title, detail}]
    Q_PROPERTY(QVariantList done READ done NOTIFY changed)
    Q_PROPERTY(QVariantList left READ left NOTIFY changed)
    Q_PROPERTY(QString leftLine READ leftLine NOTIFY changed)
    Q_PROPERTY(bool toastVisible READ toastVisible NOTIFY toastChanged)
    Q_PROPERTY(QString toastText READ toastText NOTIFY toastChanged)
public:
    WrapUpModel(ActiveTaskService &activeTasks, WrapUpOffer *offer, Calendar calendar, Clock clock,
                QObject *parent = nullptr);

    QString dayTitle() const;
    int doneCount() const { return m_figures.summary.completedCount; }
    QString doneLine() const;
    QString focusedText() const;
    QString plannedLine() const;
    QString accuracyLine() const;
    // "good", "over" or "under"; empty without a measured plan.
    QString accuracyTone() const;
    QVariantList done() const;
    QVariantList left() const;
    QString leftLine() const;
    const WrapUpFigures &figures() const { return m_figures; }

    bool toastVisible() const { return !m_toast.isEmpty(); }
    QString toastText() const { return m_toast; }

    Q_INVOKABLE void refresh();
    // Today's open tasks go to the head of tomorrow's queue, in their order.
    Q_INVOKABLE void moveRestToTomorrow();
    // Takes the last move back.
    Q_INVOKABLE void undo();
    // Stops a running timer and ends the day's offer; the window closes.
    Q_INVOKABLE void doneForToday();
    Q_INVOKABLE void dismissToast();

Q_SIGNALS:
    void changed();
    void toastChanged();
    void finished();

private:
    struct Moved
    {
        Task *task;
        TaskRepository::TaskDayPlacement placement;
    };
    void pauseRunningTimer();

    ActiveTaskService &m_activeTasks;
    WrapUpOffer *m_offer;
    Calendar m_calendar;
    Clock m_clock;
    WrapUpFigures m_figures;
    QList<Moved> m_moved;
    QString m_toast;
};

// The wrap-up window, made at its first show.
class WrapUpWindowController : public tarnwell::WindowController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
public:
    WrapUpWindowController(WrapUpModel &model, UiEngine &ui, QObject *parent = nullptr);

    void show();

private:
    WrapUpModel &m_model;
};

} // namespace tarnwell

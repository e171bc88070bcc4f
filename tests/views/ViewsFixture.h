// The popover's model over an in-memory store with the focus engine and the
// planning services on one pinned clock.
#pragma once

#include "focus/FocusFixture.h"
#include "kit/Translations.h"
#include "persistence/RoutineRepository.h"
#include "services/RolloverService.h"
#include "services/RoutineService.h"
#include "views/PopoverModel.h"
#include "views/QuickAddDraft.h"
#include "views/TaskListModel.h"

#include "views/UiEngine.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

// The item of a scene (delegates included) with this object name.
inline QQuickItem *findItem(QQuickItem *root, const QString &name)
{
    if (root->objectName() == name)
        return root;
    const auto children = root->childItems();
    for (QQuickItem *child : children)
        if (QQuickItem *found = findItem(child, name))
            return found;
    return nullptr;
}

// The item of a window with this object name, those of its popups included.
inline QQuickItem *namedItem(QQuickWindow *window, const QString &name)
{
    QQuickItem *found = window->findChild<QQuickItem *>(name);
    return found ? found : window->contentItem()->findChild<QQuickItem *>(name);
}
inline QQuickItem *namedItem(QQuickWindow *window, const char *name)
{
    return namedItem(window, QString::fromLatin1(name));
}

// The visible items of a scene (delegates included) with this object name.
inline QList<QQuickItem *> visibleItems(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> found;
    if (root->objectName() == name && root->isVisible())
        found << root;
    const auto children = root->childItems();
    for (QQuickItem *child : children)
        found << visibleItems(child, name);
    return found;
}

inline void click(QQuickWindow *window, QQuickItem *target)
{
    QVERIFY(target);
    QVERIFY2(target->isVisible(), qPrintable(target->objectName()));
    QTest::mouseClick(window, Qt::LeftButton, {},
                      target->mapToScene(QPointF(target->width() / 2, target->height() / 2)).toPoint());
}

// Types ASCII text key by key (QTest has keyClicks only for widgets).
inline void typeText(QWindow *window, const QString &text)
{
    for (const QChar c : text)
        QTest::keyClick(window, c.toLatin1());
}

inline QString focusName(QQuickWindow *window)
{
    return window->activeFocusItem() ? window->activeFocusItem()->objectName() : QString();
}

// Every warning the engine's windows give while the test runs.
struct QmlWarnings
{
    explicit QmlWarnings(tarnwell::UiEngine &ui)
    {
        QObject::connect(&ui.engine(), &QQmlEngine::warnings, &ui,
                         [this](const QList<QQmlError> &list) { errors << list; });
    }
    bool isEmpty() const { return errors.isEmpty(); }
    QString text() const
    {
        QStringList out;
        for (const QQmlError &e : errors)
            out << e.toString();
        return out.join(u'\n');
    }
    QList<QQmlError> errors;
};

// Saves a picture to look at where the run asks for them (TARNWELL_ARTIFACTS).
inline void saveArtifact(const QImage &picture, const QString &fileName)
{
    const QString dir = qEnvironmentVariable("TARNWELL_ARTIFACTS");
    if (dir.isEmpty())
        return;
    QDir().mkpath(dir);
    QVERIFY2(picture.save(dir + u'/' + fileName), qPrintable(fileName));
}

struct ViewsFixture
{
    ViewsFixture() { translations.install(QStringLiteral("en")); }

    Translations translations;
    Calendar calendar;
    // Wednesday 10 June 2026, 10:00 local time.
    ManualClock time{QDate(2026, 6, 10).startOfDay(calendar.timeZone()).addSecs(10 * 3600)};
    PersistenceController store{true};
    StoreContext &context = store.viewContext();
    AppSettingsStore settings{store};
    DayRepository days{context, calendar, time.clock()};
    TaskRepository tasks{context, calendar, time.clock(), days};
    ActiveTaskService service{context, settings, time.clock(), &days, &tasks};
    Recorder rec;
    SoundService sound{settings, rec};
    CountdownService countdown{service, rec, sound, settings, time.clock(), std::chrono::milliseconds(0)};
    RoutineRepository routines{context, time.clock()};
    RoutineService routineService{context, calendar, time.clock(), routines, tasks, days};
    QTemporaryDir defaultsDir;
    QSettings defaults{defaultsDir.filePath(QStringLiteral("defaults.ini")), QSettings::IniFormat};
    RolloverService rollover{context, calendar, time.clock(), days, tasks, routines, defaults};
    PopoverModel model{
        {service, countdown, sound, settings, routines, routineService, rollover, calendar, time.clock()}};
    QAbstractItemModelTester tester{&model.tasks(), QAbstractItemModelTester::FailureReportingMode::QtTest};

    // The clock moves on and the countdown ticks once.
    void tick(int seconds)
    {
        time.advance(qint64(seconds) * 1000);
        countdown.evaluate();
    }
    Day *day(int offset) { return days.fetchOrCreateDay(calendar.startOfDayAdding(time.now, offset)); }
    Task *add(const QString &title, std::optional<qint64> minutes = std::nullopt, int offset = 0)
    {
        return tasks.createTask(title, minutes, false, day(offset));
    }
    static QString idOf(const Task *t) { return t->id().toString(QUuid::WithoutBraces); }
    QStringList titles(int offset) { return titlesOf(tasks.openTasks(day(offset))); }
    static QStringList titlesOf(const QList<Task *> &list)
    {
        QStringList out;
        for (const Task *t : list)
            out << t->title();
        return out;
    }
    // The titles the list shows, top to bottom.
    QStringList shownTitles()
    {
        QStringList out;
        for (int row = 0; row < model.tasks().rowCount(); ++row)
            out << model.tasks().index(row).data(TaskListModel::TitleRole).toString();
        return out;
    }
};

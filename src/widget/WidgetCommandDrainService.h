#pragma once

#include "WidgetCommandStore.h"
#include "kit/Clock.h"

#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>

#include <chrono>

namespace tarnwell {

class ActiveTaskService;
class CompletionPresenter;
class SessionEvents;
class SoundService;
class WidgetSnapshotWriter;

// Carries out the widget's command files. A change in the folder (inotify,
// through QFileSystemWatcher) or a wake from sleep schedules a drain 120 ms
// later, so a burst of files gives one drain. A drain reads the commands,
// oldest press first, and for each deletes its file before acting on it, so
// a command is applied at most once; commands more than five minutes old are
// dropped. The work is cut into slices of a few milliseconds with the event
// loop running in between, so a folder flooded with files never freezes the
// interface.
class WidgetCommandDrainService : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr std::chrono::milliseconds coalescingDelay{120};
        static constexpr qint64 staleSeconds = 300;
        // The longest stretch of work before the event loop runs again.
        static constexpr qint64 sliceMilliseconds = 4;
        // Refused files named one by one in the log per drain; the rest are counted.
        static constexpr int namedRefusals = 10;
    };

    struct Services
    {
        ActiveTaskService &activeTaskService;
        SoundService &soundService;
        CompletionPresenter &presenter; // told of completions; the next-up screen is not shown
        Clock clock;
        SessionEvents *sessionEvents = nullptr; // a wake schedules a drain
    };

    // Starts watching the folder, then drains once.
    WidgetCommandDrainService(WidgetSnapshotWriter *writer, Services services, WidgetCommandStore store = {},
                              QObject *parent = nullptr);
    ~WidgetCommandDrainService() override;

    void scheduleDrain();
    // Starts a drain now; one already under way runs again when it ends.
    void drain();
    // Stops watching; a drain under way or scheduled does not go on.
    void stop();

    bool isWatching() const { return !m_watcher.directories().isEmpty(); }
    bool isDrainScheduled() const { return m_scheduled.isActive(); }
    bool isDraining() const { return m_phase != Phase::idle; }
    const QSet<QUuid> &drained() const { return m_drained; }

Q_SIGNALS:
    // A drain ended; `applied` commands changed something.
    void drainFinished(int applied);

private:
    enum class Phase { idle, reading, applying };

    void watch();
    void step();
    void finishPass();
    bool apply(const WidgetCommand &command);
    void refuse(const QString &name, WidgetCommandStore::Refusal refusal);

    QPointer<WidgetSnapshotWriter> m_writer;
    Services m_services;
    WidgetCommandStore m_store;
    QFileSystemWatcher m_watcher;
    QTimer m_scheduled;
    QTimer m_nextSlice;
    QSet<QUuid> m_drained;
    // Files already read that are not to be read again in this run: refused
    // ones, and commands stored under another name whose deletion missed.
    QSet<QString> m_passedOver;

    // The drain under way.
    Phase m_phase = Phase::idle;
    bool m_again = false;
    bool m_stopped = false;
    QDateTime m_now;
    QStringList m_names;
    qsizetype m_nextName = 0;
    QList<std::pair<WidgetCommand, QString>> m_commands;
    qsizetype m_nextCommand = 0;
    int m_applied = 0;
    int m_refusedThisPass = 0;
};

} // namespace tarnwell

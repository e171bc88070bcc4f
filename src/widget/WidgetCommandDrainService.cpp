#include "WidgetCommandDrainService.h"

#include "WidgetSnapshotWriter.h"
#include "kit/Logging.h"
#include "persistence/Task.h"
#include "services/ActiveTaskService.h"
#include "services/SessionEvents.h"
#include "services/TaskCompletionFlow.h"

#include <algorithm>

namespace tarnwell {

WidgetCommandDrainService::WidgetCommandDrainService(WidgetSnapshotWriter *writer, Services services,
                                                     WidgetCommandStore store, QObject *parent)
    : QObject(parent)
    , m_writer(writer)
    , m_services(std::move(services))
    , m_store(std::move(store))
{
    m_scheduled.setSingleShot(true);
    m_scheduled.setInterval(Constants::coalescingDelay);
    connect(&m_scheduled, &QTimer::timeout, this, &WidgetCommandDrainService::drain);
    m_nextSlice.setSingleShot(true);
    m_nextSlice.setInterval(0);
    connect(&m_nextSlice, &QTimer::timeout, this, &WidgetCommandDrainService::step);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &WidgetCommandDrainService::scheduleDrain);
    if (m_services.sessionEvents) {
        // Presses made while the machine slept, or whose events were missed.
        connect(m_services.sessionEvents, &SessionEvents::cameBack, this, [this](const QString &why) {
            if (why == QLatin1String("sleep"))
                scheduleDrain();
        });
    }
    watch();
    drain();
}

WidgetCommandDrainService::~WidgetCommandDrainService() = default;

void WidgetCommandDrainService::watch()
{
    const QString problem = m_store.prepareDirectory();
    if (problem.isEmpty() && m_watcher.addPath(*m_store.directory()))
        return;
    qCCritical(lcWidget).noquote() << QStringLiteral("Could not watch the widget-commands directory");
    if (!problem.isEmpty())
        qCInfo(lcWidget).noquote() << QStringLiteral("The widget-commands directory: %1").arg(problem);
}

void WidgetCommandDrainService::scheduleDrain()
{
    if (m_stopped || m_scheduled.isActive())
        return;
    m_scheduled.start();
}

void WidgetCommandDrainService::drain()
{
    if (m_stopped)
        return;
    if (m_phase != Phase::idle) {
        m_again = true;
        return;
    }
    // The folder may have been deleted and made again behind our back.
    if (m_store.directory() && !isWatching() && m_store.prepareDirectory().isEmpty())
        m_watcher.addPath(*m_store.directory());
    m_now = m_services.clock();
    m_names = m_store.jsonFileNames();
    m_names.removeIf([this](const QString &name) { return m_passedOver.contains(name); });
    m_nextName = 0;
    m_commands.clear();
    m_nextCommand = 0;
    m_applied = 0;
    m_refusedThisPass = 0;
    m_phase = Phase::reading;
    step();
}

void WidgetCommandDrainService::step()
{
    QElapsedTimer slice;
    slice.start();
    const auto sliceUsed = [&slice] { return slice.elapsed() >= Constants::sliceMilliseconds; };

    while (m_phase == Phase::reading) {
        if (m_nextName == m_names.size()) {
            // Oldest press first.
            std::stable_sort(m_commands.begin(), m_commands.end(),
                             [](const auto &a, const auto &b) { return a.first.requestedAt < b.first.requestedAt; });
            m_phase = Phase::applying;
            break;
        }
        const QString &name = m_names.at(m_nextName++);
        auto entry = m_store.read(name);
        if (entry.command)
            m_commands.append({*entry.command, name});
        else if (entry.refusal != WidgetCommandStore::Refusal::unreadable)
            refuse(name, entry.refusal); // a file deleted meanwhile is simply gone
        if (sliceUsed()) {
            m_nextSlice.start();
            return;
        }
    }

    while (m_phase == Phase::applying) {
        if (m_nextCommand == m_commands.size()) {
            finishPass();
            return;
        }
        const auto [command, name] = m_commands.at(m_nextCommand++);
        if (m_drained.contains(command.id)) {
            m_passedOver.insert(name);
            continue;
        }
        m_drained.insert(command.id);
        // Deleted before it is acted on: applied at most once, even if the action fails.
        m_store.remove(command.id);
        if (name != command.fileName())
            m_passedOver.insert(name); // the deletion by id missed it; it stays until the folder goes
        const QString action = WidgetCommand::rawValue(command.action);
        if (command.requestedAt.msecsTo(m_now) > Constants::staleSeconds * 1000) {
            qCInfo(lcWidget).noquote() << QStringLiteral("Dropped a stale widget action: %1").arg(action);
        } else if (apply(command)) {
            qCInfo(lcWidget).noquote() << QStringLiteral("Applied %1 from the widget").arg(action);
            ++m_applied;
        }
        if (m_stopped)
            return;
        if (sliceUsed()) {
            m_nextSlice.start();
            return;
        }
    }
}

void WidgetCommandDrainService::finishPass()
{
    m_phase = Phase::idle;
    m_commands.clear();
    m_names.clear();
    if (m_refusedThisPass > Constants::namedRefusals)
        qCInfo(lcWidget).noquote() << QStringLiteral("Ignored %1 more files in the widget-commands directory")
                                          .arg(m_refusedThisPass - Constants::namedRefusals);
    if (m_applied > 0 && m_writer)
        m_writer->refresh();
    Q_EMIT drainFinished(m_applied);
    if (std::exchange(m_again, false))
        drain();
}

void WidgetCommandDrainService::refuse(const QString &name, WidgetCommandStore::Refusal refusal)
{
    // Never read again in this run; it goes with the folder at the end.
    m_passedOver.insert(name);
    if (++m_refusedThisPass <= Constants::namedRefusals)
        qCInfo(lcWidget).noquote() << QStringLiteral("Ignored %1 in the widget-commands directory: %2")
                                          .arg(name, WidgetCommandStore::describe(refusal));
}

bool WidgetCommandDrainService::apply(const WidgetCommand &command)
{
    ActiveTaskService &tasks = m_services.activeTaskService;
    Task *task = nullptr;
    try {
        task = tasks.context().existingObject<Task>(command.taskID);
    } catch (const StoreError &error) {
        qCCritical(lcWidget).noquote() << QStringLiteral("Widget action lookup failed: %1").arg(error.description());
        return false;
    }
    if (!task) {
        qCInfo(lcWidget).noquote() << QStringLiteral("Widget action arrived for a task that no longer exists");
        return false;
    }
    if (task->archived() || task->completed())
        return false;
    switch (command.action) {
    case WidgetCommand::Action::toggleTimer:
        tasks.toggleTimer(task);
        break;
    case WidgetCommand::Action::complete:
        // Silent apart from the chime: no next-up screen for a widget press.
        TaskCompletionFlow::complete(task->id(), tasks, m_services.soundService, m_services.presenter, false);
        break;
    }
    return true;
}

void WidgetCommandDrainService::stop()
{
    m_stopped = true;
    m_scheduled.stop();
    m_nextSlice.stop();
    if (!m_watcher.directories().isEmpty())
        m_watcher.removePaths(m_watcher.directories());
    m_phase = Phase::idle;
    m_commands.clear();
    m_names.clear();
}

} // namespace tarnwell

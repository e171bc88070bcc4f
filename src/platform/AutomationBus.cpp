#include "AutomationBus.h"

#include "Tarnwell1Adaptor.h"
#include "integration/TaskAutomation.h"
#include "kit/Logging.h"
#include "persistence/RepositoryError.h"
#include "persistence/StoreError.h"
#include "services/SyncService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QJsonDocument>

namespace tarnwell::platform {

namespace {

QString errorName(const char *suffix)
{
    return QLatin1String(AutomationBus::Constants::interfaceName) + QStringLiteral(".Error.") + QLatin1String(suffix);
}

} // namespace

AutomationBus::AutomationBus(QDBusConnection connection, QObject *parent)
    : ApplicationBus(std::move(connection), parent)
{
    new Tarnwell1Adaptor(this);
}

AutomationBus::~AutomationBus() = default;

void AutomationBus::setAutomation(TaskAutomation *automation)
{
    if (m_automation)
        disconnect(m_automation, nullptr, this, nullptr);
    m_automation = automation;
    if (automation)
        connect(automation, &TaskAutomation::changed, this, &AutomationBus::Changed);
}

void AutomationBus::setSync(SyncService *sync)
{
    if (m_sync)
        disconnect(m_sync, nullptr, this, nullptr);
    m_sync = sync;
    if (sync)
        connect(sync, &SyncService::stateChanged, this, &AutomationBus::SyncChanged);
}

template<typename Result, typename Work>
Result AutomationBus::answer(Work work)
{
    const auto refuse = [this](const char *name, const QString &message) {
        if (calledFromDBus())
            sendErrorReply(errorName(name), message);
        qCInfo(lcServices).noquote() << QStringLiteral("Refused a bus request: %1").arg(message);
        return Result();
    };
    if (!m_automation)
        //: A script called the agent while it is still starting
        //% "Tarnwell is still starting; try again in a moment."
        return refuse("NotReady", qtTrId("automation.error.notReady"));
    try {
        return work(*m_automation);
    } catch (const ArgumentError &error) {
        return refuse("InvalidArgument", error.message());
    } catch (const RepositoryError &error) {
        return refuse("Validation", error.localizedDescription());
    } catch (const AutomationError &error) {
        return refuse(error.kind() == AutomationError::Kind::noTaskInHand ? "NoTaskInHand" : "TaskNotFound",
                      error.message());
    } catch (const ImportError &error) {
        return refuse("Import", error.message());
    } catch (const StoreError &error) {
        return refuse("Store", error.description());
    }
}

QString AutomationBus::AddTask(const QString &title, int durationMinutes, bool urgent)
{
    return answer<QString>([&](TaskAutomation &a) { return a.addTask(title, durationMinutes, urgent); });
}

QString AutomationBus::AddQuickTask(const QString &line)
{
    return answer<QString>([&](TaskAutomation &a) { return a.addQuickTask(line); });
}

QString AutomationBus::Status()
{
    return answer<QString>(
        [](TaskAutomation &a) { return QString::fromUtf8(QJsonDocument(a.status()).toJson(QJsonDocument::Compact)); });
}

QString AutomationBus::Tasks(const QString &day)
{
    return answer<QString>([&](TaskAutomation &a) {
        return QString::fromUtf8(QJsonDocument(a.tasks(day)).toJson(QJsonDocument::Compact));
    });
}

QString AutomationBus::Complete(const QString &taskId)
{
    return answer<QString>([&](TaskAutomation &a) { return a.complete(taskId); });
}

QString AutomationBus::Start()
{
    return answer<QString>([](TaskAutomation &a) { return a.start(); });
}

QString AutomationBus::Pause()
{
    return answer<QString>([](TaskAutomation &a) { return a.pause(); });
}

QString AutomationBus::Toggle()
{
    return answer<QString>([](TaskAutomation &a) { return a.toggle(); });
}

QByteArray AutomationBus::Export(const QString &format, const QString &from, const QString &to)
{
    return answer<QByteArray>([&](TaskAutomation &a) { return a.exportData(format, from, to); });
}

int AutomationBus::Import(const QByteArray &document, int &tasks, int &routines, int &skipped)
{
    tasks = routines = skipped = 0;
    return answer<int>([&](TaskAutomation &a) {
        const auto summary = a.importData(document);
        tasks = summary.tasks;
        routines = summary.routines;
        skipped = summary.skipped;
        return summary.days;
    });
}

QString AutomationBus::Sync()
{
    if (!m_sync) {
        if (calledFromDBus())
            sendErrorReply(errorName("NotReady"), qtTrId("automation.error.notReady"));
        return {};
    }
    if (!calledFromDBus()) {
        m_sync->syncNow();
        return {};
    }
    // Answered when the pass has ended, however long that takes.
    setDelayedReply(true);
    const QDBusMessage request = message();
    QDBusConnection bus = connection();
    m_sync->syncNow([request, bus](const SyncReport &report) mutable {
        bus.send(
            request.createReply(QString::fromUtf8(QJsonDocument(reportJson(report)).toJson(QJsonDocument::Compact))));
    });
    return {};
}

QString AutomationBus::SyncStatus()
{
    if (!m_sync) {
        if (calledFromDBus())
            sendErrorReply(errorName("NotReady"), qtTrId("automation.error.notReady"));
        return {};
    }
    return QString::fromUtf8(QJsonDocument(m_sync->statusJson()).toJson(QJsonDocument::Compact));
}

} // namespace tarnwell::platform

// An in-memory store with the focus engine on a pinned clock, and fakes that
// record what reaches the chimes, the notifier and the popover.
#pragma once

#include "persistence/PersistenceController.h"
#include "services/ActiveTaskService.h"
#include "services/CountdownService.h"
#include "services/DurationCompletionNotifier.h"
#include "services/SoundService.h"
#include "services/TaskCompletionFlow.h"
#include "settings/AppSettingsStore.h"
#include "support/ManualClock.h"

#include <QStringList>

using namespace tarnwell;

// Every call on every loaded chime, as "<name> <action>" lines.
struct FakeChimes : ChimeLibrary
{
    struct Player : ChimePlayer
    {
        Player(FakeChimes &o, QString n) : owner(o), name(std::move(n)) {}
        bool isPlaying() const override { return playing; }
        void stop() override { playing = false; owner.log << name + QStringLiteral(" stop"); }
        void setVolume(double v) override { owner.log << name + QStringLiteral(" volume %1").arg(v); }
        void play() override { playing = true; owner.log << name + QStringLiteral(" play"); }
        FakeChimes &owner;
        QString name;
        bool playing = false;
    };
    std::unique_ptr<ChimePlayer> load(const QString &name) override
    {
        log << name + QStringLiteral(" load");
        return name == QLatin1String("Missing") ? nullptr : std::make_unique<Player>(*this, name);
    }
    QStringList log;
};

struct FakeNotifier : DurationCompletionNotifier
{
    void notifyDurationComplete(Task &task) override { events << QStringLiteral("complete ") + task.title(); }
    void notifyEndingSoon(Task &task, int minutesLeft) override
    {
        events << QStringLiteral("endingSoon %1 %2").arg(task.title()).arg(minutesLeft);
    }
    void withdrawEndingSoon(const std::optional<QUuid> &taskID) override
    {
        events << QStringLiteral("withdraw ") + (taskID ? taskID->toString() : QStringLiteral("none"));
    }
    QStringList events;
};

struct FakePresenter : CompletionPresenter
{
    void presentNextUp(const NextUpModalContext &c) override { presented.append(c); }
    void updatePresentation() override { ++updates; }
    QList<NextUpModalContext> presented;
    int updates = 0;
};

struct FocusFixture
{
    ManualClock time{QDate(2026, 6, 10).startOfDay(QTimeZone::systemTimeZone()).addSecs(10 * 3600)};
    PersistenceController store{true};
    AppSettingsStore settings{store};
    ActiveTaskService service{store.viewContext(), settings, time.clock()};
    FakeChimes chimes;
    SoundService sound{settings, chimes};
    int saves = 0;

    FocusFixture() { QObject::connect(&store.viewContext(), &StoreContext::didSave, [this] { ++saves; }); }

    Task *add(const QString &title, std::optional<qint64> minutes = std::nullopt)
    {
        Day *today = service.dayRepository().fetchOrCreateDay(time.now);
        return service.taskRepository().createTask(title, minutes, false, today);
    }
    void advanceSeconds(qint64 s) { time.advance(s * 1000); }
};

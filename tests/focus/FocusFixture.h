// The focus engine on a pinned clock over an in-memory (or file) store, with
// a recorder standing in for the chimes, the notifier and the popover.
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

#include <utility>

using namespace tarnwell;

// Everything that reaches the chimes, the notifier and the popover, in order.
struct Recorder : ChimeLibrary, DurationCompletionNotifier, CompletionPresenter
{
    struct Player : ChimePlayer
    {
        Player(Recorder &r, QString n)
            : recorder(r)
            , name(std::move(n))
        {
        }
        bool isPlaying() const override { return playing; }
        void stop() override { playing = false, recorder.log << name + QStringLiteral(" stop"); }
        void setVolume(double v) override { recorder.log << name + QStringLiteral(" volume %1").arg(v); }
        void play() override { playing = true, recorder.log << name + QStringLiteral(" play"); }
        Recorder &recorder;
        QString name;
        bool playing = false;
    };
    std::unique_ptr<ChimePlayer> load(const QString &name) override
    {
        log << name + QStringLiteral(" load");
        return std::make_unique<Player>(*this, name);
    }
    void notifyDurationComplete(Task &t) override { log << QStringLiteral("complete ") + t.title(); }
    void notifyEndingSoon(Task &t, int minutes) override
    {
        log << QStringLiteral("endingSoon %1 %2").arg(t.title()).arg(minutes);
    }
    void withdrawEndingSoon(const std::optional<QUuid> &id) override
    {
        log << QStringLiteral("withdraw ") + id.value_or(QUuid()).toString();
    }
    void presentNextUp(const NextUpModalContext &c) override { nextUp << c; }
    void updatePresentation() override { log << QStringLiteral("update"); }

    QStringList take() { return std::exchange(log, {}); }
    QStringList log;
    QList<NextUpModalContext> nextUp;
};

struct FocusFixture
{
    explicit FocusFixture(const QString &storePath = {})
        : store(storePath.isEmpty() ? std::make_unique<PersistenceController>(true)
                                    : std::make_unique<PersistenceController>(storePath))
    {
        QObject::connect(&store->viewContext(), &StoreContext::didSave, [this] { ++saves; });
    }
    Task *add(const QString &title, std::optional<qint64> minutes = std::nullopt)
    {
        Day *today = service.dayRepository().fetchOrCreateDay(time.now);
        return service.taskRepository().createTask(title, minutes, false, today);
    }
    // One tick a second for `seconds` seconds.
    void tick(int seconds)
    {
        for (int i = 0; i < seconds; ++i) {
            time.advance(1000);
            countdown.evaluate();
        }
    }

    ManualClock time{QDate(2026, 6, 10).startOfDay(QTimeZone::systemTimeZone()).addSecs(10 * 3600)};
    std::unique_ptr<PersistenceController> store;
    AppSettingsStore settings{*store};
    ActiveTaskService service{store->viewContext(), settings, time.clock()};
    Recorder rec;
    SoundService sound{settings, rec};
    CountdownService countdown{service, rec, sound, settings, time.clock(), std::chrono::milliseconds(0)};
    int saves = 0;
};

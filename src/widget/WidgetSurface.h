#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"

#include <memory>

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;
class CompletionPresenter;
class RolloverService;
class SessionEvents;
class SoundService;
class StoreContext;
class WidgetCommandDrainService;
class WidgetSnapshotWriter;

// What the widget program sees of the application: the snapshot writer and
// the command drain, from the interface's installation to its removal.
class WidgetSurface
{
public:
    struct Services
    {
        StoreContext &context;
        AppSettingsStore &settingsStore;
        ActiveTaskService &activeTaskService;
        SoundService &soundService;
        CompletionPresenter &presenter;
        Calendar calendar;
        Clock clock;
        RolloverService *rollover = nullptr;
        SessionEvents *sessionEvents = nullptr;
    };

    explicit WidgetSurface(Services services);
    ~WidgetSurface();

    // Writes the first snapshot, then starts the drain (which drains once).
    // A second start while running does nothing.
    void start();
    // Stops the drain, drops it and the writer, and deletes the snapshot and
    // the commands folder, so the widget falls back to its empty state.
    void stop();
    bool isRunning() const { return bool(m_writer); }

    WidgetSnapshotWriter *writer() const { return m_writer.get(); }
    WidgetCommandDrainService *drain() const { return m_drain.get(); }

private:
    Services m_services;
    std::unique_ptr<WidgetSnapshotWriter> m_writer;
    std::unique_ptr<WidgetCommandDrainService> m_drain;
};

} // namespace tarnwell

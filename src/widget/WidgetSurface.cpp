#include "WidgetSurface.h"

#include "WidgetCommandDrainService.h"
#include "WidgetSnapshotWriter.h"

namespace tarnwell {

WidgetSurface::WidgetSurface(Services services)
    : m_services(std::move(services))
{
}

WidgetSurface::~WidgetSurface() = default;

void WidgetSurface::start()
{
    if (m_writer)
        return;
    auto builder = std::make_unique<WidgetSnapshotBuilder>(m_services.context, m_services.settingsStore,
                                                           m_services.calendar, m_services.clock, m_services.rollover);
    m_writer = std::make_unique<WidgetSnapshotWriter>(m_services.activeTaskService, m_services.settingsStore,
                                                      std::move(builder));
    // The first snapshot is on disk before any command is carried out.
    m_writer->refresh();
    m_drain = std::make_unique<WidgetCommandDrainService>(
        m_writer.get(),
        WidgetCommandDrainService::Services{m_services.activeTaskService, m_services.soundService, m_services.presenter,
                                            m_services.clock, m_services.sessionEvents});
}

void WidgetSurface::stop()
{
    if (m_drain)
        m_drain->stop();
    m_drain.reset();
    m_writer.reset();
    WidgetSnapshotFile().remove();
    WidgetCommandStore().removeAll();
}

} // namespace tarnwell

#include "WidgetSnapshotWriter.h"

#include "kit/Logging.h"
#include "persistence/StoreError.h"
#include "services/ActiveTaskService.h"
#include "settings/AppSettingsStore.h"

namespace tarnwell {

WidgetSnapshotWriter::WidgetSnapshotWriter(ActiveTaskService &activeTaskService, AppSettingsStore &settingsStore,
                                           std::unique_ptr<WidgetSnapshotBuilder> builder, WidgetSnapshotFile file,
                                           QObject *parent)
    : QObject(parent)
    , m_builder(std::move(builder))
    , m_file(std::move(file))
{
    // From the event loop, after every receiver of the same change has run
    // (the new language is installed before the texts are built).
    m_pending.setSingleShot(true);
    m_pending.setInterval(0);
    connect(&m_pending, &QTimer::timeout, this, &WidgetSnapshotWriter::refresh);
    connect(&activeTaskService, &ActiveTaskService::queueChanged, &m_pending, qOverload<>(&QTimer::start));
    connect(&settingsStore, &AppSettingsStore::settingChanged, &m_pending, qOverload<>(&QTimer::start));
}

WidgetSnapshotWriter::~WidgetSnapshotWriter() = default;

void WidgetSnapshotWriter::refresh()
{
    m_pending.stop();
    try {
        write(m_builder->build(true));
    } catch (const StoreError &error) {
        qCCritical(lcWidget).noquote()
            << QStringLiteral("Failed to write widget snapshot: %1").arg(error.description());
    }
}

void WidgetSnapshotWriter::write(const WidgetSnapshot &snapshot)
{
    if (m_lastWritten && m_lastWritten->sameContent(snapshot))
        return;
    QString error;
    if (!m_file.write(snapshot, &error)) {
        // No container: nothing is written and nothing is said.
        if (!error.isEmpty())
            qCCritical(lcWidget).noquote() << QStringLiteral("Failed to write widget snapshot: %1").arg(error);
        return;
    }
    m_lastWritten = snapshot;
    Q_EMIT written();
}

} // namespace tarnwell

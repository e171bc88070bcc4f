#pragma once

#include "WidgetSnapshot.h"
#include "WidgetSnapshotBuilder.h"
#include "WidgetSnapshotFile.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;

// Keeps widget-snapshot.json in step with what it shows. Every republished
// queue of the active task service (which covers timer starts and pauses,
// completions, a new day) and every settings change (language, appearance)
// asks for a refresh; refreshes asked for in one turn of the event loop run
// once. A snapshot is written only when its content differs from the last one
// written: a rebuild that only moves the build time writes nothing, and the
// widget program, which watches the file, wakes only for real changes.
class WidgetSnapshotWriter : public QObject
{
    Q_OBJECT
public:
    WidgetSnapshotWriter(ActiveTaskService &activeTaskService, AppSettingsStore &settingsStore,
                         std::unique_ptr<WidgetSnapshotBuilder> builder, WidgetSnapshotFile file = {},
                         QObject *parent = nullptr);
    ~WidgetSnapshotWriter() override;

    // Builds with appRunning set and writes.
    void refresh();
    void write(const WidgetSnapshot &snapshot);
    const std::optional<WidgetSnapshot> &lastWritten() const { return m_lastWritten; }
    const WidgetSnapshotFile &file() const { return m_file; }

Q_SIGNALS:
    // A new snapshot is on disk.
    void written();

private:
    std::unique_ptr<WidgetSnapshotBuilder> m_builder;
    WidgetSnapshotFile m_file;
    std::optional<WidgetSnapshot> m_lastWritten;
    QTimer m_pending;
};

} // namespace tarnwell

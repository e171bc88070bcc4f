#pragma once

#include "kit/Clock.h"
#include "widget/WidgetSnapshotFile.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace tarnwell::widgetapp {

// The snapshot as the widget program sees it: read again whenever the file
// is replaced or removed (the folder is watched, since a replacement is a
// rename), and dropped once it is past validUntil or says the application
// is not running.
class WidgetFeed : public QObject
{
    Q_OBJECT
public:
    explicit WidgetFeed(Clock clock = systemClock(), WidgetSnapshotFile file = {}, QObject *parent = nullptr);

    // None when there is nothing current to show.
    const std::optional<WidgetSnapshot> &snapshot() const { return m_snapshot; }
    void reload();

Q_SIGNALS:
    void changed();

private:
    void watch();

    Clock m_clock;
    WidgetSnapshotFile m_file;
    QFileSystemWatcher m_watcher;
    QTimer m_settle;
    QTimer m_expiry;
    std::optional<WidgetSnapshot> m_snapshot;
};

} // namespace tarnwell::widgetapp

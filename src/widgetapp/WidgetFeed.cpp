#include "WidgetFeed.h"

#include <QFileInfo>

#include <algorithm>

namespace tarnwell::widgetapp {

WidgetFeed::WidgetFeed(Clock clock, WidgetSnapshotFile file, QObject *parent)
    : QObject(parent)
    , m_clock(std::move(clock))
    , m_file(std::move(file))
{
    // A replacement is several events (temporary file, rename): read once.
    m_settle.setSingleShot(true);
    m_settle.setInterval(10);
    connect(&m_settle, &QTimer::timeout, this, &WidgetFeed::reload);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settle, qOverload<>(&QTimer::start));
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_settle, qOverload<>(&QTimer::start));
    m_expiry.setSingleShot(true);
    m_expiry.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_expiry, &QTimer::timeout, this, &WidgetFeed::reload);
    reload();
}

void WidgetFeed::watch()
{
    if (!m_file.path())
        return;
    // The snapshot's folder, or the nearest folder above it that exists, so
    // that the container appearing is seen too.
    QString folder = QFileInfo(*m_file.path()).path();
    while (!QFileInfo::exists(folder) && folder != QFileInfo(folder).path())
        folder = QFileInfo(folder).path();
    const QStringList wanted =
        QFileInfo::exists(*m_file.path()) ? QStringList{folder, *m_file.path()} : QStringList{folder};
    const QStringList watched = m_watcher.directories() + m_watcher.files();
    for (const QString &path : watched) {
        if (!wanted.contains(path))
            m_watcher.removePath(path);
    }
    for (const QString &path : wanted) {
        if (!watched.contains(path))
            m_watcher.addPath(path);
    }
}

void WidgetFeed::reload()
{
    watch();
    const QDateTime now = m_clock();
    std::optional<WidgetSnapshot> snapshot = m_file.read();
    if (snapshot && (!snapshot->appRunning || now >= snapshot->validUntil))
        snapshot.reset();
    m_expiry.stop();
    if (snapshot) // a day that has passed is not shown
        m_expiry.start(int(std::clamp<qint64>(now.msecsTo(snapshot->validUntil) + 1, 0, 24 * 3600 * 1000)));
    if (snapshot == m_snapshot)
        return;
    m_snapshot = std::move(snapshot);
    Q_EMIT changed();
}

} // namespace tarnwell::widgetapp

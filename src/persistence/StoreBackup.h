#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "StoreContext.h"

#include <QDate>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

struct sqlite3;
struct sqlite3_backup;

namespace tarnwell {

// Daily copies of the store in "backups/" beside it, named
// "Tarnwell-YYYY-MM-DD.sqlite" after the local day they were taken; the
// newest seven are kept. A copy is taken once the program has been quiet
// (no change to the store) for a while and none exists for today. SQLite's
// online backup copies a few pages at a time from the event loop, so the
// interface is never held up for more than a slice of a few milliseconds;
// changes made meanwhile are carried into the copy by SQLite itself.
class StoreBackupService : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr int keep = 7;
        static constexpr int quietMilliseconds = 30 * 1000;
        static constexpr int checkMilliseconds = 60 * 60 * 1000;
        static constexpr int sliceMilliseconds = 3;
        static constexpr int pagesPerStep = 16;
    };

    struct Backup
    {
        QDate day;
        QString path;
        qint64 bytes = 0;
    };

    // `storePath` is the store `context` works on.
    StoreBackupService(StoreContext &context, QString storePath, Calendar calendar, Clock clock,
                       int quietMilliseconds = Constants::quietMilliseconds, QObject *parent = nullptr);
    ~StoreBackupService() override;

    // Starts waiting for a quiet moment (and looks again every hour).
    void start();
    // Whether no copy of today exists yet.
    bool isDue() const;
    // Begins copying now, whatever the time since the last change.
    void backUpNow();
    bool isRunning() const { return m_backup != nullptr; }
    // The longest time one slice of the last copy held the event loop.
    double longestSliceMs() const { return m_longestSliceMs; }

    static QString folderFor(const QString &storePath);
    // Newest first.
    static QList<Backup> list(const QString &storePath);
    // Replaces the store's content with the backup's, after checking the
    // backup and copying the current store aside; returns the aside copy's
    // path. Only while no program has the store open. Throws StoreError.
    static QString restore(const QString &storePath, const QString &backupPath, const QDateTime &now);

Q_SIGNALS:
    // A copy was written (`path`), or failed (empty `path`).
    void finished(const QString &path);

private:
    void step();
    void finish(bool ok);
    void prune();

    StoreContext &m_context;
    QString m_storePath;
    Calendar m_calendar;
    Clock m_clock;
    QTimer m_quiet;
    QTimer m_check;
    QTimer m_stepper;
    sqlite3 *m_destination = nullptr;
    sqlite3_backup *m_backup = nullptr;
    QString m_partialPath;
    QString m_finalPath;
    double m_longestSliceMs = 0;
};

} // namespace tarnwell

#include "LogCheckpointer.h"

#include <QFile>

#include <sqlite3.h>

namespace tarnwell {

LogCheckpointer::LogCheckpointer(const QString &storePath)
    : m_path(QFile::encodeName(storePath))
    , m_thread([this] { work(); })
{
}

LogCheckpointer::~LogCheckpointer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void LogCheckpointer::request()
{
    {
        const std::lock_guard lock(m_mutex);
        m_requested = true;
    }
    m_wake.notify_one();
}

LogCheckpointer::Report LogCheckpointer::takeReport()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_report, {});
}

void LogCheckpointer::work()
{
    sqlite3 *db = nullptr;
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_requested || m_stopping; });
        if (m_stopping)
            break;
        m_requested = false;
        lock.unlock();
        QString error;
        const bool done = checkpoint(db, error);
        lock.lock();
        if (done)
            ++m_report.done;
        else if (m_report.error.isEmpty())
            m_report.error = error;
    }
    lock.unlock();
    sqlite3_close(db);
}

// The connection is opened at the first request and kept. It must have read
// the file once before a checkpoint: until then it does not know the store
// keeps a log, and a checkpoint would do nothing.
bool LogCheckpointer::checkpoint(sqlite3 *&db, QString &error) const
{
    const auto failure = [&db, &error](const char *what, int rc) {
        error = QStringLiteral("%1: %2").arg(QLatin1String(what),
                                             QString::fromUtf8(db ? sqlite3_errmsg(db) : sqlite3_errstr(rc)));
        sqlite3_close(db);
        db = nullptr;
        return false;
    };
    if (!db) {
        int rc = sqlite3_open_v2(m_path.constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
        if (rc != SQLITE_OK)
            return failure("opening the store", rc);
        sqlite3_busy_timeout(db, 2000);
        rc = sqlite3_exec(db, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
        if (rc != SQLITE_OK)
            return failure("reading the store", rc);
    }
    int logFrames = 0;
    int copied = 0;
    const int rc = sqlite3_wal_checkpoint_v2(db, "main", SQLITE_CHECKPOINT_PASSIVE, &logFrames, &copied);
    // Busy: another checkpoint is running (the main connection's own); this
    // one is not needed.
    if (rc != SQLITE_OK && rc != SQLITE_BUSY)
        return failure("copying the log into the store", rc);
    return true;
}

} // namespace tarnwell

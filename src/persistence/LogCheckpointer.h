#pragma once

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <utility>
#include <thread>

struct sqlite3;

namespace tarnwell {

// Copies a store's write-ahead log into the store file (a passive
// checkpoint) on a thread of its own, through a connection of its own.
// A checkpoint waits for two disk flushes, several milliseconds and at
// times far more; done on the main thread during a long run of saves, those
// waits held the main loop up. This is the one piece of the program that
// runs off the main thread: it shares no object with the rest, only the
// file, and SQLite keeps the two connections apart. A checkpoint never
// blocks the main connection's reads or commits.
//
// Requests made while a checkpoint runs are folded into one more.
class LogCheckpointer
{
public:
    explicit LogCheckpointer(const QString &storePath);
    // Lets a checkpoint under way finish.
    ~LogCheckpointer();
    LogCheckpointer(const LogCheckpointer &) = delete;
    LogCheckpointer &operator=(const LogCheckpointer &) = delete;

    void request();

    struct Report
    {
        int done = 0; // checkpoints that ran to their end
        QString error; // the first failure, if any
    };
    // What happened since the last call.
    Report takeReport();

private:
    void work();
    bool checkpoint(sqlite3 *&db, QString &error) const;

    const QByteArray m_path;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_requested = false;
    bool m_stopping = false;
    Report m_report;
    std::thread m_thread; // last: started once everything above exists
};

} // namespace tarnwell

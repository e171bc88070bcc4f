#pragma once

#include "StoreContext.h"

#include <QString>
#include <functional>
#include <memory>

namespace tarnwell {

class StoreMigrator;

// Opens the one SQLite store and hands out its main context. A store that
// cannot be opened stops the process; the file is never deleted or replaced.
class PersistenceController
{
public:
    struct Constants
    {
        static constexpr const char *containerName = "Tarnwell";
        static constexpr const char *fileName = "Tarnwell.sqlite";
    };

    // The store in the user's data folder, or one that lives only in memory.
    explicit PersistenceController(bool inMemory = false);
    // A store at an explicit path (tools and tests).
    explicit PersistenceController(const QString &storePath);
    PersistenceController(const QString &storePath, const StoreMigrator &migrator);
    ~PersistenceController();

    PersistenceController(const PersistenceController &) = delete;
    PersistenceController &operator=(const PersistenceController &) = delete;

    // The main context every repository and store works on.
    StoreContext &viewContext() { return *m_context; }
    // Empty for an in-memory store.
    const QString &storePath() const { return m_path; }

    // Saves the main context if it has changes; a failure is logged, not thrown.
    void save();

    // $XDG_DATA_HOME/tarnwell/Tarnwell.sqlite
    static QString defaultStorePath();

    // Called with the store's path and the reason when a store cannot be
    // opened, after the log record and before the process stops: the agent
    // shows the user why. The file has not been changed at that point.
    using LoadFailureNotice = std::function<void(const QString &path, const QString &description)>;
    static void setLoadFailureNotice(LoadFailureNotice notice);

    // Why this file cannot be our store, checked before SQLite opens it:
    // a folder we may not write or do not own, a store that is a directory
    // or read-only, a file shorter than its own header says. Empty when none.
    static QString refusalReason(const QString &path);

private:
    void load(const QString &path, const StoreMigrator &migrator);

    QString m_connectionName;
    QString m_path;
    std::unique_ptr<StoreContext> m_context;
};

} // namespace tarnwell

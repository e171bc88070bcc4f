#pragma once

#include "StoreContext.h"

#include <QString>
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

private:
    void load(const QString &path, const StoreMigrator &migrator);

    QString m_connectionName;
    QString m_path;
    std::unique_ptr<StoreContext> m_context;
};

} // namespace tarnwell

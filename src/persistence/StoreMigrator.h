#pragma once

#include <QSqlDatabase>
#include <QStringList>

namespace tarnwell {

// Brings a store up to the current schema. Step i takes the store from
// version i to i + 1 (the version lives in PRAGMA user_version). Pending steps
// run in one transaction, so a failure leaves the store as it was; an existing
// file is first copied aside.
class StoreMigrator
{
public:
    explicit StoreMigrator(QStringList steps);
    // The program's own steps, from the schema resources.
    static StoreMigrator standard();

    int latestVersion() const { return int(m_steps.size()); }
    // Throws StoreError. `filePath` is empty for an in-memory store.
    void migrate(QSqlDatabase &db, const QString &filePath) const;

    static int userVersion(QSqlDatabase &db);
    static QStringList splitStatements(const QString &script);

private:
    QString step(int version) const;

    // The steps' texts, or the program's own step files, read only when
    // a migration runs.
    QStringList m_steps;
    bool m_stepsAreFiles = false;
};

} // namespace tarnwell

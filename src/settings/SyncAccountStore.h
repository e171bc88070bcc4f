#pragma once

#include "sync/SyncTypes.h"

#include <QDateTime>
#include <QObject>
#include <QString>

namespace tarnwell {

class StoreContext;

// The sync account kept in the store (table sync_account, one row at most):
// where and as whom to sync, whether sync is on, when the last pass ended
// and what went wrong last. Reads go to the row each time; every write is
// its own statement and announces itself through `changed`.
class SyncAccountStore : public QObject
{
    Q_OBJECT
public:
    explicit SyncAccountStore(StoreContext &context, QObject *parent = nullptr);

    // Empty when no account was ever set up.
    sync::SyncAccount account() const;
    bool enabled() const;
    QDateTime lastSyncAt() const;
    // "" when the last pass went through.
    QString lastError() const;

    // A new server, user or collection: the last sync time and error belong
    // to the old one and are cleared. Returns false when the row could not be
    // written (logged).
    bool setAccount(const sync::SyncAccount &account, bool enabled);
    bool setEnabled(bool on);
    bool recordPass(const QDateTime &finishedAt, const QString &error);
    bool recordError(const QString &error);

Q_SIGNALS:
    void changed();

private:
    struct Row
    {
        sync::SyncAccount account;
        bool enabled = false;
        QDateTime lastSyncAt;
        QString lastError;
    };
    Row read() const;
    bool exec(const QString &sql, const QVariantList &bindings);

    StoreContext &m_context;
};

} // namespace tarnwell

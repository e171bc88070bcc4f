#pragma once

#include "kit/Clock.h"
#include "sync/SyncTypes.h"

#include <QDateTime>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace tarnwell {

class SecretStore;
class SyncAccountStore;

// Why sync did not go through, in the terms the user is told about. The
// stored form (`problemKey`) is what the account row and the bus carry.
enum class SyncProblem {
    none,
    notAvailable, // this build has no sync engine
    off, // no account, or sync turned off
    noSecretService, // nowhere to keep the password: sync stays off
    noPassword, // the secret service has no password for the account
    secretDenied, // the keyring stayed locked, or reading it failed
    cancelled, // Tarnwell quit or sync was turned off during the pass
    network, // the server could not be reached
    certificate,
    unauthorized,
    notCalDav,
    noTaskCollection,
    server, // any other refusal by the server
    malformed, // an answer that could not be read
};

QString problemKey(SyncProblem problem);
SyncProblem problemFromKey(const QString &key);
SyncProblem problemFor(sync::CalDavError error);
// The user's text for a problem, in the current language ("" for none).
QString problemText(SyncProblem problem);

// How a pass that was asked for ended.
struct SyncReport
{
    SyncProblem problem = SyncProblem::none;
    int pulled = 0;
    int pushed = 0;
    int removed = 0;
    QDateTime finishedAt;
    bool ok() const { return problem == SyncProblem::none; }
};

// {"ok", "error" (a problem key), "message", "pulled", "pushed", "removed", "finishedAt"}
QJsonObject reportJson(const SyncReport &report);

// Decides when a sync pass runs: shortly after the store changed (changes
// close together share one pass), every few minutes, at start and when the
// user asks. A server that cannot be reached is tried again later and later;
// a refusal that only the user can mend (a wrong password, an untrusted
// certificate, a server that is no CalDAV server) stops the automatic passes
// until the account changes. Never two passes at once; quitting abandons a
// running pass. Time comes from the clock: `tick()` runs what is due, and
// the service's own timer calls it at the next due instant.
class SyncService : public QObject
{
    Q_OBJECT
public:
    enum class State { unavailable, off, idle, syncing, error };
    Q_ENUM(State)

    struct Constants
    {
        static constexpr std::chrono::milliseconds changeDelay{3000};
        // However often the store changes, a pass runs this long after the first change.
        static constexpr std::chrono::milliseconds changeDelayCap{20000};
        static constexpr std::chrono::milliseconds period{5 * 60 * 1000};
        static constexpr std::chrono::milliseconds firstRetry{30 * 1000};
        static constexpr std::chrono::milliseconds longestRetry{30 * 60 * 1000};
    };

    struct Services
    {
        SyncAccountStore &accounts;
        // Either may be missing: a build without the engine, a desktop
        // without a secret service. Sync is then off and says why.
        SecretStore *secrets = nullptr;
        sync::SyncPass *pass = nullptr;
        Clock clock;
    };
    using Finished = std::function<void(const SyncReport &)>;

    explicit SyncService(Services services, QObject *parent = nullptr);
    ~SyncService() override;

    // Schedules the pass at start and begins to follow the clock.
    void start();
    // Abandons a running pass, answers whoever waits for one, and stops.
    void shutdown();

    // The store changed: a pass soon, unless it is already due.
    void noteLocalChange();
    // A pass as soon as none runs; `finished` hears how it ended (at once
    // when sync cannot run).
    void syncNow(Finished finished = {});
    // Runs a pass when one is due by the clock.
    void tick();

    // Sets up (or changes) the account and turns sync on. The password goes
    // to the secret store only; an empty one keeps the stored password.
    // `done` hears the problem (none when sync is on).
    void setAccount(const sync::SyncAccount &account, const QString &password, Finished done);
    // Turns sync off: a running pass is abandoned, the engine forgets the
    // server's state (and with `removeLocalCopies` the synced tasks here),
    // the password leaves the secret store. The account's addresses stay.
    void turnOff(bool removeLocalCopies);
    // The stored password of the current account, for finding calendars again.
    void readPassword(std::function<void(const QString &password, SyncProblem problem)> done);

    State state() const;
    bool available() const { return m_services.pass && m_services.secrets; }
    bool running() const { return m_running; }
    sync::SyncAccount account() const;
    bool enabled() const;
    QDateTime lastSyncAt() const;
    SyncProblem lastProblem() const;
    // When the next automatic pass is due; invalid when none is.
    QDateTime nextAutomaticRun() const;
    QString secretStoreName() const;

    // {"state", "available", "enabled", "server", "user", "collection",
    // "lastSync", "lastError", "lastErrorText"}; absent values are left out.
    QJsonObject statusJson() const;
    // The same from the store alone, for when no agent runs.
    static QJsonObject statusJson(const SyncAccountStore &accounts, const QString &state, SyncProblem lastProblem);
    static QString stateKey(State state);

    // The secret service's key for an account's password.
    static QString secretKey(const sync::SyncAccount &account);

Q_SIGNALS:
    // The state, the last sync time or the last problem changed.
    void stateChanged();
    void passFinished(const tarnwell::SyncReport &report);

private:
    bool canRunAutomatically() const;
    void arm();
    void begin();
    void finish(const SyncReport &report);
    void settle(SyncProblem problem);

    Services m_services;
    QTimer m_timer;
    bool m_started = false;
    bool m_running = false;
    bool m_manualRequested = false;
    bool m_changedDuringPass = false;
    // A refusal only the user can mend: no automatic passes until the account changes.
    bool m_blocked = false;
    int m_failures = 0;
    quint64 m_generation = 0; // a callback of an abandoned pass finds it changed
    QDateTime m_periodicDue;
    QDateTime m_changeDue;
    QDateTime m_firstChangeAt;
    QDateTime m_retryAt;
    QList<Finished> m_waiting; // for the next pass
    QList<Finished> m_answering; // for the running one
};

} // namespace tarnwell

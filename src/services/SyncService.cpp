#include "SyncService.h"

#include "kit/Logging.h"
#include "kit/SecretStore.h"
#include "settings/SyncAccountStore.h"

#include <QPointer>

#include <algorithm>

namespace tarnwell {

namespace {

struct ProblemName
{
    SyncProblem problem;
    const char *key;
};

constexpr ProblemName problemNames[] = {
    {SyncProblem::notAvailable, "notAvailable"},
    {SyncProblem::off, "off"},
    {SyncProblem::noSecretService, "noSecretService"},
    {SyncProblem::noPassword, "noPassword"},
    {SyncProblem::secretDenied, "secretDenied"},
    {SyncProblem::cancelled, "cancelled"},
    {SyncProblem::network, "network"},
    {SyncProblem::certificate, "certificate"},
    {SyncProblem::unauthorized, "unauthorized"},
    {SyncProblem::notCalDav, "notCalDav"},
    {SyncProblem::noTaskCollection, "noTaskCollection"},
    {SyncProblem::server, "server"},
    {SyncProblem::malformed, "malformed"},
};

SyncProblem problemFor(const SecretStore::Result &result)
{
    switch (result.status) {
    case SecretStore::Result::Status::ok:
        return SyncProblem::none;
    case SecretStore::Result::Status::notFound:
        return SyncProblem::noPassword;
    case SecretStore::Result::Status::unavailable:
        return SyncProblem::noSecretService;
    case SecretStore::Result::Status::denied:
    case SecretStore::Result::Status::failed:
        return SyncProblem::secretDenied;
    }
    return SyncProblem::secretDenied;
}

// Problems that another try cannot mend: the user has to change something.
bool needsTheUser(SyncProblem problem)
{
    switch (problem) {
    case SyncProblem::unauthorized:
    case SyncProblem::certificate:
    case SyncProblem::notCalDav:
    case SyncProblem::noTaskCollection:
    case SyncProblem::noPassword:
    case SyncProblem::secretDenied:
    case SyncProblem::noSecretService:
        return true;
    default:
        return false;
    }
}

QDateTime earlier(const QDateTime &a, const QDateTime &b)
{
    if (!a.isValid())
        return b;
    if (!b.isValid())
        return a;
    return std::min(a, b);
}

} // namespace

QString problemKey(SyncProblem problem)
{
    for (const auto &name : problemNames) {
        if (name.problem == problem)
            return QLatin1String(name.key);
    }
    return {};
}

SyncProblem problemFromKey(const QString &key)
{
    for (const auto &name : problemNames) {
        if (key == QLatin1String(name.key))
            return name.problem;
    }
    return key.isEmpty() ? SyncProblem::none : SyncProblem::server;
}

SyncProblem problemFor(sync::CalDavError error)
{
    switch (error) {
    case sync::CalDavError::none:
        return SyncProblem::none;
    case sync::CalDavError::network:
        return SyncProblem::network;
    case sync::CalDavError::certificate:
        return SyncProblem::certificate;
    case sync::CalDavError::unauthorized:
        return SyncProblem::unauthorized;
    case sync::CalDavError::notCalDav:
        return SyncProblem::notCalDav;
    case sync::CalDavError::noTaskCollection:
        return SyncProblem::noTaskCollection;
    case sync::CalDavError::malformed:
        return SyncProblem::malformed;
    case sync::CalDavError::conflict:
    case sync::CalDavError::notFound:
    case sync::CalDavError::invalidSyncToken:
    case sync::CalDavError::server:
        return SyncProblem::server;
    }
    return SyncProblem::server;
}

QString problemText(SyncProblem problem)
{
    switch (problem) {
    case SyncProblem::none:
        return {};
    case SyncProblem::notAvailable:
        //: Sync: this build of Tarnwell was made without the part that syncs
        //% "Sync is not available in this build of Tarnwell."
        return qtTrId("sync.problem.notAvailable");
    case SyncProblem::off:
        //: Sync: asked to sync while no account is set up or sync is turned off
        //% "Sync is off. Set it up in Settings, Sync."
        return qtTrId("sync.problem.off");
    case SyncProblem::noSecretService:
        //: Sync: the desktop has no keyring (Secret Service) to keep the password in
        //% "No keyring is running on this desktop, so Tarnwell has nowhere safe to keep the password. Sync stays off."
        return qtTrId("sync.problem.noSecretService");
    case SyncProblem::noPassword:
        //: Sync: the keyring has no password for the account
        //% "The keyring holds no password for this account. Enter it in Settings, Sync."
        return qtTrId("sync.problem.noPassword");
    case SyncProblem::secretDenied:
        //: Sync: the keyring stayed locked or refused to give out the password
        //% "The keyring did not give out the password (it may be locked)."
        return qtTrId("sync.problem.secretDenied");
    case SyncProblem::cancelled:
        //: Sync: the pass was stopped because Tarnwell quit or sync was turned off
        //% "The sync was stopped before it finished."
        return qtTrId("sync.problem.cancelled");
    case SyncProblem::network:
        //: Sync: no answer from the server (down, offline, wrong name)
        //% "The server cannot be reached. Tarnwell tries again later."
        return qtTrId("sync.problem.network");
    case SyncProblem::certificate:
        //: Sync: the server's TLS certificate is not trusted
        //% "The server's certificate is not trusted, so nothing was sent to it."
        return qtTrId("sync.problem.certificate");
    case SyncProblem::unauthorized:
        //: Sync: the server refused the user name or password
        //% "The server did not accept the user name or password."
        return qtTrId("sync.problem.unauthorized");
    case SyncProblem::notCalDav:
        //: Sync: the address answers, but it is not a CalDAV server
        //% "This address answers, but not as a CalDAV server."
        return qtTrId("sync.problem.notCalDav");
    case SyncProblem::noTaskCollection:
        //: Sync: a CalDAV server without any calendar that can hold tasks (VTODO)
        //% "The server has no calendar that can hold tasks."
        return qtTrId("sync.problem.noTaskCollection");
    case SyncProblem::server:
        //: Sync: the server refused a request for another reason
        //% "The server refused the sync. Tarnwell tries again later."
        return qtTrId("sync.problem.server");
    case SyncProblem::malformed:
        //: Sync: the server's answer could not be read
        //% "The server's answer could not be read. Tarnwell tries again later."
        return qtTrId("sync.problem.malformed");
    }
    return {};
}

QJsonObject reportJson(const SyncReport &report)
{
    QJsonObject json{{QStringLiteral("ok"), report.ok()},
                     {QStringLiteral("pulled"), report.pulled},
                     {QStringLiteral("pushed"), report.pushed},
                     {QStringLiteral("removed"), report.removed}};
    if (!report.ok()) {
        json.insert(QStringLiteral("error"), problemKey(report.problem));
        json.insert(QStringLiteral("message"), problemText(report.problem));
    }
    if (report.finishedAt.isValid())
        json.insert(QStringLiteral("finishedAt"), report.finishedAt.toUTC().toString(Qt::ISODate));
    return json;
}

QString SyncService::stateKey(State state)
{
    switch (state) {
    case State::unavailable:
        return QStringLiteral("unavailable");
    case State::off:
        return QStringLiteral("off");
    case State::idle:
        return QStringLiteral("idle");
    case State::syncing:
        return QStringLiteral("syncing");
    case State::error:
        return QStringLiteral("error");
    }
    return {};
}

QJsonObject SyncService::statusJson(const SyncAccountStore &accounts, const QString &state, SyncProblem lastProblem)
{
    const sync::SyncAccount account = accounts.account();
    QJsonObject json{{QStringLiteral("state"), state}, {QStringLiteral("enabled"), accounts.enabled()}};
    if (!account.server.isEmpty())
        json.insert(QStringLiteral("server"), account.server.toString());
    if (!account.user.isEmpty())
        json.insert(QStringLiteral("user"), account.user);
    if (!account.collection.isEmpty())
        json.insert(QStringLiteral("collection"), account.collection.toString());
    if (const QDateTime last = accounts.lastSyncAt(); last.isValid())
        json.insert(QStringLiteral("lastSync"), last.toUTC().toString(Qt::ISODate));
    if (lastProblem != SyncProblem::none) {
        json.insert(QStringLiteral("lastError"), problemKey(lastProblem));
        json.insert(QStringLiteral("lastErrorText"), problemText(lastProblem));
    }
    return json;
}

QJsonObject SyncService::statusJson() const
{
    QJsonObject json = statusJson(m_services.accounts, stateKey(state()), lastProblem());
    json.insert(QStringLiteral("available"), available());
    json.insert(QStringLiteral("enabled"), enabled());
    return json;
}

SyncService::SyncService(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &SyncService::tick);
    connect(&m_services.accounts, &SyncAccountStore::changed, this, &SyncService::stateChanged);
}

SyncService::~SyncService()
{
    shutdown();
}

QString SyncService::secretKey(const sync::SyncAccount &account)
{
    return QStringLiteral("%1@%2").arg(account.user, account.server.toString());
}

sync::SyncAccount SyncService::account() const
{
    return m_services.accounts.account();
}

bool SyncService::enabled() const
{
    return available() && m_services.accounts.enabled() && account().isComplete();
}

QDateTime SyncService::lastSyncAt() const
{
    return m_services.accounts.lastSyncAt();
}

SyncProblem SyncService::lastProblem() const
{
    if (!m_services.pass)
        return SyncProblem::notAvailable;
    if (!m_services.secrets)
        return SyncProblem::noSecretService;
    return problemFromKey(m_services.accounts.lastError());
}

SyncService::State SyncService::state() const
{
    if (!m_services.pass)
        return State::unavailable;
    if (m_running)
        return State::syncing;
    if (!enabled())
        return State::off;
    return lastProblem() == SyncProblem::none ? State::idle : State::error;
}

QString SyncService::secretStoreName() const
{
    return m_services.secrets ? m_services.secrets->name() : QString();
}

void SyncService::start()
{
    if (m_started)
        return;
    m_started = true;
    if (!m_services.pass)
        qCInfo(lcServices).noquote() << QStringLiteral("Sync: this build has no sync engine; sync stays off");
    else if (!m_services.secrets)
        qCInfo(lcServices).noquote() << QStringLiteral("Sync: no secret service; sync stays off");
    m_periodicDue = m_services.clock(); // the pass at start
    tick();
}

void SyncService::shutdown()
{
    const bool wasRunning = m_running;
    m_started = false;
    m_timer.stop();
    m_manualRequested = false;
    if (wasRunning) {
        ++m_generation;
        m_services.pass->cancel();
        m_running = false;
        qCInfo(lcServices).noquote() << QStringLiteral("Sync: cancelled the running pass");
    }
    SyncReport cancelled;
    cancelled.problem = SyncProblem::cancelled;
    cancelled.finishedAt = m_services.clock();
    const auto waiting = std::exchange(m_answering, {}) + std::exchange(m_waiting, {});
    for (const Finished &finished : waiting)
        finished(cancelled);
    if (wasRunning)
        Q_EMIT stateChanged();
}

bool SyncService::canRunAutomatically() const
{
    return m_started && enabled() && !m_blocked;
}

QDateTime SyncService::nextAutomaticRun() const
{
    if (!canRunAutomatically())
        return {};
    QDateTime due = earlier(m_changeDue, m_periodicDue);
    if (m_retryAt.isValid() && due.isValid())
        due = std::max(due, m_retryAt);
    return due;
}

void SyncService::arm()
{
    m_timer.stop();
    if (!m_started || m_running)
        return;
    if (m_manualRequested) {
        m_timer.start(0);
        return;
    }
    const QDateTime due = nextAutomaticRun();
    if (!due.isValid())
        return;
    const qint64 wait = std::clamp<qint64>(m_services.clock().msecsTo(due), 0, std::numeric_limits<int>::max());
    m_timer.start(int(wait));
}

void SyncService::noteLocalChange()
{
    if (m_services.pass && m_services.pass->isSavingServerChanges())
        return; // the pass's own writes, not changes to send
    if (m_running) {
        m_changedDuringPass = true;
        return;
    }
    const QDateTime now = m_services.clock();
    if (!m_firstChangeAt.isValid())
        m_firstChangeAt = now;
    m_changeDue = std::min(now.addMSecs(Constants::changeDelay.count()),
                           m_firstChangeAt.addMSecs(Constants::changeDelayCap.count()));
    arm();
}

void SyncService::syncNow(Finished finished)
{
    if (finished)
        m_waiting.append(std::move(finished));
    SyncProblem refusal = SyncProblem::none;
    if (!m_services.pass)
        refusal = SyncProblem::notAvailable;
    else if (!m_services.secrets)
        refusal = SyncProblem::noSecretService;
    else if (!enabled())
        refusal = SyncProblem::off;
    if (refusal != SyncProblem::none) {
        SyncReport report;
        report.problem = refusal;
        report.finishedAt = m_services.clock();
        for (const Finished &waiting : std::exchange(m_waiting, {}))
            waiting(report);
        return;
    }
    // A running pass may have read the store before the change the user
    // wants synced: the request is for the next pass.
    m_manualRequested = true;
    tick();
}

void SyncService::tick()
{
    if (!m_started || m_running)
        return;
    if (m_manualRequested) {
        begin();
        return;
    }
    const QDateTime due = nextAutomaticRun();
    if (due.isValid() && due <= m_services.clock()) {
        begin();
        return;
    }
    arm();
}

void SyncService::begin()
{
    const sync::SyncAccount current = account();
    m_running = true;
    m_manualRequested = false;
    m_changedDuringPass = false;
    m_changeDue = {};
    m_firstChangeAt = {};
    m_timer.stop();
    m_answering += std::exchange(m_waiting, {});
    const quint64 generation = ++m_generation;
    Q_EMIT stateChanged();

    QPointer<SyncService> self(this);
    m_services.secrets->read(
        secretKey(current), [self, generation, current](const SecretStore::Result &secret) {
            if (!self || self->m_generation != generation)
                return;
            if (!secret.ok()) {
                qCInfo(lcServices).noquote()
                    << QStringLiteral("Sync: the password could not be read: %1").arg(secret.detail);
                SyncReport report;
                report.problem = problemFor(secret);
                report.finishedAt = self->m_services.clock();
                self->finish(report);
                return;
            }
            qCInfo(lcServices).noquote() << QStringLiteral("Sync: pass started");
            self->m_services.pass->run(current, secret.password, [self, generation](const sync::SyncOutcome &outcome) {
                if (!self || self->m_generation != generation)
                    return;
                SyncReport report;
                report.problem = problemFor(outcome.status.error);
                report.pulled = outcome.pulled;
                report.pushed = outcome.pushed;
                report.removed = outcome.removed;
                report.finishedAt = outcome.finishedAt.isValid() ? outcome.finishedAt : self->m_services.clock();
                if (report.ok())
                    qCInfo(lcServices).noquote() << QStringLiteral("Sync: pass finished: %1 in, %2 out, %3 removed")
                                                        .arg(report.pulled)
                                                        .arg(report.pushed)
                                                        .arg(report.removed);
                else
                    qCInfo(lcServices).noquote() << QStringLiteral("Sync: pass failed (%1): %2")
                                                        .arg(problemKey(report.problem), outcome.status.detail);
                self->finish(report);
            });
        });
}

void SyncService::settle(SyncProblem problem)
{
    const QDateTime now = m_services.clock();
    m_periodicDue = now.addMSecs(Constants::period.count());
    if (problem == SyncProblem::none) {
        m_failures = 0;
        m_retryAt = {};
        m_blocked = false;
    } else if (needsTheUser(problem)) {
        m_blocked = true;
        qCInfo(lcServices).noquote()
            << QStringLiteral("Sync: no more automatic passes until the account changes (%1)").arg(problemKey(problem));
    } else if (problem != SyncProblem::cancelled) {
        // Down or refusing: 30 s, 1 min, 2 min, ... up to 30 min.
        const int doublings = std::min(m_failures++, 16);
        const qint64 wait =
            std::min<qint64>(Constants::firstRetry.count() << doublings, Constants::longestRetry.count());
        m_retryAt = now.addMSecs(wait);
        qCInfo(lcServices).noquote() << QStringLiteral("Sync: trying again in %1 s").arg(wait / 1000);
    }
    if (std::exchange(m_changedDuringPass, false)) {
        m_firstChangeAt = now;
        m_changeDue = now.addMSecs(Constants::changeDelay.count());
    }
}

void SyncService::finish(const SyncReport &report)
{
    m_running = false;
    settle(report.problem);
    if (report.ok())
        m_services.accounts.recordPass(report.finishedAt, QString());
    else if (report.problem != SyncProblem::cancelled)
        m_services.accounts.recordError(problemKey(report.problem));
    for (const Finished &finished : std::exchange(m_answering, {}))
        finished(report);
    Q_EMIT passFinished(report);
    Q_EMIT stateChanged();
    arm();
}

void SyncService::setAccount(const sync::SyncAccount &account, const QString &password, Finished done)
{
    const auto refuse = [this, &done](SyncProblem problem) {
        SyncReport report;
        report.problem = problem;
        report.finishedAt = m_services.clock();
        if (done)
            done(report);
    };
    if (!m_services.pass)
        return refuse(SyncProblem::notAvailable);
    if (!m_services.secrets)
        return refuse(SyncProblem::noSecretService);
    if (!account.isComplete())
        return refuse(SyncProblem::off);

    QPointer<SyncService> self(this);
    const auto commit = [self, account, done] {
        if (!self)
            return;
        const sync::SyncAccount old = self->account();
        if (old.isComplete() && secretKey(old) != secretKey(account))
            self->m_services.secrets->remove(secretKey(old), [](const SecretStore::Result &) {});
        if (self->m_running) {
            // The pass works for the old account: it is abandoned.
            ++self->m_generation;
            self->m_services.pass->cancel();
            self->m_running = false;
            SyncReport cancelled;
            cancelled.problem = SyncProblem::cancelled;
            for (const Finished &finished : std::exchange(self->m_answering, {}))
                finished(cancelled);
        }
        self->m_services.accounts.setAccount(account, true);
        self->m_services.accounts.recordError(QString());
        self->m_blocked = false;
        self->m_failures = 0;
        self->m_retryAt = {};
        self->m_periodicDue = self->m_services.clock();
        qCInfo(lcServices).noquote() << QStringLiteral("Sync: turned on for %1").arg(account.server.host());
        SyncReport report;
        report.finishedAt = self->m_services.clock();
        if (done)
            done(report);
        Q_EMIT self->stateChanged();
        self->tick();
    };
    if (password.isEmpty())
        return commit();
    m_services.secrets->write(secretKey(account), password, [self, commit, done](const SecretStore::Result &result) {
        if (!self)
            return;
        if (result.ok())
            return commit();
        qCInfo(lcServices).noquote() << QStringLiteral("Sync: the password could not be stored: %1").arg(result.detail);
        SyncReport report;
        report.problem = problemFor(result);
        report.finishedAt = self->m_services.clock();
        if (done)
            done(report);
    });
}

void SyncService::turnOff(bool removeLocalCopies)
{
    if (!m_services.pass)
        return;
    if (m_running) {
        ++m_generation;
        m_services.pass->cancel();
        m_running = false;
        SyncReport cancelled;
        cancelled.problem = SyncProblem::cancelled;
        cancelled.finishedAt = m_services.clock();
        for (const Finished &finished : std::exchange(m_answering, {}))
            finished(cancelled);
    }
    m_services.pass->forget(removeLocalCopies);
    const sync::SyncAccount current = account();
    if (m_services.secrets && current.isComplete())
        m_services.secrets->remove(secretKey(current), [](const SecretStore::Result &result) {
            if (!result.ok() && result.status != SecretStore::Result::Status::notFound)
                qCInfo(lcServices).noquote()
                    << QStringLiteral("Sync: the password could not be removed: %1").arg(result.detail);
        });
    m_services.accounts.setEnabled(false);
    m_services.accounts.recordError(QString());
    m_changeDue = {};
    m_firstChangeAt = {};
    m_retryAt = {};
    m_blocked = false;
    m_failures = 0;
    qCInfo(lcServices).noquote() << (removeLocalCopies
                                         ? QStringLiteral("Sync: turned off; the synced tasks here were removed")
                                         : QStringLiteral("Sync: turned off; the synced tasks here were kept"));
    Q_EMIT stateChanged();
    arm();
}

void SyncService::readPassword(std::function<void(const QString &, SyncProblem)> done)
{
    if (!m_services.secrets)
        return done(QString(), SyncProblem::noSecretService);
    m_services.secrets->read(secretKey(account()),
                             [done](const SecretStore::Result &result) { done(result.password, problemFor(result)); });
}

} // namespace tarnwell

#include "SyncSettingsModel.h"

#include "services/SyncService.h"

#include <QLocale>
#include <QPointer>
#include <QVariantMap>

namespace tarnwell {

namespace {

QString foundText(int count)
{
    //: Settings, Sync: after "Find calendars". %n: how many calendars hold tasks
    //% "%n calendar(s) for tasks found. Choose one below."
    return qtTrId("settings.sync.found", count);
}

} // namespace

SyncSettingsModel::SyncSettingsModel(SyncService *sync, Discover discover, QObject *parent)
    : QObject(parent)
    , m_sync(sync)
    , m_discover(std::move(discover))
{
    if (!m_sync)
        return;
    connect(m_sync, &SyncService::stateChanged, this, &SyncSettingsModel::changed);
    const sync::SyncAccount account = m_sync->account();
    m_collection = account.collection.toString();
    if (account.collection.isValid())
        m_collections.append({account.collection, {}, {}, {}}); // shown by its path until found again
}

bool SyncSettingsModel::available() const
{
    return m_sync && m_sync->available() && m_discover;
}

QString SyncSettingsModel::unavailableText() const
{
    if (available())
        return {};
    return problemText(m_sync && m_discover ? m_sync->lastProblem() : SyncProblem::notAvailable);
}

bool SyncSettingsModel::syncOn() const
{
    return available() && m_sync->enabled();
}

bool SyncSettingsModel::syncing() const
{
    return m_sync && m_sync->state() == SyncService::State::syncing;
}

QString SyncSettingsModel::server() const
{
    return m_sync ? m_sync->account().server.toString() : QString();
}

QString SyncSettingsModel::user() const
{
    return m_sync ? m_sync->account().user : QString();
}

QString SyncSettingsModel::stateText() const
{
    if (!m_sync)
        return problemText(SyncProblem::notAvailable);
    switch (m_sync->state()) {
    case SyncService::State::unavailable:
        return problemText(SyncProblem::notAvailable);
    case SyncService::State::off:
        //: Settings, Sync: the state line while sync is off
        //% "Sync is off. Tasks stay on this computer only."
        return qtTrId("settings.sync.state.off");
    case SyncService::State::idle:
        //: Settings, Sync: the state line while sync is on and the last pass went through
        //% "Sync is on. Changes go to the server a few seconds after you make them."
        return qtTrId("settings.sync.state.idle");
    case SyncService::State::syncing:
        //: Settings, Sync: the state line while a pass runs
        //% "Syncing…"
        return qtTrId("settings.sync.state.syncing");
    case SyncService::State::error:
        //: Settings, Sync: the state line when the last pass failed (the reason is shown under it)
        //% "Sync is on, but the last sync failed."
        return qtTrId("settings.sync.state.error");
    }
    return {};
}

QString SyncSettingsModel::lastSyncText() const
{
    const QDateTime last = m_sync ? m_sync->lastSyncAt() : QDateTime();
    if (!last.isValid())
        //: Settings, Sync: no pass has gone through yet
        //% "Not synced yet"
        return qtTrId("settings.sync.last.never");
    //: Settings, Sync: %1 is the date and time of the last pass that went through
    //% "Last synced %1"
    return qtTrId("settings.sync.last").arg(QLocale().toString(last.toLocalTime(), QLocale::ShortFormat));
}

QString SyncSettingsModel::errorText() const
{
    if (!available() || m_sync->state() != SyncService::State::error)
        return {};
    return problemText(m_sync->lastProblem());
}

QString SyncSettingsModel::keyringText() const
{
    if (!available())
        return {};
    //: Settings, Sync: under the password field. %1 names the keyring ("Secret Service", "KWallet")
    //% "Kept in the desktop's keyring (%1), never in Tarnwell's files."
    return qtTrId("settings.sync.password.caption").arg(m_sync->secretStoreName());
}

QVariantList SyncSettingsModel::collections() const
{
    QVariantList list;
    for (const auto &collection : m_collections) {
        const QString name = collection.displayName.isEmpty() ? collection.url.path() : collection.displayName;
        list.append(QVariantMap{{QStringLiteral("value"), collection.url.toString()}, {QStringLiteral("text"), name}});
    }
    return list;
}

void SyncSettingsModel::setCollection(const QString &url)
{
    if (url == m_collection)
        return;
    m_collection = url;
    Q_EMIT collectionsChanged();
}

void SyncSettingsModel::setMessage(const QString &message)
{
    m_message = message;
    Q_EMIT collectionsChanged();
}

QUrl SyncSettingsModel::serverUrl(const QString &typed)
{
    const QString text = typed.trimmed();
    if (text.isEmpty())
        return {};
    QUrl url(text.contains(QLatin1String("://")) ? text : QStringLiteral("https://") + text);
    if (!url.isValid() || url.host().isEmpty() ||
        (url.scheme() != QLatin1String("https") && url.scheme() != QLatin1String("http")))
        return {};
    return url;
}

void SyncSettingsModel::findCalendars(const QString &server, const QString &user, const QString &password)
{
    const QUrl url = serverUrl(server);
    if (!url.isValid() || user.trimmed().isEmpty()) {
        //: Settings, Sync: "Find calendars" without a usable address or user name
        //% "Enter the server's address and your user name first."
        setMessage(qtTrId("settings.sync.needAddress"));
        return;
    }
    if (!available())
        return;
    if (!password.isEmpty() || !syncOn())
        return discover(url, user.trimmed(), password);
    QPointer<SyncSettingsModel> self(this);
    m_sync->readPassword([self, url, user](const QString &stored, SyncProblem problem) {
        if (!self)
            return;
        if (problem != SyncProblem::none)
            return self->setMessage(problemText(problem));
        self->discover(url, user.trimmed(), stored);
    });
}

void SyncSettingsModel::discover(const QUrl &server, const QString &user, const QString &password)
{
    const quint64 request = ++m_request;
    m_busy = true;
    //: Settings, Sync: while the server is asked for its calendars
    //% "Looking for calendars…"
    setMessage(qtTrId("settings.sync.finding"));
    QPointer<SyncSettingsModel> self(this);
    m_discover(server, user, password,
               [self, request](const sync::CalDavStatus &status, const QList<sync::CalDavCollection> &found) {
                   if (!self || request != self->m_request)
                       return;
                   self->m_busy = false;
                   if (!status.ok()) {
                       self->setMessage(problemText(problemFor(status.error)));
                       return;
                   }
                   self->m_collections = found;
                   const bool kept = std::any_of(found.begin(), found.end(), [&](const sync::CalDavCollection &c) {
                       return c.url.toString() == self->m_collection;
                   });
                   if (!kept)
                       self->m_collection = found.isEmpty() ? QString() : found.first().url.toString();
                   self->setMessage(found.isEmpty() ? problemText(SyncProblem::noTaskCollection)
                                                    : foundText(int(found.size())));
               });
}

void SyncSettingsModel::turnOn(const QString &server, const QString &user, const QString &password)
{
    const sync::SyncAccount account{serverUrl(server), user.trimmed(), QUrl(m_collection)};
    if (!account.isComplete() || m_collection.isEmpty()) {
        //: Settings, Sync: "Turn on sync" before a calendar was chosen
        //% "Find the server's calendars and choose one first."
        setMessage(qtTrId("settings.sync.needCalendar"));
        return;
    }
    if (!available())
        return;
    QPointer<SyncSettingsModel> self(this);
    m_sync->setAccount(account, password, [self](const SyncReport &report) {
        if (self)
            self->setMessage(report.ok() ? QString() : problemText(report.problem));
    });
}

void SyncSettingsModel::syncNow()
{
    if (available())
        m_sync->syncNow();
}

void SyncSettingsModel::turnOff(bool removeLocalCopies)
{
    if (available())
        m_sync->turnOff(removeLocalCopies);
    setMessage(QString());
}

void SyncSettingsModel::retranslate()
{
    Q_EMIT changed();
    Q_EMIT collectionsChanged();
}

} // namespace tarnwell

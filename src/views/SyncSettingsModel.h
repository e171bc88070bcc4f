#pragma once

#include "sync/SyncTypes.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace tarnwell {

class SyncService;

// The Sync tab of the settings: the account's fields, the calendars a
// server offers for tasks, the state of sync and its last error. The
// password passes through to the secret store and is never kept here.
class SyncSettingsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool available READ available NOTIFY changed)
    Q_PROPERTY(QString unavailableText READ unavailableText NOTIFY changed)
    Q_PROPERTY(bool syncOn READ syncOn NOTIFY changed)
    Q_PROPERTY(bool syncing READ syncing NOTIFY changed)
    Q_PROPERTY(QString server READ server NOTIFY changed)
    Q_PROPERTY(QString user READ user NOTIFY changed)
    Q_PROPERTY(QString stateText READ stateText NOTIFY changed)
    Q_PROPERTY(QString lastSyncText READ lastSyncText NOTIFY changed)
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed)
    Q_PROPERTY(QString keyringText READ keyringText NOTIFY changed)
    Q_PROPERTY(QVariantList collections READ collections NOTIFY collectionsChanged)
    Q_PROPERTY(QString collection READ collection WRITE setCollection NOTIFY collectionsChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY collectionsChanged)
    Q_PROPERTY(QString message READ message NOTIFY collectionsChanged)

public:
    using Discovered = std::function<void(const sync::CalDavStatus &, const QList<sync::CalDavCollection> &)>;
    // Finds the collections that hold to-dos (CalDavClient::discover with these credentials).
    using Discover =
        std::function<void(const QUrl &server, const QString &user, const QString &password, Discovered done)>;

    // Without a sync service (a build or a test without one) the tab says
    // that sync is not available.
    SyncSettingsModel(SyncService *sync, Discover discover, QObject *parent = nullptr);

    bool available() const;
    QString unavailableText() const;
    bool syncOn() const;
    bool syncing() const;
    QString server() const;
    QString user() const;
    QString stateText() const;
    QString lastSyncText() const;
    QString errorText() const;
    QString keyringText() const;
    QVariantList collections() const;
    QString collection() const { return m_collection; }
    void setCollection(const QString &url);
    bool busy() const { return m_busy; }
    QString message() const { return m_message; }

    // What the user typed as a server address: https:// unless they said otherwise.
    static QUrl serverUrl(const QString &typed);

    // An empty password: the one in the keyring (when sync is on).
    Q_INVOKABLE void findCalendars(const QString &server, const QString &user, const QString &password);
    // Stores the password in the keyring and turns sync on for the chosen calendar.
    Q_INVOKABLE void turnOn(const QString &server, const QString &user, const QString &password);
    Q_INVOKABLE void syncNow();
    Q_INVOKABLE void turnOff(bool removeLocalCopies);
    void retranslate();

Q_SIGNALS:
    void changed();
    void collectionsChanged();

private:
    void discover(const QUrl &server, const QString &user, const QString &password);
    void setMessage(const QString &message);

    SyncService *m_sync;
    Discover m_discover;
    QList<sync::CalDavCollection> m_collections;
    QString m_collection;
    QString m_message;
    bool m_busy = false;
    quint64 m_request = 0;
};

} // namespace tarnwell

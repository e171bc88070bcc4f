#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;

namespace tarnwell::sync {

struct DavResponse;

// What went wrong with a request, in the terms the user is told about.
enum class CalDavError {
    none,
    network, // no answer: the server is down, the name does not resolve, the line dropped
    certificate, // the server's certificate was not trusted; nothing was sent
    unauthorized, // wrong user name or password
    notCalDav, // the address answers, but not as a CalDAV server
    noTaskCollection, // a CalDAV server without a collection that holds to-dos
    conflict, // the resource changed on the server since we read it (or exists already)
    notFound,
    invalidSyncToken, // the server forgot our sync token: list everything again
    server, // any other refusal
    malformed, // an answer we could not read
};

struct CalDavStatus
{
    CalDavError error = CalDavError::none;
    int httpStatus = 0;
    QString detail; // for the log: what was asked and what came back
    bool ok() const { return error == CalDavError::none; }
};

// A calendar collection that holds to-dos.
struct CalDavCollection
{
    QUrl url;
    QString displayName;
    QString syncToken; // empty where the server does not offer incremental sync
    QString ctag; // the collection's change tag, where the server has one
};

struct CalDavResource
{
    QUrl url;
    QString etag;
    QByteArray calendarData; // empty when only the etag was asked for
};

// What changed in a collection since a sync token.
struct CalDavChanges
{
    QString syncToken; // the token to ask with next time
    QList<CalDavResource> changed; // url and etag; the data comes with fetch()
    QList<QUrl> removed;
};

// The WebDAV and CalDAV requests Tarnwell's sync needs, over Qt Network on the
// main thread: every call returns at once and answers through its callback.
// Credentials go with every request (Basic authentication; HTTPS is verified
// and never downgraded). Redirects are followed only within the same scheme.
class CalDavClient : public QObject
{
    Q_OBJECT
public:
    template<typename T>
    using Callback = std::function<void(const CalDavStatus &, const T &)>;

    explicit CalDavClient(QNetworkAccessManager &network, QObject *parent = nullptr);

    void setCredentials(const QString &user, const QString &password);

    // From a server address to the collections that hold to-dos: the
    // well-known address, the current user's principal, its calendar home,
    // then the home's calendars.
    void discover(const QUrl &server, Callback<QList<CalDavCollection>> done);
    // The collection's sync token and change tag as they are now.
    void refresh(const QUrl &collection, Callback<CalDavCollection> done);
    // What changed since `syncToken` (everything, for an empty token).
    void changesSince(const QUrl &collection, const QString &syncToken, Callback<CalDavChanges> done);
    // Every resource of the collection with its etag: for servers without
    // incremental sync, and after the server forgot a token.
    void listEtags(const QUrl &collection, Callback<QList<CalDavResource>> done);
    // The resources at `urls` with their data.
    void fetch(const QUrl &collection, const QList<QUrl> &urls, Callback<QList<CalDavResource>> done);
    // Writes a resource: over `etag` when given (If-Match), else only if it
    // does not exist yet (If-None-Match). Answers the new etag where the
    // server tells it.
    void put(const QUrl &url, const QByteArray &calendarData, const QString &etag, Callback<QString> done);
    void remove(const QUrl &url, const QString &etag, Callback<bool> done);

private:
    struct Answer
    {
        CalDavStatus status;
        QByteArray body; // empty when a sink read it
        QString etag;
        QString syncToken; // of a multistatus answer read by a sink
    };
    using Handler = std::function<void(const Answer &)>;
    using ResponseSink = std::function<void(DavResponse &&)>;

    QNetworkRequest request(const QUrl &url) const;
    // With a sink, a successful answer is read as a multistatus while it
    // arrives, each response handed to the sink; the handler comes after the
    // last one (malformed when the body could not be read).
    void send(const QByteArray &verb, const QUrl &url, const QByteArray &body,
              const QList<QPair<QByteArray, QByteArray>> &headers, Handler handler, ResponseSink sink = {},
              int redirects = 0);
    void davQuery(const QByteArray &verb, const QUrl &url, int depth, const QByteArray &body, Handler handler,
                  ResponseSink sink = {});
    void findPrincipal(const QUrl &server, bool triedRoot, Callback<QList<CalDavCollection>> done);
    void findHome(const QUrl &principal, Callback<QList<CalDavCollection>> done);
    void listCollections(const QUrl &home, Callback<QList<CalDavCollection>> done);

    QNetworkAccessManager &m_network;
    QByteArray m_authorization;
};

} // namespace tarnwell::sync

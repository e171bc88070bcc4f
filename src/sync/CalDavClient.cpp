#include "CalDavClient.h"

#include "DavMultistatus.h"
#include "GzipInflater.h"
#include "kit/Logging.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QScopeGuard>
#include <QTimer>

namespace tarnwell::sync {

namespace {

constexpr int maxRedirects = 5;
// A request fails when nothing moves for this long. Generous: a server builds
// a large listing (the first sync-collection of thousands of to-dos) before
// it sends the first byte; Radicale takes over 30 s for 10,000 on a busy machine.
constexpr int timeoutMs = 120000;

const QByteArray propfindPrincipal = QByteArrayLiteral(
    R"(<?xml version="1.0" encoding="utf-8"?><D:propfind xmlns:D="DAV:"><D:prop><D:current-user-principal/></D:prop></D:propfind>)");
const QByteArray propfindHome = QByteArrayLiteral(
    R"(<?xml version="1.0" encoding="utf-8"?><D:propfind xmlns:D="DAV:" xmlns:C="urn:ietf:params:xml:ns:caldav"><D:prop><C:calendar-home-set/></D:prop></D:propfind>)");
const QByteArray propfindCollections = QByteArrayLiteral(
    R"(<?xml version="1.0" encoding="utf-8"?><D:propfind xmlns:D="DAV:" xmlns:C="urn:ietf:params:xml:ns:caldav" xmlns:CS="http://calendarserver.org/ns/"><D:prop><D:resourcetype/><D:displayname/><C:supported-calendar-component-set/><D:sync-token/><CS:getctag/></D:prop></D:propfind>)");
const QByteArray propfindEtags = QByteArrayLiteral(
    R"(<?xml version="1.0" encoding="utf-8"?><D:propfind xmlns:D="DAV:"><D:prop><D:resourcetype/><D:getetag/></D:prop></D:propfind>)");

QByteArray escaped(const QString &text)
{
    return text.toHtmlEscaped().toUtf8();
}

CalDavStatus statusFor(int http, const QString &what)
{
    CalDavStatus s;
    s.httpStatus = http;
    s.detail = what;
    if (http == 401)
        s.error = CalDavError::unauthorized;
    else if (http == 412)
        s.error = CalDavError::conflict;
    else if (http == 404 || http == 410)
        s.error = CalDavError::notFound;
    else if (http < 200 || http >= 300)
        s.error = CalDavError::server;
    return s;
}

// A response's href made absolute against the address that was asked.
QUrl resolved(const QUrl &base, const QString &href)
{
    return base.resolved(QUrl(href));
}

// The answer's status, or "malformed" when its body could not be read.
CalDavStatus readStatus(const CalDavStatus &answered, const DavMultistatus &ms)
{
    if (ms.error.isEmpty())
        return answered;
    return {CalDavError::malformed, answered.httpStatus, ms.error};
}

QUrl asCollection(QUrl url)
{
    if (!url.path().endsWith(u'/'))
        url.setPath(url.path() + u'/');
    return url;
}

// The longest one step of reading an answer keeps the main loop (what the
// sink does with each response included).
constexpr std::chrono::microseconds readStep{2000};
// What the XML reader is given at a time: it decodes it at once, and Qt
// inflates it first when the answer came compressed.
constexpr qsizetype feedBytes = 32 * 1024;

bool isGzip(const QByteArray &contentEncoding)
{
    const QByteArray encoding = contentEncoding.trimmed().toLower();
    return encoding == "gzip" || encoding == "x-gzip";
}

} // namespace

// A multistatus answer read while it arrives, in short steps on the event
// loop: each response goes to the sink as soon as it is read. The answer is
// taken from the reply a piece at a time, and inflated a piece at a time
// when it came compressed (see GzipInflater).
class StreamedAnswer : public QObject
{
public:
    // Why the answer could not be read (empty when it could), and its sync token.
    using Done = std::function<void(const QString &error, const QString &syncToken)>;

    StreamedAnswer(QNetworkReply *source, DavMultistatusReader::ResponseSink sink, QObject *parent)
        : QObject(parent)
        , m_source(source)
        , m_sink(std::move(sink))
        , m_reader([this](DavResponse &&r) { m_sink(std::move(r)); })
    {
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, [this] { step(); });
    }

    DavMultistatusReader::ResponseSink takeSink() { return std::exchange(m_sink, {}); }

    // More of the answer can be read.
    void arrived() { schedule(); }

    // The whole answer is in: `done` is called once it is read (or found
    // broken). The reply is the stream's from now on, read to its end and
    // deleted with the stream.
    void end(Done done)
    {
        if (m_source)
            m_source->setParent(this);
        m_done = std::move(done);
        m_ended = true;
        schedule();
    }

private:
    void schedule()
    {
        if (m_scheduled)
            return;
        m_scheduled = true;
        // A timer, not a posted call: the main loop's due timers and input
        // are served between two steps.
        m_timer.start(0);
    }

    bool sourceHasData() const { return m_source && m_source->bytesAvailable() > 0; }
    bool moreToRead() const { return sourceHasData() || (m_inflater && m_inflater->hasInput()); }

    // The next piece for the XML reader; empty when nothing can be had now.
    QByteArray nextPiece()
    {
        if (!m_encodingKnown && m_source) {
            m_encodingKnown = true;
            const QByteArray encoding = m_source->rawHeader("Content-Encoding").trimmed().toLower();
            if (isGzip(encoding))
                m_inflater = std::make_unique<GzipInflater>();
            else if (!encoding.isEmpty() && encoding != "identity")
                m_error = QStringLiteral("the answer came in an encoding that was not asked for (%1)")
                              .arg(QString::fromLatin1(encoding));
        }
        if (!m_error.isEmpty())
            return {};
        if (!m_inflater)
            return sourceHasData() ? m_source->read(feedBytes) : QByteArray();
        for (;;) {
            QByteArray piece = m_inflater->take(feedBytes);
            if (!m_inflater->error().isEmpty()) {
                m_error = m_inflater->error();
                return {};
            }
            if (!piece.isEmpty() || m_inflater->finished() || !sourceHasData())
                return piece;
            m_inflater->add(m_source->read(feedBytes));
        }
    }

    void step()
    {
        m_scheduled = false;
        if (m_hungry) {
            const QByteArray piece = nextPiece();
            if (!m_error.isEmpty()) {
                finish();
                return;
            }
            if (!piece.isEmpty()) {
                m_reader.addData(piece);
            } else if (m_ended) {
                if (m_inflater && !m_inflater->finished())
                    m_error = QStringLiteral("the compressed answer is cut off");
                m_reader.close();
            } else {
                return; // the next piece, or the end, calls again
            }
            m_hungry = false;
        }
        switch (m_reader.read(readStep)) {
        case DavMultistatusReader::Progress::paused:
            schedule();
            return;
        case DavMultistatusReader::Progress::needData:
            m_hungry = true;
            if (m_ended || moreToRead())
                schedule();
            return;
        case DavMultistatusReader::Progress::finished:
            finish();
            return;
        }
    }

    void finish()
    {
        if (!m_done)
            return; // read to its end (or broken) before the network said so; `end` calls again
        deleteLater();
        std::exchange(m_done, {})(m_error.isEmpty() ? m_reader.error() : m_error, m_reader.syncToken());
    }

    QPointer<QNetworkReply> m_source;
    DavMultistatusReader::ResponseSink m_sink;
    DavMultistatusReader m_reader;
    Done m_done;
    std::unique_ptr<GzipInflater> m_inflater;
    QString m_error; // the body could not be had
    QTimer m_timer;
    bool m_encodingKnown = false;
    bool m_scheduled = false;
    bool m_hungry = true; // the reader used up what it was given
    bool m_ended = false; // the network has delivered all
};

CalDavClient::CalDavClient(QNetworkAccessManager &network, QObject *parent)
    : QObject(parent)
    , m_network(network)
{
}

void CalDavClient::setCredentials(const QString &user, const QString &password)
{
    m_authorization = "Basic " + (user + u':' + password).toUtf8().toBase64();
}

QNetworkRequest CalDavClient::request(const QUrl &url) const
{
    QNetworkRequest r(url);
    // Redirects are followed by hand: Qt would turn a redirected PROPFIND
    // into a GET.
    r.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    r.setTransferTimeout(timeoutMs);
    r.setHeader(QNetworkRequest::UserAgentHeader, QByteArrayLiteral("Tarnwell"));
    if (!m_authorization.isEmpty())
        r.setRawHeader("Authorization", m_authorization);
    return r;
}

void CalDavClient::send(const QByteArray &verb, const QUrl &url, const QByteArray &body,
                        const QList<QPair<QByteArray, QByteArray>> &headers, Handler handler, ResponseSink sink,
                        int redirects)
{
    QNetworkRequest r = request(url);
    for (const auto &[name, value] : headers)
        r.setRawHeader(name, value);
    // Asked for by hand, a compressed answer is left to us to inflate, in
    // steps (see StreamedAnswer).
    const bool askedForGzip = bool(sink);
    if (askedForGzip)
        r.setRawHeader("Accept-Encoding", "gzip");
    QNetworkReply *reply = m_network.sendCustomRequest(r, verb, body);
    const auto succeeded = [reply] {
        const int http = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        return http >= 200 && http < 300;
    };
    // A multistatus answer is read while it arrives; any other stays whole
    // for the handler.
    QPointer<StreamedAnswer> stream;
    if (sink) {
        stream = new StreamedAnswer(reply, std::move(sink), this);
        connect(reply, &QNetworkReply::readyRead, stream, [stream, succeeded] {
            if (succeeded())
                stream->arrived();
        });
    }
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, verb, url, body, headers, handler, stream, succeeded, redirects, askedForGzip] {
                // Deleted later, unless a stream still reads it.
                bool streamed = false;
                const auto release = qScopeGuard([reply, &streamed] {
                    if (!streamed)
                        reply->deleteLater();
                });
                Answer answer;
                const int http = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
                const QString what = QString::fromLatin1(verb) + u' ' + url.toDisplayString(QUrl::RemoveUserInfo);
                const auto dropStream = [stream] {
                    if (stream)
                        stream->deleteLater();
                };
                if (http == 0) {
                    dropStream();
                    const bool tls = reply->error() == QNetworkReply::SslHandshakeFailedError;
                    answer.status.error = tls ? CalDavError::certificate : CalDavError::network;
                    answer.status.detail = what + QStringLiteral(": ") + reply->errorString();
                    handler(answer);
                    return;
                }
                if (http == 301 || http == 302 || http == 303 || http == 307 || http == 308) {
                    const QUrl target = url.resolved(reply->header(QNetworkRequest::LocationHeader).toUrl());
                    // Never from HTTPS to HTTP, and never in circles.
                    if (redirects < maxRedirects && target.isValid() && target.scheme() == url.scheme()) {
                        send(verb, target, body, headers, handler, stream ? stream->takeSink() : ResponseSink(),
                             redirects + 1);
                        dropStream();
                        return;
                    }
                }
                answer.status = statusFor(http, what + QStringLiteral(": HTTP ") + QString::number(http));
                answer.etag = QString::fromUtf8(reply->rawHeader("ETag"));
                if (stream && succeeded()) {
                    if (reply->error() != QNetworkReply::NoError) {
                        // Cut off mid-answer: what was read is not the whole answer.
                        dropStream();
                        answer.status.error = CalDavError::network;
                        answer.status.detail = what + QStringLiteral(": ") + reply->errorString();
                        handler(answer);
                        return;
                    }
                    streamed = true;
                    stream->end([handler, answer](const QString &error, const QString &syncToken) mutable {
                        if (!error.isEmpty())
                            answer.status = {CalDavError::malformed, answer.status.httpStatus,
                                             answer.status.detail + QStringLiteral(": ") + error};
                        answer.syncToken = syncToken;
                        handler(answer);
                    });
                    return;
                }
                dropStream();
                answer.body = reply->readAll();
                // A refusal of a request that asked for gzip itself comes
                // compressed too; it is short.
                if (askedForGzip && isGzip(reply->rawHeader("Content-Encoding"))) {
                    GzipInflater inflater;
                    inflater.add(std::exchange(answer.body, {}));
                    for (QByteArray piece; !(piece = inflater.take(feedBytes)).isEmpty();)
                        answer.body += piece;
                }
                handler(answer);
            });
}

void CalDavClient::davQuery(const QByteArray &verb, const QUrl &url, int depth, const QByteArray &body, Handler handler,
                            ResponseSink sink)
{
    send(verb, url, body, {{"Depth", QByteArray::number(depth)}, {"Content-Type", "application/xml; charset=utf-8"}},
         std::move(handler), std::move(sink));
}

void CalDavClient::discover(const QUrl &server, Callback<QList<CalDavCollection>> done)
{
    // An address with a path of its own is asked first; then the well-known
    // address, then the server's root.
    if (server.path().length() > 1) {
        findPrincipal(server, true, std::move(done));
        return;
    }
    QUrl wellKnown = server;
    wellKnown.setPath(QStringLiteral("/.well-known/caldav"));
    findPrincipal(wellKnown, false, std::move(done));
}

void CalDavClient::findPrincipal(const QUrl &url, bool triedOwnPath, Callback<QList<CalDavCollection>> done)
{
    davQuery("PROPFIND", url, 0, propfindPrincipal, [this, url, triedOwnPath, done](const Answer &answer) {
        if (answer.status.error == CalDavError::unauthorized || answer.status.error == CalDavError::network ||
            answer.status.error == CalDavError::certificate) {
            done(answer.status, {});
            return;
        }
        const DavMultistatus ms = answer.status.ok() ? DavMultistatus::parse(answer.body) : DavMultistatus{};
        for (const DavResponse &r : ms.responses) {
            const QStringList principal = r.props.value(QStringLiteral("current-user-principal")).hrefs;
            if (!principal.isEmpty()) {
                findHome(resolved(url, principal.first()), done);
                return;
            }
        }
        // No principal here: the server's root, then the well-known address.
        if (triedOwnPath) {
            QUrl next = url;
            next.setPath(QStringLiteral("/.well-known/caldav"));
            findPrincipal(next, false, done);
            return;
        }
        if (url.path() != QLatin1String("/")) {
            QUrl root = url;
            root.setPath(QStringLiteral("/"));
            findPrincipal(root, false, done);
            return;
        }
        CalDavStatus status = answer.status;
        status.error = CalDavError::notCalDav;
        done(status, {});
    });
}

void CalDavClient::findHome(const QUrl &principal, Callback<QList<CalDavCollection>> done)
{
    davQuery("PROPFIND", principal, 0, propfindHome, [this, principal, done](const Answer &answer) {
        if (!answer.status.ok()) {
            done(answer.status, {});
            return;
        }
        const DavMultistatus ms = DavMultistatus::parse(answer.body);
        for (const DavResponse &r : ms.responses) {
            const QStringList home = r.props.value(QStringLiteral("calendar-home-set")).hrefs;
            if (!home.isEmpty()) {
                listCollections(asCollection(resolved(principal, home.first())), done);
                return;
            }
        }
        CalDavStatus status = answer.status;
        status.error = CalDavError::notCalDav;
        status.detail += QStringLiteral(" (no calendar home)");
        done(status, {});
    });
}

void CalDavClient::listCollections(const QUrl &home, Callback<QList<CalDavCollection>> done)
{
    davQuery("PROPFIND", home, 1, propfindCollections, [home, done](const Answer &answer) {
        if (!answer.status.ok()) {
            done(answer.status, {});
            return;
        }
        const DavMultistatus ms = DavMultistatus::parse(answer.body);
        if (!ms.error.isEmpty()) {
            done(readStatus(answer.status, ms), {});
            return;
        }
        QList<CalDavCollection> found;
        for (const DavResponse &r : ms.responses) {
            if (!r.props.value(QStringLiteral("resourcetype")).children.contains(QLatin1String("calendar")))
                continue;
            // A calendar that names no components holds every kind.
            const auto set = r.props.constFind(QStringLiteral("supported-calendar-component-set"));
            if (set != r.props.cend() && !set->components.contains(QLatin1String("VTODO")))
                continue;
            CalDavCollection c;
            c.url = asCollection(resolved(home, r.href));
            c.displayName = r.props.value(QStringLiteral("displayname")).text;
            c.syncToken = r.props.value(QStringLiteral("sync-token")).text;
            c.ctag = r.props.value(QStringLiteral("getctag")).text;
            found << c;
        }
        CalDavStatus status = answer.status;
        if (found.isEmpty())
            status.error = CalDavError::noTaskCollection;
        done(status, found);
    });
}

void CalDavClient::refresh(const QUrl &collection, Callback<CalDavCollection> done)
{
    davQuery("PROPFIND", collection, 0, propfindCollections, [collection, done](const Answer &answer) {
        CalDavCollection c;
        c.url = collection;
        if (!answer.status.ok()) {
            done(answer.status, c);
            return;
        }
        const DavMultistatus ms = DavMultistatus::parse(answer.body);
        if (ms.responses.isEmpty()) {
            done({CalDavError::malformed, answer.status.httpStatus, ms.error}, c);
            return;
        }
        const DavResponse &r = ms.responses.first();
        c.displayName = r.props.value(QStringLiteral("displayname")).text;
        c.syncToken = r.props.value(QStringLiteral("sync-token")).text;
        c.ctag = r.props.value(QStringLiteral("getctag")).text;
        done(answer.status, c);
    });
}

void CalDavClient::changesSince(const QUrl &collection, const QString &syncToken, Callback<CalDavChanges> done)
{
    const QByteArray body =
        QByteArrayLiteral(R"(<?xml version="1.0" encoding="utf-8"?><D:sync-collection xmlns:D="DAV:"><D:sync-token>)") +
        escaped(syncToken) +
        QByteArrayLiteral(
            R"(</D:sync-token><D:sync-level>1</D:sync-level><D:prop><D:getetag/></D:prop></D:sync-collection>)");
    // Thousands of members on a first sync: each is taken as it is read.
    auto changes = std::make_shared<CalDavChanges>();
    const auto sink = [collection, changes](DavResponse &&r) {
        const QUrl url = resolved(collection, r.href);
        if (url == collection)
            return;
        if (r.status == 404)
            changes->removed << url;
        else if (const auto etag = r.props.constFind(QStringLiteral("getetag")); etag != r.props.cend())
            changes->changed.append(CalDavResource{url, etag->text, {}});
    };
    davQuery(
        "REPORT", collection, 0, body,
        [done, changes](const Answer &answer) {
            if (!answer.status.ok()) {
                CalDavStatus status = answer.status;
                // RFC 6578: a token the server no longer knows is refused with
                // the valid-sync-token precondition.
                if ((status.httpStatus == 403 || status.httpStatus == 409) && answer.body.contains("valid-sync-token"))
                    status.error = CalDavError::invalidSyncToken;
                done(status, {});
                return;
            }
            changes->syncToken = answer.syncToken;
            done(answer.status, std::exchange(*changes, {}));
        },
        sink);
}

void CalDavClient::listEtags(const QUrl &collection, Callback<QList<CalDavResource>> done)
{
    auto listed = std::make_shared<QList<CalDavResource>>();
    const auto sink = [collection, listed](DavResponse &&r) {
        const QUrl url = resolved(collection, r.href);
        if (url == collection ||
            r.props.value(QStringLiteral("resourcetype")).children.contains(QLatin1String("collection")))
            return;
        listed->append(CalDavResource{url, r.props.value(QStringLiteral("getetag")).text, {}});
    };
    davQuery(
        "PROPFIND", collection, 1, propfindEtags,
        [done, listed](const Answer &answer) {
            if (!answer.status.ok()) {
                done(answer.status, {});
                return;
            }
            done(answer.status, std::exchange(*listed, {}));
        },
        sink);
}

void CalDavClient::fetch(const QUrl &collection, const QList<QUrl> &urls, Callback<QList<CalDavResource>> done)
{
    QByteArray body = QByteArrayLiteral(
        R"(<?xml version="1.0" encoding="utf-8"?><C:calendar-multiget xmlns:D="DAV:" xmlns:C="urn:ietf:params:xml:ns:caldav"><D:prop><D:getetag/><C:calendar-data/></D:prop>)");
    for (const QUrl &url : urls)
        body += "<D:href>" + escaped(url.path(QUrl::FullyEncoded)) + "</D:href>";
    body += "</C:calendar-multiget>";
    auto found = std::make_shared<QList<CalDavResource>>();
    const auto sink = [collection, found](DavResponse &&r) {
        const auto data = r.props.constFind(QStringLiteral("calendar-data"));
        if (data == r.props.cend())
            return;
        found->append(CalDavResource{resolved(collection, r.href), r.props.value(QStringLiteral("getetag")).text,
                                     data->text.toUtf8()});
    };
    davQuery(
        "REPORT", collection, 1, body,
        [done, found](const Answer &answer) {
            if (!answer.status.ok()) {
                done(answer.status, {});
                return;
            }
            done(answer.status, std::exchange(*found, {}));
        },
        sink);
}

void CalDavClient::put(const QUrl &url, const QByteArray &calendarData, const QString &etag, Callback<QString> done)
{
    QList<QPair<QByteArray, QByteArray>> headers{{"Content-Type", "text/calendar; charset=utf-8"}};
    if (etag.isEmpty())
        headers.append(qMakePair(QByteArray("If-None-Match"), QByteArray("*")));
    else
        headers.append(qMakePair(QByteArray("If-Match"), etag.toUtf8()));
    send("PUT", url, calendarData, headers, [done](const Answer &answer) { done(answer.status, answer.etag); });
}

void CalDavClient::remove(const QUrl &url, const QString &etag, Callback<bool> done)
{
    QList<QPair<QByteArray, QByteArray>> headers;
    if (!etag.isEmpty())
        headers.append(qMakePair(QByteArray("If-Match"), etag.toUtf8()));
    send("DELETE", url, {}, headers, [done](const Answer &answer) {
        // Gone already is what was asked for.
        CalDavStatus status = answer.status;
        if (status.error == CalDavError::notFound)
            status.error = CalDavError::none;
        done(status, status.ok());
    });
}

} // namespace tarnwell::sync

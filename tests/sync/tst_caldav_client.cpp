// The CalDAV client against a real server: Radicale on 127.0.0.1 with a
// storage folder of its own, started and stopped by the test.
#include "sync/CalDavClient.h"
#include "sync/DavMultistatus.h"
#include "sync/GzipInflater.h"
#include "support/Radicale.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <optional>

#include <zlib.h>

using namespace tarnwell::sync;

namespace {

QByteArray todo(const QString &uid, const QString &summary)
{
    return QStringLiteral("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tarnwell//Test//EN\r\nBEGIN:VTODO\r\n"
                          "UID:%1\r\nDTSTAMP:20261124T090000Z\r\nSUMMARY:%2\r\nEND:VTODO\r\nEND:VCALENDAR\r\n")
        .arg(uid, summary)
        .toUtf8();
}

QByteArray gzip(const QByteArray &data)
{
    z_stream z{};
    deflateInit2(&z, Z_BEST_SPEED, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    QByteArray out(qsizetype(deflateBound(&z, uLong(data.size()))) + 32, Qt::Uninitialized);
    z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.constData()));
    z.avail_in = uInt(data.size());
    z.next_out = reinterpret_cast<Bytef *>(out.data());
    z.avail_out = uInt(out.size());
    deflate(&z, Z_FINISH);
    out.resize(qsizetype(z.total_out));
    deflateEnd(&z);
    return out;
}

// A listing of `count` resources, as a server sends it.
QByteArray listing(int count)
{
    QByteArray xml = "<?xml version='1.0'?><d:multistatus xmlns:d='DAV:'>";
    for (int i = 0; i < count; ++i)
        xml += "<d:response><d:href>/c/" + QByteArray::number(i) +
            ".ics</d:href><d:propstat><d:prop><d:getetag>\"1\"</d:getetag></d:prop><d:status>HTTP/1.1 200 OK"
            "</d:status></d:propstat></d:response>";
    return xml + "<d:sync-token>t-1</d:sync-token></d:multistatus>";
}

// Answers the first sync-collection report with `head` and `body`; keeps
// the request's head.
struct OneAnswer
{
    QTcpServer server;
    QByteArray request;
    OneAnswer(const QByteArray &head, const QByteArray &body)
    {
        server.listen(QHostAddress::LocalHost);
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this, head, body] {
            QTcpSocket *socket = server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, head, body] {
                request += socket->readAll();
                if (!request.contains("</D:sync-collection>"))
                    return;
                socket->write(head + body);
                socket->flush();
                socket->disconnectFromHost();
            });
        });
    }
    QUrl collection() const { return QUrl(QStringLiteral("http://127.0.0.1:%1/c/").arg(server.serverPort())); }
};

// Waits for a callback of the client and hands back what it said.
template<typename T>
struct Outcome
{
    std::optional<std::pair<CalDavStatus, T>> value;
    CalDavClient::Callback<T> callback()
    {
        return [this](const CalDavStatus &s, const T &v) { value.emplace(s, v); };
    }
    bool wait()
    {
        return QTest::qWaitFor([this] { return value.has_value(); }, 15000);
    }
    const CalDavStatus &status() const { return value->first; }
    const T &result() const { return value->second; }
};

} // namespace

class CalDavClientTest : public QObject
{
    Q_OBJECT

    tarnwell::test::Radicale m_radicale;
    QUrl m_base;
    QNetworkAccessManager m_network;
    const QString user = m_radicale.user;
    const QString password = m_radicale.password;

private Q_SLOTS:
    void initTestCase()
    {
        QString why;
        QVERIFY2(m_radicale.start(&why), qPrintable(why));
        m_base = m_radicale.base();
        QCOMPARE(m_radicale.makeCalendar(m_network, QStringLiteral("/alice/tasks/"), QStringLiteral("Tasks"),
                                         QStringLiteral("VTODO")),
                 201);
        QCOMPARE(m_radicale.makeCalendar(m_network, QStringLiteral("/alice/events/"), QStringLiteral("Events"),
                                         QStringLiteral("VEVENT")),
                 201);
    }

    void cleanupTestCase() { m_radicale.stop(); }

    // From the bare server address to the one collection that holds to-dos,
    // through the well-known redirect, the principal and the calendar home.
    void discoveryFindsTheTaskCollectionOnly()
    {
        CalDavClient client(m_network);
        client.setCredentials(user, password);
        Outcome<QList<CalDavCollection>> found;
        client.discover(m_base, found.callback());
        QVERIFY(found.wait());
        QVERIFY2(found.status().ok(), qPrintable(found.status().detail));
        QCOMPARE(found.result().size(), 1);
        QCOMPARE(found.result().first().url, m_base.resolved(QUrl(QStringLiteral("/alice/tasks/"))));
        QCOMPARE(found.result().first().displayName, QStringLiteral("Tasks"));
        QVERIFY(!found.result().first().syncToken.isEmpty());

        // A wrong password is told as such; so is a server that is not there.
        CalDavClient wrong(m_network);
        wrong.setCredentials(user, QStringLiteral("wrong"));
        Outcome<QList<CalDavCollection>> refused;
        wrong.discover(m_base, refused.callback());
        QVERIFY(refused.wait());
        QCOMPARE(refused.status().error, CalDavError::unauthorized);

        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QUrl gone(QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort()));
        closed.close();
        Outcome<QList<CalDavCollection>> down;
        client.discover(gone, down.callback());
        QVERIFY(down.wait());
        QCOMPARE(down.status().error, CalDavError::network);
    }

    // Writes guarded by etags, the changes since a token, the data of the
    // changed resources, deletes, and a token the server does not know.
    void writesAndIncrementalChanges()
    {
        CalDavClient client(m_network);
        client.setCredentials(user, password);
        const QUrl collection = m_base.resolved(QUrl(QStringLiteral("/alice/tasks/")));
        Outcome<CalDavCollection> start;
        client.refresh(collection, start.callback());
        QVERIFY(start.wait());
        const QString token = start.result().syncToken;

        const QUrl first = collection.resolved(QUrl(QStringLiteral("first.ics")));
        Outcome<QString> created;
        client.put(first, todo(QStringLiteral("first"), QStringLiteral("Write the report")), {}, created.callback());
        QVERIFY(created.wait());
        QVERIFY2(created.status().ok(), qPrintable(created.status().detail));
        QVERIFY(!created.result().isEmpty());

        // Creating it again, or writing over a copy that is no longer the
        // server's, is a conflict and changes nothing.
        Outcome<QString> again;
        client.put(first, todo(QStringLiteral("first"), QStringLiteral("Other")), {}, again.callback());
        QVERIFY(again.wait());
        QCOMPARE(again.status().error, CalDavError::conflict);
        Outcome<QString> updated;
        client.put(first, todo(QStringLiteral("first"), QStringLiteral("Write the final report")), created.result(),
                   updated.callback());
        QVERIFY(updated.wait());
        QVERIFY(updated.status().ok());
        Outcome<QString> stale;
        client.put(first, todo(QStringLiteral("first"), QStringLiteral("Stale")), created.result(), stale.callback());
        QVERIFY(stale.wait());
        QCOMPARE(stale.status().error, CalDavError::conflict);

        Outcome<CalDavChanges> changes;
        client.changesSince(collection, token, changes.callback());
        QVERIFY(changes.wait());
        QVERIFY2(changes.status().ok(), qPrintable(changes.status().detail));
        QCOMPARE(changes.result().changed.size(), 1);
        QCOMPARE(changes.result().changed.first().url, first);
        QVERIFY(changes.result().syncToken != token);

        Outcome<QList<CalDavResource>> fetched;
        client.fetch(collection, {first}, fetched.callback());
        QVERIFY(fetched.wait());
        QCOMPARE(fetched.result().size(), 1);
        QVERIFY(fetched.result().first().calendarData.contains("SUMMARY:Write the final report"));
        QCOMPARE(fetched.result().first().etag, changes.result().changed.first().etag);

        Outcome<QList<CalDavResource>> listed;
        client.listEtags(collection, listed.callback());
        QVERIFY(listed.wait());
        QCOMPARE(listed.result().size(), 1);

        Outcome<bool> removed;
        client.remove(first, fetched.result().first().etag, removed.callback());
        QVERIFY(removed.wait());
        QVERIFY(removed.result());
        Outcome<CalDavChanges> after;
        client.changesSince(collection, changes.result().syncToken, after.callback());
        QVERIFY(after.wait());
        QCOMPARE(after.result().removed, QList<QUrl>{first});
        QVERIFY(after.result().changed.isEmpty());

        Outcome<CalDavChanges> unknown;
        client.changesSince(collection, QStringLiteral("http://radicale.org/ns/sync/unknown"), unknown.callback());
        QVERIFY(unknown.wait());
        QCOMPARE(unknown.status().error, CalDavError::invalidSyncToken);
    }

    // What other servers send that Radicale does not: members' own status,
    // failed propstats beside good ones, foreign namespaces, and bodies that
    // are not multistatus at all. Read in pieces as it arrives, split
    // anywhere, it reads the same; cut short, it is an error.
    void multistatusReadsWhatServersSend()
    {
        const QByteArray body =
            "<?xml version='1.0'?>\n"
            "<d:multistatus xmlns:d='DAV:' xmlns:x='http://example.com/ns' xmlns:cal='urn:ietf:params:xml:ns:caldav'>\n"
            "  <d:response><d:href>/c/a%20b.ics</d:href>\n"
            "    <d:propstat><d:prop><d:getetag>\"1\"</d:getetag><x:color>red</x:color>"
            "<cal:calendar-data>BEGIN:VCALENDAR&#13;\nX-A:&lt;b&gt;</cal:calendar-data></d:prop>"
            "<d:status>HTTP/1.1 200 OK</d:status></d:propstat>\n"
            "    <d:propstat><d:prop><d:displayname/></d:prop><d:status>HTTP/1.1 404 Not "
            "Found</d:status></d:propstat>\n"
            "  </d:response>\n"
            "  <d:response><d:href>/c/</d:href><d:propstat><d:prop><d:resourcetype><d:collection/><cal:calendar/>"
            "</d:resourcetype><d:current-user-principal><d:href>/p/</d:href></d:current-user-principal>"
            "<cal:supported-calendar-component-set><cal:comp name='vtodo'/></cal:supported-calendar-component-set>"
            "</d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response>\n"
            "  <d:response><d:href>/c/b.ics</d:href><d:status>HTTP/1.1 404 Not Found</d:status></d:response>\n"
            "  <d:sync-token>tok-2</d:sync-token>\n"
            "</d:multistatus>";
        const DavMultistatus ms = DavMultistatus::parse(body);
        QVERIFY(ms.error.isEmpty());
        QCOMPARE(ms.syncToken, QStringLiteral("tok-2"));
        QCOMPARE(ms.responses.size(), 3);
        const DavResponse &a = ms.responses.at(0);
        QCOMPARE(a.href, QStringLiteral("/c/a%20b.ics"));
        QCOMPARE(a.props.value(QStringLiteral("getetag")).text, QStringLiteral("\"1\""));
        QCOMPARE(a.props.value(QStringLiteral("calendar-data")).text, QStringLiteral("BEGIN:VCALENDAR\r\nX-A:<b>"));
        QVERIFY(!a.props.contains(QStringLiteral("displayname")));
        QVERIFY(!a.props.contains(QStringLiteral("color")));
        const DavResponse &c = ms.responses.at(1);
        QCOMPARE(c.props.value(QStringLiteral("resourcetype")).children,
                 QStringList({QStringLiteral("collection"), QStringLiteral("calendar")}));
        QCOMPARE(c.props.value(QStringLiteral("current-user-principal")).hrefs, QStringList{QStringLiteral("/p/")});
        QCOMPARE(c.props.value(QStringLiteral("supported-calendar-component-set")).components,
                 QStringList{QStringLiteral("VTODO")});
        QCOMPARE(ms.responses.at(2).status, 404);

        // Every split point, each piece read in the smallest steps there are.
        const auto flat = [](const QList<DavResponse> &responses) {
            QStringList out;
            for (const DavResponse &r : responses) {
                out << r.href + u'|' + QString::number(r.status);
                QStringList keys = r.props.keys();
                keys.sort();
                for (const QString &k : keys) {
                    const DavValue &v = r.props.value(k);
                    out << k + u'=' + v.text + u'|' + v.hrefs.join(u',') + u'|' + v.children.join(u',') + u'|' +
                            v.components.join(u',');
                }
            }
            return out;
        };
        const QStringList whole = flat(ms.responses);
        for (qsizetype cut = 1; cut < body.size(); ++cut) {
            QList<DavResponse> got;
            DavMultistatusReader reader([&got](DavResponse &&r) { got.append(std::move(r)); });
            reader.addData(body.left(cut));
            while (reader.read(std::chrono::microseconds(0)) == DavMultistatusReader::Progress::paused) { }
            reader.addData(body.mid(cut));
            reader.close();
            while (reader.read(std::chrono::microseconds(0)) == DavMultistatusReader::Progress::paused) { }
            QVERIFY2(reader.error().isEmpty(), qPrintable(QString::number(cut)));
            QCOMPARE(flat(got), whole);
            QCOMPARE(reader.syncToken(), QStringLiteral("tok-2"));

            // The same body ending there is never read as a (shorter) answer.
            DavMultistatusReader cutShort;
            cutShort.addData(body.left(cut));
            cutShort.close();
            QCOMPARE(cutShort.read(), DavMultistatusReader::Progress::finished);
            QVERIFY2(!cutShort.error().isEmpty(), qPrintable(QString::number(cut)));
        }

        QVERIFY(!DavMultistatus::parse("<html><body>Hello</body></html>").error.isEmpty());
        QVERIFY(!DavMultistatus::parse("").error.isEmpty());
        QCOMPARE(davStatusCode(QStringLiteral("HTTP/1.1 207 Multi-Status")), 207);
        QCOMPARE(davStatusCode(QStringLiteral("garbage 200")), 0);
    }

    // An answer the server stops sending part way is a failure, never a
    // shorter listing: whether the connection drops before the promised
    // length, or closes where the XML is not finished.
    void answerCutShortIsAnError()
    {
        const QByteArray xml = "<?xml version='1.0'?><d:multistatus xmlns:d='DAV:'><d:response><d:href>/c/a.ics"
                               "</d:href><d:propstat><d:prop><d:getetag>\"1\"</d:getetag></d:prop><d:status>HTTP/1.1 "
                               "200 OK</d:status></d:propstat></d:response><d:response><d:href>/c/b.ics</d:href>";
        const QList<QByteArray> heads{
            "HTTP/1.1 207 Multi-Status\r\nContent-Type: application/xml\r\nContent-Length: 100000\r\n\r\n",
            "HTTP/1.1 207 Multi-Status\r\nContent-Type: application/xml\r\nConnection: close\r\n\r\n"};
        const QList<CalDavError> expected{CalDavError::network, CalDavError::malformed};
        for (int i = 0; i < heads.size(); ++i) {
            OneAnswer server(heads.at(i), xml);
            CalDavClient client(m_network);
            client.setCredentials(user, password);
            Outcome<CalDavChanges> changes;
            client.changesSince(server.collection(), {}, changes.callback());
            QVERIFY(changes.wait());
            QCOMPARE(changes.status().error, expected.at(i));
            QVERIFY(changes.result().changed.isEmpty());
        }
    }

    // Long answers are asked for compressed and inflated here a bounded
    // piece at a time: the whole listing arrives; a damaged or cut-off body
    // is an error, never a shorter listing.
    void compressedAnswersAreInflatedInPieces()
    {
        const QByteArray xml = listing(3000);
        const QByteArray packed = gzip(xml);
        QVERIFY(packed.size() * 4 < xml.size());

        GzipInflater inflater;
        inflater.add(packed);
        QByteArray whole;
        for (QByteArray piece; !(piece = inflater.take(32 * 1024)).isEmpty();) {
            QVERIFY(piece.size() <= 32 * 1024);
            whole += piece;
        }
        QVERIFY(inflater.finished());
        QCOMPARE(whole, xml);

        QByteArray damaged = packed;
        for (qsizetype at = damaged.size() / 2; at < damaged.size() / 2 + 64; ++at)
            damaged[at] = char(~damaged.at(at));
        const QByteArray cut = packed.left(packed.size() / 2);
        const QList<QByteArray> bodies{packed, damaged, cut};
        const QList<CalDavError> expected{CalDavError::none, CalDavError::malformed, CalDavError::malformed};
        for (int i = 0; i < bodies.size(); ++i) {
            OneAnswer server("HTTP/1.1 207 Multi-Status\r\nContent-Type: application/xml\r\nContent-Encoding: "
                             "gzip\r\nContent-Length: " +
                                 QByteArray::number(bodies.at(i).size()) + "\r\n\r\n",
                             bodies.at(i));
            CalDavClient client(m_network);
            Outcome<CalDavChanges> changes;
            client.changesSince(server.collection(), {}, changes.callback());
            QVERIFY(changes.wait());
            QVERIFY(server.request.toLower().contains("accept-encoding: gzip"));
            QCOMPARE(changes.status().error, expected.at(i));
            QCOMPARE(changes.result().changed.size(), i == 0 ? 3000 : 0);
        }
    }
};

QTEST_GUILESS_MAIN(CalDavClientTest)
#include "tst_caldav_client.moc"

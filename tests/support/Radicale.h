// A Radicale CalDAV server on 127.0.0.1 with a storage folder and one user
// of its own, started and stopped by the test.
#pragma once

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

class Radicale
{
public:
    const QString user = QStringLiteral("alice");
    const QString password = QStringLiteral("correct horse");

    ~Radicale()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }

    // Call inside a test function (it uses QVERIFY).
    void start()
    {
        const QString radicale = QStandardPaths::findExecutable(QStringLiteral("radicale"));
        QVERIFY2(!radicale.isEmpty(), "radicale is missing (scripts/setup.sh installs it)");
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost));
        const quint16 port = probe.serverPort();
        probe.close();
        QFile users(m_dir.filePath(QStringLiteral("users")));
        QVERIFY(users.open(QIODevice::WriteOnly));
        users.write((user + u':' + password + u'\n').toUtf8());
        users.close();
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(radicale,
                       {QStringLiteral("--server-hosts"), QStringLiteral("127.0.0.1:%1").arg(port),
                        QStringLiteral("--storage-filesystem-folder"), m_dir.filePath(QStringLiteral("store")),
                        QStringLiteral("--auth-type"), QStringLiteral("htpasswd"),
                        QStringLiteral("--auth-htpasswd-filename"), users.fileName(),
                        QStringLiteral("--auth-htpasswd-encryption"), QStringLiteral("plain"),
                        QStringLiteral("--rights-type"), QStringLiteral("owner_only"),
                        QStringLiteral("--logging-level"), QStringLiteral("warning")});
        QVERIFY(m_server.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                QTcpSocket s;
                s.connectToHost(QHostAddress::LocalHost, port);
                return s.waitForConnected(200);
            }(),
            20000);
        base = QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(port));
    }

    // MKCALENDAR, as another client would make a collection.
    void makeCalendar(const QString &path, const QString &name, const QString &component)
    {
        QNetworkRequest r(base.resolved(QUrl(path)));
        r.setRawHeader("Authorization", "Basic " + (user + u':' + password).toUtf8().toBase64());
        r.setRawHeader("Content-Type", "application/xml");
        const QByteArray body =
            QStringLiteral("<?xml version='1.0'?><C:mkcalendar xmlns:D='DAV:' xmlns:C='urn:ietf:params:xml:ns:caldav'>"
                           "<D:set><D:prop><D:displayname>%1</D:displayname><C:supported-calendar-component-set>"
                           "<C:comp name='%2'/></C:supported-calendar-component-set></D:prop></D:set></C:mkcalendar>")
                .arg(name, component)
                .toUtf8();
        QNetworkReply *reply = m_network.sendCustomRequest(r, "MKCALENDAR", body);
        QTRY_VERIFY_WITH_TIMEOUT(reply->isFinished(), 15000);
        QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 201);
        reply->deleteLater();
    }

    QUrl base;

private:
    QTemporaryDir m_dir;
    QProcess m_server;
    QNetworkAccessManager m_network;
};

#pragma once

// A real CalDAV server for tests: Radicale on 127.0.0.1 with a storage
// folder of its own and one user, started and stopped by the test. Include
// only in tests that link Qt6::Network and Qt6::Test.

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

namespace tarnwell::test {

class Radicale
{
public:
    const QString user = QStringLiteral("alice");
    const QString password = QStringLiteral("correct horse");

    ~Radicale() { stop(); }

    // Starts the server (again on the same port and folder after a stop);
    // false with the reason in `why`.
    bool start(QString *why)
    {
        const QString radicale = QStandardPaths::findExecutable(QStringLiteral("radicale"));
        if (radicale.isEmpty()) {
            *why = QStringLiteral("radicale is missing (scripts/setup.sh installs it)");
            return false;
        }
        if (m_port == 0) {
            QTcpServer probe; // a port nobody holds right now
            if (!probe.listen(QHostAddress::LocalHost)) {
                *why = QStringLiteral("no free port");
                return false;
            }
            m_port = probe.serverPort();
            probe.close();
            QFile users(m_dir.filePath(QStringLiteral("users")));
            if (!users.open(QIODevice::WriteOnly)) {
                *why = QStringLiteral("cannot write the users file");
                return false;
            }
            users.write((user + u':' + password + u'\n').toUtf8());
        }
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(radicale,
                       {QStringLiteral("--server-hosts"), QStringLiteral("127.0.0.1:%1").arg(m_port),
                        QStringLiteral("--storage-filesystem-folder"), m_dir.filePath(QStringLiteral("store")),
                        QStringLiteral("--auth-type"), QStringLiteral("htpasswd"),
                        QStringLiteral("--auth-htpasswd-filename"), m_dir.filePath(QStringLiteral("users")),
                        QStringLiteral("--auth-htpasswd-encryption"), QStringLiteral("plain"),
                        QStringLiteral("--rights-type"), QStringLiteral("owner_only"),
                        QStringLiteral("--logging-level"), QStringLiteral("warning")});
        if (!m_server.waitForStarted()) {
            *why = QStringLiteral("radicale did not start");
            return false;
        }
        const bool up = QTest::qWaitFor(
            [this] {
                QTcpSocket s;
                s.connectToHost(QHostAddress::LocalHost, m_port);
                return s.waitForConnected(200);
            },
            20000);
        if (!up)
            *why = QStringLiteral("radicale does not answer on port %1").arg(m_port);
        return up;
    }

    void stop()
    {
        if (m_server.state() == QProcess::NotRunning)
            return;
        m_server.terminate();
        m_server.waitForFinished();
    }
    // As a crash: no chance to finish what it is answering.
    void kill()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

    // Radicale's own folder (collection-root/<user>/<collection>/ holds the items).
    QString storageFolder() const { return m_dir.filePath(QStringLiteral("store")); }

    QUrl base() const { return QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(m_port)); }
    QUrl url(const QString &path) const { return base().resolved(QUrl(path)); }

    // MKCALENDAR, as another client would make a collection; the HTTP status.
    int makeCalendar(QNetworkAccessManager &network, const QString &path, const QString &name, const QString &component)
    {
        QNetworkRequest r(url(path));
        r.setRawHeader("Authorization", "Basic " + (user + u':' + password).toUtf8().toBase64());
        r.setRawHeader("Content-Type", "application/xml");
        const QByteArray body =
            QStringLiteral("<?xml version='1.0'?><C:mkcalendar xmlns:D='DAV:' xmlns:C='urn:ietf:params:xml:ns:caldav'>"
                           "<D:set><D:prop><D:displayname>%1</D:displayname><C:supported-calendar-component-set>"
                           "<C:comp name='%2'/></C:supported-calendar-component-set></D:prop></D:set></C:mkcalendar>")
                .arg(name, component)
                .toUtf8();
        QNetworkReply *reply = network.sendCustomRequest(r, "MKCALENDAR", body);
        if (!QTest::qWaitFor([reply] { return reply->isFinished(); }, 15000))
            return 0;
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        reply->deleteLater();
        return status;
    }

private:
    QTemporaryDir m_dir;
    QProcess m_server;
    quint16 m_port = 0;
};

} // namespace tarnwell::test

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <chrono>

namespace tarnwell::platform {

// The agent's one connection to the session bus. Qt never reconnects a
// connection whose bus went away, so this owns a named connection of its own
// and, when the bus daemon goes (a crash, a restart), logs it once, keeps
// trying the same address and hands out a fresh connection once a bus answers
// there again. Everything that talks to the session bus takes its connection
// from here and follows `connectionChanged`.
class SessionBus : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *connectionName = "tarnwell-session";
        static constexpr std::chrono::milliseconds firstRetry{500};
        static constexpr std::chrono::milliseconds longestRetry{30000};
    };

    explicit SessionBus(QObject *parent = nullptr);
    ~SessionBus() override;

    // The connection in use: after a loss, a disconnected one until the bus is back.
    QDBusConnection connection() const { return m_connection; }
    bool isConnected() const { return m_connection.isConnected(); }
    // How many connections were made (1 until the first loss was repaired).
    int generation() const { return m_generation; }

Q_SIGNALS:
    // The bus went away; the old connection answers nothing from now on.
    void lost();
    // A new connection to the bus at the same address, after a loss.
    void connectionChanged(const QDBusConnection &connection);

private Q_SLOTS:
    void onDisconnected();

private:
    bool connectNext();
    void retry();

    QDBusConnection m_connection;
    int m_generation = 0;
    std::chrono::milliseconds m_retryDelay = Constants::firstRetry;
    QTimer m_retry;
};

} // namespace tarnwell::platform

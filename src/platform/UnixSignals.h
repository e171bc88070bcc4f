#pragma once

#include <QObject>

class QSocketNotifier;

namespace tarnwell::platform {

// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal on the main thread, so
// that a session end or `kill` takes the same orderly road as Quit.
class UnixSignals : public QObject
{
    Q_OBJECT
public:
    explicit UnixSignals(QObject *parent = nullptr);
    ~UnixSignals() override;

Q_SIGNALS:
    void terminationRequested(int signalNumber);

private:
    void readSignal();
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace tarnwell::platform

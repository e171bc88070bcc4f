#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace tarnwell {

class ActiveTaskService;
class IdleMonitor;

// The popover's away banner: the idle-gap prompt (keep or discard the time
// away) and the note about a pause the app made while the session was away
// (with resume). The QML side is AwayBanner.qml.
class AwayBanner : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(AwayBannerModel)
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool gapVisible READ gapVisible NOTIFY changed)
    Q_PROPERTY(QString promptText READ promptText NOTIFY changed)
    Q_PROPERTY(bool autoPausedVisible READ autoPausedVisible NOTIFY changed)
    Q_PROPERTY(QString keepText READ keepText NOTIFY changed)
    Q_PROPERTY(QString discardText READ discardText NOTIFY changed)
    Q_PROPERTY(QString noteText READ noteText NOTIFY changed)
    Q_PROPERTY(QString resumeText READ resumeText NOTIFY changed)
public:
    AwayBanner(IdleMonitor &monitor, ActiveTaskService &activeTaskService, QObject *parent = nullptr);

    bool gapVisible() const;
    QString promptText() const;
    // The task in hand is the one paused for the user, and it is stopped.
    bool autoPausedVisible() const;
    QString keepText() const;
    QString discardText() const;
    QString noteText() const;
    QString resumeText() const;

    // The away time as the prompt shows it: "25 min", "1 h 05 min".
    static QString awayDuration(qint64 seconds);

    Q_INVOKABLE void keep();
    Q_INVOKABLE void discard();
    Q_INVOKABLE void resume();

Q_SIGNALS:
    void changed();

private:
    IdleMonitor &m_monitor;
    ActiveTaskService &m_activeTasks;
};

} // namespace tarnwell

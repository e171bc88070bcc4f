#pragma once

#include "../WidgetFeed.h"

#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class QDBusServiceWatcher;

namespace tarnwell {
class ThemeController;
class Translations;
namespace platform {
class AppearancePortal;
}
} // namespace tarnwell

namespace tarnwell::widgetapp {

// What the desktop window shows, from the snapshot and the clock; its two
// buttons leave command files. The countdown is carried forward each second
// between snapshots and turns overdue by itself.
class WidgetWindowModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool available READ available NOTIFY changed)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)
    Q_PROPERTY(QString dayLabel READ dayLabel NOTIFY changed)
    Q_PROPERTY(bool hasTask READ hasTask NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString timeText READ timeText NOTIFY changed)
    Q_PROPERTY(QString timeCaption READ timeCaption NOTIFY changed)
    Q_PROPERTY(bool running READ running NOTIFY changed)
    Q_PROPERTY(bool overdue READ overdue NOTIFY changed)
    Q_PROPERTY(bool hasPlan READ hasPlan NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QVariantList upNext READ upNext NOTIFY changed)
    Q_PROPERTY(QString summaryLine READ summaryLine NOTIFY changed)
    Q_PROPERTY(QString plannedText READ plannedText NOTIFY changed)
    Q_PROPERTY(QString doneText READ doneText NOTIFY changed)
    Q_PROPERTY(QString toggleText READ toggleText NOTIFY changed)
    Q_PROPERTY(QString upNextText READ upNextText NOTIFY changed)
public:
    WidgetWindowModel(ThemeController &theme, Translations &translations, QObject *parent = nullptr);
    ~WidgetWindowModel() override;

    bool available() const { return m_snapshot.has_value(); }
    QString emptyText() const;
    QString dayLabel() const;
    bool hasTask() const { return m_snapshot && m_snapshot->anchor; }
    QString title() const;
    QString timeText() const;
    QString timeCaption() const;
    bool running() const;
    bool overdue() const;
    bool hasPlan() const { return m_snapshot && m_snapshot->totalSeconds; }
    double progress() const;
    QVariantList upNext() const;
    QString summaryLine() const;
    QString plannedText() const;
    QString doneText() const;
    QString toggleText() const;
    QString upNextText() const;

    Q_INVOKABLE void complete();
    Q_INVOKABLE void toggleTimer();

Q_SIGNALS:
    void changed();

private:
    void update();
    void applyAppearance();
    void send(int action);

    ThemeController &m_theme;
    Translations &m_translations;
    WidgetFeed m_feed;
    platform::AppearancePortal *m_portal;
    QDBusServiceWatcher *m_appWatcher = nullptr;
    bool m_appOnBus = true;
    QTimer m_tick;
    std::optional<WidgetSnapshot> m_snapshot; // what is shown: none for the empty state
    QDateTime m_now;
};

} // namespace tarnwell::widgetapp

#pragma once

#include <QObject>
#include <QPointer>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>

class QQuickWindow;

namespace tarnwell {

class UiEngine;

// A window that is made from its QML file at its first showing, centred a
// third of the way down the screen, and then kept, hidden between showings.
// The window's QML gets the controller as `controller` and calls hide().
// Subclasses name it with its namespace (`public tarnwell::WindowController`):
// the QML type registrar does not resolve the short name, and QML would then
// not see hide().
class WindowController : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
public:
    ~WindowController() override;

    Q_INVOKABLE void hide();
    bool isVisible() const;
    QQuickWindow *window() const;

Q_SIGNALS:
    void shown();

protected:
    // `shownLog` is the log line of each showing ("Review shown").
    WindowController(UiEngine &ui, QString qmlFile, QString shownLog, QObject *parent);

    // Makes the window at the first call, with `properties` and this
    // controller as its initial properties. Whether there is a window.
    bool makeWindow(const std::function<QVariantMap()> &properties);
    // Brings the window forward with the keyboard focus. When it was hidden,
    // `beforeAnnouncing` runs, then the showing is logged and shown() emitted.
    bool bringForward(const std::function<void()> &beforeAnnouncing = {});

private:
    UiEngine &m_ui;
    QString m_qmlFile;
    QString m_shownLog;
    QPointer<QQuickWindow> m_window;
};

} // namespace tarnwell

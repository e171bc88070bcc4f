#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <QVariantMap>

#include <chrono>
#include <memory>

class QQmlEngine;
class QQuickWindow;
class QWindow;

namespace tarnwell {

class ThemeController;

// The one QML engine of the process, made when the first window is needed
// (so that a start without windows does not pay for it), and let go again,
// with the windows it made, once every window has been hidden for a while:
// the program mostly idles in the tray (the engine itself may be kept, see
// setKeepEngineWhenIdle). Owners hold their windows in
// QPointers and make them again when next shown.
class UiEngine : public QObject
{
    Q_OBJECT
public:
    explicit UiEngine(ThemeController &theme, QObject *parent = nullptr);
    ~UiEngine() override;

    QQmlEngine &engine();
    bool hasEngine() const { return bool(m_engine); }
    // Creates a window from a file of the Tarnwell.Views module with the
    // given context objects; the caller owns the window.
    QQuickWindow *createWindow(const QString &file, const QVariantMap &properties = {});
    // Keeps the engine, with the types it has loaded, when the idle windows
    // are let go: the popover, opened many times a day, is then built again
    // from compiled types instead of from nothing.
    void setKeepEngineWhenIdle(bool keep) { m_keepEngine = keep; }
    // A window of its own (settings, review, routines) on the primary screen:
    // centred across, a third of the way down.
    static void placeCentred(QQuickWindow &window);
    // Shows `window` in front with the keyboard focus; answers whether it
    // was hidden before.
    static bool bringForward(QQuickWindow &window);
    // Re-reads every translated text of the open windows.
    void retranslate();

    static constexpr std::chrono::milliseconds defaultIdleRelease{30000};
    void setIdleRelease(std::chrono::milliseconds delay) { m_idle.setInterval(delay); }

Q_SIGNALS:
    void released();

private:
    void track(QQuickWindow *window);
    void visibilityChanged();
    void releaseIfIdle();

    ThemeController &m_theme;
    std::unique_ptr<QQmlEngine> m_engine;
    QList<QPointer<QWindow>> m_windows; // QWindow: they may be mid-destruction when they report
    bool m_keepEngine = false;
    QTimer m_idle;
};

} // namespace tarnwell

#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQuickWindow;
class QScreen;
class QWindow;

namespace tarnwell {

class NamedNotifications;
class PopoverModel;
class UiEngine;

// Owns the popover window: made on first use, placed at the tray click (or at
// the top-right corner of the primary screen when the click position is
// unknown) and kept on the screen. It closes on Escape and when it loses the
// focus; on showing, the add field takes the keyboard.
class PopoverManager : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
public:
    struct Constants
    {
        static constexpr int margin = 8;
    };

    PopoverManager(PopoverModel &model, UiEngine &ui, QObject *parent = nullptr);
    ~PopoverManager() override;

    PopoverModel &model() const { return m_model; }
    QQuickWindow *window() const;

    // Hot keys: "togglePopover" opens or closes the popover; the fixed
    // shortcuts act on it while it is shown.
    void observeHotkeys(NamedNotifications &center);

    void show(const QPoint &anchor = {});
    void toggle(const QPoint &anchor = {});
    Q_INVOKABLE void hide();
    bool isVisible() const;
    // The popover's menu asks for the other windows; the popover closes.
    Q_INVOKABLE void requestSettings();
    Q_INVOKABLE void requestReview();
    Q_INVOKABLE void requestWrapUp();
    // The away banner's object, handed to the window when it is made.
    void setAwayBanner(QObject *banner) { m_awayBanner = banner; }
    // The history (a past day's line, the search), handed over the same way.
    void setHistory(QObject *history) { m_history = history; }

    // Where a window of `size` goes for a click at `anchor` on a screen whose
    // free area is `available`: centred under the click, inside the area.
    // A null anchor means the top-right corner.
    static QPoint placement(const QPoint &anchor, const QSize &size, const QRect &available);
    // A frameless tool window where the window system lets us place it (X11);
    // a small normal window where it does not (Wayland compositors).
    static Qt::WindowFlags windowFlags(const QString &platformName);
    // Gives a popover-like window (the popover, quick add) its flags. On
    // Wayland it also fixes the window's width and sets a minimum height:
    // tiling compositors (sway and its kin) float such a window at its own
    // size rather than stretch it over the screen.
    static void settle(QWindow &window, const QString &platformName);

Q_SIGNALS:
    void shown();
    void hidden();
    void settingsRequested();
    // From the popover's menu and its built-in shortcut (openReview).
    void reviewRequested();
    void wrapUpRequested();

private:
    bool ensureWindow();
    void onHotkey(const QString &name);

    PopoverModel &m_model;
    UiEngine &m_ui;
    QPointer<QQuickWindow> m_window;
    QPointer<QObject> m_awayBanner;
    QPointer<QObject> m_history;
    bool m_wasActive = false;
};

} // namespace tarnwell

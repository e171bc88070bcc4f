#pragma once

#include <QObject>
#include <QUrl>

#include <functional>
#include <optional>

namespace tarnwell {

enum class AppURLRoute { popover, quickAdd, settings, review, wrapUp };

// Routes links of the "tarnwell" scheme: the host "quickadd" opens the
// quick-add window, "settings" the settings window (its path names a tab:
// tarnwell://settings/hotkeys), "review" the review window, "wrapup" the
// end-of-day wrap-up, every other link
// of the scheme the popover. Links that arrive before the interface exists
// wait for it.
class AppURLRouter : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *scheme = "tarnwell";
    };

    AppURLRouter(std::function<void()> openPopover, std::function<void()> openQuickAdd, QObject *parent = nullptr);

    static std::optional<AppURLRoute> route(const QUrl &url);
    // The first piece of the link's path, lower case ("hotkeys"); empty when none.
    static QString section(const QUrl &url);

    // Opens the settings and review windows, with the link's section.
    void setOpenWindow(std::function<void(AppURLRoute, const QString &)> openWindow)
    {
        m_openWindow = std::move(openWindow);
    }

    // Entry for a link handed to the program (command line, D-Bus Open).
    void handleURL(const QString &link);
    // Called once the interface exists; carries out the links that waited.
    void setInterfaceReady();

Q_SIGNALS:
    void routed(tarnwell::AppURLRoute route);

private:
    void perform(AppURLRoute route, const QString &section);

    std::function<void()> m_openPopover;
    std::function<void()> m_openQuickAdd;
    std::function<void(AppURLRoute, const QString &)> m_openWindow;
    bool m_ready = false;
    QList<std::pair<AppURLRoute, QString>> m_waiting;
};

} // namespace tarnwell

#pragma once

#include <QObject>
#include <QUrl>

#include <functional>
#include <optional>

namespace tarnwell {

enum class AppURLRoute { popover, quickAdd };

// Routes links of the "tarnwell" scheme: the host "quickadd" opens the
// quick-add window, every other link of the scheme the popover. Links that
// arrive before the interface exists wait for it.
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

    // Entry for a link handed to the program (command line, D-Bus Open).
    void handleURL(const QString &link);
    // Called once the interface exists; carries out the links that waited.
    void setInterfaceReady();

Q_SIGNALS:
    void routed(tarnwell::AppURLRoute route);

private:
    void perform(AppURLRoute route);

    std::function<void()> m_openPopover;
    std::function<void()> m_openQuickAdd;
    bool m_ready = false;
    QList<AppURLRoute> m_waiting;
};

} // namespace tarnwell

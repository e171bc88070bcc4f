#include "AppURLRouter.h"

#include "kit/Logging.h"

namespace tarnwell {

AppURLRouter::AppURLRouter(std::function<void()> openPopover, std::function<void()> openQuickAdd, QObject *parent)
    : QObject(parent)
    , m_openPopover(std::move(openPopover))
    , m_openQuickAdd(std::move(openQuickAdd))
{
}

std::optional<AppURLRoute> AppURLRouter::route(const QUrl &url)
{
    if (url.scheme().isEmpty() || url.scheme().toLower() != QLatin1String(Constants::scheme))
        return std::nullopt;
    const QString host = url.host(QUrl::FullyEncoded).toLower();
    if (host == QLatin1String("quickadd"))
        return AppURLRoute::quickAdd;
    if (host == QLatin1String("settings"))
        return AppURLRoute::settings;
    if (host == QLatin1String("review"))
        return AppURLRoute::review;
    if (host == QLatin1String("wrapup"))
        return AppURLRoute::wrapUp;
    return AppURLRoute::popover;
}

QString AppURLRouter::section(const QUrl &url)
{
    const QStringList pieces = url.path().split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return pieces.isEmpty() ? QString() : pieces.first().toLower();
}

void AppURLRouter::handleURL(const QString &link)
{
    const QUrl url(link, QUrl::StrictMode);
    if (link.isEmpty() || !url.isValid())
        return;
    qCInfo(lcServices).noquote() << QStringLiteral("Opening link %1").arg(link);
    const auto target = route(url);
    if (!target) {
        qCCritical(lcServices).noquote() << QStringLiteral("Ignored a link Tarnwell does not own: %1").arg(link);
        return;
    }
    if (!m_ready) {
        m_waiting.append({*target, section(url)});
        return;
    }
    perform(*target, section(url));
}

void AppURLRouter::setInterfaceReady()
{
    if (m_ready)
        return;
    m_ready = true;
    const auto waiting = std::exchange(m_waiting, {});
    for (const auto &[r, section] : waiting)
        perform(r, section);
}

void AppURLRouter::perform(AppURLRoute r, const QString &section)
{
    if (r == AppURLRoute::quickAdd) {
        if (m_openQuickAdd)
            m_openQuickAdd();
    } else if (r == AppURLRoute::settings || r == AppURLRoute::review || r == AppURLRoute::wrapUp) {
        if (m_openWindow)
            m_openWindow(r, section);
        else if (m_openPopover)
            m_openPopover();
    } else if (m_openPopover) {
        m_openPopover();
    }
    Q_EMIT routed(r);
}

} // namespace tarnwell

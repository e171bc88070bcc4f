#include "WindowController.h"

#include "UiEngine.h"
#include "kit/Logging.h"

#include <QQuickWindow>

namespace tarnwell {

WindowController::WindowController(UiEngine &ui, QString qmlFile, QString shownLog, QObject *parent)
    : QObject(parent)
    , m_ui(ui)
    , m_qmlFile(std::move(qmlFile))
    , m_shownLog(std::move(shownLog))
{
}

WindowController::~WindowController()
{
    if (m_window)
        QObject::disconnect(m_window.data(), nullptr, nullptr, nullptr);
    delete m_window.data();
}

bool WindowController::makeWindow(const std::function<QVariantMap()> &properties)
{
    if (m_window)
        return true;
    QVariantMap initial = properties();
    initial.insert(QStringLiteral("controller"), QVariant::fromValue<QObject *>(this));
    m_window = m_ui.createWindow(m_qmlFile, initial);
    if (!m_window)
        return false;
    UiEngine::placeCentred(*m_window);
    return true;
}

bool WindowController::bringForward(const std::function<void()> &beforeAnnouncing)
{
    if (!m_window || !UiEngine::bringForward(*m_window))
        return false;
    if (beforeAnnouncing)
        beforeAnnouncing();
    qCInfo(lcServices).noquote() << m_shownLog;
    Q_EMIT shown();
    return true;
}

void WindowController::hide()
{
    if (m_window && m_window->isVisible())
        m_window->hide();
}

bool WindowController::isVisible() const
{
    return m_window && m_window->isVisible();
}

QQuickWindow *WindowController::window() const
{
    return m_window.data();
}

} // namespace tarnwell

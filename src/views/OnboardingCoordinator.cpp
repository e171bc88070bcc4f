#include "OnboardingCoordinator.h"

#include "UiEngine.h"
#include "settings/AppSettingsStore.h"

#include <QEvent>
#include <QQuickWindow>

namespace tarnwell {

OnboardingCoordinator::OnboardingCoordinator(AppSettingsStore &settings, UiEngine &ui, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_ui(ui)
{
}

OnboardingCoordinator::~OnboardingCoordinator()
{
    // A window being destroyed still reports itself hidden and closed; nobody may hear it.
    m_finished = true;
    if (m_window) {
        m_window->removeEventFilter(this);
        QObject::disconnect(m_window.data(), nullptr, nullptr, nullptr);
    }
    delete m_window.data();
}

void OnboardingCoordinator::show()
{
    if (!m_window) {
        m_window = m_ui.createWindow(QStringLiteral("OnboardingWindow.qml"),
                                     {{QStringLiteral("coordinator"), QVariant::fromValue<QObject *>(this)}});
        if (!m_window) {
            finish(); // never strand the user without an interface
            return;
        }
        // Closing the window from its title bar ends onboarding the way
        // finishing it does: the user is never left without a status item.
        m_window->installEventFilter(this);
    }
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

bool OnboardingCoordinator::eventFilter(QObject *watched, QEvent *event)
{
    // Installed on our window only; the pointer is not read here, because a
    // window being destroyed sends its close event half torn down.
    if (event->type() == QEvent::Close && !m_finished)
        QMetaObject::invokeMethod(this, &OnboardingCoordinator::finish, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void OnboardingCoordinator::finish()
{
    if (m_finished)
        return;
    m_finished = true;
    if (!m_settings.onboardingCompleted())
        m_settings.setOnboardingCompleted(true);
    if (m_window) {
        m_window->close();
        m_window->deleteLater();
    }
    Q_EMIT finished();
}

} // namespace tarnwell

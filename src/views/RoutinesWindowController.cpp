#include "RoutinesWindowController.h"

#include "RoutinesModel.h"
#include "UiEngine.h"
#include "kit/Logging.h"

#include <QQuickWindow>
#include <QScreen>

namespace tarnwell {

RoutinesWindowController::RoutinesWindowController(RoutineRepository &routines, UiEngine &ui, QObject *parent)
    : QObject(parent)
    , m_routines(routines)
    , m_ui(ui)
{
}

RoutinesWindowController::~RoutinesWindowController()
{
    // A window being destroyed still reports itself hidden; nobody may hear it.
    if (m_window)
        QObject::disconnect(m_window.data(), nullptr, nullptr, nullptr);
    delete m_window.data();
}

void RoutinesWindowController::show()
{
    // Nothing reads the routines until the window is first wanted.
    if (!m_model)
        m_model = new RoutinesModel(m_routines, this);
    if (!m_window) {
        m_window = m_ui.createWindow(QStringLiteral("RoutinesWindow.qml"),
                                     {{QStringLiteral("routines"), QVariant::fromValue<QObject *>(m_model)},
                                      {QStringLiteral("controller"), QVariant::fromValue<QObject *>(this)}});
        if (!m_window)
            return;
        UiEngine::placeCentred(*m_window);
    }
    m_model->refresh();
    if (UiEngine::bringForward(*m_window)) {
        QMetaObject::invokeMethod(m_window, "focusList");
        qCInfo(lcServices).noquote() << QStringLiteral("Routines shown");
        Q_EMIT shown();
    }
}

void RoutinesWindowController::hide()
{
    if (m_window && m_window->isVisible())
        m_window->hide();
}

bool RoutinesWindowController::isVisible() const
{
    return m_window && m_window->isVisible();
}

QQuickWindow *RoutinesWindowController::window() const
{
    return m_window.data();
}

void RoutinesWindowController::retranslate()
{
    if (m_model)
        m_model->retranslate();
}

} // namespace tarnwell

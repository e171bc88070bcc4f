#include "QuickAddWindowController.h"

#include "PopoverManager.h"
#include "QuickAddDraft.h"
#include "UiEngine.h"
#include "hotkeys/HotkeyManager.h"
#include "kit/Logging.h"
#include "kit/NamedNotifications.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

namespace tarnwell {

QuickAddWindowController::QuickAddWindowController(QuickAddDraft &draft, UiEngine &ui, QObject *parent)
    : QObject(parent)
    , m_draft(draft)
    , m_ui(ui)
{
    // A task added from the window closes it.
    connect(&m_draft, &QuickAddDraft::committed, this, &QuickAddWindowController::hide);
}

QuickAddWindowController::~QuickAddWindowController()
{
    // A window being destroyed still reports itself hidden; nobody may hear it.
    if (m_window)
        QObject::disconnect(m_window.data(), nullptr, nullptr, nullptr);
    delete m_window.data();
}

void QuickAddWindowController::observeHotkeys(NamedNotifications &center)
{
    center.observe(QString::fromLatin1(HotkeyManager::Constants::firedNotification), this,
                   [this](const QVariantMap &info) {
                       if (info.value(QString::fromLatin1(HotkeyManager::Constants::actionKey)).toString() ==
                           rawValue(HotkeyAction::quickAdd))
                           show();
                   });
}

void QuickAddWindowController::show()
{
    if (!m_window) {
        m_window = m_ui.createWindow(QStringLiteral("QuickAddWindow.qml"),
                                     {{QStringLiteral("draft"), QVariant::fromValue<QObject *>(&m_draft)},
                                      {QStringLiteral("controller"), QVariant::fromValue<QObject *>(this)}});
        if (!m_window)
            return;
        PopoverManager::settle(*m_window, QGuiApplication::platformName());
    }
    if (QScreen *screen = QGuiApplication::primaryScreen()) {
        // Centred, in the upper third, where the eye is.
        const QRect area = screen->availableGeometry();
        m_window->setPosition(area.left() + (area.width() - m_window->width()) / 2, area.top() + area.height() / 4);
    }
    const bool wasVisible = m_window->isVisible();
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
    QMetaObject::invokeMethod(m_window, "focusField");
    if (!wasVisible) {
        qCInfo(lcServices).noquote() << QStringLiteral("Quick add shown");
        Q_EMIT shown();
    }
}

void QuickAddWindowController::hide()
{
    if (m_window && m_window->isVisible())
        m_window->hide();
    m_draft.overrideDayOffset(-1);
}

bool QuickAddWindowController::isVisible() const
{
    return m_window && m_window->isVisible();
}

QQuickWindow *QuickAddWindowController::window() const
{
    return m_window.data();
}

} // namespace tarnwell

#include "UiEngine.h"

#include "ThemeController.h"
#include "icons/ApplicationIcon.h"
#include "kit/Logging.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlComponent>
#include <algorithm>
#include <malloc.h>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>

namespace tarnwell {

UiEngine::UiEngine(ThemeController &theme, QObject *parent)
    : QObject(parent)
    , m_theme(theme)
{
    // Process-wide choices, made once before the first window exists.
    static const bool configured = [] {
        // Our windows are small and mostly still: Qt Quick's software renderer
        // draws them as fast as OpenGL would and spares the ~90 MB a GL driver
        // stack keeps resident. QT_QUICK_BACKEND still overrides it.
        if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
            QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        // The plainest controls style: our palette does the rest, and it is the
        // lightest to load.
        if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_STYLE"))
            QQuickStyle::setStyle(QStringLiteral("Basic"));
        return true;
    }();
    Q_UNUSED(configured)
    m_idle.setSingleShot(true);
    m_idle.setInterval(defaultIdleRelease);
    connect(&m_idle, &QTimer::timeout, this, &UiEngine::releaseIfIdle);
}

UiEngine::~UiEngine() = default;

QQmlEngine &UiEngine::engine()
{
    if (!m_engine) {
        // The windows' icon (task switchers, window lists): ours, drawn from
        // its SVG for the sizes they ask for.
        if (QGuiApplication::windowIcon().isNull()) {
            QIcon icon;
            for (int side : {16, 24, 32, 48, 64, 128})
                icon.addPixmap(QPixmap::fromImage(icons::renderApplicationIcon(QSize(side, side))));
            QGuiApplication::setWindowIcon(icon);
        }
        m_engine = std::make_unique<QQmlEngine>();
        m_theme.provideTo(*m_engine);
    }
    return *m_engine;
}

QQuickWindow *UiEngine::createWindow(const QString &file, const QVariantMap &properties)
{
    QQmlComponent component(&engine(), QUrl(QStringLiteral("qrc:/Tarnwell/Views/") + file));
    // (Qt 6.4 cannot be asked to create from a component that failed to load.)
    QObject *object = component.isReady() ? component.createWithInitialProperties(properties) : nullptr;
    if (!object) {
        qCCritical(lcServices).noquote()
            << QStringLiteral("Could not create %1: %2").arg(file, component.errorString());
        return nullptr;
    }
    auto *window = qobject_cast<QQuickWindow *>(object);
    if (!window) {
        delete object;
        qCCritical(lcServices).noquote() << QStringLiteral("%1 is not a window").arg(file);
        return nullptr;
    }
    track(window);
    return window;
}

void UiEngine::placeCentred(QQuickWindow &window)
{
    if (QScreen *screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        window.setPosition(area.left() + (area.width() - window.width()) / 2,
                           area.top() + (area.height() - window.height()) / 3);
    }
}

bool UiEngine::bringForward(QQuickWindow &window)
{
    const bool wasHidden = !window.isVisible();
    window.show();
    window.raise();
    window.requestActivate();
    return wasHidden;
}

void UiEngine::track(QQuickWindow *window)
{
    m_windows.append(window);
    connect(window, &QWindow::visibleChanged, this, &UiEngine::visibilityChanged);
}

void UiEngine::visibilityChanged()
{
    m_windows.removeAll(nullptr);
    const bool anyVisible =
        std::any_of(m_windows.cbegin(), m_windows.cend(), [](const QPointer<QWindow> &w) { return w->isVisible(); });
    if (anyVisible)
        m_idle.stop();
    else
        m_idle.start();
}

void UiEngine::releaseIfIdle()
{
    m_windows.removeAll(nullptr);
    for (const auto &window : std::as_const(m_windows))
        if (window->isVisible())
            return;
    for (const auto &window : std::exchange(m_windows, {})) {
        // Nobody may hear a window that is being destroyed.
        QObject::disconnect(window.data(), nullptr, nullptr, nullptr);
        delete window.data();
    }
    if (!m_keepEngine)
        m_engine.reset();
    else if (m_engine)
        m_engine->collectGarbage();
    malloc_trim(0);
    qCInfo(lcServices).noquote() << QStringLiteral("Let the idle windows go");
    Q_EMIT released();
}

void UiEngine::retranslate()
{
    if (m_engine)
        m_engine->retranslate();
}

} // namespace tarnwell

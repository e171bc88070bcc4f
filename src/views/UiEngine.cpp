#include "UiEngine.h"

#include "ThemeController.h"
#include "kit/Logging.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>

namespace tarnwell {

UiEngine::UiEngine(ThemeController &theme, QObject *parent)
    : QObject(parent)
    , m_theme(theme)
{
}

UiEngine::~UiEngine() = default;

QQmlEngine &UiEngine::engine()
{
    if (!m_engine) {
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->rootContext()->setContextProperty(QStringLiteral("appTheme"), &m_theme);
    }
    return *m_engine;
}

QQuickWindow *UiEngine::createWindow(const QString &file, const QVariantMap &properties)
{
    QQmlComponent component(&engine(), QUrl(QStringLiteral("qrc:/Tarnwell/Views/") + file));
    QObject *object = component.createWithInitialProperties(properties);
    if (!object) {
        qCCritical(lcServices).noquote() << QStringLiteral("Could not create %1: %2").arg(file, component.errorString());
        return nullptr;
    }
    auto *window = qobject_cast<QQuickWindow *>(object);
    if (!window) {
        delete object;
        qCCritical(lcServices).noquote() << QStringLiteral("%1 is not a window").arg(file);
    }
    return window;
}

void UiEngine::retranslate()
{
    if (m_engine)
        m_engine->retranslate();
}

} // namespace tarnwell

// `tarnwell-widget-window`: the desktop window of `tarnwell-widget`, which
// execs it when started without a status-bar option.
#include "WidgetWindowModel.h"
#include "kit/Translations.h"
#include "views/ThemeController.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTextStream>
#include <QTimer>

#include <malloc.h>

using namespace tarnwell;
using namespace tarnwell::widgetapp;

int main(int argc, char *argv[])
{
    // A small, mostly still window: drawn in software, as the agent's windows are.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication app(argc, argv);
    // The window class: what window-manager rules match.
    QGuiApplication::setApplicationName(QStringLiteral("tarnwell-widget"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tarnwell"));
    // The Wayland app id.
    QGuiApplication::setDesktopFileName(QStringLiteral("tarnwell-widget"));

    std::optional<QPoint> position;
    const QStringList arguments = QCoreApplication::arguments();
    const qsizetype at = arguments.indexOf(QStringLiteral("--position"));
    if (at > 0 && at + 1 < arguments.size()) {
        const QStringList xy = arguments.at(at + 1).split(QLatin1Char(','));
        bool okX = false, okY = false;
        if (xy.size() == 2)
            position = QPoint(xy.at(0).toInt(&okX), xy.at(1).toInt(&okY));
        if (!okX || !okY) {
            QTextStream(stderr) << QStringLiteral("tarnwell-widget: --position takes X,Y") << Qt::endl;
            return 2;
        }
    }

    Translations translations;
    ThemeController theme;
    WidgetWindowModel model(theme, translations);
    QQmlEngine engine;
    // Our QML module (Tarnwell.Widget) lives in the resources.
    engine.addImportPath(QStringLiteral("qrc:/"));
    theme.provideTo(engine);
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Tarnwell/Widget/window/WidgetWindow.qml")));
    if (!component.isReady()) {
        QTextStream(stderr) << QStringLiteral("tarnwell-widget: ") << component.errorString() << Qt::endl;
        return 1;
    }
    std::unique_ptr<QObject> object(
        component.createWithInitialProperties({{QStringLiteral("widget"), QVariant::fromValue(&model)}}));
    auto *window = qobject_cast<QQuickWindow *>(object.get());
    if (!window) {
        QTextStream(stderr) << QStringLiteral("tarnwell-widget: ") << component.errorString() << Qt::endl;
        return 1;
    }
    if (position)
        window->setPosition(*position);
    // What building the scene left behind goes back to the system once the
    // first frame is out: the window then idles for hours.
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &app,
        [&engine] {
            QTimer::singleShot(1000, &engine, [&engine] {
                engine.collectGarbage();
                malloc_trim(0);
            });
        },
        Qt::SingleShotConnection);
    window->show();
    return app.exec();
}

// From a global hot-key press to the quick-add window on screen, under Xvfb:
// xdotool presses Super+Shift+A; the clock starts when the key event reaches
// the program and stops when the X server reports the window exposed. The first
// press builds the QML engine and the window (cold); the median is over the
// presses after it, each after the window was hidden again.
#include "BenchSupport.h"

#include "hotkeys/HotkeyManager.h"
#include "kit/Calendar.h"
#include "kit/NamedNotifications.h"
#include "kit/Translations.h"
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "platform/X11HotkeyBackend.h"
#include "settings/AppSettingsStore.h"
#include "views/QuickAddDraft.h"
#include "views/QuickAddWindowController.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QAbstractNativeEventFilter>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QQuickWindow>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

#include <xcb/xcb.h>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

using namespace tarnwell;

namespace {

// Notes when a key press arrives from the X server.
class KeyArrival : public QAbstractNativeEventFilter
{
public:
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *) override
    {
        if (type == "xcb_generic_event_t" &&
            (static_cast<xcb_generic_event_t *>(message)->response_type & 0x7f) == XCB_KEY_PRESS)
            at = clock.nsecsElapsed();
        return false;
    }
    QElapsedTimer clock;
    qint64 at = -1;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        std::fprintf(stderr, "hotkey_bench needs an X11 display\n");
        return 1;
    }
    Translations translations;
    translations.install(QStringLiteral("en"));
    Calendar calendar;
    const Clock clock = systemClock();
    PersistenceController store(true);
    AppSettingsStore settings(store);
    DayRepository days(store.viewContext(), calendar, clock);
    TaskRepository tasks(store.viewContext(), calendar, clock, days);
    ThemeController theme;
    UiEngine ui(theme);
    QuickAddDraft draft(tasks, days, calendar, clock);
    QuickAddWindowController quickAdd(draft, ui);
    NamedNotifications center;
    quickAdd.observeHotkeys(center);
    auto backend = platform::X11HotkeyBackend::create();
    // Installed after the back end's filter, so it sees the key first.
    KeyArrival arrival;
    arrival.clock.start();
    app.installNativeEventFilter(&arrival);
    HotkeyManager manager(settings, center, backend.get(), nullptr);
    if (manager.reload() || manager.globalHotkeys().size() != 2) {
        std::fprintf(stderr, "the hot keys could not be registered\n");
        return 1;
    }

    constexpr int presses = 21;
    std::vector<double> warm;
    double cold = -1;
    for (int i = 0; i < presses; ++i) {
        arrival.at = -1;
        qint64 drawnAt = -1;
        QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("super+shift+a")});
        QElapsedTimer wait;
        wait.start();
        while (drawnAt < 0 && wait.elapsed() < 5000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
            if (quickAdd.window() && quickAdd.window()->isExposed())
                drawnAt = arrival.clock.nsecsElapsed();
        }
        if (drawnAt < 0 || arrival.at < 0) {
            std::fprintf(stderr, "press %d: the window did not show\n", i);
            return 1;
        }
        const double ms = double(drawnAt - arrival.at) / 1e6;
        std::fprintf(stderr, "press %d: %.2f ms\n", i, ms);
        if (i == 0)
            cold = ms;
        else
            warm.push_back(ms);
        quickAdd.hide();
        QElapsedTimer settle;
        settle.start();
        while (settle.elapsed() < 100)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    manager.unregisterAll();
    bench::figure("hotkey.press_to_quickadd_shown.median_ms", bench::median(warm), "ms");
    bench::figure("hotkey.press_to_quickadd_shown.cold_ms", cold, "ms");
    return 0;
}

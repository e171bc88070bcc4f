// The X11 key grab for real, under Xvfb, with key presses from xdotool:
// presses fire with and without the lock keys, a reload moves the grab, a
// combination another program holds is reported, and the grabs are let go.
#include "platform/X11HotkeyBackend.h"
#include "support/HotkeyHarness.h"

#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>

using namespace tarnwell;

namespace {

void press(const QString &keys)
{
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
    QVERIFY(xdotool.waitForFinished(5000));
    QCOMPARE(xdotool.exitCode(), 0);
}

// Another X client, to hold or try combinations ourselves.
class OtherClient
{
public:
    OtherClient()
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_symbols(xcb_key_symbols_alloc(m_connection))
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    {
    }
    ~OtherClient()
    {
        xcb_key_symbols_free(m_symbols);
        xcb_disconnect(m_connection);
    }
    // True when the server let us have the grab.
    bool grab(uint32_t keysym, uint16_t mask)
    {
        xcb_keycode_t *codes = xcb_key_symbols_get_keycode(m_symbols, keysym);
        const auto cookie =
            xcb_grab_key_checked(m_connection, 1, m_root, mask, codes[0], XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        free(codes);
        xcb_generic_error_t *error = xcb_request_check(m_connection, cookie);
        free(error);
        return !error;
    }

private:
    xcb_connection_t *m_connection;
    xcb_key_symbols_t *m_symbols;
    xcb_window_t m_root;
};

constexpr uint16_t superShift = XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT;

struct X11Backend
{
    std::unique_ptr<platform::X11HotkeyBackend> backend = platform::X11HotkeyBackend::create();
};
struct Fixture : X11Backend, HotkeyHarness
{
    Fixture()
        : HotkeyHarness(backend.get())
    {
    }
};

} // namespace

class HotkeysX11Test : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pressesFireWhateverTheLockKeysSay()
    {
        Fixture f;
        QVERIFY(f.backend);
        QCOMPARE(f.manager.reload(), std::nullopt);
        press(QStringLiteral("super+shift+a"));
        QTRY_COMPARE(f.fired, QStringList{QStringLiteral("quickAdd")});
        press(QStringLiteral("super+shift+j"));
        QTRY_COMPARE(f.fired.size(), 2);
        QCOMPARE(f.fired.last(), QStringLiteral("togglePopover"));

        // NumLock and CapsLock on: still ours.
        press(QStringLiteral("Num_Lock"));
        press(QStringLiteral("Caps_Lock"));
        press(QStringLiteral("super+shift+j"));
        QTRY_COMPARE(f.fired.size(), 3);
        press(QStringLiteral("Num_Lock"));
        press(QStringLiteral("Caps_Lock"));

        // Without Shift it is not the combination.
        press(QStringLiteral("super+a"));
        QTest::qWait(300);
        QCOMPARE(f.fired.size(), 3);
    }

    void reloadMovesTheGrabAndTerminationLetsGo()
    {
        Fixture f;
        f.manager.reload();
        f.settings.setHotkeyQuickAdd(QStringLiteral("ctrl+alt+space"));
        QCOMPARE(f.manager.reload(), std::nullopt);
        press(QStringLiteral("super+shift+a"));
        press(QStringLiteral("ctrl+alt+space"));
        QTRY_COMPARE(f.fired, QStringList{QStringLiteral("quickAdd")});

        OtherClient other;
        QVERIFY(other.grab('a', superShift)); // the old combination is free again
        QVERIFY(!other.grab(' ', XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1));
        f.manager.unregisterAll();
        QVERIFY(other.grab(' ', XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK));
    }

    void aCombinationHeldElsewhereIsReported()
    {
        OtherClient other;
        QVERIFY(other.grab('j', superShift));
        Fixture f;
        QSignalSpy taken(&f.manager, &HotkeyManager::takenBySystem);
        QTest::ignoreMessage(QtWarningMsg,
                             "Global hotkey cmd+shift+j for action togglePopover is already taken by the "
                             "desktop or another program");
        QCOMPARE(f.manager.reload(), std::nullopt);
        QCOMPARE(taken.size(), 1);
        QCOMPARE(taken[0][0].value<HotkeyAction>(), HotkeyAction::togglePopover);
        QVERIFY(!f.manager.globalHotkeys().contains(HotkeyAction::togglePopover));
        // Half a grab is not kept: CapsLock+combination is still free.
        QVERIFY(other.grab('j', superShift | XCB_MOD_MASK_LOCK));
        press(QStringLiteral("super+shift+a"));
        QTRY_COMPARE(f.fired, QStringList{QStringLiteral("quickAdd")});
    }
};

QTEST_MAIN(HotkeysX11Test)
#include "tst_hotkeys_x11.moc"

#pragma once

#include "hotkeys/GlobalHotkeyBackend.h"

#include <QAbstractNativeEventFilter>

#include <memory>

#include <cstdint>

struct xcb_connection_t;
struct _XCBKeySymbols; // NOLINT(bugprone-reserved-identifier): xcb-keysyms names its type so

namespace tarnwell::platform {

// Global hot keys on an X11 session: a passive grab of each combination on
// the root window, once per NumLock/CapsLock state, so the keys work whatever
// the lock keys say. A combination another program already grabbed is
// reported as refused. Presses arrive through Qt's xcb event stream.
class X11HotkeyBackend : public GlobalHotkeyBackend, public QAbstractNativeEventFilter
{
    Q_OBJECT
public:
    // None when the application does not run on xcb.
    static std::unique_ptr<X11HotkeyBackend> create(QObject *parent = nullptr);
    ~X11HotkeyBackend() override;

    QString name() const override { return QStringLiteral("x11"); }
    void setBindings(const QList<HotkeyBinding> &bindings) override;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

    // X modifier mask of a combination (Super is Mod4, Alt is Mod1).
    static uint16_t modifierMask(HotkeyModifiers modifiers);
    static uint32_t keysym(HotkeyKey key);

private:
    X11HotkeyBackend(xcb_connection_t *connection, uint32_t root, QObject *parent);
    struct Grab
    {
        HotkeyAction action;
        uint8_t keycode;
        uint16_t mask;
    };
    void ungrab(const Grab &grab);

    xcb_connection_t *m_connection;
    uint32_t m_root;
    _XCBKeySymbols *m_symbols = nullptr;
    uint16_t m_numLockMask = 0;
    QList<Grab> m_grabs;
};

} // namespace tarnwell::platform

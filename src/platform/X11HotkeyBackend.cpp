#include "X11HotkeyBackend.h"

#include "kit/Logging.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>

namespace tarnwell::platform {

namespace {

constexpr uint32_t numLockKeysym = 0xff7f;
constexpr uint16_t relevantMask = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
constexpr uint8_t badAccess = 10;

// Which modifier bit NumLock sets on this server (usually Mod2).
uint16_t findNumLockMask(xcb_connection_t *connection, xcb_key_symbols_t *symbols)
{
    uint16_t mask = XCB_MOD_MASK_2;
    xcb_keycode_t *numLock = xcb_key_symbols_get_keycode(symbols, numLockKeysym);
    if (!numLock)
        return mask;
    xcb_get_modifier_mapping_reply_t *reply =
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr);
    if (reply) {
        const xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(reply);
        const int perModifier = reply->keycodes_per_modifier;
        for (int modifier = 0; modifier < 8; ++modifier)
            for (int i = 0; i < perModifier; ++i)
                for (const xcb_keycode_t *code = numLock; *code != XCB_NO_SYMBOL; ++code)
                    if (codes[modifier * perModifier + i] == *code)
                        mask = uint16_t(1u << modifier);
        std::free(reply);
    }
    std::free(numLock);
    return mask;
}

} // namespace

std::unique_ptr<X11HotkeyBackend> X11HotkeyBackend::create(QObject *parent)
{
    auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11 || !x11->connection())
        return nullptr;
    xcb_connection_t *connection = x11->connection();
    const xcb_setup_t *setup = xcb_get_setup(connection);
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
    if (!screens.rem)
        return nullptr;
    return std::unique_ptr<X11HotkeyBackend>(new X11HotkeyBackend(connection, screens.data->root, parent));
}

X11HotkeyBackend::X11HotkeyBackend(xcb_connection_t *connection, uint32_t root, QObject *parent)
    : GlobalHotkeyBackend(parent)
    , m_connection(connection)
    , m_root(root)
    , m_symbols(xcb_key_symbols_alloc(connection))
{
    m_numLockMask = findNumLockMask(m_connection, m_symbols);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11HotkeyBackend::~X11HotkeyBackend()
{
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
    setBindings({});
    xcb_key_symbols_free(m_symbols);
}

uint16_t X11HotkeyBackend::modifierMask(HotkeyModifiers modifiers)
{
    uint16_t mask = 0;
    if (modifiers & HotkeyModifier::command)
        mask |= XCB_MOD_MASK_4;
    if (modifiers & HotkeyModifier::shift)
        mask |= XCB_MOD_MASK_SHIFT;
    if (modifiers & HotkeyModifier::option)
        mask |= XCB_MOD_MASK_1;
    if (modifiers & HotkeyModifier::control)
        mask |= XCB_MOD_MASK_CONTROL;
    return mask;
}

uint32_t X11HotkeyBackend::keysym(HotkeyKey key)
{
    if (key >= HotkeyKey::a && key <= HotkeyKey::z)
        return uint32_t('a' + (int(key) - int(HotkeyKey::a)));
    if (key >= HotkeyKey::digit0 && key <= HotkeyKey::digit9)
        return uint32_t('0' + (int(key) - int(HotkeyKey::digit0)));
    switch (key) {
    case HotkeyKey::returnKey:
        return 0xff0d;
    case HotkeyKey::escape:
        return 0xff1b;
    case HotkeyKey::tab:
        return 0xff09;
    case HotkeyKey::space:
        return 0x20;
    case HotkeyKey::deleteKey:
        return 0xffff;
    case HotkeyKey::up:
        return 0xff52;
    case HotkeyKey::down:
        return 0xff54;
    case HotkeyKey::left:
        return 0xff51;
    case HotkeyKey::right:
        return 0xff53;
    default:
        return 0;
    }
}

void X11HotkeyBackend::setBindings(const QList<HotkeyBinding> &bindings)
{
    for (const Grab &grab : std::as_const(m_grabs))
        ungrab(grab);
    if (!m_grabs.isEmpty())
        qCInfo(lcHotkeys).noquote() << QStringLiteral("Released %1 X11 key grabs").arg(m_grabs.size());
    m_grabs.clear();

    const uint16_t lockVariants[] = {0, XCB_MOD_MASK_LOCK, m_numLockMask, uint16_t(XCB_MOD_MASK_LOCK | m_numLockMask)};
    QList<HotkeyAction> refusedActions;
    for (const HotkeyBinding &binding : bindings) {
        xcb_keycode_t *codes = xcb_key_symbols_get_keycode(m_symbols, keysym(binding.combo.key));
        if (!codes || *codes == XCB_NO_SYMBOL) {
            std::free(codes);
            qCWarning(lcHotkeys).noquote() << QStringLiteral("No key on this keyboard for %1").arg(binding.raw);
            continue;
        }
        const uint8_t keycode = codes[0];
        std::free(codes);
        const uint16_t mask = modifierMask(binding.combo.modifiers);
        QList<Grab> made;
        bool taken = false;
        for (const uint16_t variant : lockVariants) {
            const xcb_void_cookie_t cookie = xcb_grab_key_checked(m_connection, 1, m_root, uint16_t(mask | variant),
                                                                  keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
            if (xcb_generic_error_t *error = xcb_request_check(m_connection, cookie)) {
                taken = taken || error->error_code == badAccess;
                std::free(error);
                continue;
            }
            made.append({binding.action, keycode, uint16_t(mask | variant)});
        }
        if (taken) {
            // Half a grab would fire only with some lock keys on: let all of it go.
            for (const Grab &grab : std::as_const(made))
                ungrab(grab);
            refusedActions.append(binding.action);
            continue;
        }
        m_grabs.append(made);
    }
    xcb_flush(m_connection);
    for (const HotkeyAction action : std::as_const(refusedActions))
        Q_EMIT refused(action);
}

void X11HotkeyBackend::ungrab(const Grab &grab)
{
    xcb_ungrab_key(m_connection, grab.keycode, m_root, grab.mask);
}

bool X11HotkeyBackend::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (m_grabs.isEmpty() || eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<xcb_generic_event_t *>(message);
    const uint8_t type = event->response_type & 0x7f;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return false;
    const auto *key = reinterpret_cast<const xcb_key_press_event_t *>(event);
    if (key->event != m_root)
        return false;
    const uint16_t state = key->state & relevantMask;
    for (const Grab &grab : std::as_const(m_grabs)) {
        if (grab.keycode != key->detail || (grab.mask & relevantMask) != state)
            continue;
        if (type == XCB_KEY_PRESS)
            Q_EMIT pressed(grab.action);
        return true;
    }
    return false;
}

} // namespace tarnwell::platform

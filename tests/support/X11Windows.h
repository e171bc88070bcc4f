// Talks to the X server the way a window manager would: finds a top-level
// window by its title and asks it to close (WM_DELETE_WINDOW), as the close
// button of a title bar does.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

class X11Windows
{
public:
    X11Windows()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
    }
    ~X11Windows() { xcb_disconnect(m_connection); }
    X11Windows(const X11Windows &) = delete;
    X11Windows &operator=(const X11Windows &) = delete;

    // The first mapped top-level window whose title is `title`, or 0.
    xcb_window_t find(const QString &title)
    {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        auto tree = reply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, root), nullptr));
        if (!tree)
            return 0;
        const xcb_window_t *children = xcb_query_tree_children(tree.get());
        const xcb_atom_t name = atom("_NET_WM_NAME");
        const xcb_atom_t utf8 = atom("UTF8_STRING");
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            auto attributes = reply(xcb_get_window_attributes_reply(
                m_connection, xcb_get_window_attributes(m_connection, children[i]), nullptr));
            if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
                continue;
            auto property = reply(xcb_get_property_reply(
                m_connection, xcb_get_property(m_connection, 0, children[i], name, utf8, 0, 1024), nullptr));
            if (!property)
                continue;
            const QByteArray text(static_cast<const char *>(xcb_get_property_value(property.get())),
                                  xcb_get_property_value_length(property.get()));
            if (QString::fromUtf8(text) == title)
                return children[i];
        }
        return 0;
    }

    // Sends the window manager's close request to `window`.
    void requestClose(xcb_window_t window)
    {
        xcb_client_message_event_t event;
        std::memset(&event, 0, sizeof event);
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_PROTOCOLS");
        event.data.data32[0] = atom("WM_DELETE_WINDOW");
        event.data.data32[1] = XCB_CURRENT_TIME;
        xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&event));
        xcb_flush(m_connection);
    }

private:
    template<typename T>
    static std::unique_ptr<T, decltype(&std::free)> reply(T *value)
    {
        return {value, &std::free};
    }
    xcb_atom_t atom(const char *name)
    {
        auto r = reply(xcb_intern_atom_reply(
            m_connection, xcb_intern_atom(m_connection, 0, uint16_t(std::strlen(name)), name), nullptr));
        return r ? r->atom : xcb_atom_t(XCB_ATOM_NONE);
    }

    xcb_connection_t *m_connection;
};

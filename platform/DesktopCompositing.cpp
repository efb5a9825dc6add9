#include "platform/DesktopCompositing.h"

#include <QByteArray>
#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>

bool DesktopCompositing::active()
{
    auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11 || !x11->connection())
        return true; // Wayland and the others always composite.
    xcb_connection_t *connection = x11->connection();
    // A compositing manager owns the selection "_NET_WM_CM_S<screen>".
    const QByteArray name("_NET_WM_CM_S0");
    xcb_intern_atom_reply_t *atom = xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 1, name.size(), name.constData()), nullptr);
    if (!atom)
        return false;
    xcb_get_selection_owner_reply_t *owner = xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr);
    const bool composited = owner && owner->owner != XCB_NONE;
    std::free(owner);
    std::free(atom);
    return composited;
}

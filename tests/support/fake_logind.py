"""A stand-in for logind on a private bus: it owns org.freedesktop.login1,
writes one line per method call it receives ("Interface.Member args") to the
file named by its argument, and answers each with an empty reply, so a caller
never waits. Prints "ready" once the name is owned."""
import sys

import dbus
import dbus.lowlevel
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

address, record = sys.argv[1], sys.argv[2]
DBusGMainLoop(set_as_default=True)
bus = dbus.bus.BusConnection(address)


def on_message(connection, message):
    if message.get_type() != dbus.lowlevel.MESSAGE_TYPE_METHOD_CALL or message.get_destination() == "org.freedesktop.DBus":
        return dbus.lowlevel.HANDLER_RESULT_NOT_YET_HANDLED
    args = " ".join(str(arg) for arg in message.get_args_list())
    with open(record, "a") as out:
        out.write(f"{message.get_interface()}.{message.get_member()} {args}".rstrip() + "\n")
    connection.send_message(dbus.lowlevel.MethodReturnMessage(message))
    return dbus.lowlevel.HANDLER_RESULT_HANDLED


bus.add_message_filter(on_message)
if bus.request_name("org.freedesktop.login1") != dbus.bus.REQUEST_NAME_REPLY_PRIMARY_OWNER:
    sys.exit("fake logind: the name is taken")
print("ready", flush=True)
GLib.MainLoop().run()

"""The desktop around the program: what it hears of banners, what it lists in the Trash."""

import subprocess
import sys

import dbus

from window import wait_for

NOTIFICATIONS = "org.freedesktop.Notifications"


class Banners:
    """A notification server that shows nothing and remembers all."""

    def __enter__(self):
        self._server = subprocess.Popen([sys.executable, "-m", "dbusmock", "--template", "notification_daemon"],
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        bus = dbus.SessionBus()
        wait_for(lambda: bus.name_has_owner(NOTIFICATIONS), "the notification server")
        self._object = bus.get_object(NOTIFICATIONS, "/org/freedesktop/Notifications")
        return self

    def __exit__(self, *_):
        self._server.terminate()
        self._server.wait()

    def arrived(self):
        """(title, body) of each banner so far."""
        calls = self._object.GetMethodCalls("Notify", dbus_interface="org.freedesktop.DBus.Mock")
        return [(str(arguments[3]), str(arguments[4])) for _, arguments in calls]


def trash_list():
    """The lines of `gio trash --list`, sorted: where each thing lies, and where it came from."""
    done = subprocess.run(["gio", "trash", "--list"], check=True, capture_output=True)
    return sorted(done.stdout.decode("utf-8", "replace").splitlines())

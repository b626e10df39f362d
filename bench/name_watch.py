"""Tells when a program owns its name on the bus, as the bus itself announces it."""

import ctypes
import time

CALLBACK = ctypes.CFUNCTYPE(None, *[ctypes.c_void_p] * 7)
HEARTBEAT = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p)
HEARTBEAT_MILLISECONDS = 200  # how often a wait looks whether it has lasted too long


class NameWatch:
    """Listens for the owners of `name` on `bus`, a SessionBus, until it is closed: it must be, as GLib calls it."""

    def __init__(self, bus, name):
        self.bus, self.glib, self.name = bus, bus.glib, name
        self.owned_at = None  # perf_counter; None while nobody owns the name
        self.changed, self.heartbeat = CALLBACK(self._on_change), HEARTBEAT(lambda _: 1)
        self.glib.g_variant_print.restype = ctypes.c_void_p
        self.beats = self.glib.g_timeout_add(HEARTBEAT_MILLISECONDS, self.heartbeat, None)
        self.subscription = bus.gio.g_dbus_connection_signal_subscribe(
            ctypes.c_void_p(bus.connection), b"org.freedesktop.DBus", b"org.freedesktop.DBus", b"NameOwnerChanged",
            b"/org/freedesktop/DBus", name.encode(), 0, self.changed, None, None)
        # The bus answers in order: once it has answered this, it knows of the subscription.
        bus.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId", "()")

    def close(self):
        self.bus.gio.g_dbus_connection_signal_unsubscribe(ctypes.c_void_p(self.bus.connection), self.subscription)
        self.glib.g_source_remove(self.beats)

    def _on_change(self, _connection, _sender, _path, _interface, _signal, arguments, _data):
        now = time.perf_counter()
        text = self.glib.g_variant_print(ctypes.c_void_p(arguments), 0)
        _, _, owner = ctypes.string_at(text).decode().strip("()").replace("'", "").split(", ")
        self.glib.g_free(ctypes.c_void_p(text))
        self.owned_at = now if owner else None

    def _wait(self, done, seconds, what):
        deadline = time.perf_counter() + seconds
        while not done():
            if time.perf_counter() > deadline:
                raise TimeoutError(f"waited {seconds} s in vain for {what}")
            self.glib.g_main_context_iteration(None, 1)

    def wait_until_owned(self, seconds=20):
        """The time (perf_counter) at which the name has got its owner."""
        self._wait(lambda: self.owned_at is not None, seconds, f"{self.name} on the bus")
        return self.owned_at

    def wait_until_free(self, seconds=20):
        """Returns when nobody owns the name."""
        self._wait(lambda: self.owned_at is None, seconds, f"the end of {self.name}")

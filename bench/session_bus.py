"""Calls on the session bus without starting a process for each, so that a timing holds the answer and little else."""

import ctypes


class SessionBus:
    """A connection to the bus at `address`, through GLib's own library."""

    def __init__(self, address):
        self.gio, self.glib = ctypes.CDLL("libgio-2.0.so.0"), ctypes.CDLL("libglib-2.0.so.0")
        for function in (self.gio.g_dbus_connection_new_for_address_sync, self.gio.g_dbus_connection_call_sync,
                         self.gio.g_dbus_connection_call_with_unix_fd_list_sync, self.gio.g_unix_fd_list_new,
                         self.glib.g_variant_new_parsed):
            function.restype = ctypes.c_void_p
        client, to_a_bus = 1, 8
        self.connection = self.gio.g_dbus_connection_new_for_address_sync(
            address.encode(), client | to_a_bus, None, None, None)
        if not self.connection:
            raise RuntimeError(f"no connection to the bus at {address}")

    def call(self, name, path, interface, method, arguments, seconds=30):
        """Calls `method` with `arguments`, a tuple in GVariant's text form, and waits for the answer."""
        variant = ctypes.c_void_p(self.glib.g_variant_new_parsed(arguments.encode()))
        reply = self.gio.g_dbus_connection_call_sync(
            ctypes.c_void_p(self.connection), name.encode(), path.encode(), interface.encode(), method.encode(),
            variant, None, 0, seconds * 1000, None, None)
        if not reply:
            raise RuntimeError(f"{name} did not answer {method}")
        self.glib.g_variant_unref(ctypes.c_void_p(reply))

    def call_with_file(self, name, path, interface, method, arguments, file, seconds=30):
        """As `call`, with one open file, which `arguments` name as `handle 0`; the caller keeps its own descriptor."""
        files = ctypes.c_void_p(self.gio.g_unix_fd_list_new())
        self.gio.g_unix_fd_list_append(files, file, None)
        variant = ctypes.c_void_p(self.glib.g_variant_new_parsed(arguments.encode()))
        reply = self.gio.g_dbus_connection_call_with_unix_fd_list_sync(
            ctypes.c_void_p(self.connection), name.encode(), path.encode(), interface.encode(), method.encode(),
            variant, None, 0, seconds * 1000, files, None, None, None)
        self.gio.g_object_unref(files)
        if not reply:
            raise RuntimeError(f"{name} did not answer {method}")
        self.glib.g_variant_unref(ctypes.c_void_p(reply))

    def send(self, name, path, interface, method, arguments):
        """Calls `method` without waiting for its answer; the call is on its way when this returns."""
        variant = ctypes.c_void_p(self.glib.g_variant_new_parsed(arguments.encode()))
        self.gio.g_dbus_connection_call(
            ctypes.c_void_p(self.connection), name.encode(), path.encode(), interface.encode(), method.encode(),
            variant, None, 0, -1, None, None, None)
        self.gio.g_dbus_connection_flush_sync(ctypes.c_void_p(self.connection), None, None)

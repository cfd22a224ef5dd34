"""What the GTK 3 windows share: their sizes, and their application."""

import sys

sys.dont_write_bytecode = True

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, Gio, GLib, Gtk  # noqa: E402
from window_arguments import parse_arguments  # noqa: E402


def dress(window, arguments, content):
    """Gives a window its title, its sizes and its content above a status line."""
    window.set_title(arguments.title)
    if arguments.fixed:
        window.set_resizable(False)
        window.set_size_request(*arguments.size)
    else:
        window.set_default_size(*arguments.size)
    if arguments.minimum_size:
        window.set_geometry_hints(None, _minimum(arguments.minimum_size), Gdk.WindowHints.MIN_SIZE)
    scrolled = Gtk.ScrolledWindow()
    scrolled.add(content)
    box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
    box.pack_start(scrolled, True, True, 0)
    box.pack_start(Gtk.Separator(), False, False, 0)
    box.pack_start(Gtk.Label(label="Ready", xalign=0, margin=6), False, False, 0)
    window.add(box)


def _minimum(pair):
    geometry = Gdk.Geometry()
    geometry.min_width, geometry.min_height = pair
    return geometry


def run(description, make_content, decorate=None):
    """Shows one window until it is closed. decorate(window, arguments) gives it a title bar of its own."""
    arguments = parse_arguments(description)
    if arguments.application_id:
        GLib.set_prgname(arguments.application_id)
        Gdk.set_program_class(arguments.application_id)
    application = Gtk.Application(
        application_id=arguments.application_id, flags=Gio.ApplicationFlags.NON_UNIQUE
    )

    def show(_application):
        window = Gtk.ApplicationWindow(application=application)
        if decorate:
            decorate(window, arguments)
        dress(window, arguments, make_content())
        window.show_all()

    application.connect("activate", show)
    return application.run([])

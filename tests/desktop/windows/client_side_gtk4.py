#!/usr/bin/python3
"""A GTK 4 window, which draws its own title bar, and a shadow where a compositing manager runs."""

import os
import sys

sys.dont_write_bytecode = True
# Set before the toolkit is loaded: the others want a graphics card.
os.environ.setdefault("GSK_RENDERER", "cairo")

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import Gio, GLib, Gtk  # noqa: E402
from window_arguments import parse_arguments  # noqa: E402

PLACES = ["Harbour", "Market square", "Mill", "Old bridge", "Railway station"]


def make_window(application, arguments):
    window = Gtk.ApplicationWindow(application=application, title=arguments.title)
    bar = Gtk.HeaderBar()
    bar.pack_start(Gtk.Button(label="Open"))
    window.set_titlebar(bar)
    places = Gtk.ListBox(selection_mode=Gtk.SelectionMode.NONE)
    for place in PLACES:
        places.append(Gtk.Label(label=place, xalign=0, margin_start=12, margin_top=8, margin_bottom=8))
    scrolled = Gtk.ScrolledWindow(child=places)
    if arguments.fixed:
        window.set_resizable(False)
        scrolled.set_size_request(*arguments.size)
    else:
        window.set_default_size(*arguments.size)
    if arguments.minimum_size:
        window.set_size_request(*arguments.minimum_size)
    window.set_child(scrolled)
    return window


def main():
    arguments = parse_arguments(__doc__)
    if arguments.application_id:
        GLib.set_prgname(arguments.application_id)
    application = Gtk.Application(
        application_id=arguments.application_id, flags=Gio.ApplicationFlags.NON_UNIQUE
    )
    application.connect("activate", lambda application: make_window(application, arguments).present())
    return application.run([])


if __name__ == "__main__":
    sys.exit(main())

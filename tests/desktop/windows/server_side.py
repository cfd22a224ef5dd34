#!/usr/bin/python3
"""A toolkit window that leaves its title bar to the window manager."""

import sys

import test_window
from gi.repository import Gtk

TASKS = {
    "Water the garden": True,
    "Pump up the bicycle's tyres": False,
    "Answer the letter": False,
    "Return the books": True,
    "Buy bread": False,
}


def content():
    tasks = Gtk.ListBox(selection_mode=Gtk.SelectionMode.NONE)
    for task, is_done in TASKS.items():
        row = Gtk.ListBoxRow(can_focus=False)
        row.add(Gtk.CheckButton(label=task, active=is_done, margin=8, can_focus=False))
        tasks.add(row)
    return tasks


if __name__ == "__main__":
    sys.exit(test_window.run(__doc__, content))

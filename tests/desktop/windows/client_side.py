#!/usr/bin/python3
"""A toolkit window that draws its own title bar, and a shadow where a compositing manager runs."""

import sys

import test_window
from gi.repository import Gtk

TEXT = """Shopping

  • bread, butter, a lemon
  • coffee, if there is any left
  • something for Sunday

Ideas

The garden wants water in the evening, the bicycle wants
air, and the letter on the table wants an answer.
"""


def content():
    text = Gtk.TextView(left_margin=18, right_margin=18, top_margin=14, bottom_margin=14)
    text.set_wrap_mode(Gtk.WrapMode.WORD)
    text.set_cursor_visible(False)
    text.get_buffer().set_text(TEXT)
    return text


def decorate(window, arguments):
    bar = Gtk.HeaderBar(title=arguments.title, show_close_button=True)
    bar.pack_start(Gtk.Button(label="Open"))
    window.set_titlebar(bar)


if __name__ == "__main__":
    sys.exit(test_window.run(__doc__, content, decorate))

"""The arguments that all windows written in Python take."""

import argparse


def size(text):
    """Parses "640x420" into a pair of pixels."""
    width, height = text.split("x")
    return int(width), int(height)


def parse_arguments(description):
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--title", default="Test window")
    parser.add_argument("--size", type=size, default=(640, 420), metavar="WxH")
    parser.add_argument("--minimum-size", type=size, metavar="WxH")
    parser.add_argument("--fixed", action="store_true", help="the user may not resize it")
    parser.add_argument("--application-id", help="identifier of the application, such as org.example.Notes")
    return parser.parse_args()

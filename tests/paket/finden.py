#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""finden.py WINDOW TEXT: where on the screen the control with that text, or tool tip, of that window stands: "X Y".

What a screen reader is told is asked, so that no position has to be known. Waits 20 s for it to be there.
"""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib


def nachfahren(knoten):
    yield knoten
    for i in range(knoten.get_child_count()):
        kind = knoten.get_child_at_index(i)
        if kind is not None:
            yield from nachfahren(kind)


def fenster(titel):
    schreibtisch = Atspi.get_desktop(0)
    for i in range(schreibtisch.get_child_count()):
        anwendung = schreibtisch.get_child_at_index(i)
        for j in range(anwendung.get_child_count() if anwendung else 0):
            eines = anwendung.get_child_at_index(j)
            if eines is not None and eines.get_name() == titel:
                yield eines


def suchen(titel, text):
    for eines in fenster(titel):
        for knoten in nachfahren(eines):
            if text not in (knoten.get_name(), knoten.get_description()):
                continue
            if not knoten.get_state_set().contains(Atspi.StateType.SHOWING):
                continue
            ort = knoten.get_extents(Atspi.CoordType.SCREEN)
            if ort.width > 0:
                return ort.x + ort.width // 2, ort.y + ort.height // 2
    return None


def main():
    titel, text = sys.argv[1:]
    ende = time.monotonic() + 20
    while time.monotonic() < ende:
        try:
            ort = suchen(titel, text)
        except GLib.Error:  # a window that has just gone
            ort = None
        if ort:
            print(*ort)
            return 0
        time.sleep(0.1)
    for eines in fenster(titel):
        print("there are:", [k.get_name() or k.get_description() for k in nachfahren(eines)], file=sys.stderr)
    print(f"no {text!r} in {titel!r}", file=sys.stderr)
    return 1


sys.exit(main())

#!/usr/bin/python3
"""What a screen reader hears and sees of the programs of its session, one JSON array a line: with `follow` each element
that gets the keyboard, with `read` everything that can be seen now, as role, name and description."""
import json
import sys

import pyatspi


def tell(element):
    print(json.dumps([element.getRoleName(), element.name, element.description], ensure_ascii=False), flush=True)


def read(element):
    if not element.getState().contains(pyatspi.STATE_VISIBLE):
        return
    tell(element)
    for child in element:
        read(child)


def follow():
    def heard(event):
        if event.detail1:
            tell(event.source)

    pyatspi.Registry.registerEventListener(heard, "object:state-changed:focused")
    print("listening", flush=True)
    pyatspi.Registry.start()


if __name__ == "__main__":
    if sys.argv[1:] == ["follow"]:
        follow()
    else:
        for program in pyatspi.Registry.getDesktop(0):
            read(program)

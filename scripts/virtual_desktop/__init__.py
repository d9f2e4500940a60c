"""A virtual desktop for demonstrations, tests and measurements: an X server, buses, a window manager, a panel; or a
Wayland compositor.

Everything runs in a folder and a session of its own, touches nothing of the user's, and is ended by process id.
"""
from .accessible import Accessibility
from .break_screen import blue_rows, break_windows, complaints, covers, wait_for_countdown, wait_for_cover, wait_for_rest, \
    wait_for_still, wait_for_uncover
from .compositor import MutterSession, NestedWaylandSession, WaylandSession
from .picture import Box, Picture
from .program import Program
from .screen import Monitor, Screen
from .session import Session, wait_until
from .status_item import StatusItem
from .virtual_input import VirtualInput

__all__ = ["Accessibility", "Box", "Monitor", "MutterSession", "NestedWaylandSession", "Picture", "Program", "Screen", "Session",
           "StatusItem", "WaylandSession", "blue_rows", "break_windows", "complaints", "covers", "wait_for_countdown",
           "wait_for_cover", "wait_for_still", "wait_for_uncover", "wait_until"]

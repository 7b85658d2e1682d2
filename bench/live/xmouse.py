"""The real mouse, moved through XTEST: by the server's own word the movement has happened when a call returns."""

import ctypes
import time


class XMouse:
    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.xtst = ctypes.CDLL("libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        if not self.display:
            raise RuntimeError("no display")

    def move(self, x, y):
        """The time, in seconds of CLOCK_MONOTONIC, at which the mouse is there."""
        self.xtst.XTestFakeMotionEvent(self.display, -1, int(round(x)), int(round(y)), ctypes.c_ulong(0))
        self.x11.XSync(self.display, 0)
        return time.monotonic()

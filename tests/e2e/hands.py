"""Hands on mouse and keyboard that know to a fraction of a millisecond when they moved: XTEST without a process between."""

import ctypes
import time

ALT = 64  # key code


class Hands:
    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.xtest = ctypes.CDLL("libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        if not self.display:
            raise RuntimeError("no X server")

    def close(self):
        self.x11.XCloseDisplay(self.display)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def done(self):
        """(seconds, seconds) of the monotonic clock between which what was just sent happened."""
        before = time.monotonic()
        self.x11.XSync(self.display, 0)
        return before, time.monotonic()

    def move(self, x, y):
        self.xtest.XTestFakeMotionEvent(self.display, 0, x, y, ctypes.c_ulong(0))
        return self.done()

    def button(self, number, down):
        self.xtest.XTestFakeButtonEvent(self.display, number, int(down), ctypes.c_ulong(0))
        return self.done()

    def key(self, code, down):
        self.xtest.XTestFakeKeyEvent(self.display, code, int(down), ctypes.c_ulong(0))
        return self.done()

    def click(self, number=1):
        return self.button(number, True), self.button(number, False)

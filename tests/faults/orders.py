"""Orders for the shim that is loaded into the program, see shim.c."""

import ctypes
import mmap
import os

NONE, FAIL, SHORT, SLOW, STALL = range(5)


class Layout(ctypes.Structure):
    _fields_ = [("mode", ctypes.c_int32), ("error", ctypes.c_int32), ("every", ctypes.c_int32), ("times", ctypes.c_int32),
                ("milliseconds", ctypes.c_int32), ("reserved", ctypes.c_int32), ("clockJump", ctypes.c_int64),
                ("done", ctypes.c_int32), ("calls", ctypes.c_int32), ("part", ctypes.c_char * 128)]


class Orders:
    def __init__(self, path):
        self.path = path
        with open(path, "wb") as file:
            file.write(bytes(ctypes.sizeof(Layout)))
        self.file = open(path, "r+b")
        self.map = mmap.mmap(self.file.fileno(), ctypes.sizeof(Layout))
        self.now = Layout.from_buffer(self.map)

    def give(self, mode, *, error=0, every=1, times=0, milliseconds=0, part=""):
        """From now on, for calls on files whose path contains `part`."""
        self.clear()
        self.now.error, self.now.every, self.now.times = error, every, times
        self.now.milliseconds, self.now.part = milliseconds, part.encode()
        self.now.done = self.now.calls = 0
        self.now.mode = mode

    def clear(self):
        self.now.mode = NONE

    def jump(self, seconds):
        self.now.clockJump = seconds

    def environment(self, build, folder):
        return {"LD_PRELOAD": os.path.join(build, "bin", "velmo-faults.so"), "VELMO_FAULTS": self.path,
                "VELMO_FAULTS_FOLDER": folder}

"""A camera that the program takes for a real one: a driver is loaded into it and does as it is told. See driver/."""

import itertools
import os
import subprocess
import tempfile

from program import Program, tool, wait_until

ID = "v4l2:usb-0000:00:14.0-1:Cámara de prueba"


class Camera:
    """Shows flat colours, 1280x720 at 30 pictures a second unless told otherwise; plugged in from the beginning."""

    def __init__(self, *colors):
        self.folder = tempfile.mkdtemp(dir=os.environ["DESK_FOLDER"])
        self.nodes = os.path.join(self.folder, "nodes")
        os.mkdir(self.nodes)
        self.names = itertools.count()
        self.node, self.busy, self.rate = "video0", False, 30
        self.pictures = [self.picture(color) for color in colors]
        self.order()

    def picture(self, color, size="1280x720"):
        """A JPEG file as cameras make them."""
        path = os.path.join(self.folder, f"{next(self.names)}.jpg")
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "color=c=0x%02x%02x%02x:size=%s" % (*color, size),
                        "-frames:v", "1", "-pix_fmt", "yuvj422p", "-q:v", "2", path], check=True)
        return path

    def damaged(self, color):
        """The first part of a picture and rubbish behind it."""
        path = self.picture(color)
        with open(path, "rb") as file:
            whole = file.read()
        with open(path, "wb") as file:
            file.write(whole[:len(whole) * 6 // 10] + bytes(range(7, 250)) * 20)
        return path

    def order(self, **changes):
        for name, value in changes.items():
            setattr(self, name, value)
        lines = [f"node {self.nodes}/{self.node}"] if self.node else []
        lines += ["busy"] if self.busy else []
        lines += [f"rate {self.rate}", *("picture " + path for path in self.pictures)]
        whole = os.path.join(self.folder, "orders")
        with open(whole + ".new", "w") as file:
            file.write("\n".join(lines) + "\n")
        os.rename(whole + ".new", whole)

    def show(self, *colors):
        self.order(pictures=[self.picture(color) for color in colors])

    def unplug(self):
        self.order(node=None)

    def plug(self, node="video0"):
        self.order(node=node)

    def starts(self):
        """How often the program has started it."""
        try:
            with open(os.path.join(self.folder, "starts")) as file:
                return int(file.read() or 0)
        except OSError:
            return 0

    def wait_started(self, times=1):
        wait_until("the camera to be started", lambda: self.starts() >= times, 20)


class ProgramWithCamera(Program):
    def __init__(self, camera, arguments=(), **settings):
        self.environment = {"LD_PRELOAD": tool("velmo-camera.so"), "VELMO_CAMERA": camera.folder}
        super().__init__(arguments=["--camera-folder", camera.nodes, *arguments], **settings)

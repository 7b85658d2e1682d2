"""The program under test with misbehaving disk and clock, and how what it leaves is judged."""

import base64
import glob
import json
import os
import shutil
import subprocess
import time
import uuid

import program
from orders import Orders
from program import BUILD, Program, judge, output, press, wait_until

COUNTER = "0,0"
COUNTER_RANGE_MS = 1 << 24
MARK_SETTLES_S = 0.3  # from the key press until the mark is in the journal, on a busy machine
NOTICES = ("Grabación recuperada", "Grabaciones recuperadas", "La grabación se detuvo", "No se pudo guardar la grabación",
           "Grabación sin terminar", "No se pudo empezar a grabar")


def now_ms():
    return int(time.monotonic() * 1000)


def since(counter, then_ms):
    """Seconds from a burnt-in clock to a moment of ours."""
    difference = (then_ms - counter) % COUNTER_RANGE_MS
    return (difference if difference < COUNTER_RANGE_MS // 2 else difference - COUNTER_RANGE_MS) / 1000


def kit_of(*files):
    listed = [{"id": str(uuid.uuid4()), "kind": "file", "title": os.path.basename(file), "location": file} for file in files]
    return {"base64": base64.b64encode(json.dumps(listed).encode()).decode()}


class Subject(Program):
    """Started and killed over and over on one library folder."""

    def __init__(self, **settings):
        self.orders = Orders(os.path.join(os.environ["DESK_FOLDER"], "orders"))
        videos = os.path.join(os.environ["HOME"], "Videos")
        self.environment = self.orders.environment(BUILD, videos)
        super().__init__(systemAudio=True, **settings)

    def library_window(self):
        return next((window for window, area in self.windows().items()
                     if area[2] > 400 and output("xdotool", "getwindowname", window).strip() == "Velmo Studio"), None)

    def kill(self):
        self.process.kill()
        at = now_ms()
        self.process.wait()
        self.log.close()
        self.orders.clear()
        self.orders.jump(0)
        return at

    def left_behind(self):
        """Hidden files that tell of work that is not done."""
        return [name for name in os.listdir(self.library)
                if name.endswith((".velmo-journal", ".velmo-video", ".velmo-parte")) or name == ".velmo-renombrar"]

    def notices(self):
        return [name for name in NOTICES if self.has_window(name)]

    def dismiss_notices(self):
        """The texts that stood there."""
        shown = self.notices()
        for name in shown:
            window = output("xdotool", "search", "--onlyvisible", "--name", "^" + name + "$").split()[-1]
            subprocess.run(["xdotool", "windowfocus", "--sync", window], capture_output=True)
            press("Return")
            wait_until("the notice to go", lambda: name not in self.notices())
        return shown

    def relaunch(self):
        """Starts again and waits until what was left behind has been dealt with."""
        self.start()
        wait_until("the recovery", lambda: not self.left_behind())
        time.sleep(0.3)  # for its notice to be on the screen

    def clear_library(self):
        for name in os.listdir(self.library):
            path = os.path.join(self.library, name)
            if os.path.isdir(path):
                shutil.rmtree(path)
            elif name != ".velmo-studio.json":
                os.remove(path)

    def has_window(self, name):
        return bool(output("xdotool", "search", "--onlyvisible", "--name", "^" + name + "$"))

    def type(self, text):
        subprocess.run(["xdotool", "key", "ctrl+a"], check=True)
        subprocess.run(["xdotool", "type", "--delay", "5", text], check=True)

    def class_folder(self, video):
        return os.path.splitext(video)[0] + " · material"


def look_at(video):
    """What a finished file shows: whether it plays, the last burnt-in clock, lengths."""
    seen = judge(video, "--counter", COUNTER)
    frames = [frame for frame in seen["frames"] if frame["counter"] >= 0]
    times = [frame["t"] for frame in seen["frames"]]
    return {"plays": seen["decodeErrors"] == 0 and len(times) > 0 and times == sorted(times), "frames": len(times),
            "last": frames[-1]["counter"] if frames else None, "duration": seen["duration"],
            "sounds": sum(1 for stream in seen["streams"] if stream["type"] == "audio")}


def record_of(folder):
    with open(os.path.join(folder, ".clase.json"), encoding="utf-8") as file:
        return json.load(file)


def table(title, heads, rows):
    print(f"\n{title}\n")
    print("| " + " | ".join(heads) + " |")
    print("|" + "---|" * len(heads))
    for row in rows:
        print("| " + " | ".join(str(cell) for cell in row) + " |", flush=True)

"""Drives the built program on a private desktop as a person would, by keys and mouse, and reads the finished files."""

import glob
import json
import os
import re
import signal
import subprocess
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = os.environ.get("VELMO_BUILD", os.path.join(ROOT, "build/release"))
HANG_LIMIT_S = 90
NOTHING = object()  # in place of defaults: an account on which the program has never run


def tool(name):
    return os.path.join(BUILD, "bin", name)


def output(*command):
    return subprocess.run(command, capture_output=True, text=True).stdout


def wait_until(what, condition, limit=HANG_LIMIT_S):
    """The first true value of `condition`; fails with `what` after a generous limit."""
    end = time.monotonic() + limit
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.02)
    raise AssertionError(f"waited in vain for {what}")


def press(*keys):
    subprocess.run(["xdotool", "key", *keys], check=True)


def press_in_library(*keys):
    """Keys of the home window's menus, once it has the keyboard."""
    wait_until("the keyboard to be the library's",
               lambda: output("xdotool", "getwindowfocus", "getwindowname").strip() == "Velmo Studio")
    press(*keys)


def click(x, y, button=1):
    subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", str(button)], check=True)


def accept_message(title):
    """Waits for the program's message and presses its button."""
    def shown():
        return output("xdotool", "search", "--onlyvisible", "--name", title).split()
    wait_until(f"the message {title}", shown)
    time.sleep(0.4)  # it takes the keyboard
    press("Return")
    wait_until("the message's end", lambda: not shown())


class Stage:
    """A window that paints known things, see velmo-stage."""

    def __init__(self, workload, *arguments):
        self.process = subprocess.Popen([tool("velmo-stage"), workload, "--title", "stage-" + workload, *arguments],
                                        stdout=subprocess.DEVNULL)
        wait_until("the stage", lambda: output("xdotool", "search", "--onlyvisible", "--name", "stage-" + workload).split())
        time.sleep(0.3)

    def close(self):
        self.process.terminate()
        self.process.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()


class Program:
    """The program under test with settings of its own. `settings` are entries of its defaults file, `defaults` is all
    that it holds, for files that are none. `arguments` are the program's own, `environment` is added to that of the
    desktop."""

    environment = {}

    def __init__(self, defaults=None, arguments=(), **settings):
        self.arguments = list(arguments)
        if defaults is None:
            defaults = json.dumps({"onboarded": True, "countdown": False, "mode": "screen", **settings})
        self.config = os.path.join(os.environ["XDG_CONFIG_HOME"], "velmo-studio")
        os.makedirs(self.config, exist_ok=True)
        file = os.path.join(self.config, "defaults.json")
        if defaults is NOTHING:
            self.forget(file)
        else:
            with open(file, "w") as store:
                store.write(defaults)
        self.library = os.path.join(os.environ["HOME"], "Videos", "Velmo Studio")
        self.start()

    @staticmethod
    def forget(file):
        if os.path.exists(file):
            os.remove(file)

    def start(self):
        self.log = open(os.path.join(os.environ["DESK_FOLDER"], "program.log"), "ab")
        self.process = subprocess.Popen([os.path.join(BUILD, "velmo-studio"), *self.arguments], stdout=self.log,
                                        stderr=self.log, env={**os.environ, **self.environment})
        wait_until("the library window", self.library_window)

    def windows(self):
        """Visible windows of the program: id -> (x, y, width, height)."""
        found = {}
        for window in output("xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.process.pid), "--name", "").split():
            shown = output("xwininfo", "-id", window)
            numbers = [re.search(pattern, shown) for pattern in
                       (r"upper-left X: +(-?\d+)", r"upper-left Y: +(-?\d+)", r"Width: (\d+)", r"Height: (\d+)")]
            if all(numbers):
                found[window] = tuple(int(number.group(1)) for number in numbers)
        return found

    def library_window(self):
        """The home window, when it shows: of the program's windows the one that is managed and large."""
        return next((window for window, area in self.windows().items()
                     if area[2] > 800 and area[3] > 500 and "Velmo Studio" in output("xdotool", "getwindowname", window)), None)

    def videos(self):
        return sorted(glob.glob(os.path.join(self.library, "*.mp4")))

    def metadata(self):
        try:
            with open(os.path.join(self.library, ".velmo-studio.json")) as file:
                return json.load(file)
        except (OSError, ValueError):
            return {}

    def begin_recording(self, first_bytes=200):
        """⌃G, and the path of the file that grows from then on. A plain screen without sound has few bytes to wait for."""
        before = set(self.videos())
        press("ctrl+g")
        new = wait_until("a new video file", lambda: set(self.videos()) - before)
        path = new.pop()
        wait_until("the first samples in the file", lambda: os.path.getsize(path) > first_bytes)
        return path

    def end_recording(self, path):
        """⌃G, and the entry of the finished recording in the metadata file."""
        press("ctrl+g")
        return self.wait_saved(path)

    def wait_saved(self, path):
        """The entry once the home window shows the recording: before, the folder's watch may have entered the bare file."""
        wait_until("the library window", self.library_window)
        return wait_until("the recording in the library", lambda: self.metadata().get(os.path.basename(path)))

    def quit(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(30)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        self.log.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.quit()


def judge(path, *arguments):
    """What velmo-judge says of a finished file."""
    done = subprocess.run([tool("velmo-judge"), path, *arguments], capture_output=True, text=True)
    if done.returncode != 0:
        raise AssertionError(done.stderr)
    return json.loads(done.stdout)


def runs(frames, counter_key="counter"):
    """How many frames the counter skipped and how many it repeated, over frames that show one."""
    values = [frame[counter_key] for frame in frames if frame[counter_key] >= 0]
    steps = [b - a for a, b in zip(values, values[1:])]
    return {"frames": len(values), "skipped": sum(step - 1 for step in steps if step > 1),
            "repeated": sum(1 for step in steps if step == 0), "back": sum(1 for step in steps if step < 0)}


def flashes(frames, probe=0, ground=128):
    """The times at which a probe turns from dark to light, which is more than `ground`."""
    times = []
    lit = None
    for frame in frames:
        now = frame["probes"][probe][0] > ground
        if now and lit is False:
            times.append(frame["t"])
        lit = now
    return times


def pixel_on_screen(x, y):
    """(red, green, blue) of the real screen."""
    shown = output("import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8", "txt:-")
    match = re.search(r"#([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})", shown)
    return tuple(int(part, 16) for part in match.groups())


def luma_of(rgb):
    """Rec. 709 video-range luma of an sRGB colour."""
    red, green, blue = rgb
    return 16 + 219 * (0.2126 * red + 0.7152 * green + 0.0722 * blue) / 255

"""What goes wrong around a class while it is recorded: sound that goes and comes back, folders and files that are not as
they were left, a display that changes, a program that is held up, keys pressed in a hurry.

Runs in a mount namespace of its own, for a library folder that can only be read."""

import json
import os
import random
import shutil
import signal
import subprocess
import time
import unittest

import screen_reader
from mounts import enter_mounts_of_our_own
from program import Program, Stage, accept_message, flashes, judge, output, press, press_in_library, wait_until

VIDEOS = os.path.join(os.environ.get("HOME", ""), "Videos", "Velmo Studio")
CONFIG = os.path.join(os.environ.get("XDG_CONFIG_HOME", ""), "velmo-studio")
TRASH = os.path.join(os.environ.get("XDG_DATA_HOME", ""), "Trash", "files")
MICROPHONE = ["module-remap-source", "source_name=mic", "master=micfeed.monitor", "remix=no"]
COUNTER_AT = "1000,0"


def pactl(*arguments):
    return subprocess.run(["pactl", *arguments], capture_output=True, text=True, check=True).stdout.strip()


class SoundServer:
    """One like the desktop's, that may die and come back under the same address."""

    def __init__(self):
        self.socket = os.path.join(os.environ["XDG_RUNTIME_DIR"], "second.sock")
        self.start()

    def start(self):
        sink = "module-null-sink norewinds=1 rate=48000 channels=2 sink_name="
        self.process = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
             "-L", f"module-native-protocol-unix socket={self.socket} auth-anonymous=1",
             "-L", sink + "speakers", "-L", sink + "micfeed", "-L", " ".join(MICROPHONE)],
            # Told of another server, or finding its name taken on the bus, it would refuse to start.
            env={**os.environ, "PULSE_SERVER": "", "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"},
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_until("the sound server", lambda: output("pactl", "-s", "unix:" + self.socket, "info"))
            for what in ("set-default-sink speakers", "set-default-source mic"):
                subprocess.run(["pactl", "-s", "unix:" + self.socket, *what.split()], check=True)
        except BaseException:
            self.die()
            raise

    def die(self):
        self.process.kill()
        self.process.wait()

    def __enter__(self):
        self.before = os.environ["PULSE_SERVER"]
        os.environ["PULSE_SERVER"] = "unix:" + self.socket
        return self

    def __exit__(self, *_):
        os.environ["PULSE_SERVER"] = self.before
        self.die()


class Screen:
    """An X server whose size can change, in place of the desktop's."""

    def __enter__(self):
        read, write = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1920x1080x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=(write,), stderr=subprocess.DEVNULL)
        os.close(write)
        self.before = os.environ["DISPLAY"]
        with os.fdopen(read) as numbers:
            os.environ["DISPLAY"] = ":" + numbers.readline().strip()
        timing = "74.5 1280 1344 1472 1664 720 723 728 748".split()
        subprocess.run(["xrandr", "--newmode", "small", *timing], check=True)
        subprocess.run(["xrandr", "--addmode", "screen", "small"], check=True)
        return self

    def shrink(self):
        subprocess.run(["xrandr", "--output", "screen", "--mode", "small"], check=True)

    def __exit__(self, *_):
        os.environ["DISPLAY"] = self.before
        self.process.terminate()
        self.process.wait()


def picture():
    """Frames with a counter, beside which another stage has room."""
    return Stage("motion", "--size", "640x360", "--at", COUNTER_AT)


def flashing():
    """Black with flashes that beep; its middle is probed at 200,200."""
    return Stage("flash", "--size", "640x480")


def dialog(title):
    return output("xdotool", "search", "--onlyvisible", "--name", title).split()


def type_text(text):
    subprocess.run(["xdotool", "type", text], check=True)


def kept_aside(folder, name):
    return [entry for entry in os.listdir(folder) if entry.startswith(name + ".damaged")]


def longest_gap(frames):
    times = [frame["t"] for frame in frames]
    return max(b - a for a, b in zip(times, times[1:]))


class BadDay(unittest.TestCase):
    def setUp(self):
        shutil.rmtree(VIDEOS, ignore_errors=True)
        shutil.rmtree(CONFIG, ignore_errors=True)

    def record(self, program, seconds=1.0):
        """A recording that is as long as asked for, plays and is in the library."""
        path = program.begin_recording()
        time.sleep(seconds)
        entry = program.end_recording(path)
        seen = judge(path)
        self.assertEqual(seen["decodeErrors"], 0)
        self.assertGreater(seen["duration"], seconds - 0.3)
        self.assertLess(abs(seen["duration"] - entry["duration"]), 0.25)
        return path

    def assert_beeps_at_flashes(self, seen, lights):
        beeps = [begin for begin, _ in seen["sounds"][0]]
        offsets = [min((beep - light for beep in beeps), key=abs) for light in lights]
        print("sound against picture in ms:", [round(offset * 1000) for offset in offsets])
        self.assertTrue(offsets)
        self.assertLess(max(abs(offset) for offset in offsets), 0.060)


class Sound(BadDay):
    def test_a_sound_server_that_dies_and_comes_back_leaves_silence_between_and_the_picture_whole(self):
        with SoundServer() as server, picture(), Program() as program:
            with flashing():
                path = program.begin_recording()
                began = time.monotonic()
                time.sleep(4.5)
            died = time.monotonic() - began
            server.die()
            time.sleep(2)
            server.start()
            back = time.monotonic() - began
            with flashing():
                time.sleep(7.5)
            entry = program.end_recording(path)
            seen = judge(path, "--counter", COUNTER_AT, "--probe", "200,200")
        self.assertEqual(seen["decodeErrors"], 0)
        self.assertLess(longest_gap(seen["frames"]), 0.3)
        for stream in seen["streams"]:
            self.assertLess(abs(stream["duration"] - entry["duration"]), 0.25, stream)
        sounds = [begin for begin, _ in seen["sounds"][0]]
        self.assertTrue(any(at < died for at in sounds), sounds)
        self.assertFalse(any(died + 0.5 < at < back - 0.5 for at in sounds), sounds)
        lights = flashes(seen["frames"])
        self.assert_beeps_at_flashes(seen, [at for at in lights if at < died - 0.5])
        # The program looks for the server every two seconds and needs a moment to know its times.
        self.assert_beeps_at_flashes(seen, [at for at in lights if at > back + 3])

    def test_a_microphone_that_is_unplugged_is_heard_again_when_it_is_back(self):
        with SoundServer(), picture(), flashing(), Program() as program:
            path = program.begin_recording()
            began = time.monotonic()
            time.sleep(4.5)
            pactl("unload-module", MICROPHONE[0])
            gone = time.monotonic() - began
            time.sleep(3)
            pactl("load-module", *MICROPHONE)
            pactl("set-default-source", "mic")
            back = time.monotonic() - began
            time.sleep(5)
            entry = program.end_recording(path)
            seen = judge(path, "--counter", COUNTER_AT, "--probe", "200,200")
        self.assertLess(longest_gap(seen["frames"]), 0.3)
        for stream in seen["streams"]:
            self.assertLess(abs(stream["duration"] - entry["duration"]), 0.25, stream)
        sounds = [begin for begin, _ in seen["sounds"][0]]
        self.assertFalse(any(gone + 0.5 < at < back - 0.5 for at in sounds), sounds)
        lights = flashes(seen["frames"])
        self.assert_beeps_at_flashes(seen, [at for at in lights if at < gone - 0.5])
        self.assert_beeps_at_flashes(seen, [at for at in lights if at > back + 1])


class Folder(BadDay):
    def test_a_library_folder_that_was_deleted_is_made_again(self):
        with Stage("motion"), Program() as program:
            self.record(program)
            shutil.rmtree(VIDEOS)
            path = self.record(program)
        self.assertEqual(program.videos(), [path])

    def test_a_library_folder_that_can_only_be_read_is_told_and_the_program_stays_usable(self):
        with Stage("motion"), Program() as program:
            kept = self.record(program)
            subprocess.run(["mount", "--bind", VIDEOS, VIDEOS], check=True)
            try:
                subprocess.run(["mount", "-o", "remount,bind,ro", VIDEOS], check=True)
                press("ctrl+g")
                wait_until("the reason", lambda: dialog("No se pudo empezar a grabar"))
                time.sleep(0.5)
                press("Return")
                wait_until("the dialog to go", lambda: not dialog("No se pudo empezar a grabar"))
                wait_until("the library window", program.library_window)
                self.assertEqual(program.videos(), [kept])
            finally:
                subprocess.run(["umount", VIDEOS], check=True)
            self.record(program)
            self.assertEqual(len(program.videos()), 2)


class DamagedFiles(BadDay):
    def test_defaults_that_are_no_json_are_kept_aside_and_a_class_is_recorded(self):
        for content in ('{"onboarded": true, "countd', "", "onboarded = yes\n", "[1, 2, 3]"):
            with self.subTest(content), Program(content) as program:
                self.assertEqual(len(kept_aside(CONFIG, "defaults.json")), 1)
                aside = os.path.join(CONFIG, kept_aside(CONFIG, "defaults.json")[0])
                with open(aside) as file:
                    self.assertEqual(file.read(), content)
                os.remove(aside)
        with Stage("motion"), Program('{"mode": "screen"') as program:
            self.record(program)

    def test_defaults_of_wrong_types_count_as_absent(self):
        wrong = ('{"onboarded": true, "countdown": 0, "mode": 3, "fps60": "yes", "micID": {"a": 1}, "systemAudio": [],'
                 ' "zoomLevel": "two", "recordRegion": true, "NSWindow Frame VelmoStudioLibrary": 7,'
                 ' "videoQuality": null, "chameleonPalette": {}}')
        with Stage("motion"), Program(wrong) as program:
            self.record(program)
        self.assertEqual(kept_aside(CONFIG, "defaults.json"), [])

    def test_a_damaged_metadata_file_is_kept_and_the_next_recording_is_entered(self):
        damaged = b'{"a.mp4": {"duration": 3, "mark\xff\x00'
        os.makedirs(VIDEOS)
        with open(os.path.join(VIDEOS, ".velmo-studio.json"), "wb") as file:
            file.write(damaged)
        with Stage("motion"), Program() as program:
            path = self.record(program)
            self.assertIn(os.path.basename(path), program.metadata())
        aside = kept_aside(VIDEOS, ".velmo-studio.json")
        self.assertEqual(len(aside), 1)
        with open(os.path.join(VIDEOS, aside[0]), "rb") as file:
            self.assertEqual(file.read(), damaged)


class OddFiles(BadDay):
    NAMES = ["'single' and \"double\".mp4", "clase 🎓👩‍🏫.mp4", "two\nlines.mp4", "x" * 200 + ".mp4", "%20 & <b>.MOV",
             "-rf.mp4"]

    def test_files_of_odd_names_that_are_no_videos_are_listed_renamed_and_thrown_away(self):
        os.makedirs(VIDEOS)
        os.mkdir(os.path.join(VIDEOS, "folder.mp4"))
        os.mkfifo(os.path.join(VIDEOS, "pipe.mp4"))
        for name in self.NAMES:
            with open(os.path.join(VIDEOS, name), "wb") as file:
                file.write(os.urandom(5000))
            time.sleep(0.02)  # the newest stands first
        os.symlink("nowhere", os.path.join(VIDEOS, "broken.mp4"))  # without a date, as new as can be
        with Program() as program:
            window = program.library_window()
            subprocess.run(["xdotool", "windowactivate", "--sync", window], check=True)
            time.sleep(0.5)
            press("Tab", "Tab", "Home", "Right", "F2")
            wait_until("the question for a name", lambda: dialog("Renombrar"))
            press("ctrl+a")
            type_text("leading dash is gone")
            press("Return")
            renamed = os.path.join(VIDEOS, "leading dash is gone.mp4")
            wait_until("the new name", lambda: os.path.exists(renamed))
            self.assertFalse(os.path.exists(os.path.join(VIDEOS, "-rf.mp4")))

            wait_until("the dialog to go", lambda: not dialog("Renombrar"))
            press("Home", *["Right"] * 4, "Delete")
            wait_until("the question", lambda: dialog("papelera"))
            press("Tab", "space")
            wait_until("the file in the trash", lambda: os.path.exists(os.path.join(TRASH, "two\nlines.mp4")))
            self.assertFalse(os.path.exists(os.path.join(VIDEOS, "two\nlines.mp4")))
            with Stage("motion"):
                self.record(program)


class Display(BadDay):
    def test_a_display_that_changes_its_size_ends_the_recording_and_what_there_is_of_it_is_kept(self):
        with Screen() as screen, Stage("motion"), Program() as program:
            path = program.begin_recording()
            time.sleep(3)
            screen.shrink()
            entry = program.wait_saved(path)
            accept_message("La grabación se detuvo")
            seen = judge(path, "--counter", "0,0")
            self.assertEqual(seen["decodeErrors"], 0)
            self.assertGreater(seen["duration"], 2)
            self.assertLess(abs(seen["duration"] - entry["duration"]), 1)
            self.assertEqual((seen["streams"][0]["width"], seen["streams"][0]["height"]), (1920, 1080))
            again = self.record(program)
            stream = judge(again)["streams"][0]
            self.assertEqual((stream["width"], stream["height"]), (1280, 720))


    def test_a_screen_that_changes_its_size_keeps_the_open_panel_on_it_and_usable(self):
        screen_reader.switch_on()
        opened = {"panel.mas": True, **{"panel." + card: True for card in ("fuentes", "burbuja", "video", "zoom", "guion")}}
        with Screen() as screen, Program(mode="screen", **opened):
            press_in_library("ctrl+n")
            panel = screen_reader.window("Nueva grabación")
            time.sleep(1)

            def is_inside(width, height):
                # The room for the shadow below and beside the panel is part of its window.
                x, y, wide, high = screen_reader.place(panel)
                return x >= 0 and y >= 0 and x + wide <= width and y + high <= height + 60
            self.assertTrue(is_inside(1920, 1080))
            screen.shrink()
            wait_until("the panel on the smaller screen", lambda: is_inside(1280, 720), 15)
            screen_reader.press_on("Nueva grabación", "Super", "radio button")
            wait_until("a choice at the panel's end", lambda: self.setting("shortcutModifier") == "super", 15)

    def setting(self, key):
        with open(os.path.join(os.environ["XDG_CONFIG_HOME"], "velmo-studio", "defaults.json"), encoding="utf-8") as file:
            return json.load(file).get(key)


class Alone(Program):
    """The program with the fonts of one configuration."""

    def __init__(self, fonts):
        self.environment = {"FONTCONFIG_FILE": fonts}
        super().__init__()


class OneFont(BadDay):
    def test_with_only_one_font_installed_everything_is_readable_and_records(self):
        screen_reader.switch_on()
        folder = os.path.join(os.environ["DESK_FOLDER"], "fonts")
        os.makedirs(folder, exist_ok=True)
        font = output("fc-match", "--format", "%{file}", "DejaVu Sans Mono")
        self.assertTrue(os.path.exists(font))
        shutil.copy(font, folder)
        config = os.path.join(folder, "fonts.conf")
        with open(config, "w") as file:
            file.write(f'<?xml version="1.0"?><fontconfig><dir>{folder}</dir><cachedir>{folder}/cache</cachedir></fontconfig>')
        with Stage("motion"), Alone(config) as program:
            press_in_library("ctrl+n")
            x, _, width, _ = screen_reader.place(screen_reader.window("Nueva grabación"))
            for name in ("Comenzar grabación", "Perfiles", "Más opciones", "Cámara", "Pantalla"):
                left, _, wide, _ = screen_reader.place(screen_reader.control("Nueva grabación", name))
                self.assertTrue(x <= left and left + wide <= x + width, name)
            press("Escape")
            self.record(program)


class HeldUp(BadDay):
    def test_a_program_that_stands_still_for_five_seconds_keeps_its_times(self):
        with picture(), flashing(), Program() as program:
            path = program.begin_recording()
            time.sleep(3)
            program.process.send_signal(signal.SIGSTOP)
            time.sleep(5)
            program.process.send_signal(signal.SIGCONT)
            time.sleep(5)
            entry = program.end_recording(path)
            seen = judge(path, "--counter", COUNTER_AT, "--probe", "200,200")
        self.assertEqual(seen["decodeErrors"], 0)
        for stream in seen["streams"]:
            self.assertLess(abs(stream["duration"] - entry["duration"]), 0.25, stream)
        frames = [frame for frame in seen["frames"] if frame["counter"] >= 0]
        late = [frame["t"] - frame["counter"] / 30 for frame in frames]
        self.assertLess(max(late[5:]) - min(late[5:]), 0.25, "each picture stands at its time")
        self.assertGreater(longest_gap(frames), 4)
        lights = flashes(seen["frames"])
        self.assert_beeps_at_flashes(seen, [at for at in lights if at < 2.5])
        self.assert_beeps_at_flashes(seen, [at for at in lights if at > 9])


class Hurry(BadDay):
    def settle(self, program):
        """No state between: a recording that goes on is ended."""
        if not program.library_window():
            press("ctrl+g")
        wait_until("the library window", program.library_window)
        self.assertEqual(dialog("No se pudo"), [])

    def test_twenty_presses_at_random_moments_leave_only_recordings_that_play(self):
        moments = random.Random(20)
        with Stage("motion"), Program() as program:
            for _ in range(20):
                press("ctrl+g")
                time.sleep(moments.uniform(0.02, 0.9))
            time.sleep(3)
            self.settle(program)
            videos = program.videos()
            wait_until("all of them in the library", lambda: all(os.path.basename(path) in program.metadata() for path in videos))
            known = program.metadata()
            for path in videos:
                seen = judge(path)
                self.assertEqual(seen["decodeErrors"], 0)
                self.assertGreater(len(seen["frames"]), 0)
                self.assertLess(abs(seen["duration"] - known[os.path.basename(path)]["duration"]), 0.35, path)
            print(len(videos), "recordings")
            self.assertGreater(len(videos), 2)
            self.assertEqual(set(known), {os.path.basename(path) for path in videos})
            self.record(program)

    def test_thirty_pauses_in_three_seconds_keep_the_file_as_long_as_the_session(self):
        moments = random.Random(30)
        with Stage("motion"), Program() as program:
            path = program.begin_recording()
            time.sleep(1)
            for _ in range(30):
                press("ctrl+p")
                time.sleep(moments.uniform(0.01, 0.15))
            time.sleep(1)
            entry = program.end_recording(path)
            seen = judge(path, "--counter", "0,0")
        self.assertEqual(seen["decodeErrors"], 0)
        times = [frame["t"] for frame in seen["frames"]]
        self.assertTrue(all(b > a for a, b in zip(times, times[1:])))
        for stream in seen["streams"]:
            # The file pauses when the recorder's queue comes to it, the session at the key: a few milliseconds each time.
            self.assertLess(abs(stream["duration"] - entry["duration"]), 0.25, (stream, entry["duration"]))


if __name__ == "__main__":
    enter_mounts_of_our_own()
    unittest.main(verbosity=2)

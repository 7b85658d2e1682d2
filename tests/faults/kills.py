"""Kills the program at chance moments of each phase of a recording, starts it again and looks at what the library holds."""

import itertools
import os
import time
from collections import defaultdict, deque

from orders import SLOW
from program import Stage, press, wait_until
from subject import MARK_SETTLES_S, Subject, kit_of, look_at, now_ms, record_of, since, table

LONGEST_LOSS_S = 1.0
MOST_TRIES = 2        # for each kill: those that come before the first picture do not count


class Kill:
    """One recording, one kill. Steps of a phase leave what they know here."""

    def __init__(self, subject, chance):
        self.subject = subject
        self.chance = chance
        self.video = None
        self.began = None     # ms: the first sample was seen in the file
        self.content_end = None  # ms: what was on the screen until then belongs to the class
        self.marks = []       # ms of the key presses
        self.expected = None  # name of the video afterwards, when it has been renamed

    def pause(self, low, high):
        time.sleep(self.chance.uniform(low, high))

    def begin(self):
        self.video = self.subject.begin_recording(first_bytes=1000)
        self.began = now_ms()

    def mark(self):
        press("ctrl+m")
        self.marks.append(now_ms())

    def record_with_a_mark(self, least=0.5, most=1):
        """Begins and records so many seconds, a marker and a little more."""
        self.begin()
        self.pause(least, most)
        self.mark()
        self.pause(0.3, 0.5)

    def stop(self):
        self.content_end = now_ms()
        press("ctrl+g")

    def die(self):
        at = self.subject.kill()
        self.content_end = self.content_end or at
        return at


def at_start(kill):
    kill.subject.orders.give(SLOW, milliseconds=kill.chance.choice((0, 40)), times=6, part="Grabaci")
    press("ctrl+g")
    end = time.monotonic() + kill.chance.uniform(0, 1.5)
    while time.monotonic() < end:
        videos = kill.subject.videos()
        if kill.began is None and videos and os.path.getsize(videos[0]) > 1000:
            kill.began = now_ms()
        time.sleep(0.005)


def while_recording(kill):
    kill.begin()
    kill.pause(0.1, 1.5)
    for _ in range(kill.chance.randint(0, 2)):
        kill.mark()
        kill.pause(0.05, 1)


def while_paused(kill):
    kill.record_with_a_mark(0.3, 1.5)
    kill.content_end = now_ms()
    press("ctrl+p")
    kill.pause(0, 1.5)


def while_stopping(kill):
    kill.record_with_a_mark(0.5, 2)
    kill.subject.orders.give(SLOW, milliseconds=25, part="Grabaci")  # a slow disk, so that each step can be hit
    kill.stop()
    kill.pause(0, 0.8)


def while_mixing(kill):
    kill.subject.orders.give(SLOW, milliseconds=150, part=".mezcla-")
    kill.record_with_a_mark(1, 2)
    kill.stop()
    wait_until("mixing", lambda: hidden(kill.subject, ".mezcla-"))
    kill.pause(0, 0.6)


def while_writing_the_class_folder(kill):
    kill.subject.orders.give(SLOW, milliseconds=60, part=".velmo-parte")
    kill.record_with_a_mark()
    kill.stop()
    wait_until("the class folder", lambda: hidden(kill.subject, ".velmo-parte"))
    kill.pause(0, 0.6)


def while_renaming(kill):
    kill.record_with_a_mark()
    kill.stop()
    kill.subject.wait_saved(kill.video)
    time.sleep(0.5)  # the window has the keys
    kill.subject.orders.give(SLOW, milliseconds=40)
    press("F2")
    wait_until("the question for a name", lambda: kill.subject.has_window("Renombrar grabación"))
    name = f"Clase {kill.chance.randint(0, 10**6)}"
    kill.subject.type(name)
    press("Return")
    kill.expected = name + ".mp4"
    kill.pause(0, 0.8)


def while_recovering(kill):
    """Twice at chance moments, before the one that counts."""
    kill.record_with_a_mark()
    kill.die()
    for _ in range(kill.chance.randint(1, 2)):
        kill.subject.orders.give(SLOW, milliseconds=20)
        kill.subject.start()
        kill.pause(0, 0.8)
        kill.subject.kill()
    kill.subject.orders.give(SLOW, milliseconds=20)
    kill.subject.start()
    kill.pause(0, 0.4)


def hidden(subject, part):
    return [name for name in os.listdir(subject.library) if part in name]


PHASES = {"start": at_start, "recording": while_recording, "pause": while_paused, "stop": while_stopping,
          "mixing": while_mixing, "class folder": while_writing_the_class_folder, "rename": while_renaming,
          "recovery": while_recovering}


class Verdict:
    def __init__(self):
        self.lost = 0.0
        self.faults = []
        self.kept = False
        self.had_something = True  # by the time of the kill
        self.had_work = False
        self.sidecars = True
        self.load = 0.0

    def check(self, what, holds, sidecar=True):
        if not holds:
            self.faults.append(what)
            self.sidecars = self.sidecars and not sidecar


def judge_kill(kill, killed_at):
    """After the next launch."""
    verdict = Verdict()
    videos = kill.subject.videos()
    recorded = (min(killed_at, kill.content_end) - kill.began) / 1000 if kill.began else 0
    if not videos:
        verdict.lost = max(recorded, 0)
        verdict.had_something = kill.began is not None
        return verdict
    verdict.check(f"one video and not {videos}", len(videos) == 1)
    seen = look_at(videos[0])
    verdict.kept = seen["plays"]
    verdict.check(f"does not play: {seen}", seen["plays"], sidecar=False)
    if seen["last"] is not None:
        verdict.lost = max(since(seen["last"], min(killed_at, kill.content_end)), 0)
    else:
        verdict.lost = max(recorded, 0)
    check_sidecars(verdict, kill, killed_at, videos[0], seen)
    return verdict


def check_sidecars(verdict, kill, killed_at, video, seen):
    subject = kill.subject
    entry = subject.metadata().get(os.path.basename(video))
    verdict.check("no entry", entry is not None)
    if entry is None:
        return
    verdict.check(f"length {entry['duration']} against {seen['duration']}", abs(entry["duration"] - seen["duration"]) < 0.6)
    sure = [mark for mark in kill.marks if killed_at - mark > MARK_SETTLES_S * 1000]
    verdict.check(f"{len(entry['markers'])} marks of {len(kill.marks)}",
                  len(sure) <= len(entry["markers"]) <= len(kill.marks))
    verdict.check("not mixed", seen["sounds"] <= 1)
    if kill.expected is not None:
        verdict.check("neither the old name nor the new", os.path.basename(video) in
                      (os.path.basename(kill.video), kill.expected))
    folder = subject.class_folder(video)
    folders = [name for name in os.listdir(subject.library) if name.endswith(" · material")]
    wanted = [os.path.basename(folder)] if entry["markers"] or kill.has_kit else []
    verdict.check(f"class folders {folders}", folders == wanted)
    if folders == wanted and wanted:
        record = record_of(folder)
        verdict.check("class record of another video", record["video"] == os.path.basename(video))
        verdict.check("chapters", [chapter["time"] for chapter in record["chapters"]] == entry["markers"])
        verdict.check("no page", os.path.exists(os.path.join(folder, "Ver la clase.html")))
        copied = record["copied"][1::2]
        verdict.check("material", len(copied) == kill.has_kit and
                      all(os.path.exists(os.path.join(folder, name)) for name in copied))
    verdict.check(f"left behind: {subject.left_behind()}", not subject.left_behind())


def one_kill(subject, phase, chance, files):
    subject.clear_library()
    kill = Kill(subject, chance)
    kill.has_kit = files
    PHASES[phase](kill)
    killed_at = kill.die()
    load = os.getloadavg()[0]
    work_left = subject.left_behind()
    subject.relaunch()
    verdict = judge_kill(kill, killed_at)
    verdict.had_work = bool(work_left)
    verdict.load = load
    shown = subject.dismiss_notices()
    told = [name for name in shown if name.startswith("Grabaci")]
    verdict.check(f"told {shown}", len(told) <= 1)
    return verdict


def run(options, chance):
    home = os.environ["HOME"]
    files = [os.path.join(home, name) for name in ("guía.pdf", "lámina.png")]
    for file in files:
        with open(file, "wb") as out:
            out.write(os.urandom(300_000))
    results = defaultdict(list)
    faults = []
    waiting = deque(itertools.islice(itertools.cycle(PHASES), options.kills))
    with Stage("motion", "--clock", "--size", "800x450", "--unmanaged"), \
            Subject(**{"kit.items": kit_of(*files)}) as subject:
        for number in range(MOST_TRIES * options.kills):
            if not waiting:
                break
            phase = waiting.popleft()
            try:
                verdict = one_kill(subject, phase, chance, len(files))
            except AssertionError as error:
                verdict = Verdict()
                verdict.faults.append(f"{error}")
                verdict.sidecars = False
                subject.quit()
                subject.start()
            results[phase].append(verdict)
            if not verdict.had_something:
                waiting.append(phase)  # nothing was put to the test
            if verdict.lost > LONGEST_LOSS_S:
                verdict.faults.append(f"lost {verdict.lost:.2f} s")
            faults += [f"kill {number} ({phase}): {fault}" for fault in verdict.faults]
            work = "with" if verdict.had_work else "without"
            print(f"kill {number} {phase}: {work} work left, load {verdict.load:.0f}, lost {verdict.lost:.2f} s {'; '.join(verdict.faults)}", flush=True)
    faults += [f"no kill while there was something: {phase}" for phase in waiting]
    loads = sorted(verdict.load for verdict in sum(results.values(), []))
    print(f"\n{os.cpu_count()} cores; load at the kills: middle {loads[len(loads) // 2]:.0f}, most {loads[-1]:.0f}")
    table("Kills", ("phase", "tried", "too early", "work left behind", "playable", "worst seconds lost", "sidecars right"),
          [row(phase, results[phase]) for phase in PHASES] + [row("all", sum(results.values(), []))])
    return faults


def row(phase, verdicts):
    return (phase, len(verdicts), sum(not verdict.had_something for verdict in verdicts),
            sum(verdict.had_work for verdict in verdicts), sum(verdict.kept for verdict in verdicts),
            f"{max((verdict.lost for verdict in verdicts), default=0):.2f}",
            sum(verdict.sidecars for verdict in verdicts))

"""Lets writes fail while a class is recorded, and looks at what is there when the disk works again."""

import errno
import os
import time

from orders import FAIL, SHORT, SLOW
from program import Stage, press, wait_until
from subject import MARK_SETTLES_S, Subject, look_at, now_ms, since, table

NUMBERS = (errno.ENOSPC, errno.EIO, errno.EROFS, errno.ENODEV)
PLACES = (("the video", ".mp4"), ("the journal", ".velmo-journal"), ("any file", ""))
TIMES = (("once", dict(times=1)), ("every 7th time", dict(every=7)), ("from then on", dict()))
STEPS_OF_A_STOP = (1, 2, 3, 5, 8, 13, 21, 34)


class Misbehaviour:
    """Of the disk, by orders to the shim."""

    def __init__(self, mode, **how):
        self.mode = mode
        self.how = how

    def begin(self, subject):
        subject.orders.give(self.mode, **self.how)

    def end(self, subject):
        subject.orders.clear()


# What is tried, what it is, when it begins, and whether the recording is to end then.
CASES = [(f"{errno.errorcode[number]} {when} on {where}", Misbehaviour(FAIL, error=number, part=part, **how), "recording", "ends")
         for number in NUMBERS for where, part in PLACES for when, how in TIMES]
CASES += [(f"{errno.errorcode[number]} at write {nth} of the stop", Misbehaviour(FAIL, error=number, every=nth, times=1), "stop", "goes on")
          for number in (errno.ENOSPC, errno.EIO) for nth in STEPS_OF_A_STOP]
CASES += [("half of each write", Misbehaviour(SHORT), "recording", "goes on"),
          ("10 ms for each write", Misbehaviour(SLOW, milliseconds=10, part=".mp4"), "recording", "goes on")]


def one_case(subject, fault, when, chance):
    """What was told, whether it was saved at once, what is left of it."""
    subject.clear_library()
    video = subject.begin_recording(first_bytes=1000)
    began = now_ms()
    time.sleep(chance.uniform(1, 2))
    struck = now_ms()
    if when == "recording":
        fault.begin(subject)
        time.sleep(2)
    told = subject.dismiss_notices()
    stopped = now_ms()
    if when == "stop":
        press("ctrl+m")
        time.sleep(MARK_SETTLES_S)
        struck = stopped = now_ms()
        fault.begin(subject)
    if not told and not subject.library_window():  # else it has ended by itself, and the key would begin anew
        press("ctrl+g")
    wait_until("the end of the recording", lambda: told.extend(subject.dismiss_notices()) or subject.library_window())
    time.sleep(0.5)
    told += subject.dismiss_notices()
    alive = subject.process.poll() is None
    saved = os.path.exists(video) and "No se pudo guardar la grabación" not in told
    fault.end(subject)
    subject.quit()
    subject.relaunch()
    told += subject.dismiss_notices()
    videos = subject.videos()
    seen = look_at(videos[0]) if len(videos) == 1 else None
    return {"told": told, "alive": alive, "saved": saved, "seen": seen, "began": began, "struck": struck,
            "stopped": stopped}


def faults_of(name, ending, result):
    faults = []
    seen = result["seen"]
    if not result["alive"]:
        faults.append("the program is gone")
    if seen is None or not seen["plays"]:
        faults.append(f"not playable: {seen}")
        return faults
    until = result["struck"] if ending == "ends" else result["stopped"]
    lost = since(seen["last"], until)
    if lost > 1:
        faults.append(f"lost {lost:.2f} s")
    if ending == "ends" and not result["told"] and since(seen["last"], result["stopped"]) > 1:
        faults.append("ended without a word")
    return faults


def run(options, chance):
    with Stage("motion", "--clock", "--size", "800x450", "--unmanaged"), Subject() as subject:
        return run_cases("Writes that fail", CASES, subject, chance)


def run_cases(title, cases, subject, chance):
    rows = []
    faults = []
    for name, fault, when, ending in cases:
        try:
            result = one_case(subject, fault, when, chance)
            found = faults_of(name, ending, result)
        except AssertionError as error:
            result = {"told": [], "saved": False, "seen": None, "struck": 0}
            found = [str(error)]
            fault.end(subject)
            subject.quit()
            subject.start()
        seen = result["seen"]
        lost = max(since(seen["last"], result["struck"]), 0) if seen and seen["last"] is not None else "-"
        rows.append((name, "at once" if result["saved"] else "at the next launch" if seen else "no",
                     "yes" if seen and seen["plays"] else "no", lost if lost == "-" else f"{lost:.2f}",
                     " / ".join(dict.fromkeys(result["told"])) or "-"))
        faults += [f"{name}: {each}" for each in found]
        print(rows[-1], found, flush=True)
    table(title, ("what", "saved", "playable", "seconds lost before it", "told"), rows)
    return faults

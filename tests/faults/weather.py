"""What comes over a class from outside: the program held up, a disk that stalls, sound and clock that jump."""

import os
import signal
import time

from orders import STALL
from program import Stage, press
from subject import Subject, look_at, now_ms, since, table
from test_bad_days import SoundServer


def held_up(subject):
    subject.process.send_signal(signal.SIGSTOP)
    time.sleep(5)
    subject.process.send_signal(signal.SIGCONT)


def stalled_disk(subject):
    subject.orders.give(STALL, milliseconds=3000, times=1)
    time.sleep(4)
    subject.orders.clear()


def clock_forward(subject):
    subject.orders.jump(86400)


def clock_back(subject):
    subject.orders.jump(-86400)


CASES = [("SIGSTOP for 5 s", held_up), ("the disk stalls for 3 s", stalled_disk), ("the clock jumps a day ahead", clock_forward),
         ("the clock jumps a day back", clock_back)]


def one_case(subject, happen):
    subject.clear_library()
    video = subject.begin_recording(first_bytes=1000)
    begin = now_ms()
    time.sleep(2)
    happen(subject)
    time.sleep(2)
    end = now_ms()
    entry = subject.end_recording(video)
    subject.orders.jump(0)
    return {"seen": look_at(video), "entry": entry, "seconds": (end - begin) / 1000, "end": end}


def run(options, chance):
    rows = []
    faults = []

    def case(subject, name, happen):
        found = []
        try:
            result = one_case(subject, happen)
            seen = result["seen"]
            lost = since(seen["last"], result["end"])
            found += [] if seen["plays"] else ["not playable"]
            found += [] if lost < 1 else [f"lost {lost:.2f} s at the end"]
            found += [] if abs(seen["duration"] - result["seconds"]) < 1.5 else [
                f"lasts {seen['duration']:.1f} s and not {result['seconds']:.1f} s"]
            rows.append((name, "yes" if seen["plays"] else "no", f"{result['seconds']:.1f}", f"{seen['duration']:.1f}",
                         f"{max(lost, 0):.2f}"))
        except AssertionError as error:
            found.append(str(error))
            rows.append((name, "no", "-", "-", "-"))
        faults.extend(f"{name}: {fault}" for fault in found)
        print(rows[-1], found, flush=True)

    with Stage("motion", "--clock", "--size", "800x450", "--unmanaged"):
        with Subject() as subject:
            for name, happen in CASES:
                case(subject, name, happen)
        with SoundServer() as server, Subject() as subject:
            def reborn(_):
                server.die()
                time.sleep(2)
                server.start()
            case(subject, "the sound server is killed and comes back", reborn)
    table("Weather", ("what", "playable", "seconds recorded", "seconds in the file", "lost at the end"), rows)
    return faults

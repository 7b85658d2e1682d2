"""Pulls out the drive that a class is recorded onto, and plugs it in again at the next launch."""

import errno
import os
import shutil
import subprocess

from orders import FAIL
from program import Stage
from subject import Subject
from writes import run_cases

LIBRARY = os.path.join(os.environ.get("HOME", ""), "Videos", "Velmo Studio")
PULLED = os.path.join(os.path.dirname(LIBRARY), ".pulled")


class Drive:
    """A file system of its own as library folder. Gone, its folder is gone and what was open on it fails."""

    def __enter__(self):
        shutil.rmtree(LIBRARY, ignore_errors=True)  # it goes with the drive
        for folder in (LIBRARY, PULLED):
            os.makedirs(folder)
        subprocess.run(["mount", "-t", "tmpfs", "tmpfs", LIBRARY], check=True)
        self.there = True
        return self

    def __exit__(self, *_):
        subprocess.run(["umount", "--lazy", LIBRARY if self.there else PULLED], check=True)

    def begin(self, subject):
        subject.orders.give(FAIL, error=errno.ENODEV, part="/.pulled/")
        subprocess.run(["mount", "--move", LIBRARY, PULLED], check=True)
        self.there = False
        os.rmdir(LIBRARY)

    def end(self, subject):
        """After a launch without it, in which the library folder is made anew."""
        if self.there:
            return
        subject.quit()
        subject.start()
        subject.dismiss_notices()
        subject.orders.clear()
        subprocess.run(["mount", "--move", PULLED, LIBRARY], check=True)
        self.there = True


def run(options, chance):
    with Drive() as drive, Stage("motion", "--clock", "--size", "800x450", "--unmanaged"), Subject() as subject:
        cases = [("while recording", drive, "recording", "ends"), ("at the stop", drive, "stop", "goes on")]
        return run_cases("The drive is pulled out", cases, subject, chance)

"""The disk runs out in the middle of a class: the recording ends by itself and what it has is kept.

Runs in a mount namespace of its own, with a small file system in place of the videos folder."""

import os
import subprocess
import time
import unittest

from mounts import enter_mounts_of_our_own
from program import Program, Stage, judge, output, press, wait_until


class FullDisk(unittest.TestCase):
    def test_the_recording_ends_by_itself_and_keeps_what_it_has(self):
        videos = os.path.join(os.environ["HOME"], "Videos")
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64m", "tmpfs", videos], check=True)
        with Stage("motion"), Program() as program:
            press("ctrl+g")
            wait_until("the warning about little room",
                       lambda: output("xdotool", "search", "--onlyvisible", "--name", "Antes de grabar"))
            time.sleep(0.5)
            press("Tab", "space")  # from "Cancelar", which has the focus, to "Grabar igual"
            path = wait_until("a video", program.videos)[0]
            entry = program.wait_saved(path)
            self.assertIsNone(program.process.poll())
            seen = judge(path, "--counter", "0,0")
        self.assertEqual(seen["decodeErrors"], 0)
        self.assertGreater(seen["duration"], 1)
        self.assertLess(abs(seen["duration"] - entry["duration"]), 2)


if __name__ == "__main__":
    enter_mounts_of_our_own()
    unittest.main(verbosity=2)

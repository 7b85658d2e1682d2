"""The X server dies in the middle of a class: what was recorded is a finished, playable file."""

import os
import signal
import subprocess
import time
import unittest

from program import Program, Stage, judge, wait_until


class ServerGone(unittest.TestCase):
    def test_the_file_is_finished_and_playable(self):
        number = self.start_server()
        os.environ["DISPLAY"] = number
        stage = Stage("motion", "--size", "1280x720")
        program = Program()
        path = program.begin_recording()
        time.sleep(3)
        self.server.send_signal(signal.SIGKILL)
        self.server.wait()
        wait_until("the end of the program", lambda: program.process.poll() is not None)
        stage.process.wait()
        seen = judge(path, "--counter", "0,0")
        self.assertEqual(seen["decodeErrors"], 0)
        self.assertGreater(seen["duration"], 2)
        self.assertIn(os.path.basename(path), program.metadata(), "and the library knows it")

    def start_server(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x720x24", "-nolisten", "tcp", "-noreset"],
                                       pass_fds=(write,), stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            return ":" + numbers.readline().strip()

    def tearDown(self):
        if self.server.poll() is None:
            self.server.kill()
            self.server.wait()


if __name__ == "__main__":
    unittest.main(verbosity=2)

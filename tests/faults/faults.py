"""Does to the program what nobody should do to it, and looks at what is left of the class.

    python3 tests/faults/faults.py [--kills N] [--seed S] [--only kills,writes,drive,weather]

Run on a private desktop, see `./test --faults`. Prints a table for each group, and ends with an error when a class was
lost or more than its last second is missing."""

import argparse
import os
import random
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

import drive
import kills
import weather
import writes
from mounts import enter_mounts_of_our_own

GROUPS = {"kills": kills.run, "writes": writes.run, "drive": drive.run, "weather": weather.run}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--kills", type=int, default=200)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--only", default=",".join(GROUPS))
    options = parser.parse_args()
    if "DESK_FOLDER" not in os.environ:
        parser.error("it empties the library folder: only on a private desktop, by ./test --faults")
    print(f"seed {options.seed}", flush=True)
    begin = time.monotonic()
    faults = []
    for name in options.only.split(","):
        faults += GROUPS[name](options, random.Random(options.seed))
    print(f"\n{time.monotonic() - begin:.0f} s")
    for fault in faults:
        print("FAULT:", fault)
    return 1 if faults else 0


if __name__ == "__main__":
    enter_mounts_of_our_own()
    sys.exit(main())

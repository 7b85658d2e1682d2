"""What the kernel tells of a running process."""

import os


def cpu_seconds(pid):
    """Of the process and its ended children."""
    with open(f"/proc/{pid}/stat") as file:
        fields = file.read().rsplit(") ", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def resident_mib(pid, field="VmRSS"):
    """`field` is VmRSS for now, VmHWM for the peak."""
    with open(f"/proc/{pid}/status") as file:
        return next(int(line.split()[1]) / 1024 for line in file if line.startswith(field + ":"))


def open_files(pid):
    """How many file handles it holds."""
    return len(os.listdir(f"/proc/{pid}/fd"))

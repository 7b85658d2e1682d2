#!/usr/bin/env python3
"""Checks that includes follow the arrows between the rooms of src/, and a few habits that no compiler checks."""

import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

# What each room may include besides itself.
DOMAIN = {"base", "media", "platform"}
MODELS = DOMAIN | {"settings", "classkit", "library"}
SESSION = MODELS | {"compositor", "capture", "session"}
SEES = {
    "base": set(),
    "media": {"base"},
    "platform": {"base", "media"},
    "compositor": {"base", "media"},
    "capture": DOMAIN | {"compositor"},
    "settings": DOMAIN,
    "classkit": DOMAIN | {"settings"},
    "library": DOMAIN | {"settings", "classkit"},
    "session": SESSION,
    "ui": {"base", "platform"},
    "surfaces": SESSION | {"ui"},
    "panels": SESSION | {"ui"},
    "library/views": SESSION | {"ui"},
    "classkit/views": SESSION | {"ui"},
    "whiteboard": SESSION | {"ui"},
}
NO_QT = {"base", "media", "capture"}
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.MULTILINE)


def room_of(path):
    parts = path.split("/")
    if len(parts) > 2 and parts[1] == "views":
        return "/".join(parts[:2])
    if parts[0] == "platform":
        return "platform" if len(parts) == 2 else "/".join(parts[:2])
    return parts[0]


def target_of(include):
    if "/" not in include or not os.path.exists(os.path.join(ROOT, "src", include)):
        return None
    return room_of(include)


def complaints(path, text):
    room = room_of(path)
    for bracket, include in INCLUDE.findall(text):
        target = target_of(include) if bracket == '"' else None
        if target and target != room:
            backend = target.startswith("platform/")
            if room == "app":
                pass
            elif backend:
                yield f"names the backend {include}"
            elif room.startswith("platform/"):
                if target not in DOMAIN:
                    yield f"includes {include}"
            elif target not in SEES[room]:
                yield f"includes {include}"
        if room in NO_QT and bracket == "<" and re.match(r"Q[A-Z]", include):
            yield f"includes {include}, this room is without Qt"
        if bracket == "<" and re.match(r"Qt(Core|Gui|Widgets|DBus|Network|Svg)$", include):
            yield f"includes the umbrella header {include}"
    if path.endswith(".h") and "#pragma once" not in text.splitlines()[:1]:
        yield "does not begin with #pragma once"
    lines = text.count("\n")
    if lines > 600:
        yield f"has {lines} lines: two jobs in one file"


def main():
    failures = 0
    for folder, _, files in os.walk(os.path.join(ROOT, "src")):
        for name in sorted(files):
            if not name.endswith((".h", ".cpp")):
                continue
            path = os.path.relpath(os.path.join(folder, name), os.path.join(ROOT, "src"))
            with open(os.path.join(folder, name), encoding="utf-8") as file:
                for complaint in complaints(path, file.read()):
                    print(f"src/{path} {complaint}")
                    failures += 1
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())

"""The motion of the zoom, written once more from its definition, to hold the finished video against.

Positions are normalised: 0 to 1 across the screen, y upward. Only what a mouse that is followed needs: no region, no anchor.
"""

LONGEST_STEP = 0.1
SCALE_SPEED, SCALE_SNAP = 6.0, 0.002
CENTER_SPEED = 5.0
DEAD_ZONE = 0.55


def clamp(value, low, high):
    return max(low, min(high, value))


class ZoomLaw:
    def __init__(self, level=2.0, mouse=(0.5, 0.5)):
        self.level = level
        self.mouse = mouse
        self.on = False
        self.scale = 1.0
        self.center = (0.5, 0.5)
        self.target_center = (0.5, 0.5)
        self.target = 1.0
        self.begun = None  # origin and width of the window when the transition began, and the point that stays put
        self.last = None

    def copy(self):
        other = ZoomLaw()
        other.__dict__.update(self.__dict__)
        return other

    def width(self):
        return 1 / max(self.scale, 1.0)

    def step(self, time):
        elapsed = 0.0 if self.last is None else clamp(time - self.last, 0.0, LONGEST_STEP)
        self.last = time
        wanted = self.level if self.on else 1.0
        if wanted != self.target:
            self._retarget(wanted)
        self.scale += (wanted - self.scale) * min(elapsed * SCALE_SPEED, 1.0)
        if abs(wanted - self.scale) < SCALE_SNAP:
            self.scale = wanted
        if self.scale != wanted and self.begun and self.begun[2]:
            self._zoom(wanted)
        else:
            self._pan(elapsed)

    def _retarget(self, wanted):
        self.target = wanted
        old, new = self.width(), 1 / max(wanted, 1.0)
        origin = tuple(c - old / 2 for c in self.center)
        if wanted <= 1.001:
            goal = (0.0, 0.0)
        else:
            held = tuple(clamp(m, o, o + old) for m, o in zip(self.mouse, origin))
            goal = tuple(clamp(h - (h - o) * new / old, 0.0, 1 - new) for h, o in zip(held, origin))
        fixed = None
        if abs(old - new) > 1e-6:
            fixed = tuple((old * g - new * o) / (old - new) for g, o in zip(goal, origin))
        self.begun = (origin, old, fixed)
        self.target_center = tuple(g + new / 2 for g in goal)

    def _zoom(self, wanted):
        origin, old, fixed = self.begun
        width = self.width()
        self.center = tuple(width / 2 + f - (f - o) * width / old for f, o in zip(fixed, origin))
        self.target_center = self.mouse if self.scale < 1.01 and wanted <= 1.001 else self.center

    def _pan(self, elapsed):
        if self.begun:
            self.begun = (*self.begun[:2], None)
        half = self.width() / 2
        margin = half * DEAD_ZONE
        if self.scale < 1.01:
            goal = self.mouse
        else:
            goal = tuple(clamp(c, m - margin, m + margin) for c, m in zip(self.target_center, self.mouse))
        eased = tuple(c + (g - c) * min(elapsed * CENTER_SPEED, 1.0) for c, g in zip(self.center, goal))
        self.target_center = goal
        self.center = tuple(clamp(c, half, 1 - half) for c in eased)

    def place(self, x, y, width, height):
        """Where the pixel position x, y of the screen, from the top left, stands in the frame."""
        size = self.width()
        across = (x / width - self.center[0] + size / 2) / size
        up = (1 - y / height - self.center[1] + size / 2) / size
        return across * width, (1 - up) * height

"""The screen and a finished file, pixel by pixel, for tests that hold the one against the other."""

import subprocess

from program import Stage, luma_of, output

WIDTH, HEIGHT = 1920, 1080
WALL = (0x30, 0x30, 0x30)
FIRST_BUBBLE, SECOND_BUBBLE = "Velmo Studio · cámara", "Velmo Studio · segunda cámara"


def wall():
    """All over the screen, of one colour."""
    return Stage("plain", "--unmanaged", "--color", "%02x%02x%02x" % WALL, "--size", f"{WIDTH}x{HEIGHT}")


def bubble_areas(program):
    """The cameras' visible windows: title -> (x, y, width, height)."""
    named = {output("xdotool", "getwindowname", window): area for window, area in program.windows().items()}
    return {title: area for title in (FIRST_BUBBLE, SECOND_BUBBLE) for name, area in named.items()
            if name.startswith(title + " — ")}


def yuv(rgb):
    """Rec. 709, video range."""
    red, green, blue = rgb
    luma = luma_of(rgb)
    light = 0.2126 * red + 0.7152 * green + 0.0722 * blue
    return luma, 128 + 224 * (blue - light) / 1.8556 / 255, 128 + 224 * (red - light) / 1.5748 / 255


def screen_pixels(x, y, width, height):
    """Rows of (red, green, blue) of the real screen."""
    raw = subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "-depth", "8", "rgb:-"],
                         capture_output=True, check=True).stdout
    line = 3 * width
    return [[tuple(raw[i:i + 3]) for i in range(row * line, (row + 1) * line, 3)] for row in range(height)]


class LastFrame:
    """A file's last picture."""

    BYTES = WIDTH * HEIGHT * 3 // 2

    def __init__(self, path):
        self.data = subprocess.run(["ffmpeg", "-v", "error", "-sseof", "-0.4", "-i", path, "-pix_fmt", "yuv420p",
                                    "-f", "rawvideo", "-"], capture_output=True, check=True).stdout[-self.BYTES:]
        assert len(self.data) == self.BYTES

    def at(self, x, y):
        """Luma."""
        return self.data[y * WIDTH + x]

    def yuv(self, x, y):
        chroma = WIDTH * HEIGHT + (y // 2) * (WIDTH // 2) + x // 2
        return self.at(x, y), self.data[chroma], self.data[chroma + WIDTH * HEIGHT // 4]

    def row(self, y):
        return list(self.data[y * WIDTH:(y + 1) * WIDTH])

    def column(self, x):
        return list(self.data[x:WIDTH * HEIGHT:WIDTH])


def edges(line, outside, inside):
    """Where a line of lumas passes from outside to inside and back, to a part of a pixel."""
    between = (outside + inside) / 2
    places = [x + (between - a) / (b - a) for x, (a, b) in enumerate(zip(line, line[1:])) if (a > between) != (b > between)]
    return places[0], places[-1]

"""The demonstration class: driven from outside by keys and mouse, as a teacher would, then judged by its finished file."""

import math
import os
import shutil
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "e2e"))

import screen_reader  # noqa: E402
from program import Program, Stage, click, flashes, judge, output, press, press_in_library, runs, tool, wait_until  # noqa: E402
from test_class_folder import class_folder, kit  # noqa: E402
from test_kit_panel import middle_of_row, stand_in_for_xdg_open  # noqa: E402

VOICE = ("Hola a todos. Hoy vamos a seguir el viaje de una gota de agua, desde el mar hasta las nubes, y de las nubes otra vez al mar. "
         "El sol calienta el mar, y el agua se vuelve vapor. El vapor es invisible, pero está en el aire que respiramos. "
         "Arriba hace frío, y el vapor se convierte en gotas muy pequeñas. Millones de esas gotas son una nube. "
         "Las gotas se juntan, crecen y pesan. Cuando el aire ya no puede sostenerlas, caen como lluvia, como nieve o como granizo. "
         "Una parte del agua vuelve a los ríos, otra entra en la tierra, y otra la beben las plantas. "
         "Y así el viaje empieza otra vez. Anoten los tres pasos con sus palabras, y nos vemos en la próxima clase.")
COUNTER = (1424, 40)   # where the moving window stands; its upper left corner holds the frame counter
FLASH = (1180, 40)
SECOND_CAMERA = "synthetic:hands"
BAR = "Velmo Studio · controles"
PALETTE = "Paleta de dibujo"
BUBBLE = (172, 860)   # on the camera, clear of its controls
FLASH_S = 6


class Machine:
    """What the recording costs: CPU seconds of a process between two looks."""

    def __init__(self, process):
        self.path = f"/proc/{process.pid}/stat"
        self.begin = self.cpu()
        self.since = time.monotonic()

    def cpu(self):
        with open(self.path) as file:
            fields = file.read().rsplit(") ", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def share(self):
        return (self.cpu() - self.begin) / (time.monotonic() - self.since)


def screenshot(folder, name):
    subprocess.run(["import", "-window", "root", os.path.join(folder, name + ".png")], check=True)


def window(name):
    return wait_until(name, lambda: output("xdotool", "search", "--onlyvisible", "--name", name).split())[0]


def focus(name):
    subprocess.run(["xdotool", "windowfocus", "--sync", window(name)], check=True)


def say(folder):
    wave = os.path.join(folder, "voz.wav")
    subprocess.run(["espeak-ng", "-v", "es", "-s", "150", "-w", wave, VOICE], check=True)
    return subprocess.Popen(["paplay", "--device=micfeed", wave])


def move(*points):
    for x, y in points:
        subprocess.run(["xdotool", "mousemove", str(x), str(y)], check=True)
        time.sleep(0.03)


def glide(start, end, steps=25):
    move(*[(round(start[0] + (end[0] - start[0]) * i / steps), round(start[1] + (end[1] - start[1]) * i / steps))
           for i in range(steps + 1)])


def flash(seconds):
    with Stage("flash", "--size", "220x160", "--at", f"{FLASH[0]},{FLASH[1]}", "--unmanaged"):
        time.sleep(seconds)


def circle(middle, radius=140, turns=1.5, steps=45):
    """A quick circle drawn in the air with the mouse: one call, since a new process for each step would be too slow."""
    chain = []
    for i in range(steps + 1):
        angle = turns * 2 * math.pi * i / steps
        chain += ["mousemove", str(round(middle[0] + radius * math.cos(angle))),
                  str(round(middle[1] + radius * math.sin(angle))), "sleep", "0.012"]
    subprocess.run(["xdotool", *chain], check=True)


def drag(start, end):
    subprocess.run(["xdotool", "mousemove", *map(str, start), "mousedown", "1"], check=True)
    glide(start, end, 15)
    subprocess.run(["xdotool", "mouseup", "1"], check=True)


def write_and_scroll():
    focus("apuntes")
    subprocess.run(["xdotool", "type", "--delay", "60", "echo '1. Evaporacion: el agua sube'\n"], check=True)
    subprocess.run(["xdotool", "type", "--delay", "60", "seq 1 200\n"], check=True)
    subprocess.run(["xdotool", "mousemove", "500", "860", "click", "--repeat", "12", "--delay", "70", "4"], check=True)
    subprocess.run(["xdotool", "click", "--repeat", "12", "--delay", "70", "5"], check=True)


def turn_slide():
    focus("El ciclo del agua")
    press("Right")


def show_closely(folder):
    """Zoom where the mouse is, follow it, an area, and back."""
    move((320, 620))
    press("ctrl+z")
    time.sleep(1.2)
    glide((320, 620), (1300, 560), 40)
    time.sleep(0.6)
    screenshot(folder, "zoom")
    press("ctrl+z")
    time.sleep(1)
    press("ctrl+a")
    time.sleep(0.8)
    screenshot(folder, "elegir-area")
    drag((1060, 300), (1760, 690))
    time.sleep(1.6)
    press("ctrl+z")
    time.sleep(1)


def point_out(folder):
    """The spotlight, the bubble on the pointer, and clicks that are not heard."""
    press("ctrl+f")
    glide((900, 700), (300, 370))
    time.sleep(0.8)
    screenshot(folder, "foco")
    press("ctrl+f")
    time.sleep(0.6)
    circle((620, 520))
    time.sleep(0.8)
    screenshot(folder, "burbuja-del-mouse")
    subprocess.run(["xdotool", "click", "--repeat", "3", "--delay", "300", "1"], check=True)
    time.sleep(2)


def open_material(index):
    """A click on a row of the class material: it opens, and the moment is a chapter."""
    click(*middle_of_row(index, 2))
    time.sleep(0.8)


def material():
    guide = os.path.join(os.environ["HOME"], "Guía del ciclo del agua.txt")
    with open(guide, "w", encoding="utf-8") as file:
        file.write("1. Evaporación\n2. Condensación\n3. Precipitación\n")
    return kit(("file", "Guía del ciclo del agua", guide), ("link", "Mapa de lluvias", "https://example.org/lluvias"))


def only_a_part():
    press("ctrl+r")
    time.sleep(0.8)
    drag((100, 160), (1060, 700))
    time.sleep(2)
    press("ctrl+r")
    time.sleep(0.8)


def come_and_go(folder):
    """The teacher large, beside the slides, in a column, and back in the bubble."""
    for key, scene in (("2", "solo-yo"), ("3", "al-lado"), ("4", "columna")):
        press("ctrl+" + key)
        time.sleep(2.2)
        screenshot(folder, scene)
    press("ctrl+1")
    time.sleep(1.5)


def dress_the_bubble(folder):
    """The size by a double click, the ring by the menu."""
    click(*BUBBLE)
    subprocess.run(["xdotool", "click", "1"], check=True)
    time.sleep(0.8)
    click(*BUBBLE, button=3)
    time.sleep(0.5)
    screenshot(folder, "menu-de-la-burbuja")
    press("Escape")
    move((960, 500))
    time.sleep(1)


def draw_on_the_screen(folder):
    """By the bar's button and the palette's; what was drawn stays when the palette goes."""
    screen_reader.press_on(BAR, "Dibujar sobre la pantalla")
    time.sleep(0.6)
    drag((640, 470), (980, 640))
    screen_reader.press_on(PALETTE, "Elipse a mano")
    drag((560, 420), (1060, 690))
    screen_reader.press_on(PALETTE, "Resaltador")
    drag((420, 300), (900, 305))
    screenshot(folder, "dibujo")
    screen_reader.press_on(PALETTE, "Listo")
    time.sleep(0.8)
    screen_reader.press_on(BAR, "Dibujar sobre la pantalla")
    screen_reader.press_on(PALETTE, "Borrar todo")
    screen_reader.press_on(PALETTE, "Listo")


def prepare(folder, program):
    """A class is prepared in the panel by clicks on its controls, and begun."""
    press_in_library("ctrl+n")
    screen_reader.window("Nueva grabación")
    time.sleep(2.5)
    screenshot(folder, "panel")
    screen_reader.press_on("Nueva grabación", "Comenzar grabación")


def teach(folder):
    """The class itself, between the two presses of the key."""
    flash(FLASH_S)
    voice = say(folder)
    press("ctrl+t")
    turn_slide()
    glide((400, 300), (900, 640))
    press("ctrl+m")
    time.sleep(0.4)
    screenshot(folder, "marcador")
    open_material(0)
    write_and_scroll()
    show_closely(folder)
    come_and_go(folder)
    dress_the_bubble(folder)
    draw_on_the_screen(folder)
    turn_slide()
    open_material(1)
    point_out(folder)
    press("ctrl+p")
    time.sleep(0.6)
    screenshot(folder, "pausa")
    time.sleep(1.5)
    press("ctrl+p")
    turn_slide()
    only_a_part()
    press("ctrl+m")
    voice.wait()
    flash(FLASH_S)


def report(folder, video, entry, cpu):
    seen = judge(video, "--counter", f"{COUNTER[0]},{COUNTER[1]}", "--probe", f"{FLASH[0] + 110},{FLASH[1] + 80}")
    counted = runs(seen["frames"])
    # The flash stands on the screen in the first and in the last seconds; between them the voice is what sounds.
    lights = [light for light in flashes(seen["frames"]) if light < FLASH_S or light > seen["duration"] - FLASH_S]
    beeps = [begin for begin, _ in seen["sounds"][0]] if seen["sounds"] else []
    nearest = [min((beep - light for beep in beeps), key=abs) * 1000 for light in lights] if beeps else []
    offsets = [offset for offset in nearest if abs(offset) < 500]
    paused = 1 if any(b["counter"] - a["counter"] > 30 for a, b in zip(seen["frames"], seen["frames"][1:])) else 0
    skipped = sum(b["counter"] - a["counter"] - 1 for a, b in zip(seen["frames"], seen["frames"][1:])
                  if 1 < b["counter"] - a["counter"] <= 30 and a["counter"] >= 0)
    lines = [f"Video: {os.path.basename(video)}",
             f"Duration: {seen['duration']:.2f} s in the file, {entry['duration']:.2f} s by the session's clock, {paused} pause",
             "Chapters: " + ", ".join(f"{title} at {time_:.2f} s" for time_, title in zip(entry["markers"], entry.get("titles", [])))]
    for stream in seen["streams"]:
        size = f" {stream['width']}x{stream['height']}" if stream["type"] == "video" else f" {stream['sampleRate']} Hz"
        lines.append(f"Stream: {stream['codec']} {stream['profile']}{size}, {stream['bitRate'] / 1e6:.2f} Mbit/s")
    lines += [f"Frames: {len(seen['frames'])}, of the moving window's {counted['frames']} skipped {skipped}, decode errors {seen['decodeErrors']}",
              "Sound against picture: " + ", ".join(f"{offset:+.0f} ms" for offset in offsets),
              f"CPU of the program while recording: {cpu * 100:.0f} % of one core"]
    with open(os.path.join(folder, "informe.txt"), "w") as file:
        file.write("\n".join(lines) + "\n")
    print("\n".join(lines))


def contact_sheet(folder, video, duration):
    step = max(duration / 12, 0.1)
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-i", video, "-vf", f"fps=1/{step:.3f},scale=640:-2,tile=3x4:padding=8:color=0x0A1D16",
                    "-frames:v", "1", os.path.join(folder, "hoja.png")], check=True)


def main():
    folder = sys.argv[1]
    screen_reader.switch_on()
    stand_in_for_xdg_open()
    slides = subprocess.Popen([tool("velmo-demo-slides")])
    window("El ciclo del agua")
    notes = subprocess.Popen(["xterm", "-title", "apuntes", "-fa", "DejaVu Sans Mono", "-fs", "14", "-geometry", "76x12+140+720",
                              "-bg", "#10241d", "-fg", "#f3efe6", "-e", "bash", "--norc"], env={**os.environ, "PS1": "clase $ "})
    window("apuntes")
    with Program(arguments=["--synthetic-cameras", "--no-camera-counter"], countdown=True, systemAudio=True, mode="screenCam",
                 showName=True, presenterName="Ana Torres", presenterRole="Ciencias naturales", secondCameraID=SECOND_CAMERA,
                 scriptText=VOICE, **{"kit.items": material()}) as program:
        time.sleep(1)
        screenshot(folder, "biblioteca-antes")
        prepare(folder, program)
        time.sleep(1.2)
        screenshot(folder, "cuenta-atras")
        source = wait_until("the recording", program.videos)[0]
        wait_until("the first samples", lambda: os.path.getsize(source) > 200)
        machine = Machine(program.process)
        with Stage("motion", "--size", "440x240", "--at", f"{COUNTER[0]},{COUNTER[1]}", "--unmanaged"):
            teach(folder)
            screenshot(folder, "grabando")
        cpu = machine.share()
        entry = program.end_recording(source)
        wait_until("the library window", program.library_window)
        time.sleep(1.5)
        screenshot(folder, "biblioteca")
        video = os.path.join(folder, "clase.mp4")
        shutil.copyfile(source, video)
        shutil.copytree(class_folder(source), os.path.join(folder, "clase · material"), dirs_exist_ok=True)
    for process in (slides, notes):
        process.terminate()
        process.wait()
    contact_sheet(folder, video, entry["duration"])
    report(folder, video, entry, cpu)
    print(video)


if __name__ == "__main__":
    main()

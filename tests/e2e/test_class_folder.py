"""A recording with material or markers gets its class folder, and one without gets none."""

import base64
import json
import os
import time
import unittest
import uuid

from program import Program, Stage, press


def kit(*items):
    """The list of the class kit as the defaults file holds it."""
    listed = [{"id": str(uuid.uuid4()), "kind": kind, "title": title, "location": location}
              for kind, title, location in items]
    return {"base64": base64.b64encode(json.dumps(listed).encode()).decode()}


def class_folder(video):
    return os.path.splitext(video)[0] + " · material"


def text_of(*path):
    with open(os.path.join(*path), encoding="utf-8") as file:
        return file.read()


class ClassFolder(unittest.TestCase):
    def test_holds_the_material_and_the_markers_of_the_class(self):
        guide = os.path.join(os.environ["HOME"], "guía & más.txt")
        with open(guide, "w", encoding="utf-8") as file:
            file.write("contenido")
        material = kit(("file", "guía", guide), ("link", "example.org/a", "https://example.org/a"))
        with Stage("motion"), Program(**{"kit.items": material}) as program:
            video = program.begin_recording()
            time.sleep(2)
            press("ctrl+m")
            time.sleep(1.5)
            press("ctrl+m")
            entry = program.end_recording(video)
            # The folder is finished before the recording comes up in the library.
            folder = class_folder(video)
            record = json.loads(text_of(folder, ".clase.json"))

        self.assertEqual(record["video"], os.path.basename(video))
        self.assertEqual([chapter["title"] for chapter in record["chapters"]], ["Marcador 1", "Marcador 2"])
        self.assertEqual([chapter["time"] for chapter in record["chapters"]], entry["markers"])
        self.assertEqual(text_of(folder, "Material", "guía & más.txt"), "contenido")
        index = text_of(folder, "Índice.txt").splitlines()
        self.assertEqual(index[4], "00:00 Inicio")
        self.assertRegex(index[5], r"^00:0\d Marcador 1$")
        self.assertRegex(index[6], r"^00:0\d Marcador 2$")
        self.assertIn("• example.org/a: https://example.org/a", index)
        self.assertIn("• guía (Material/guía & más.txt)", index)
        page = text_of(folder, "Ver la clase.html")
        self.assertIn(f'data-t="{entry["markers"][0]}"', page)
        self.assertIn('href="Material/gu%C3%ADa%20&amp;%20m%C3%A1s.txt"', page)

    def test_is_not_made_without_material_and_markers(self):
        with Stage("motion"), Program() as program:
            video = program.begin_recording()
            time.sleep(1)
            program.end_recording(video)
            self.assertFalse(os.path.exists(class_folder(video)))


if __name__ == "__main__":
    unittest.main()

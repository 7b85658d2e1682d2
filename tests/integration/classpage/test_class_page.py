"""A finished class folder is opened in a real browser: test_class_page.py <program that writes class folders>"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
import urllib.parse
import uuid

from browser import Browser

WRITER = sys.argv.pop(1)
PAGE = "Ver la clase.html"

FILE_NAMES = ["guía de álgebra.txt", "a & b &amp; c.txt", "tema #1.txt", "100% seguro %41.txt", "comillas \" y '.txt",
              "punto · medio.txt", "¿qué? (2ª parte).txt", "<b>ñandú<!-- .txt", "a;b=c@d,e!f$g+h~i.txt", "raya\\vertical|.txt",
              "[corchetes] {llaves} ^`.txt", "https:__a.b.txt", "日本語 😀.txt", "مرحبا.txt"]

HARD_TITLES = ["</title><script>console.error('ran')</script>", "\"><img src=https://outside.invalid/a.png>",
               "' onerror='console.error(1)", "&lt;b&gt; &amp; <b>", "dos\nlíneas", "שלום \u202e مرحبا", "larga " * 1700]


def item(kind, title, location):
    return {"id": str(uuid.uuid4()), "kind": kind, "title": title, "location": str(location)}


def chapter(time, title):
    return {"time": time, "title": title}


class ClassPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="velmo-class-")
        cls.root = pathlib.Path(cls.folder.name) / "Videos de Ana · 2ª"
        cls.root.mkdir()
        cls.video = cls.root / "Álgebra & \"geometría\" #1 · 50%.mp4"
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc2=size=320x180:rate=30:duration=20",
                        "-f", "lavfi", "-i", "sine=frequency=440:duration=20", "-c:v", "libx264", "-pix_fmt", "yuv420p",
                        "-preset", "ultrafast", "-g", "30", "-c:a", "aac", str(cls.video)], check=True)
        cls.browser = Browser()
        cls.tab = cls.browser.tabs[0]

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.folder.cleanup()

    def setUp(self):
        self.browser.requests.clear()
        self.browser.complaints.clear()

    def tearDown(self):
        # The pictures on the browser's own buttons for the video are data.
        outside = [url for url in self.browser.requests if not url.startswith(("file:///", "data:"))]
        self.assertEqual(outside, [], "nothing is fetched from outside")
        self.assertGreater(len(self.browser.requests), 0, "the requests were watched")
        self.assertEqual(self.browser.complaints, [])

    def write_class(self, items=(), chapters=()):
        given = {"video": str(self.video), "items": list(items), "chapters": list(chapters)}
        written = subprocess.run([WRITER], input=json.dumps(given), capture_output=True, text=True, check=True)
        return pathlib.Path(written.stdout)

    def open_class(self, items=(), chapters=()):
        folder = self.write_class(items, chapters)
        self.tab.open((folder / PAGE).as_uri())
        return folder

    def texts(self, selector):
        return self.tab.evaluate(f"[...document.querySelectorAll({json.dumps(selector)})].map(e => e.textContent)")

    def test_the_video_plays_and_a_click_on_an_index_row_seeks_and_plays(self):
        self.open_class(chapters=[chapter(12.5, "Segundo"), chapter(4, "Primero")])
        self.assertEqual(self.tab.evaluate("document.title"), self.video.stem)
        self.assertEqual(self.texts("h1"), [self.video.stem])
        self.assertEqual(self.texts("button"), ["00:00Inicio", "00:04Primero", "00:12Segundo"])
        self.tab.until("v.readyState >= 1 || v.error")
        self.assertIsNone(self.tab.evaluate("v.error && v.error.message"))
        self.assertEqual(self.tab.evaluate("[v.videoWidth, v.videoHeight]"), [320, 180])
        self.assertTrue(self.tab.evaluate("v.paused"))

        self.tab.evaluate("v.addEventListener('seeking', () => { window.sought = v.currentTime; })")
        for row, time in ((2, 12.5), (1, 4), (0, 0)):
            self.tab.evaluate("v.pause(); delete window.sought; window.shown = v.getVideoPlaybackQuality().totalVideoFrames")
            self.tab.click(f"document.querySelectorAll('button')[{row}]")
            self.tab.until("window.sought !== undefined && !v.seeking")
            self.assertEqual(self.tab.evaluate("window.sought"), time)
            self.tab.until(f"!v.paused && v.currentTime > {time} && v.currentTime < {time} + 6")
            self.tab.until("v.getVideoPlaybackQuality().totalVideoFrames > window.shown + 5")
        self.assertIsNone(self.tab.evaluate("v.error && v.error.message"))

    def test_links_to_the_material_open_the_copied_files(self):
        sources = self.root / "material de antes"
        sources.mkdir()
        items = []
        for name in FILE_NAMES:
            (sources / name).write_text("Esto es " + name, encoding="utf-8")
            items.append(item("file", name, sources / name))
        (sources / "otra").mkdir()
        (sources / "otra" / FILE_NAMES[0]).write_text("Esto es la otra", encoding="utf-8")
        items.append(item("file", "otra", sources / "otra" / FILE_NAMES[0]))
        contents = ["Esto es " + name for name in FILE_NAMES] + ["Esto es la otra"]

        folder = self.open_class(items)
        # Only the copies can answer from here on.
        for source in items:
            os.remove(source["location"])

        links = self.tab.evaluate("[...document.querySelectorAll('a')].map(a => a.href)")
        self.assertEqual(len(links), len(items))
        for link, content in zip(links, contents):
            path = pathlib.Path(urllib.parse.unquote(urllib.parse.urlsplit(link).path))
            self.assertEqual(path.parent, folder / "Material")
            self.assertEqual(path.read_text(encoding="utf-8"), content)
            self.assertEqual((urllib.parse.urlsplit(link).query, urllib.parse.urlsplit(link).fragment), ("", ""))

        for number, content in enumerate(contents):
            known = len(self.browser.tabs)
            self.tab.click(f"document.querySelectorAll('a')[{number}]")
            self.browser.wait_for("the material's tab", lambda: len(self.browser.tabs) > known)
            opened = self.browser.tabs[-1]
            self.assertEqual(opened.until("document.readyState === 'complete' && document.body.innerText"), content)
            opened.send("Page.close")

    def test_the_watch_would_see_a_page_that_reaches_out_or_complains(self):
        page = self.root / "otra.html"
        page.write_text("<img src='https://outside.invalid/a.png'><script>console.error('a'); throw 'b';</script>")
        self.tab.open(page.as_uri())
        self.browser.wait_for("the request", lambda: "https://outside.invalid/a.png" in self.browser.requests)
        self.browser.wait_for("complaints of script and network", lambda: len(self.browser.complaints) >= 3)
        self.browser.requests[:] = [page.as_uri()]
        self.browser.complaints.clear()

    def test_web_links_keep_their_address_and_a_file_that_has_gone_breaks_nothing(self):
        address = "https://example.invalid/a?b=\"1\"&c=<2>&amp;d='3'"
        self.open_class([item("link", "enlace", address), item("file", "perdido", self.root / "perdido.pdf"),
                         item("video", "Video de YouTube", "https://youtu.be/x")])
        self.assertEqual(self.tab.evaluate("[...document.querySelectorAll('a')].map(a => a.getAttribute('href'))"),
                         [address, (self.root / "perdido.pdf").as_uri().replace("%", "%25"), "https://youtu.be/x"])
        self.assertEqual(self.texts("a"), ["Linkenlace", "Archivoperdido", "VideoVideo de YouTube"])

    def test_titles_are_shown_as_they_are_and_run_nothing(self):
        self.open_class([item("link", title, "https://a.invalid/" + title) for title in HARD_TITLES],
                        [chapter(number + 1, title) for number, title in enumerate(HARD_TITLES)])
        self.assertEqual(self.texts("button")[1:], [f"00:0{n + 1}{title}" for n, title in enumerate(HARD_TITLES)])
        self.assertEqual(self.texts("a"), ["Link" + title for title in HARD_TITLES])
        self.assertEqual(self.tab.evaluate("document.scripts.length"), 1)
        self.assertEqual(self.tab.evaluate("document.images.length"), 0)


if __name__ == "__main__":
    unittest.main()

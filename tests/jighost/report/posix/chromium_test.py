"""Opens pages of `jighost report` in Chromium, as a person does.

    chromium_test.py BUILD

Leaves pictures for people to look at, and the pages of them, in BUILD/report.
"""
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from chromium import Chromium
from samples import HOSTILE, failed_run, lot, measurement, record, step

BUILD = Path(sys.argv.pop()).resolve()
SHOWN = HOSTILE.replace("\u202e\x1b\x00", r"\xe2\x80\xae\x1b\x00")
ENTER = "\ue007"

# Texts whose colour is too near to that of their ground, by the contrast of WCAG 2.
FAINT = """
    const linear = c => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4;
    const parts = colour => colour.match(/[\\d.]+/g).map(Number);
    const light = ([r, g, b]) => 0.2126 * linear(r / 255) + 0.7152 * linear(g / 255)
        + 0.0722 * linear(b / 255);
    const ground = element => {
        const colour = parts(getComputedStyle(element).backgroundColor);
        return colour[3] !== 0 ? colour : ground(element.parentElement);
    };
    return [...document.querySelectorAll('body *')].filter(element => {
        const shown = [...element.childNodes].some(
            node => node.nodeType === Node.TEXT_NODE && node.data.trim());
        if (!shown || !element.checkVisibility() || element.closest('svg, script')) return false;
        const pair = [light(parts(getComputedStyle(element).color)), light(ground(element))];
        return (Math.max(...pair) + 0.05) / (Math.min(...pair) + 0.05) < 4.5;
    }).map(element => element.outerHTML.slice(0, 200));
"""


def make_page(name, records):
    """By jighost, in the folder of pictures."""
    page = BUILD / "report" / f"{name}.html"
    page.parent.mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        paths = []
        for record in records:
            paths.append(Path(folder, f"{len(paths)}.json"))
            paths[-1].write_text(json.dumps(record), encoding="utf-8")
        subprocess.run([BUILD / "jighost", "report", *paths, "-o", page], check=True,
                       stdout=subprocess.DEVNULL, timeout=300)
    return page


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = cls.enterClassContext(Chromium())

    def open(self, page):
        self.page = page
        self.browser.open(page)
        self.assertGreater(self.browser.run("return document.querySelectorAll('h2').length"), 0)

    def tearDown(self):
        """Whatever was done: nothing ran or was fetched but the page, and nothing was complained."""
        self.assertEqual(self.browser.log("browser"), [])
        self.assertIsNone(self.browser.run("return window.harmed"))
        messages = [json.loads(entry["message"])["message"]
                    for entry in self.browser.log("performance")]
        requests = {message["params"]["request"]["url"] for message in messages
                    if message["method"] == "Network.requestWillBeSent"}
        self.assertEqual({url.split("#")[0] for url in requests}, {self.page.as_uri()})

    def in_sight(self, selector):
        """Whether all of an element is within the window."""
        return self.browser.run(
            "const box = document.querySelector(arguments[0]).getBoundingClientRect();"
            "return box.height > 0 && box.top >= 0 && box.bottom <= innerHeight;", selector)

    def texts(self, selector):
        """Of the elements that can be seen."""
        return self.browser.run(
            "return [...document.querySelectorAll(arguments[0])]"
            ".filter(e => e.checkVisibility()).map(e => e.textContent)", selector)

    def check_colours(self, name):
        for scheme in "light", "dark":
            self.browser.command("Emulation.setEmulatedMedia", features=[
                {"name": "prefers-color-scheme", "value": scheme}])
            self.assertEqual(self.browser.run(FAINT), [], scheme)
            self.browser.picture(BUILD / "report" / f"{name}-{scheme}.png")


class OneRun(PageTest):
    def setUp(self):
        self.open(make_page("one", [failed_run()]))

    def test_what_went_wrong_is_in_sight(self):
        self.assertTrue(self.in_sight(".heading .badge.failed"))
        self.assertTrue(self.in_sight(".alert"))
        alert, = self.texts(".alert")
        for text in "Step 3, shift", "Step 5, lens", "Link call 3", "failed: [EVNT] Link failure":
            self.assertIn(text, alert)
        self.check_colours("one")

    def test_links_lead_to_step_and_call(self):
        self.assertEqual(len(self.texts("details[open]")), 2)
        self.browser.click(".alert .where:not(:first-child) a")
        self.assertTrue(self.in_sight("li:nth-child(5) summary"))
        self.browser.click(".alert p:last-child a")
        self.assertTrue(self.in_sight("tr:target"))
        self.assertIn("Save 0x1000007", self.texts("tr:target")[0])
        self.browser.picture(BUILD / "report/step.png")

    def test_steps_unfold_by_hand_and_for_a_printer(self):
        log = "li:nth-child(2) pre"
        self.assertEqual(self.texts(log), [])
        self.browser.click("li:nth-child(2) summary")
        self.assertEqual(self.texts(log), ["seen in the log\n"])
        self.browser.run("addEventListener('beforeprint', () => { window.folded ="
                         " document.querySelectorAll('details:not([open])').length; });")
        (BUILD / "report/one.pdf").write_bytes(self.browser.print())
        self.assertEqual(self.browser.run("return window.folded"), 0)
        self.assertEqual(len(self.texts("details[open]")), 3)

    def test_foreign_text_stays_text(self):
        self.assertEqual(self.browser.run(
            "return document.querySelectorAll('img, script').length"), 1)
        for place in "dd", ".name", ".problem", "pre b", "td code", "td.bytes code", ".measured":
            self.assertTrue(any(SHOWN in text for text in self.texts(place)), place)

    def test_policy_lets_nothing_else_run(self):
        self.browser.run("const script = document.createElement('script');"
                         "script.textContent = 'harmed = 1'; document.body.append(script);"
                         "document.body.setAttribute('onclick', 'harmed = 1');"
                         "document.body.click();")
        refused = self.browser.log("browser")
        self.assertEqual(len(refused), 2, refused)
        self.assertTrue(all("Content Security Policy" in each["message"] for each in refused))


class ManyRuns(PageTest):
    COUNT = 30

    def setUp(self):
        self.open(make_page("many", lot(self.COUNT)))

    def column(self, number):
        return self.texts(f"#runs tbody tr > :nth-child({number})")

    def test_filter(self):
        self.assertEqual(self.texts("#shown"), ["30 of 30 shown"])
        self.assertEqual(self.column(1)[:5], ["failed"] * 4 + ["passed"])
        self.check_colours("many")
        self.browser.type("#outcome", "failed")
        self.assertEqual(self.column(2), ["12328", "12321", "12314", "12307"])
        self.browser.type("#text", "TILT 1231")
        self.assertEqual((self.column(2), self.texts("#shown")), (["12314"], ["1 of 30 shown"]))

    def test_columns_and_sorting_by_mouse_and_keyboard(self):
        def state(number):
            return self.browser.run("return document.querySelector(arguments[0]).ariaSort",
                                    f"#runs th:nth-child({number})")
        first = self.texts("#runs tbody tr:first-child > *")
        self.assertEqual(dict(zip(self.texts("#runs thead th"), first)), {
            "Outcome": "failed", "Serial number": "12328", "Sequence": "inspection",
            "What went wrong": "step 1, tilt: tilt: expected from -1 to 1, got 1.7",
            "Started": "2026-11-18 09:20:00.123+01:00", "Took": "48.0 ms", "Station": "line 4",
            "Operator": "kb"})
        serials = [str(12300 + index) for index in range(1, self.COUNT + 1)]
        self.browser.click("#runs thead th:nth-child(2) button")
        self.assertEqual((self.column(2), state(2)), (serials, "ascending"))
        self.browser.type("#runs thead th:nth-child(6) button", ENTER)
        self.browser.type("#runs thead th:nth-child(6) button", ENTER)
        self.assertEqual((self.column(2), state(6)), (serials[::-1], "descending"))
        self.assertEqual(state(2), "none")

    def test_rows_and_points_lead_to_their_run(self):
        self.assertEqual(self.texts("details.run[open]"), [])
        self.browser.click("#runs tbody tr:nth-child(2) a")
        self.assertTrue(self.in_sight("details.run[open] > summary"))
        self.assertIn("12321", self.texts("details.run[open] > summary")[0])
        self.assertTrue(self.in_sight("details.run[open] .alert"))
        charts = self.browser.run(
            "return [...document.querySelectorAll('figure')].map(e => [e.querySelector('b')"
            ".textContent, e.querySelectorAll('.point.failed').length,"
            " e.querySelectorAll('a').length])")
        self.assertEqual(charts, [["gain, mm", 0, 30], ["tilt, mm", 4, 30]])
        titles = self.browser.run(
            "return [...document.querySelectorAll('figure a > title')].map(e => e.textContent)")
        self.assertTrue(titles[30].startswith("12301: -0.2"), titles[30])


class LongNumbers(PageTest):
    def test_texts_stand_beside_their_chart(self):
        long = measurement("count", 1234567890.5, -1234567890.25, 2234567890.75)
        self.open(make_page("long", [
            record(index, [step(1, "count", "GetOwnerName", measurements=[long])])
            for index in range(2)]))
        self.assertEqual(len(self.texts(".plot .scale > *")), 2)
        self.assertEqual(self.browser.run("""
            const box = element => {
                const text = document.createRange();
                text.selectNodeContents(element);
                return text.getBoundingClientRect();
            };
            const chart = document.querySelector('.trend').getBoundingClientRect();
            const overlaps = element => box(element).right > chart.left
                && box(element).bottom > chart.top;
            return [...document.querySelectorAll('.scale > *, figcaption *')].filter(overlaps)
                .map(element => element.textContent);"""), [])


del PageTest  # which has no tests of its own

if __name__ == "__main__":
    unittest.main()

"""The example's page: what it shows, and how it is used with the mouse and the keyboard."""

import re
import subprocess

from selenium.webdriver.common.keys import Keys

import definitions
from page_test import PageTest, Setting, example_page


class Example(PageTest):
    def setUp(self):
        super().setUp()
        self.browser.open(example_page())

    def test_tells_what_it_shows(self):
        self.assertEqual(self.browser.driver.title, "Disk Console")
        self.assertEqual(self.browser.text("#title"), "Disk Console")
        self.assertEqual(self.browser.text("#subtitle"), "disk-console.xml, project file")
        self.assertEqual(self.browser.text("nav [aria-current]").split(), ["Tree", "25"])

    def test_the_tree_has_every_node_with_its_icon(self):
        rows = self.browser.all("[role=treeitem]")
        self.assertEqual(len(rows), 25)
        self.assertEqual(self.names()[:4], ["Disk Console", "Hardware", "Physical Disks", "Health"])
        loaded = self.browser.script(
            "return [...document.querySelectorAll('[role=treeitem] img')].map((img) => [img.naturalWidth, img.complete])"
        )
        self.assertEqual(loaded, [[16, True]] * 25)

    def test_rows_say_their_place(self):
        place = [
            self.row("Physical Disks").get_attribute(name)
            for name in ("aria-level", "aria-posinset", "aria-setsize", "aria-expanded")
        ]
        self.assertEqual(place, ["3", "1", "2", "true"])
        self.assertIsNone(self.row("Firmware").get_attribute("aria-expanded"))

    def test_a_click_folds_and_unfolds(self):
        self.row("Hardware").find_element("css selector", ".twist").click()
        self.assertEqual(self.names()[:3], ["Disk Console", "Hardware", "Volumes"])
        self.assertEqual(self.row("Hardware").get_attribute("aria-expanded"), "false")
        self.row("Hardware").find_element("css selector", ".twist").click()
        self.assertEqual(len(self.names()), 25)

    def test_buttons_fold_and_unfold_everything(self):
        self.browser.one("button[title='Fold everything']").click()
        self.assertEqual(self.names(), ["Disk Console"])
        self.browser.one("button[title='Unfold everything']").click()
        self.assertEqual(len(self.names()), 25)

    def test_a_click_selects_and_shows_the_record(self):
        self.row("Temperatures (\u00b0C)").click()
        self.assertEqual(self.selected(), "Temperatures (\u00b0C)")
        self.assertEqual(self.browser.text(".detail h2"), "Temperatures (\u00b0C)")
        values = dict(zip(self.browser.texts(".detail dt"), self.browser.texts(".detail dd")))
        self.assertEqual(values["Type"], "HTML")
        self.assertEqual(values["Cookie"], "4")
        self.assertEqual(values["Icon"], "icons\\chart.ico")
        self.assertEqual(values["Menu script"], "none")
        self.assertEqual(values["Style sheet"], "styles\\chart.xsl")
        self.assertEqual(values["Line"], "43")
        self.assertEqual(self.browser.texts(".detail .pairs li"), ["Temperatures\nqueries\\hardware.xml"])
        self.assertEqual(self.browser.text(".detail .path"), "Disk Console/Hardware/Physical Disks")

    def test_the_keyboard_walks_through_the_tree(self):
        self.browser.keys(Keys.TAB)
        self.browser.wait(lambda: self.browser.all(".skip"))
        self.browser.keys(Keys.ENTER)
        steps = [
            (Keys.END, "Ask Before Closing"),
            (Keys.HOME, "Disk Console"),
            (Keys.ARROW_RIGHT, "Hardware"),
            (Keys.ARROW_DOWN, "Physical Disks"),
            (Keys.ARROW_LEFT, "Physical Disks"),  # folds it
            (Keys.ARROW_DOWN, "Controllers"),
            (Keys.ARROW_UP, "Physical Disks"),
            (Keys.ARROW_RIGHT, "Physical Disks"),  # unfolds it
            (Keys.ARROW_RIGHT, "Health"),
            (Keys.ARROW_LEFT, "Physical Disks"),
            ("vol", "Volumes"),
        ]
        last = self.names()[-1]
        for key, expected in steps:
            self.browser.keys(key)
            self.assertEqual(self.selected(), last if key == Keys.END else expected, repr(key))
            self.assertEqual(self.browser.text(".detail h2"), self.selected())
            active = self.browser.one("[role=tree]").get_attribute("aria-activedescendant")
            self.assertEqual(self.browser.text(f"#{active} .name"), self.selected())

    def test_a_space_folds_and_a_star_unfolds_all_beside(self):
        self.browser.one("[role=tree]").click()
        self.row("Hardware").click()
        self.browser.keys(" ")
        self.assertEqual(self.names()[:3], ["Disk Console", "Hardware", "Volumes"])
        self.browser.keys("*")
        self.assertEqual(len(self.names()), 25)

    def test_a_search_leaves_what_matches_and_what_lies_above(self):
        self.browser.keys("/")
        self.browser.keys("FIRM")
        self.assertEqual(self.names(), ["Disk Console", "Hardware", "Physical Disks", "Firmware"])
        self.assertEqual(self.browser.texts("mark"), ["Firm"])
        self.assertEqual(self.selected(), "Firmware")
        self.assertEqual(self.browser.text(".detail h2"), "Firmware")
        self.assertEqual(self.browser.text(".status"), "1 match of 25")
        self.browser.keys(Keys.ESCAPE)
        self.assertEqual(len(self.names()), 25)
        self.assertEqual(self.selected(), "Firmware")

    def test_enter_goes_from_match_to_match(self):
        self.browser.type_search("health")
        found = [name for name in self.names() if "health" in name.lower()]
        self.assertEqual(self.selected(), found[0])
        seen = []
        for _ in found:
            self.browser.keys(Keys.ENTER)
            seen.append(self.selected())
        self.assertEqual(seen, found[1:] + found[:1])

    def test_a_search_for_a_cookie_finds_its_node(self):
        self.browser.type_search("5")
        self.assertEqual(self.selected(), "Firmware")

    def test_a_search_without_a_match_says_so(self):
        self.browser.type_search("no such name")
        self.assertEqual(self.names(), [])
        self.assertEqual(self.browser.text(".status"), "Nothing has this in its name.")

    def test_a_link_leads_to_a_file_and_its_contents(self):
        self.row("Temperatures (\u00b0C)").click()
        for link in self.browser.all(".detail a"):
            if link.text == "styles\\chart.xsl":
                link.click()
                break
        self.browser.wait(lambda: self.browser.texts("nav [aria-current] span") == ["Files"])
        self.assertEqual(self.browser.text(".detail h2"), "styles\\chart.xsl")
        shown = self.browser.script("return document.querySelector('#view-files .code pre:last-child').textContent")
        written = (definitions.EXAMPLE / "styles" / "chart.xsl").read_bytes().decode("utf-8")
        self.assertEqual(shown, written.replace("\r\n", "\n"))
        self.assertIn("Temperatures (\u00b0C) node, as style sheet", self.browser.texts(".detail .links li"))

    def test_every_code_file_is_shown_as_it_is(self):
        self.browser.go("#files")
        self.assertIn("icons\\disk.ico", self.names())
        compared = 0
        for name in self.names():
            path = definitions.EXAMPLE / name.replace("\\", "/")
            if not path.is_file() or path.suffix == ".ico":
                continue
            self.row(name).click()
            shown = self.browser.script("return document.querySelector('#view-files .code pre:last-child').textContent")
            self.assertEqual(shown, path.read_bytes().decode("utf-8").replace("\r\n", "\n"), name)
            compared += 1
        self.assertEqual(compared, 12)

    def test_an_icon_file_is_shown_in_both_sizes(self):
        self.browser.go("#files")
        self.row("icons\\disk.ico").click()
        self.assertEqual(
            self.browser.texts(".detail figcaption"),
            ["Large, 32 \u00d7 32 pixels, 32 bits", "Small, 16 \u00d7 16 pixels, 32 bits"],
        )
        sizes = self.browser.script(
            "return [...document.querySelectorAll('#view-files figure img')].map((img) => img.naturalWidth)"
        )
        self.assertEqual(sizes, [32, 16])

    def test_dialogs_are_listed_with_their_records(self):
        self.browser.go("#dialogs")
        project = (definitions.EXAMPLE / "disk-console.xml").read_text(encoding="utf-8")
        names = re.findall(r'<Dialog [^>]*Name="([^"]*)"', project)
        self.assertEqual(self.names(), names)
        self.row(names[-1]).click()
        self.assertEqual(self.browser.text(".detail h2"), names[-1])

    def test_the_strips_hold_all_icons(self):
        self.browser.go("#strips")
        sizes = self.browser.script(
            "return [...document.querySelectorAll('.strip img')].map((img) => [img.naturalWidth, img.naturalHeight])"
        )
        self.assertEqual(sizes, [[96, 16], [192, 32]])
        self.assertEqual(len(self.browser.texts(".places li")), 6)

    def test_an_address_opens_what_it_names(self):
        self.browser.open(example_page(), "#nodes/4")
        self.assertEqual(self.selected(), "Temperatures (\u00b0C)")
        self.browser.open(example_page(), "#nodes/no-such-node")
        self.assertEqual(self.selected(), "Disk Console")

    def test_the_address_follows_the_selection(self):
        self.row("Volumes").click()
        self.browser.wait(lambda: self.browser.script("return location.hash") == "#nodes/7")
        self.assertEqual(self.selected(), "Volumes")

    def test_a_link_that_is_followed_at_once_is_not_taken_back(self):
        self.browser.script(
            """arguments[0].click();
               location.hash = '#strips';
               const end = performance.now() + 300;  // what the page wanted to do meanwhile is all due now
               while (performance.now() < end);""",
            self.row("Volumes"),
        )
        self.browser.settle()
        self.browser.wait(lambda: self.browser.texts("nav [aria-current] span") == ["Strips"])
        self.assertEqual(self.browser.script("return location.hash"), "#strips")

    def test_whatever_has_the_focus_shows_it(self):
        for view in ("#nodes", "#dialogs", "#files", "#findings", "#strips"):
            self.browser.go(view)
            self.browser.script("document.querySelector('.skip').focus()")
            seen = set()
            while True:
                self.browser.keys(Keys.TAB)
                name, outline = self.browser.script(
                    """const element = document.activeElement;
                       const style = getComputedStyle(element);
                       return [element.outerHTML.slice(0, 160), style.outlineStyle + ' ' + style.outlineWidth];"""
                )
                if name in seen or name.startswith("<body"):
                    break
                self.assertEqual(outline, "solid 2px", name)
                seen.add(name)
            self.assertGreaterEqual(len(seen), 5, view)


class Image(PageTest):
    def test_an_object_image_is_shown_like_its_project(self):
        def make(folder):
            folder.mkdir()
            image = folder / "disk-console.img"
            project = definitions.EXAMPLE / "disk-console.xml"
            subprocess.run([Setting.command, "compile", project, "-o", image], check=True, stdout=subprocess.DEVNULL)
            return image

        self.browser.open(Setting.page("image", make), "#nodes/4")
        self.assertEqual(self.browser.text("#subtitle"), "disk-console.img, object image")
        self.assertEqual(self.selected(), "Temperatures (\u00b0C)")
        values = dict(zip(self.browser.texts(".detail dt"), self.browser.texts(".detail dd")))
        self.assertEqual(values["Style sheet"], "Code file 5367050754142402379")
        self.assertNotIn("Line", values)
        self.browser.go("#files/code/5367050754142402379")
        shown = self.browser.script("return document.querySelector('#view-files .code pre:last-child').textContent")
        written = (definitions.EXAMPLE / "styles" / "chart.xsl").read_bytes().decode("utf-8")
        self.assertEqual(shown, written.replace("\r\n", "\n"))


class Empty(PageTest):
    def test_a_definition_of_nothing_says_so_in_each_part(self):
        def make(folder):
            folder.mkdir()
            (folder / "console.xml").write_text("<Project/>")
            return folder / "console.xml"

        self.browser.open(Setting.page("empty", make))
        self.assertEqual(self.browser.text("#title"), "console.xml")
        for view in ("#nodes", "#dialogs", "#files"):
            self.browser.go(view)
            self.assertEqual(self.browser.text(".detail"), "There are none.", view)
        self.browser.go("#findings")
        self.assertIn("Nothing was found.", self.browser.text(".single"))
        self.browser.go("#strips")
        self.assertIn("There are no icon files, so there are no strips.", self.browser.text(".single"))


class Findings(PageTest):
    def test_a_finding_about_a_file_is_not_told_of_a_node_of_the_same_cookie(self):
        def make(folder):
            nodes = definitions.node(100, "Disks", scripts=[100])
            return definitions.write_project(folder, nodes, files=[("gone.js", None)])

        self.browser.open(Setting.page("same-cookie", make), "#nodes/100")
        self.assertEqual(self.browser.all(".detail .remarks"), [])
        self.browser.go("#files/code/100")
        self.assertIn("there is no such file", self.browser.text(".detail .remarks"))
        self.browser.go("#findings")
        self.assertEqual(self.browser.texts(".remark-head a"), ["code file 100"])

"""A definition whose every text tries to be more than text."""

import definitions
from page_test import PageTest, Setting


class Hostile(PageTest):
    def setUp(self):
        super().setUp()
        self.browser.open(Setting.page("hostile", definitions.hostile))

    def tearDown(self):
        self.assertIsNone(self.browser.script("return window.broken === undefined ? null : 'script ran'"))
        super().tearDown()

    def file(self, name):
        self.browser.go("#files")
        self.row(name).click()

    def test_names_are_text_everywhere(self):
        self.assertEqual(self.browser.driver.title, definitions.SCRIPT)
        self.assertEqual(
            self.names(),
            [definitions.SCRIPT, definitions.PICTURE, definitions.CLOSING, "turned \\u202E round", "(no name)",
             "javascript:window.broken=1"],
        )
        for name in self.names():
            self.row(name).click()
            self.assertEqual(self.browser.text(".detail h2"), name)
        self.row(definitions.PICTURE).click()
        self.assertEqual(
            self.browser.texts(".detail .pairs li"),
            [definitions.SCRIPT + "\ncode.js", definitions.PICTURE + "\n7 (no such file)"],
        )
        self.browser.go("#dialogs")
        self.assertEqual(self.names(), [definitions.SCRIPT, definitions.PICTURE])

    def test_a_search_for_markup_marks_it_as_text(self):
        self.browser.type_search("<img")
        self.assertEqual(self.browser.texts("mark"), ["<img"])
        self.assertEqual(self.selected(), definitions.PICTURE)

    def test_an_address_is_no_markup(self):
        for address in ("#" + definitions.PICTURE.replace(" ", "%20"), "#nodes/%3Cimg%20src=x%3E", "#files/code/%00", "#%"):
            self.browser.script("location.hash = arguments[0]", address)
            self.browser.settle()
            self.assertTrue(self.browser.all("[role=treeitem]"), address)

    def test_contents_are_text(self):
        self.file("code.js")
        shown = self.browser.script("return document.querySelector('#view-files .code pre:last-child').textContent")
        self.assertEqual(shown, definitions.HOSTILE_CODE)
        self.assertEqual(self.browser.all(".detail .message"), [])

    def test_text_that_turns_round_is_told(self):
        self.file("turned.js")
        self.assertIn("change its reading direction", self.browser.text(".detail .message"))

    def test_bytes_are_told_by_their_number(self):
        self.file("binary.bin")
        self.assertEqual(self.browser.text(".detail .message"), "Binary, 2 KiB. Only text is shown.")
        self.assertEqual(self.browser.all(".detail .code"), [])

    def test_a_long_file_is_cut_and_says_so(self):
        self.file("large.txt")
        self.assertEqual(
            self.browser.text(".detail .message"),
            "Cut here: 256 KiB of 381 KiB are shown. A report shows 256 KiB of a file, and 16 MiB of all files together.",
        )
        shown = self.browser.script("return document.querySelector('#view-files .code pre:last-child').textContent.length")
        self.assertEqual(shown, 256 * 1024)

    def test_an_empty_file_a_missing_one_and_one_of_another_code_page(self):
        self.file("empty.txt")
        self.assertEqual(self.browser.text(".detail .message"), "The file is empty.")
        self.file("gone.js")
        self.assertEqual(
            self.browser.text(".detail .message"), "It cannot be read: there is no such file; check its name."
        )
        self.file("narrow.js")
        self.assertEqual(
            self.browser.script("return document.querySelector('#view-files .code pre:last-child').textContent"),
            "caf\u00e9 \u20ac\n",
        )
        self.assertIn("code page 1252", self.browser.texts(".detail dd"))

    def test_findings_lead_to_what_they_are_about(self):
        self.browser.go("#findings")
        links = [link for link in self.browser.all(".remarks a") if link.text == "code file 105"]
        self.assertTrue(links)
        links[0].click()
        self.browser.wait(lambda: self.browser.texts("nav [aria-current] span") == ["Files"])
        self.assertEqual(self.browser.text(".detail h2"), "gone.js")
        self.assertTrue(self.browser.texts(".detail .remarks li"))

    def test_a_script_of_a_strangers_hand_would_be_stopped(self):
        ran = self.browser.script(
            """const element = document.createElement('script');
               element.textContent = 'window.stranger = 1';
               document.body.append(element);
               return window.stranger === 1;"""
        )
        self.assertFalse(ran)
        self.assertEqual(len(self.browser.complaints()), 1)

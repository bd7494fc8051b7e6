"""Somebody before the running program: what is asked of it again and again, and how it is told and proved."""

import pathlib
import subprocess

from desktop import trash_list
from screen import take_picture, wait_until_still
from window import Window, act, shows, wait_for
from words import Words

ROOT = pathlib.Path(__file__).resolve().parents[3]


class Visit:
    def __init__(self, options, language, home, frame, banners):
        self.options, self.language, self.home, self.frame = options, language, home, frame
        self.banners = banners
        self.words = Words(language)
        self.thrown_away_before = trash_list()
        self.window = None
        self._pictures = 0

    # Telling

    def say(self, line):
        print("  " + line, flush=True)

    def picture(self, name):
        self._pictures += 1
        if self.window is not None:
            self.window.put_the_pointer_away()
        wait_until_still(self.frame)
        take_picture(self.frame, pathlib.Path(self.options.pictures) /
                     ("%s-%02d-%s.png" % (self.language, self._pictures, name)))

    def tell_what_is_there(self):
        """For whoever must find out why a step didn't hold."""
        if self.window is not None:
            self.picture("failure")
            print(self.window.tree(), flush=True)

    def manifest(self):
        """One line for each entry of the home, but for what the program itself keeps there."""
        own = [".local/share/Tavrin Clean", ".config/tavrin-clean"]
        command = [str(ROOT / "scripts" / "home-manifest"), self.home, "--no-folder-times"]
        for path in own:
            command += ["--without", path]
        lines = subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()
        # The folder that the program's own lies in comes with it.
        return [line for line in lines if line.split("\t")[-1] != ".config"]

    # Seeing

    def numbers(self, key, role="label"):
        """The values of the counted message that stands on the window now, or nothing."""
        found = (self.words.values(key, node.name or "") for node in self.window.matching(role))
        return next((values for values in found if values), None)

    def wait_for_numbers(self, key):
        return wait_for(lambda: self.numbers(key), "the text of “%s”" % key)

    def wait_for_ticks(self, count):
        wait_for(lambda: self.numbers("moduleSelectedCount") == (str(count),), "%d ticked" % count)

    def results(self):
        return self.window.find("list", self.words.windowResults)

    def rows(self):
        return self.window.all("list item", within=self.results())

    # Doing

    def start(self):
        self.window = Window(self.options.program)

    def quit(self):
        self.window.click(self.window.find("list", self.words.windowSidebar))
        self.window.keys("ctrl+q")
        check(self.window.wait_until_ended() == 0, "the program ends well")
        self.window = None

    def choose(self, entry, heading):
        """A row of the sidebar, which is longer than the window, by wheel and press; comes back with its screen."""
        sidebar = self.window.find("list", self.words.windowSidebar)

        def brought_into_view():
            row = next(node for node in self.window.everything(sidebar) if node.name == entry)
            return row if shows(row) else self.window.turn_the_wheel(sidebar, towards=row)

        act(wait_for(brought_into_view, "“%s” in the sidebar" % entry))
        return self.window.find("heading", heading)

    def ask_to_clean(self):
        """Puts the question; gives the figures that it asks about. Its safe answer has the keyboard then."""
        window, words = self.window, self.words
        window.press("push button", words.actionClean)
        dialog = window.find("dialog", words.moduleConfirmTitle)
        wait_for(lambda: window.focused() and window.focused().name == words.actionCancel, "the safe button's focus")
        paths, size = words.values("moduleConfirmMove", dialog.description, begins=True)
        return int(paths), size

    def move_to_the_trash(self, summary="smartDoneSummary"):
        """Answers the question; gives the figures of what went."""
        self.window.keys("Tab", "Return")
        moved, size = self.wait_for_numbers(summary)
        return int(moved), size

    def hear_the_banner(self, moved, size):
        banner = (self.words.notifyCleanedTitle, self.words("notifyCleanedBody", size, moved))
        wait_for(lambda: banner in self.banners.arrived(), "the banner")
        return banner[1]

    def open_history(self):
        self.choose(self.words.navHistory, self.words.historyTitle)

    def put_the_latest_back(self, title, paths, size):
        """The uppermost record of History is this module's, tells these figures, and is gone once it is put back."""
        window, words = self.window, self.words
        records = window.find("list", words.historyTitle)
        record = window.find("list item", within=records)
        check(record.name == title, "the latest record is of %s" % title, record.name)
        check(words("countItemsSize", paths, size) in record.description, "the record's figures", record.description)
        window.press("push button", words.historyPutBack, within=records)
        wait_for(lambda: not window.all("list item", title, within=records), "the end of the record of %s" % title)
        window.find_text(words("historyPutBackDone", paths))

    def check_that_nothing_is_left_to_put_back(self):
        self.window.find_text(self.words.historyEmptyTitle)
        check(trash_list() == self.thrown_away_before, "the Trash holds what it held before")


def check(holds, what, seen=""):
    if not holds:
        raise AssertionError("%s: no%s" % (what, ", but " + seen if seen else ""))


def check_same(before, after):
    lines = ["- " + line for line in before if line not in set(after)] + \
            ["+ " + line for line in after if line not in set(before)]
    check(before == after, "the home is as it was", "\n" + "\n".join(lines[:20]))

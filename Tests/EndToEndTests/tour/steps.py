"""What the tour does, step by step. Each step says what it did and saw; the first thing that doesn't hold ends it."""

import os
import pathlib
import re
import subprocess
import time

from desktop import Banners, trash_list
from modules import go_through_all
from visit import Visit, check, check_same
from window import act, is_checked, wait_for


def play(options, language, home, frame):
    with Banners() as banners:
        tour = Tour(options, language, home, frame, banners)
        before = tour.manifest()
        tour.start()
        try:
            tour.agree()
            tour.scan()
            tour.search()
            tour.sort()
            tour.look_inside()
            tour.untick_one()
            tour.clean()
            tour.check_the_trash()
            tour.start_twice()
            tour.start_without_a_display()
            tour.quit()
            tour.start()
            tour.put_back()
            check_same(before, tour.manifest())
            go_through_all(tour)
            tour.quit()
        except Exception:
            tour.tell_what_is_there()
            raise
        finally:
            if tour.window is not None:
                tour.window.close()
    after = tour.manifest()
    check_same(before, after)
    tour.say("Compared the home with what it was: %d entries, every byte, time and mode the same." % len(before))
    return 0


class Tour(Visit):
    """On one module, everything that its screen can do."""

    def agree(self):
        window, words = self.window, self.words
        button = window.find("push button", words.consentAcceptButton)
        box = window.find("check box", words.consentAgreeToggle)
        settings = pathlib.Path(self.home) / ".config" / "tavrin-clean" / "settings.ini"
        act(button)
        act(box)
        wait_for(lambda: is_checked(box), "the tick")
        act(box)
        wait_for(lambda: not is_checked(box), "no tick")
        act(button)
        self.picture("consent")
        check(not settings.exists() and window.says(words.consentTitle), "the button waits for the tick")
        act(box)
        wait_for(lambda: is_checked(box), "the tick")
        act(button)
        window.find("list", words.windowSidebar)
        self.say("Started for the first time: read the terms, agreed, and came to the main window.")

    def scan(self):
        window, words = self.window, self.words
        window.press("list item", words.moduleSystemJunkTitle)
        window.find("heading", words.moduleSystemJunkTitle)
        self.picture("before-the-scan")
        began = time.monotonic()
        window.press("push button", words.actionScan)
        found, = self.wait_for_numbers("countItems")
        taken = time.monotonic() - began
        ticked, = self.wait_for_numbers("moduleSelectedCount")
        self.picture("results")
        self.say("Scanned for system junk: %s found, %s of them proposed, in %.1f s." % (found, ticked, taken))
        self.found, self.ticked = int(found), int(ticked)
        check(self.ticked > 3, "several are proposed")

    def search(self):
        window, words = self.window, self.words
        wanted = "papermill"
        window.click(window.find("heading", words.moduleSystemJunkTitle))
        window.keys("ctrl+f")
        window.type(wanted)
        wait_for(lambda: self.rows() and all(wanted in (row.name + row.description).lower() for row in self.rows()),
                 "the rows of the search")
        matching = len(self.rows())
        count, = self.numbers("countItems")
        check(int(count) == self.found, "the count speaks of all that was found")
        self.picture("search")
        window.keys("Escape")
        wait_for(lambda: len(self.rows()) > matching, "all rows again")
        self.say("Searched for “%s”: %d rows; Esc brought all of them back." % (wanted, matching))

    def sort(self):
        window, words = self.window, self.words
        window.press("combo box", words.moduleSortBy)
        window.press("list item", words.moduleSortName)

        def ordered():
            names = self.names_of_the_first_group()
            # Where accents, signs and stranger things go is the language's affair, and tested elsewhere.
            plain = [name for name in names if re.fullmatch("[A-Za-z0-9.-]+", name)]
            return names if len(plain) > 2 and plain == sorted(plain, key=str.casefold) else None

        names = wait_for(ordered, "names in their order")
        self.picture("sorted-by-name")
        self.say("Sorted by name: the first group begins with %s." % names[0])

    def names_of_the_first_group(self):
        names = []
        for node in self.window.everything(self.results()):
            if node.getRoleName() == "heading" and names:
                break
            if node.getRoleName() == "list item":
                names.append(node.name)
        return names

    def look_inside(self):
        window, words = self.window, self.words
        # A file has nothing inside.
        row = next(row for row in self.rows()
                   if any(node.name == words.windowShowContents for node in window.everything(row)))
        window.click(row)
        before = [shown.name for shown in self.rows()]
        window.keys("Right")
        wait_for(lambda: [shown.name for shown in self.rows()] != before and
                 not window.says(words.moduleReadingContents), "the contents")
        self.picture("contents")
        window.keys("Left")
        wait_for(lambda: [shown.name for shown in self.rows()] == before, "the row as it was")
        self.say("Looked into %s with the arrow keys, and closed it again." % row.name)

    def untick_one(self):
        window = self.window
        row = next(row for row in self.rows() if is_checked(row))
        window.click(row)
        window.keys("space")
        self.wait_for_ticks(self.ticked - 1)
        self.kept = row.name
        self.say("Unticked %s with the space bar: %d stay ticked." % (self.kept, self.ticked - 1))

    def clean(self):
        window = self.window
        asked, size = self.ask_to_clean()
        self.picture("question")
        window.keys("Escape")
        wait_for(lambda: not window.all("dialog"), "the question's end")
        check(self.numbers("moduleSelectedCount") == (str(self.ticked - 1),), "Esc changed nothing")
        self.ask_to_clean()
        self.paths, self.size = self.move_to_the_trash()
        self.picture("done")
        # A finding that lies in another one goes with it, and a file that bears two names weighs once.
        check(0 < self.paths <= asked, "what was asked for was moved", str(self.paths))
        self.say("Was asked whether to move %d paths, %s; answered Esc, was asked again, and moved them: %d moves, %s." %
                 (asked, size, self.paths, self.size))

    def check_the_trash(self):
        listed = [line for line in trash_list() if line not in self.thrown_away_before]
        check(len(listed) == self.paths, "the desktop's own tool lists %d paths" % self.paths, str(len(listed)))
        check(not any(line.endswith("/" + self.kept) for line in listed), "what was unticked isn't there")
        banner = self.hear_the_banner(self.paths, self.size)
        self.say("`gio trash --list` shows %d more than before; the banner said “%s”." % (len(listed), banner))

    def start_twice(self):
        second = subprocess.run([self.options.program], timeout=60)
        check(second.returncode == 0, "a second start hands over", str(second.returncode))
        self.say("Started it a second time: it handed over to the first window.")

    def start_without_a_display(self):
        nowhere = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
        done = subprocess.run([self.options.program], env=nowhere, timeout=60, capture_output=True, text=True)
        check(done.returncode == 1 and done.stderr.strip() == self.words.windowNoDisplay,
              "without a display it says so in one sentence", "%d, %s" % (done.returncode, done.stderr))
        self.say("Started it without a display: it said so in one sentence.")

    def put_back(self):
        self.open_history()
        self.picture("history")
        self.put_the_latest_back(self.words.moduleSystemJunkTitle, self.paths, self.size)
        self.check_that_nothing_is_left_to_put_back()
        self.picture("put-back")
        self.say("Started again, without the terms. Put back from History: %d paths, and the Trash is as it was." % self.paths)

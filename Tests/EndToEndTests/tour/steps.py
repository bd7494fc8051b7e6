"""What the tour does, step by step. Each step says what it did and what it saw; the first thing that doesn't hold ends it."""

import os
import pathlib
import re
import subprocess
import time

from desktop import Banners, trash_list
from screen import take_picture
from window import Window, act, is_checked, wait_for
from words import Words

ROOT = pathlib.Path(__file__).resolve().parents[3]


def play(options, language, home, frame):
    tour = Tour(options, language, home, frame)
    before = tour.manifest()
    with Banners() as banners:
        tour.start()
        try:
            tour.agree()
            tour.scan()
            tour.search()
            tour.sort()
            tour.look_inside()
            tour.untick_one()
            tour.clean()
            tour.check_the_trash(banners)
            tour.start_twice()
            tour.start_without_a_display()
            tour.quit()
            tour.start()
            tour.put_back()
            tour.quit()
        except Exception:
            tour.tell_what_is_there()
            raise
        finally:
            if tour.window is not None:
                tour.window.close()
    after = tour.manifest()
    check(before == after, "the home is as it was", difference(before, after))
    tour.say("Compared the home with what it was: %d entries, every byte, time and mode the same." % len(before))
    return 0


class Tour:
    def __init__(self, options, language, home, frame):
        self.options, self.language, self.home, self.frame = options, language, home, frame
        self.words = Words(language)
        self.window = None
        self.paths = 0
        self.size = ""
        self._pictures = 0

    # Telling

    def say(self, line):
        print("  " + line, flush=True)

    def picture(self, name):
        self._pictures += 1
        time.sleep(0.6)  # nothing is asked of the picture but that it shows the end of an animation
        take_picture(self.frame, pathlib.Path(self.options.pictures) /
                     ("%s-%02d-%s.png" % (self.language, self._pictures, name)))

    def tell_what_is_there(self):
        """For whoever must find out why a step didn't hold."""
        if self.window is not None:
            self.picture("failure")
            print(self.window.tree(), flush=True)

    def manifest(self):
        """One line for each entry of the home, but for what the program itself keeps there."""
        own = [".local/share/Trash", ".local/share/Tavrin Clean", ".config/tavrin-clean"]
        command = [str(ROOT / "scripts" / "home-manifest"), self.home, "--no-folder-times"]
        for path in own:
            command += ["--without", path]
        lines = subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()
        # The folders that the program's own lie in come with them.
        return [line for line in lines if line.split("\t")[-1] not in (".local", ".local/share", ".config")]

    # Seeing

    def numbers(self, key, role="label"):
        """The values of the counted message that stands on the window now, or nothing."""
        pattern = message_pattern(self.words, key)
        for node in self.window.all(role):
            if match := pattern.fullmatch(node.name or ""):
                return match.groups()
        return None

    def wait_for_numbers(self, key):
        return wait_for(lambda: self.numbers(key), "the text of “%s”" % key)

    def rows(self):
        results = self.window.find("list", self.words.windowResults)
        return self.window.all("list item", within=results)

    # The steps

    def start(self):
        self.window = Window(self.options.program)

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
        results = self.window.find("list", self.words.windowResults)
        names = []
        for node in self.window._nodes(results):
            if node.getRoleName() == "heading" and names:
                break
            if node.getRoleName() == "list item":
                names.append(node.name)
        return names

    def look_inside(self):
        window, words = self.window, self.words
        row = self.rows()[0]
        window.click(row)
        shown = len(self.rows())
        window.keys("Right")
        wait_for(lambda: len(self.rows()) > shown or not window.says(words.moduleReadingContents), "the contents")
        self.picture("contents")
        window.keys("Left")
        self.say("Looked into %s with the arrow keys, and closed it again." % row.name)

    def untick_one(self):
        window = self.window
        row = next(row for row in self.rows() if is_checked(row))
        window.click(row)
        window.keys("space")
        wait_for(lambda: self.numbers("moduleSelectedCount") == (str(self.ticked - 1),), "one tick less")
        self.kept = row.name
        self.say("Unticked %s with the space bar: %d stay ticked." % (self.kept, self.ticked - 1))

    def clean(self):
        window, words = self.window, self.words
        window.press("push button", words.actionClean)
        dialog = window.find("dialog", words.moduleConfirmTitle)
        wait_for(lambda: window.focused() and window.focused().name == words.actionCancel, "the safe button's focus")
        asked, size = message_pattern(words, "moduleConfirmMove").match(dialog.description).groups()
        self.picture("question")
        window.keys("Escape")
        wait_for(lambda: not window.all("dialog"), "the question's end")
        check(self.numbers("moduleSelectedCount") == (str(self.ticked - 1),), "Esc changed nothing")
        window.press("push button", words.actionClean)
        window.find("dialog", words.moduleConfirmTitle)
        wait_for(lambda: window.focused() and window.focused().name == words.actionCancel, "the safe button's focus")
        window.keys("Tab", "Return")
        moved, self.size = self.wait_for_numbers("smartDoneSummary")
        self.picture("done")
        # A finding that lies in another one goes with it, and a file that bears two names weighs once.
        self.paths = int(moved)
        check(0 < self.paths <= int(asked), "what was asked for was moved", moved)
        self.say("Was asked whether to move %s paths, %s; answered Esc, was asked again, and moved them: %d moves, %s." %
                 (asked, size, self.paths, self.size))

    def check_the_trash(self, banners):
        words = self.words
        listed = trash_list()
        check(len(listed) == self.paths, "the desktop's own tool lists %d paths" % self.paths, str(len(listed)))
        check(not any(line.endswith("/" + self.kept) for line in listed), "what was unticked isn't there")
        banner = (words.notifyCleanedTitle, words("notifyCleanedBody", self.size, self.paths))
        wait_for(lambda: banner in banners.arrived(), "the banner")
        self.say("`gio trash --list` shows %d; the banner said “%s”." % (len(listed), banner[1]))

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

    def quit(self):
        self.window.click(self.window.find("list", self.words.windowSidebar))
        self.window.keys("ctrl+q")
        check(self.window.wait_until_ended() == 0, "the program ends well")
        self.window = None

    def put_back(self):
        window, words = self.window, self.words
        window.press("list item", words.navHistory)
        record = window.find("list item", words.moduleSystemJunkTitle,
                             within=window.find("list", words.historyTitle))
        check(words("countItemsSize", self.paths, self.size) in record.description, "the record's figures",
              record.description)
        self.picture("history")
        window.press("push button", words.historyPutBack)
        window.find_text(words("historyPutBackDone", self.paths))
        window.find_text(words.historyEmptyTitle)
        self.picture("put-back")
        check(trash_list() == [], "the Trash is empty")
        self.say("Started again, without the terms. Put back from History: %d paths, and the Trash is empty." % self.paths)


def message_pattern(words, key):
    """What matches a counted message with any figures; its groups are the values, in the order of the text. None of the tour's
    counts is 1, so the plural does."""
    names = words.parameters(key)
    text = re.escape(words(key, *["<%s>" % name for name in names]))
    for name in names:
        text = text.replace(re.escape("<%s>" % name), r"(\d+)" if name in ("n", "count") else "(.+?)")
    return re.compile(text)


def check(holds, what, seen=""):
    if not holds:
        raise AssertionError("%s: no%s" % (what, ", but " + seen if seen else ""))


def difference(before, after):
    lines = ["- " + line for line in before if line not in set(after)] + \
            ["+ " + line for line in after if line not in set(before)]
    return "\n" + "\n".join(lines[:20])

"""The running program, as somebody with a screen reader and a keyboard meets it."""

import subprocess
import time

import pyatspi

PATIENCE = 20  # seconds; a busy machine is no failure


class Gone(AssertionError):
    """What was looked for didn't come in time."""


def wait_for(condition, what):
    """The first true value of `condition`, asked again and again."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            found = condition()
        except Exception as problem:  # what was just looked at may vanish meanwhile
            found, last = None, problem
        else:
            last = None
        if found:
            return found
        if time.monotonic() > end:
            raise Gone("%s didn't come%s" % (what, ": %s" % last if last else ""))
        time.sleep(0.05)


class Window:
    """One start of the program. All is found by role and accessible name."""

    def __init__(self, program):
        self._process = subprocess.Popen([program])
        self.root = wait_for(self._application, "the program's window")

    def _application(self):
        desktop = pyatspi.Registry.getDesktop(0)
        for application in desktop:
            if application is not None and application.name == "tavrin-clean" and application.childCount > 0:
                return application
        if self._process.poll() is not None:
            raise Gone("the program ended with %d" % self._process.returncode)
        return None

    # Finding

    def everything(self, start=None):
        """All there is below, shown or not, from top to bottom."""
        start = start or self.root
        start.clear_cache()
        pending = [start]
        while pending:
            node = pending.pop()
            if node is None:
                continue
            yield node
            pending.extend(node.getChildAtIndex(i) for i in reversed(range(node.childCount)))

    def matching(self, role, name=None, within=None):
        """What shows right now, one after another from top to bottom; to ask for all of it takes its time."""
        for node in self.everything(within):
            if node.getRoleName() == role and (name is None or node.name == name) and shows(node):
                yield node

    def all(self, role, name=None, within=None):
        return list(self.matching(role, name, within))

    def find(self, role, name=None, within=None):
        return wait_for(lambda: next(self.matching(role, name, within), None), "%s “%s”" % (role, name or ""))

    def find_text(self, part):
        """Whatever says `part`, in its name or its description."""
        def now():
            return next((node for node in self.everything() if shows(node) and
                         (part in (node.name or "") or part in (node.description or ""))), None)
        return wait_for(now, "“%s”" % part)

    def says(self, part):
        return any(shows(node) and part in (node.name or "") for node in self.everything())

    def focused(self):
        """The innermost of what has the keyboard."""
        found = None
        for node in self.everything():
            if node.getState().contains(pyatspi.STATE_FOCUSED):
                found = node
        return found

    def tree(self):
        """For whoever wonders what there is."""
        return "\n".join("    %s “%s” (%s)%s" % (node.getRoleName(), node.name, node.description, marks(node))
                         for node in self.everything())

    # Doing

    def press(self, role, name=None, within=None):
        act(self.find(role, name, within))

    def click(self, node):
        """With the mouse, in its middle."""
        place = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        xdotool("mousemove", str(place.x + place.width // 2), str(place.y + place.height // 2))
        xdotool("click", "1")

    def put_the_pointer_away(self):
        """Into the last corner, where it lies on nothing and can hardly be seen."""
        xdotool("mousemove", "99999", "99999")

    def turn_the_wheel(self, node, towards):
        """Over `node`, by one step, to where `towards` lies."""
        place, wanted = (of.queryComponent().getExtents(pyatspi.DESKTOP_COORDS) for of in (node, towards))
        middle = place.y + place.height // 2
        xdotool("mousemove", str(place.x + place.width // 2), str(middle))
        xdotool("click", "5" if wanted.y > middle else "4")

    def keys(self, *keys):
        for key in keys:
            xdotool("key", key)

    def type(self, text):
        xdotool("type", "--delay", "20", text)

    # Ending

    def wait_until_ended(self):
        return self._process.wait(PATIENCE)

    def close(self):
        if self._process.poll() is None:
            self._process.terminate()
            self._process.wait(PATIENCE)


def shows(node):
    state = node.getState()
    return state.contains(pyatspi.STATE_SHOWING) and state.contains(pyatspi.STATE_VISIBLE)


def marks(node):
    state = node.getState()
    focused = " has the keyboard" if state.contains(pyatspi.STATE_FOCUSED) else ""
    return focused if shows(node) else focused + " hidden"


def is_checked(node):
    node.clear_cache()
    return node.getState().contains(pyatspi.STATE_CHECKED)


def act(node):
    """Presses or ticks it, as a screen reader does."""
    actions = node.queryAction()
    names = [actions.getName(i) for i in range(actions.nActions)]
    for wanted in ("Press", "Toggle"):
        if wanted in names:
            actions.doAction(names.index(wanted))
            return
    raise AssertionError("%s can't be pressed: %s" % (node.name, names))


def xdotool(*arguments):
    subprocess.run(["xdotool", *arguments], check=True)

"""Every module in turn: chosen, scanned, looked through, ticked, cleaned. What one takes the next no longer finds, as in
life; in the end History puts all of it back, the latest first."""

from visit import check
from window import act, is_checked, wait_for


def go_through_all(visit):
    check(modules_of_the_sidebar(visit) == {module_title(visit, key) for key, _ in MODULES}, "the sidebar's modules are these")
    cleaned = [(module_title(visit, key), *clean(visit, key, tick)) for key, tick in MODULES]
    visit.open_history()
    visit.picture("history-of-all-modules")
    for title, moved, size in reversed(cleaned):
        visit.put_the_latest_back(title, moved, size)
    visit.check_that_nothing_is_left_to_put_back()
    visit.say("Put all %d records back from History: %d paths, and the Trash is as it was." %
              (len(cleaned), sum(moved for _, moved, _ in cleaned)))


def module_title(visit, key):
    return getattr(visit.words, "module%sTitle" % ("IOSBackups" if key == "iosBackups" else key[0].upper() + key[1:]))


def modules_of_the_sidebar(visit):
    """They alone have a line below their title."""
    sidebar = visit.window.find("list", visit.words.windowSidebar)
    return {node.name for node in visit.window.everything(sidebar) if node.getRoleName() == "list item" and node.description}


def clean(visit, key, tick):
    """Gives how many paths went, and their size."""
    window, title = visit.window, module_title(visit, key)
    visit.choose(title, title)
    window.press("push button", visit.words.actionScan)
    found, = visit.wait_for_numbers("countItems")
    proposed, = visit.wait_for_numbers("moduleSelectedCount")
    check(int(found) > 0, "something is found")
    ticked = tick(visit, int(found), int(proposed))
    visit.picture(key)
    asked, _ = visit.ask_to_clean()
    moved, size = visit.move_to_the_trash("moduleDoneMail" if key == "mailAttachments" else "smartDoneSummary")
    stayed = reasons_to_stay(visit)
    if key == "largeFiles":
        check(stayed == {visit.words.EALREADY}, "what lies in the Trash stays there, and is told so",
              ", ".join(stayed))
    else:
        stayed -= {visit.words.moduleMASProtected}
        check(not stayed, "nothing had to stay but what belongs to bought apps", ", ".join(stayed))
    # A finding that lies in another one goes with it.
    check(0 < moved <= asked, "what was asked for was moved", "%d of %d" % (moved, asked))
    visit.hear_the_banner(moved, size)
    visit.say("%s: found %s, proposed %s, ticked %d; paths asked about %d, moved %d, %s." %
              (title, found, proposed, ticked, asked, moved, size))
    return moved, size


def reasons_to_stay(visit):
    """As far as the done view shows them."""
    return {node.description.partition(" · ")[0] for told in visit.window.all("list", visit.words.windowFailures)
            for node in visit.window.all("list item", within=told)}


# What is ticked beside what each module ticks by itself. Each of these gives how many are ticked in the end.


def as_proposed(visit, _, proposed):
    check(visit.rows() and proposed > 0, "some of the rows are ticked already")
    return proposed


def everything(visit, found, _):
    check(visit.rows(), "there are rows")
    visit.window.press("push button", visit.words.actionSelectAll)
    visit.wait_for_ticks(found)
    return found


def two_rows(visit, _, proposed):
    for count, row in enumerate([row for row in visit.rows() if not is_checked(row)][:2], proposed + 1):
        act(row)
        wait_for(lambda: is_checked(row), "the tick of %s" % row.name)
        visit.wait_for_ticks(count)
    return proposed + 2


def one_picture(visit, _, proposed):
    visit.window.find_text(visit.words.moduleSimilarHint)
    picture = next(box for box in boxes(visit) if not is_checked(box))
    check(visit.words.actionKeep in picture.description, "what isn't ticked is kept", picture.description)
    act(picture)
    wait_for(lambda: is_checked(picture) and visit.words.actionKeep not in picture.description, "the picture's mark")
    visit.wait_for_ticks(proposed + 1)
    return proposed + 1


def one_more_language(visit, _, proposed):
    """The only boxes whose tick means that something stays."""
    visit.window.find_text(visit.words.moduleLanguagesHint)
    language = next(box for box in boxes(visit) if is_checked(box))
    act(language)
    wait_for(lambda: not is_checked(language) and visit.words.actionRemove in language.description, "the language's mark")
    return wait_for(lambda: more_than(visit, proposed), "more ticks")


def more_than(visit, proposed):
    ticked = int(visit.numbers("moduleSelectedCount")[0])
    return ticked if ticked > proposed else None


def boxes(visit):
    return visit.window.all("check box", within=visit.results())


# The first one lists what lies in the Trash as well, which can't be moved there again. The others as in the sidebar.
MODULES = (
    ("largeFiles", two_rows),
    ("systemJunk", as_proposed),
    ("uninstaller", two_rows),
    ("appLanguages", one_more_language),
    ("loginItems", as_proposed),
    ("developerJunk", as_proposed),
    ("mailAttachments", everything),
    ("browserCaches", as_proposed),
    ("unusedApps", two_rows),
    ("duplicates", as_proposed),
    ("similarImages", one_picture),
    ("screenshots", everything),
    ("downloadsJunk", everything),
    ("iosBackups", two_rows),
    ("messagesAttachments", everything),
)

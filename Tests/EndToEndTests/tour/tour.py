"""Plays the program from the first start to the last file put back, on a sample home and a display of its own.

The real binary, driven by accessible names and by real keys; a real Trash, a real history, a notification server that
remembers. It says in plain lines what it did, with the figures, and leaves pictures. Ends with 0 only if all of it held.
"""

import argparse
import datetime
import os
import pathlib
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[3]
LANGUAGES = {"en": "English", "es": "Spanish"}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True)
    parser.add_argument("--pictures", required=True, help="the folder that the pictures go to")
    parser.add_argument("--language", choices=LANGUAGES, action="append", help="both unless told")
    parser.add_argument("--small", action="store_true", help="on a home with far fewer files")
    parser.add_argument("--inside", nargs=3, metavar=("HOME", "FRAME", "OUTPUT"), help=argparse.SUPPRESS)
    options = parser.parse_args()
    pathlib.Path(options.pictures).mkdir(parents=True, exist_ok=True)
    if options.inside:
        from steps import play
        home, frame, output = options.inside
        sys.stdout = os.fdopen(int(output), "w")
        return play(options, options.language[0], home, frame)
    languages = options.language or list(LANGUAGES)
    for language in languages:
        if play_on_a_screen(options, language) != 0:
            print("The tour in %s failed." % LANGUAGES[language])
            return 1
    print("The tour held in %s. Its pictures lie in %s." %
          (" and in ".join(LANGUAGES[language] for language in languages), options.pictures))
    return 0


def sample_home(language):
    """Below the build folder, unless the clone lies where the cleaner refuses everything."""
    below = ROOT / "build"
    if str(ROOT).startswith(("/tmp/", "/var/", "/usr/", "/etc/")):
        below = pathlib.Path.home() / ".cache" / "tavrin-clean"
    below.mkdir(parents=True, exist_ok=True)
    return str(below / ("tour-home-" + language))


def play_on_a_screen(options, language):
    """Display, session bus and home of its own: nothing of the person's is seen or touched."""
    from screen import Screen
    home = sample_home(language)
    today = datetime.datetime.now(datetime.timezone.utc).date().isoformat()
    make = [str(ROOT / "scripts" / "make-sample-home"), "--force", "--today", today, home] + ["--small"] * options.small
    made = subprocess.run(make, check=True, stdout=subprocess.PIPE, text=True).stdout
    print("== %s\n  Made a sample home: %s" % (LANGUAGES[language], made.strip()), flush=True)
    with Screen() as screen, tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as runtime, \
            tempfile.TemporaryFile("w+") as messages:
        # The bus and what it starts talk at length; that is wanted only where something goes wrong.
        output = os.dup(sys.stdout.fileno())
        again = [sys.executable, __file__, "--program", options.program, "--pictures", options.pictures,
                 "--language", language, "--inside", home, screen.frame, str(output)]
        status = subprocess.run(["dbus-run-session", "--", *again], stdout=messages, stderr=messages, pass_fds=[output],
                                env=environment(home, language, screen.name, runtime)).returncode
        os.close(output)
        if status != 0:
            messages.seek(0)
            print(messages.read())
    return status


def environment(home, language, display, runtime):
    own = {name: value for name, value in os.environ.items()
           if not name.startswith(("XDG_", "LC_", "LANG", "QT_", "QSG_", "DBUS_", "WAYLAND_", "GTK_", "AT_SPI"))}
    own.update(HOME=home, XDG_RUNTIME_DIR=runtime, DISPLAY=display, LANG="C.UTF-8", LANGUAGE=language, TZ="UTC",
               QT_QPA_PLATFORM="xcb", QT_QUICK_BACKEND="software", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               # The sample home can't be the home of the tools' own caches: its bytes are compared.
               XDG_CACHE_HOME=os.path.join(runtime, "cache"))
    return own


if __name__ == "__main__":
    sys.exit(main())

"""Library/LaunchAgents: what starts when the owner logs in, sound and broken."""

from . import contents, hostile_lists
from .names import APPS
from .world import at

AGENTS = at("Library", "LaunchAgents")
# Stands on every system, so that an agent that starts it works everywhere.
SHELL = "/bin/sh"


def working_agents(world):
    for number, (identifier, name) in enumerate(APPS[:6]):
        label = identifier + ".agent"
        values = {"Label": label, "RunAtLoad": number % 2 == 0}
        if number % 3 == 0:
            values["Program"] = SHELL
            values["ProgramArguments"] = ["/no/such/" + name, "--background"]
        else:
            values["ProgramArguments"] = [SHELL, "-c", "true"]
        agent(world, label, values, binary=number % 2 == 1)
    # By the search path of whoever starts it, which is nobody's to judge.
    agent(world, "org.example.relative", {"Label": "org.example.relative", "Program": "no-such-tool"})
    agent(world, "com.apple.sample", {"Label": "com.apple.sample", "Program": SHELL})


def broken_agents(world):
    gone = "/Applications/Gone for good.app/Contents/MacOS/Gone"
    agent(world, "com.example.gone", {"Label": "com.example.gone", "Program": gone, "RunAtLoad": True})
    agent(world, "com.example.gone-too", {"Label": "x", "ProgramArguments": [gone, "--daemon"]}, binary=True)
    agent(world, "zz.example.not-a-string", {"Program": 7, "ProgramArguments": ["/no/such/tool"]})


def odd_agents(world):
    agent(world, "org.example.only-at-login", {"RunAtLoad": True})
    agent(world, "org.example.nothing", {}, binary=True)
    agent(world, "org.example.no-arguments", {"Label": "org.example.no-arguments", "ProgramArguments": []})
    agent(world, "org.example.mixed", {"Label": "org.example.mixed", "ProgramArguments": ["/no/such", 3]})
    world.file(at(AGENTS, "LOUD.PLIST"), contents.property_list({"Program": "/no/such"}))
    world.file(at(AGENTS, ".hidden.plist"), contents.property_list({"Program": "/no/such"}))
    world.file(at(AGENTS, "folder.plist", "inside"), 700)
    world.file(at(AGENTS, "deeper", "below.plist"), contents.property_list({"Program": "/no/such"}))
    world.link(at(AGENTS, "org.example.linked.plist"), "com.apple.sample.plist")
    world.link(at(AGENTS, "org.example.dangling.plist"), "nowhere.plist")
    world.try_name(world.file, at(AGENTS, b"caf\xe9.plist"), contents.property_list({"Label": "org.example.cafe"}))


def hostile_agents(world):
    for name, lies in hostile_lists.LISTS:
        world.file(at(AGENTS, "hostile.%s.plist" % name), lies())
    world.fifo(at(AGENTS, "hostile.pipe.plist"))


def agent(world, name, values, binary=False):
    world.file(at(AGENTS, name + ".plist"), contents.property_list(values, binary))

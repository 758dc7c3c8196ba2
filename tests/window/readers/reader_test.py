#!/usr/bin/python3
"""Holds the window to what screen readers are told: reader_test.py KILN [--write]

Opens the window on a display and an accessibility bus of its own, goes through its dialogs as a screen reader does, and
compares what the bus tells of each with a file beside this one. --write writes these files instead."""
import contextlib
import difflib
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

EXPECTED = pathlib.Path(__file__).parent
PATIENCE = 120  # seconds, which no machine is too busy for
UNTIL_SETTLED = 30  # seconds for a dialog to look as expected, before the differences are told
STATES = ["focused", "checked", "selected", "editable", "read-only", "expanded", "is-default"]

# Roles that only arrange others.
FILLING = {"filler", "layered pane", "viewport", "scroll pane", "unknown"}

# Roles whose widgets are told by the widget that they are part of.
PARTS = {"scroll bar", "separator"}


class Failure(Exception):
    pass


def wait_for(find, patience=PATIENCE):
    """What `find` returns as soon as that is something; answers events of the bus meanwhile."""
    until = time.monotonic() + patience
    while time.monotonic() < until:
        with contextlib.suppress(GLib.Error):  # an object may go while it is asked
            if found := find():
                return found
        while GLib.MainContext.default().iteration(False):
            pass
        time.sleep(0.01)
    raise Failure("waited in vain")


def start(*words, stderr=subprocess.DEVNULL, **options):
    return subprocess.Popen([str(word) for word in words], start_new_session=True, stderr=stderr, **options)


@contextlib.contextmanager
def own_session(folder):
    """A display and a bus that end with the block."""
    os.environ.update(HOME=str(folder), XDG_RUNTIME_DIR=str(folder), XDG_CACHE_HOME=str(folder), LC_ALL="C.UTF-8",
                      CUPS_SERVER="127.0.0.1:1", QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                      NO_AT_BRIDGE="0")
    for name in ("WAYLAND_DISPLAY", "QT_SCALE_FACTOR", "AT_SPI_BUS_ADDRESS"):
        os.environ.pop(name, None)
    running = []
    reads, writes = os.pipe()
    try:
        running.append(start("Xvfb", "-displayfd", writes, "-screen", "0", "1920x1080x24", "-nolisten", "tcp",
                             "-noreset", pass_fds=[writes]))  # else it restarts after its first client
        os.close(writes)
        os.environ["DISPLAY"] = ":" + os.read(reads, 20).decode().strip()
        running.append(start("dbus-daemon", "--session", "--nofork", "--print-address=1", stdout=subprocess.PIPE))
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = running[-1].stdout.readline().decode().strip()
        running.append(start("/usr/libexec/at-spi-bus-launcher", "--launch-immediately", stdout=subprocess.DEVNULL))
        yield running
    finally:
        os.close(reads)
        for process in reversed(running):  # with the buses that they have started
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGTERM)
            process.wait()


def children(item):
    return [child for child in (item.get_child_at_index(i) for i in range(item.get_child_count())) if child]


def walk(item):
    yield item
    for child in children(item):
        yield from walk(child)


def states(item):
    return {state.value_nick for state in item.get_state_set().get_states()}


def is_shown(item):
    # Entries of lists that are not open are shown nowhere, but told.
    return item.get_role_name() in ("popup menu", "menu item", "list item", "table cell") or "visible" in states(item)


def value_of(item):
    interfaces = item.get_interfaces()
    if "Value" in interfaces and item.get_role_name() in ("slider", "progress bar", "spin button"):
        return " = %g of %g to %g" % (Atspi.Value.get_current_value(item), Atspi.Value.get_minimum_value(item),
                                      Atspi.Value.get_maximum_value(item))
    if "Text" in interfaces and item.get_role_name() != "label":
        text = Atspi.Text.get_text(item, 0, Atspi.Text.get_character_count(item))
        return f' = "{text}"'.replace("\n", " / ") if len(text) < 200 else " = a long text"
    return ""


def told(item, depth=0):
    """A line for each widget that means something, indented as they are nested."""
    role, name = item.get_role_name(), item.get_name()
    is_menu_of_window = role == "menu bar" and depth > 0  # which has a file of its own
    if not is_shown(item) or role in PARTS or is_menu_of_window:
        return []
    means = name or role not in FILLING | {"label"}
    lines = []
    if means:
        line = f'{role} "{name}"' + value_of(item)
        line += "".join(f", {state}" for state in STATES if state in states(item))
        if "sensitive" not in states(item):
            line += ", disabled"
        if item.get_description() and item.get_description() != name:
            line += f" ({item.get_description()})"
        lines.append("  " * depth + line)
    parts = [told(child, depth + bool(means)) for child in children(item)]
    if role == "list" and len(parts) > 12:  # such as the installed faces
        parts = [["  " * (depth + 1) + "..."]]
    return lines + [line for part in parts for line in part]


def steady(top):
    """What is told, if that has not changed for a while."""
    before = told(top)
    time.sleep(0.5)
    return before if before == told(top) else None


def broken_rules(top):
    """What is wrong with any dialog, as sentences."""
    for each in walk(top):
        role, name = each.get_role_name(), each.get_name()
        if not is_shown(each) or "showing" not in states(each):
            continue
        # The list in a combo box is told by the box.
        in_combo = role == "list" and each.get_parent().get_role_name() == "combo box"
        if "focusable" in states(each) and not name and not in_combo:
            yield f"a {role} takes the focus and has no name"
        if role in FILLING and name:
            yield f'"{name}" is told as {role}'
        is_icon = role == "image" and top.get_role_name() == "alert"
        if role in ("image", "slider", "text", "password text", "combo box") and not name and not is_icon:
            yield f"a {role} has no name"


def program():
    return next((each for each in children(Atspi.get_desktop(0)) if each.get_name() == "kiln"), None)


def overlay_in(home):
    """The file name of the only overlay, from the index of them."""
    return (home / "profile/overlays/ovlNmFl.flo").read_bytes()[128:].decode("utf-16-le").rstrip("\0")


class Window:
    def __init__(self, kiln, home, running):
        # An overlay in the first slot, and in the third for some pages.
        overlay = overlay_in(home)
        slots = f"{overlay};Odd$;${overlay};2,5-9$;$;$;$;$;$"
        self.running = running
        self.home = home
        self.log = home / "log"
        running.append(start(kiln, "show", "--home", home, "--locale", "en-US", "--set", "OverlaySel=Multiple",
                             "--set", f"MultipleOverlayDetails={slots}", stdout=subprocess.DEVNULL,
                             stderr=self.log.open("w")))
        self.program = wait_for(lambda: self.check_running() or program())
        self.main = wait_for(lambda: self.top("frame"))
        self.problems = []

    def check_running(self):
        if self.running[-1].poll() is not None:
            raise Failure(f"the window has ended with {self.running[-1].returncode}: {self.log.read_text()}")

    def top(self, *roles):
        """The window of the program that has one of the roles, and does not only tell how far something is."""
        return next((each for each in children(self.program) if each.get_role_name() in roles
                     and "showing" in states(each)
                     and not any(part.get_role_name() == "progress bar" for part in walk(each))), None)

    @staticmethod
    def find(top, role, name):
        return next((each for each in walk(top) if each.get_role_name() == role and each.get_name() == name), None)

    def press(self, top, role, name):
        Atspi.Action.do_action(wait_for(lambda: self.find(top, role, name)), 0)

    def click(self, top, role, name):
        """With the mouse, where the toolkit tells readers of no action."""
        place = wait_for(lambda: Atspi.Component.get_extents(self.find(top, role, name), Atspi.CoordType.SCREEN))
        Atspi.generate_mouse_event(place.x + place.width // 2, place.y + place.height // 2, "b1c")

    def type(self, top, role, name, text):
        line = wait_for(lambda: self.find(top, role, name))
        Atspi.EditableText.set_text_contents(line, str(text))
        wait_for(lambda: Atspi.Text.get_character_count(line) == len(str(text)))  # a password is not told

    def choose(self, entry):
        """Chooses an entry of the menus. The toolkit answers when the dialog that opens has closed, so another process
        asks for it."""
        self.running.append(start("/usr/bin/python3", __file__, "--choose", entry))

    def choose_file(self, open_it, file):
        """Chooses the file in the file dialog that opens."""
        with self.dialog(open_it, close="Open") as dialog:
            self.type(dialog, "text", "File name", file)

    def compare(self, top, name):
        """Compares what is told with the file of that name, as soon as they are equal or after some patience."""
        file = EXPECTED / f"{name}.txt"
        if "--write" in sys.argv:
            file.write_text("\n".join(wait_for(lambda: steady(top))) + "\n")
        expected = file.read_text().splitlines() if file.exists() else []
        lines = []

        def is_expected():
            lines[:] = told(top)
            return lines == expected
        with contextlib.suppress(Failure):
            wait_for(is_expected, UNTIL_SETTLED)
        self.problems += difflib.unified_diff(expected, lines, f"{name}.txt, expected", "told", lineterm="")
        self.problems += [f"{name}: {problem}" for problem in wait_for(lambda: (set(broken_rules(top)),))[0]]

    @contextlib.contextmanager
    def dialog(self, open_it=lambda: None, close="Cancel"):
        """The dialog over the window, opened and then closed by that button."""
        open_it()
        top = wait_for(lambda: self.top("dialog", "alert"))
        yield top
        self.press(top, "push button", close)
        wait_for(lambda: top not in children(self.program) or "showing" not in states(top))


def hear_of_overlays(window):
    """A note that changes is announced, wherever the focus is."""
    heard = []

    def hear(event):
        with contextlib.suppress(GLib.Error):  # what has shown may be gone
            heard.append((event.source.get_role_name(), event.source.get_name()))
    listener = Atspi.EventListener.new(hear)
    listener.register("object:state-changed:showing")
    with window.dialog(lambda: window.press(window.main, "push button", "Details..."), close="OK") as dialog:
        window.press(dialog, "radio button", "Even")
        wait_for(lambda: "checked" in states(window.find(dialog, "radio button", "Even")))
    wait_for(lambda: any(role == "notification" and name.startswith("Overlays by page") for role, name in heard))
    listener.deregister("object:state-changed:showing")


def go_through(window):
    main = window.main
    window.compare(wait_for(lambda: window.find(main, "menu bar", "")), "menus")
    window.compare(main, "effects")
    window.press(main, "page tab", "Device")
    wait_for(lambda: "selected" in states(window.find(main, "page tab", "Device")) or
             "showing" in states(window.find(main, "combo box", "Paper size")))
    window.compare(main, "device")
    window.press(main, "page tab", "Effects")
    with window.dialog(lambda: window.press(main, "push button", "Add...")) as editor:
        window.compare(editor, "editor")
    with window.dialog(lambda: window.press(main, "push button", "Details...")) as dialog:
        window.compare(dialog, "several-overlays")
    with window.dialog(lambda: window.press(main, "push button", "Print...")) as dialog:
        window.compare(dialog, "print")
    with window.dialog(lambda: window.choose("Report a problem...")) as dialog:
        window.compare(dialog, "report")
    with window.dialog(lambda: window.choose("Export profile...")) as dialog:
        window.compare(dialog, "export")
    with window.dialog(lambda: window.choose("Print into overlay...")) as dialog:
        window.compare(dialog, "name")
    with window.dialog(lambda: window.choose("About this window"), close="Close") as dialog:
        window.compare(dialog, "help")
    go_through_questions(window)
    hear_of_overlays(window)


def go_through_questions(window):
    """The dialogs that other dialogs lead to, and those that ask before something is lost."""
    main = window.main
    window.choose_file(lambda: window.press(main, "push button", "New..."), window.home / "form.pdf")
    with window.dialog() as dialog:
        window.compare(dialog, "new-overlay")
    window.choose_file(lambda: window.choose("Open PDF..."), window.home / "locked.pdf")
    with window.dialog(close="Open") as dialog:
        window.type(dialog, "password text", "Password", "barley")
    with window.dialog() as dialog:
        window.compare(dialog, "password")
    with window.dialog(lambda: window.choose("Print into overlay..."), close="OK") as dialog:
        window.type(dialog, "text", "Name of the overlay", "Letterhead")
    with window.dialog() as dialog:
        window.compare(dialog, "overwrite")
    with window.dialog(lambda: window.choose("Bring back built-in watermarks..."), close="OK") as dialog:
        window.compare(dialog, "message")
    window.click(main, "list item", "Copy")
    delete = wait_for(lambda: window.find(main, "push button", "Delete"))
    wait_for(lambda: "sensitive" in states(delete))
    with window.dialog(lambda: window.press(main, "push button", "Delete"), close="Delete") as dialog:
        window.compare(dialog, "delete")
    with window.dialog(lambda: window.choose("Bring back built-in watermarks...")) as dialog:
        window.compare(dialog, "built-in-watermarks")
    window.press(main, "check box", "Mirror image")
    wait_for(lambda: "checked" in states(window.find(main, "check box", "Mirror image")))
    with window.dialog(lambda: window.choose("Quit")) as dialog:
        window.compare(dialog, "closing")


def prepare(kiln, home):
    """Makes one overlay, and a job with a password."""
    form = home / "form.pdf"
    subprocess.run([kiln, "sample", form], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["qpdf", "--encrypt", "sesame", "owner", "256", "--", form, home / "locked.pdf"], check=True)
    subprocess.run([kiln, "overlay", "create", "--home", home, "Letterhead", form], check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def main():
    if sys.argv[1] == "--choose":
        Atspi.Action.do_action(wait_for(lambda: Window.find(program(), "menu item", sys.argv[2])), 0)
        return
    kiln = pathlib.Path(sys.argv[1]).resolve()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # with the display and the buses
    with tempfile.TemporaryDirectory(prefix="readers-") as folder, own_session(folder) as running:
        home = pathlib.Path(folder) / "home"
        home.mkdir()
        prepare(kiln, home)
        Atspi.init()
        window = Window(kiln, home, running)
        go_through(window)
    if window.problems:
        sys.exit("\n".join(window.problems))


main()

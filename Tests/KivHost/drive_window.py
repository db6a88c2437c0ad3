#!/usr/bin/env python3
"""Works with the window as a person does: a display, a keyboard, the real dialogs.

    drive_window.py KIVHOST SAMPLES

Starts an X server of its own (Xvfb) and types with xdotool. Where one of them is missing it exits
with 77, which skips the test. Everything is reached by the keyboard.
"""

import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

PATIENCE = 60  # seconds for one thing to happen
SAVE = "Export Document as"
FORMATS = ("kiv_txt", "txt", "cut_ansi", "cut_eastman", "cut_labels", "dxf_nester", "ill_tm")


def until(what, found):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        result = found()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


@contextlib.contextmanager
def x_server():
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x900x24"],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    try:
        number = os.read(read, 16).decode().strip()
        assert number, "the X server did not start"
        yield f":{number}"
    finally:
        os.close(read)
        server.terminate()
        server.wait()


class Window:
    """The program and the keyboard before it."""

    def __init__(self, host, environment, *files):
        self.environment = environment
        self.program = subprocess.Popen([host, *files], env=environment, text=True,
                                        stderr=subprocess.PIPE)

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.environment, text=True,
                              capture_output=True, check=False).stdout.split()

    def ids(self, title):
        assert self.program.poll() is None, f"the program ended: {self.program.stderr.read()}"
        return self.xdotool("search", "--onlyvisible", "--name", f"^{title}$")

    def wait(self, title):
        """Until a window of that title is there; the keyboard then belongs to it."""
        found = until(title, lambda: self.ids(title))[-1]
        self.xdotool("windowfocus", "--sync", found)
        return found

    def wait_gone(self, title):
        until(f"the end of {title}", lambda: not self.ids(title))

    def press(self, *keys):
        self.xdotool("key", "--delay", "20", *keys)

    def type(self, text):
        self.press("ctrl+a")
        self.xdotool("type", "--delay", "4", text)

    def name_file(self, path, known=()):
        """Answers the next dialog for a file; gives what it is known by afterwards."""
        def fresh():
            return [found for found in self.ids(SAVE) if found not in known]
        dialog = until(f"the question for {path}", fresh)[-1]
        self.xdotool("windowfocus", "--sync", dialog)
        if path is None:
            self.press("Escape")
        else:
            self.type(str(path))
            self.press("Return")
        return dialog

    def choose_format(self, marker, number):
        self.wait(marker)
        self.press("ctrl+e")
        self.wait("Export")
        self.press("Home", *["Down"] * number, "Return")

    def close_report(self):
        self.wait_gone(SAVE)
        self.wait("Export")
        self.press("Escape")
        self.wait_gone("Export")

    def quit(self, title):
        self.wait(title)
        self.press("ctrl+q")
        status = self.program.wait(PATIENCE)
        said = self.program.stderr.read()
        assert status == 0, f"ended with {status}: {said}"
        return said


def export_by_command(host, marker, folder, environment):
    run = subprocess.run([host, "export", marker, "--all", "-o", folder], env=environment,
                         capture_output=True, text=True, check=True)
    return [pathlib.Path(line.split("\t")[0]) for line in run.stdout.splitlines()]


def content(path):
    return re.sub(rb"%%Creation Date:[^\n]*\n", b"", path.read_bytes())


def check_every_format(window, title, expected, folder):
    """Each format is cancelled once, at its last dialog, and then written."""
    for number, tag in enumerate(FORMATS):
        files = [path for path in expected if path.parent.name == tag]
        assert files, f"the command line wrote nothing for {tag}"
        for answers in ([None], files):
            window.choose_format(title, number)
            if tag == "txt":
                window.wait("Export Format")
                window.press("Return")
            known = []
            for path in answers:
                known.append(window.name_file(path and folder / path.name, known))
            if answers == files:
                until(tag, lambda: all((folder / path.name).exists() for path in files))
                window.close_report()
            else:
                if len(files) > 1:
                    window.wait("No File Name")
                    window.press("alt+s")  # "Stop the Export"
                    window.wait_gone("No File Name")
                window.wait_gone(SAVE)
                assert not any(folder.iterdir()), f"{tag}: cancelled, but there is something"
                window.wait("Export")
                window.press("Escape")
                window.wait_gone("Export")
        for path in files:
            assert content(folder / path.name) == content(path), f"{path.name} differs"
            (folder / path.name).unlink()
        assert not any(folder.iterdir()), f"{tag} left {list(folder.iterdir())}"


def check_replacing(window, title, folder):
    old = folder / "old.txt"
    old.write_text("old")
    window.choose_format(title, 0)
    dialog = window.name_file(old)
    window.name_file(None, [dialog])  # "Do you want to replace it?": Escape
    window.wait(SAVE)
    assert old.read_text() == "old"
    window.press("Return")
    question = until("the question", lambda: [i for i in window.ids(SAVE) if i != dialog])[-1]
    window.xdotool("windowfocus", "--sync", question)
    window.press("alt+y")
    until("the new file", lambda: old.read_text() != "old")
    window.close_report()
    old.unlink()


def check_place_that_cannot_be_written(window, title):
    window.choose_format(title, 0)
    dialog = window.name_file("/proc/report.txt")
    window.wait("kivhost")  # tells it in a sentence: the dialog's own tests read it
    window.press("Return")
    window.wait_gone("kivhost")
    window.name_file(None)  # asked again
    window.wait("Export")
    window.press("Escape")
    window.wait_gone("Export")


def check_bad_file(window, title, bad):
    window.wait(title)
    window.press("ctrl+o")
    window.wait("Open")
    window.type(str(bad))
    window.press("Return")
    window.wait_gone("Open")
    window.wait("kivhost")
    window.press("Return")
    window.wait_gone("kivhost")


def check_viewer(window, title, folder):
    """From the report of an export into the viewer, and the knife set going."""
    window.choose_format(title, 2)
    cuts = [folder / "1.cut", folder / "2.cut"]
    known = []
    for path in cuts:
        known.append(window.name_file(path, known))
    until("the cut files", lambda: all(path.exists() for path in cuts))
    window.wait("Export")
    window.press("alt+o")  # the first of the written files
    window.wait_gone("Export")
    viewer = rf".*/{cuts[0].name} - kivhost"
    window.wait(viewer)
    window.press("p", "ctrl+w")


def check(host, samples):
    marker = os.path.join(samples, "trousers.mar")
    title = ".*/trousers.mar - kivhost"
    with x_server() as display, tempfile.TemporaryDirectory() as directory:
        base = pathlib.Path(directory)
        home, written, folder = base / "home", base / "by-command", base / "by-hand"
        for path in (home, folder):
            path.mkdir(mode=0o700)
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith(("QT_", "LC_", "XDG_")) and name != "LANGUAGE"}
        environment.update(DISPLAY=display, HOME=str(home), LANG="C.UTF-8",
                           XDG_RUNTIME_DIR=str(home), QT_QPA_PLATFORM="xcb")
        # In a build with sanitizers: libraries of the desktop end with memory that they hold.
        options = [environment.get("ASAN_OPTIONS"), "detect_leaks=0"]
        environment["ASAN_OPTIONS"] = ":".join(filter(None, options))
        expected = export_by_command(host, marker, str(written), environment)
        bad = base / "bad.mar"
        bad.write_text('{"format": "kiv-marker", "version"')

        window = Window(host, environment, marker)
        try:
            check_every_format(window, title, expected, folder)
            check_replacing(window, title, folder)
            check_place_that_cannot_be_written(window, title)
            check_bad_file(window, title, bad)
            check_viewer(window, title, folder)
            window.wait(title)
            window.press("F9")
            said = window.quit(title)
            assert not said, f"said on standard error: {said}"
        finally:
            window.program.kill()


def main():
    missing = [tool for tool in ("Xvfb", "xdotool") if shutil.which(tool) is None]
    if missing:
        print(f"skipped: there is no {' and no '.join(missing)}")
        return 77
    check(*sys.argv[1:])
    return 0


if __name__ == "__main__":
    sys.exit(main())

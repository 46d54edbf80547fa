"""A run of the built program in a display of its own, with fresh folders, driven as a person
would drive it: the menus, dialogs, keys and mouse. Shared by scripts/acceptance and
scripts/monkey.
"""

import os
import shutil
import subprocess
import time

import xdrive

# Where things are on the 1280 x 800 screen of the virtual display, with the frame filling
# it (no window manager, so no decorations). The menus follow the order of the program's
# menu tables; an entry's place is its distance from the top of its opened menu (negative:
# from the bottom, for entries below the recent files).
MENU_TITLES = {"file": (21, 11), "option": (59, 11), "window": (97, 11)}
MENU_ENTRIES = {
    "file": {"new timing": 33, "open video": 57, "open translation": 79, "open timing": 101, "exit": -12},
    "option": {"settings": 12},
    "window": {"tile": 12},
}


class StepFailed(Exception):
    pass


class ProgramSession:
    """The program's folders, environment and process on one virtual display."""

    def __init__(self, binary, work, display, log):
        self.work = work
        self.display = display
        self.x = display.x
        self.input = xdrive.Input(display.name)
        self.log = log
        self.process = None
        self.frame = None
        # The program runs from a copy in the work folder: its own folder (auto-save and
        # backup copies) is then inside the work folder too.
        self.bin_dir = os.path.join(work, "bin")
        os.makedirs(self.bin_dir, exist_ok=True)
        self.binary = os.path.join(self.bin_dir, os.path.basename(binary))
        try:
            os.link(binary, self.binary)
        except OSError:
            shutil.copy2(binary, self.binary)
        self.home = os.path.join(work, "home")
        self.config = os.path.join(work, "config")
        self.data = os.path.join(work, "data")
        self.runtime = os.path.join(work, "runtime")
        for folder in (self.home, self.config, self.data, self.runtime):
            os.makedirs(folder, exist_ok=True)
        os.chmod(self.runtime, 0o700)

    @property
    def settings_file(self):
        return os.path.join(self.config, "Velmar", "Velmar.ini")

    def environment(self, extra=None):
        env = {
            key: value
            for key, value in os.environ.items()
            if not key.startswith(("QT_", "XDG_", "SESSION_MANAGER", "DBUS_SESSION"))
        }
        env.update(
            DISPLAY=self.display.name,
            HOME=self.home,
            TMPDIR=self.work,
            XDG_CONFIG_HOME=self.config,
            XDG_DATA_HOME=self.data,
            XDG_CACHE_HOME=os.path.join(self.home, ".cache"),
            XDG_RUNTIME_DIR=self.runtime,
            QT_QPA_PLATFORM="xcb",
            LANG="C.UTF-8",
        )
        env.update(extra or {})
        return env

    def write_settings(self, sections):
        """A fresh settings store: {section: {key: value}}."""
        os.makedirs(os.path.dirname(self.settings_file), exist_ok=True)
        with open(self.settings_file, "w", encoding="utf-8") as f:
            for section, values in sections.items():
                f.write("[%s]\n" % section)
                for key, value in values.items():
                    f.write("%s=%s\n" % (key, value))
                f.write("\n")

    def read_settings(self):
        values = {}
        section = ""
        try:
            with open(self.settings_file, encoding="utf-8") as f:
                for line in f:
                    line = line.strip()
                    if line.startswith("[") and line.endswith("]"):
                        section = line[1:-1]
                    elif "=" in line:
                        key, value = line.split("=", 1)
                        values[(section, key)] = value
        except FileNotFoundError:
            pass
        return values

    # ---- the process ------------------------------------------------------------------

    def start(self, args=(), env=None, timeout=30, preexec=None):
        """Starts the program and waits for its frame."""
        self.log.write("\n---- %s %s\n" % (time.strftime("%H:%M:%S"), " ".join([self.binary, *args])))
        self.log.flush()
        self.frame = None
        self.process = subprocess.Popen(
            [self.binary, *args],
            cwd=self.home,
            env=self.environment(env),
            stdin=subprocess.DEVNULL,
            stdout=self.log,
            stderr=subprocess.STDOUT,
            preexec_fn=preexec,
        )
        self.frame = self.wait_window("Velmar", timeout=timeout, frame=True)
        return self.process

    def running(self):
        return self.process is not None and self.process.poll() is None

    def wait_exit(self, timeout=15):
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            return None

    def kill(self):
        if self.running():
            self.process.terminate()
            if self.wait_exit(5) is None:
                self.process.kill()
                self.process.wait()
        self.frame = None

    # ---- windows ----------------------------------------------------------------------

    def windows(self):
        return self.x.windows(pid=self.process.pid if self.process else None)

    def dialogs(self):
        """The program's windows standing over the frame: dialogs, tool windows and menus."""
        return [w for w in self.windows() if self.frame is None or w.id != self.frame.id]

    def wait_window(self, name, timeout=20, frame=False, size=None, popup=False, exclude=(), prefix=False):
        """The program's window with this name (prefix=True: a name that starts with it) once
        it shows (a menu: popup=True), other than the windows excluded (a dialog of the same
        name already open)."""
        deadline = time.monotonic() + timeout
        while True:
            if self.process is not None and self.process.poll() is not None:
                raise StepFailed("the program ended (status %s) while waiting for %r" % (self.process.returncode, name))
            for w in self.windows():
                if w.override_redirect != popup:
                    continue
                if name is not None and not (w.name.startswith(name) if prefix else w.name == name):
                    continue
                if frame and w.transient_for is not None:
                    continue
                if not frame and self.frame is not None and w.id == self.frame.id:
                    continue
                if size and (w.width, w.height) != size:
                    continue
                if w.id in exclude:
                    continue
                # A window takes the focus once the program has seen it mapped.
                if not popup:
                    self.x.ping(w.id, 10)
                return w
            if time.monotonic() > deadline:
                raise StepFailed("no window %r came within %d s (windows: %s)" % (name, timeout, self.dialogs()))
            time.sleep(0.05)

    def wait_gone(self, window, timeout=20):
        deadline = time.monotonic() + timeout
        while any(w.id == window.id for w in self.windows()):
            if time.monotonic() > deadline:
                raise StepFailed("window %r is still open after %d s" % (window.name, timeout))
            time.sleep(0.05)

    def sync(self, timeout=10):
        """Waits until the program has dealt with everything sent to it so far."""
        if not self.frame or not self.x.ping(self.frame.id, timeout):
            raise StepFailed("the program does not respond (no answer within %d s)" % timeout)

    # ---- input ------------------------------------------------------------------------

    def key(self, *keys):
        self.input.key(*keys)

    def type(self, text):
        self.input.type(text)

    def click(self, x, y, button=1, repeat=1):
        self.input.click(x, y, button, repeat)

    def click_in(self, window, x, y):
        """A click at a point of a window, counted from its top left corner."""
        self.input.click(window.x + x, window.y + y)

    def click_until_gone(self, window, x, y, tries=3):
        """Clicks a button of a window that closes it. A click that comes while a dialog
        opened from the window is still winding up its own loop is lost: it is repeated
        until the window goes."""
        for attempt in range(tries):
            self.sync()
            self.click_in(window, x, y)
            try:
                self.wait_gone(window, timeout=3)
                return
            except StepFailed:
                if attempt == tries - 1:
                    raise

    def menu(self, title, entry):
        """Opens a menu of the frame with the mouse and clicks one of its entries."""
        self.sync()
        self.click(*MENU_TITLES[title])
        popup = self.wait_window(None, timeout=10, popup=True)
        offset = MENU_ENTRIES[title][entry]
        y = popup.y + (offset if offset >= 0 else popup.height + offset)
        self.click(popup.x + 50, y)
        self.wait_gone(popup, timeout=10)

    def file_dialog(self, name, path, over=None):
        """Types a full file name into the file dialog of that title and confirms it; over:
        the dialog of the same title from which it opens."""
        dialog = self.wait_window(name, exclude=(over.id,) if over else ())
        self.type(path)
        self.key("Return")
        self.wait_gone(dialog)
        return dialog

    def grab(self, x=0, y=0, width=None, height=None):
        return self.x.grab(x, y, width, height)

    def settled_screen(self, timeout=3):
        """The screen once the program has painted what it was last told (a playing video
        never settles: the last picture after the timeout)."""
        deadline = time.monotonic() + timeout
        before = None
        while True:
            if self.running() and self.frame is not None:
                self.x.ping(self.frame.id, 5)
            now = self.grab()
            if (before is not None and now.rgb == before.rgb) or time.monotonic() > deadline:
                return now
            before = now
            time.sleep(0.1)


# ---- reading the status bar -----------------------------------------------------------------


def status_panels(bar):
    """The panels of a status bar picture, as (left, right) columns: the runs of their frames'
    top edge, a line darker than the bar and lighter than the text."""
    background = bar.pixel(0, 0)

    def frame_like(p):
        return p != background and 100 < sum(p) // 3 < sum(background) // 3

    best_row, best = 0, []
    for row in range(0, bar.height // 2):
        runs, start = [], None
        for col in range(bar.width + 1):
            inside = col < bar.width and frame_like(bar.pixel(col, row))
            if inside and start is None:
                start = col
            elif not inside and start is not None:
                if col - start > 20:
                    runs.append((start, col))
                start = None
        if sum(b - a for a, b in runs) > sum(b - a for a, b in best):
            best_row, best = row, runs
    return best


def first_word(bar, left, right):
    """The columns of the first word of a panel: its first ink up to a gap of 5 pixels."""
    ink = [
        col
        for col in range(left + 2, right - 1)
        if any(sum(bar.pixel(col, row)) // 3 < 110 for row in range(3, bar.height - 3))
    ]
    if not ink:
        return None
    end = ink[0]
    for col in ink[1:]:
        if col - end > 5:
            break
        end = col
    return ink[0], end


def read_key_name(bar, panel, work):
    """The key name at the head of a status panel ("F8:", the panels counted from 0), read
    with tesseract from the word alone, smoothly enlarged."""
    panels = status_panels(bar)
    if panel >= len(panels):
        return None
    left, right = panels[panel]
    word = first_word(bar, left, right)
    if not word:
        return ""
    small = os.path.join(work, "panel-%d.png" % panel)
    large = os.path.join(work, "panel-%d-large.png" % panel)
    # The word alone, inside the panel's frame, on a margin of its background.
    word_image = bar.crop(word[0] - 1, 4, word[1] - word[0] + 3, bar.height - 8)
    word_image.padded(8, bar.pixel(left + 1, bar.height // 2)).save(small)
    subprocess.run(
        ["ffmpeg", "-loglevel", "error", "-y", "-i", small, "-vf", "scale=iw*5:ih*5:flags=lanczos,format=gray", large],
        check=True,
        timeout=60,
    )
    result = subprocess.run(
        ["tesseract", large, "stdout", "--psm", "7", "-c", "tessedit_char_whitelist=F0123456789:"],
        capture_output=True,
        text=True,
        timeout=60,
    )
    return result.stdout.strip()

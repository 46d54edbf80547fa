"""Drives a program in a virtual X display of its own, as a person at the screen would.

Keys, clicks and wheel turns go through xdotool (the X test extension, the same road as a
real keyboard and mouse). What a person sees is read from the X server through Xlib
(ctypes, nothing to install): the top-level windows with their names, and screen pixels
for screenshots. A window manager's ping (_NET_WM_PING), which Qt answers from its event
loop, tells whether the program is still responding and lets a caller wait until the
program has dealt with everything sent before it.
"""

import ctypes
import ctypes.util
import os
import select
import struct
import subprocess
import time
import zlib

# ---- Xlib through ctypes ------------------------------------------------------------------

_x11 = ctypes.cdll.LoadLibrary(ctypes.util.find_library("X11") or "libX11.so.6")

Window = ctypes.c_ulong
Atom = ctypes.c_ulong


class _XClientMessageEvent(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int),
        ("serial", ctypes.c_ulong),
        ("send_event", ctypes.c_int),
        ("display", ctypes.c_void_p),
        ("window", Window),
        ("message_type", Atom),
        ("format", ctypes.c_int),
        ("data", ctypes.c_long * 5),
    ]


class _XEvent(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("xclient", _XClientMessageEvent), ("pad", ctypes.c_long * 24)]


class _XWindowAttributes(ctypes.Structure):
    _fields_ = [
        ("x", ctypes.c_int),
        ("y", ctypes.c_int),
        ("width", ctypes.c_int),
        ("height", ctypes.c_int),
        ("border_width", ctypes.c_int),
        ("depth", ctypes.c_int),
        ("visual", ctypes.c_void_p),
        ("root", Window),
        ("c_class", ctypes.c_int),
        ("bit_gravity", ctypes.c_int),
        ("win_gravity", ctypes.c_int),
        ("backing_store", ctypes.c_int),
        ("backing_planes", ctypes.c_ulong),
        ("backing_pixel", ctypes.c_ulong),
        ("save_under", ctypes.c_int),
        ("colormap", ctypes.c_ulong),
        ("map_installed", ctypes.c_int),
        ("map_state", ctypes.c_int),
        ("all_event_masks", ctypes.c_long),
        ("your_event_mask", ctypes.c_long),
        ("do_not_propagate_mask", ctypes.c_long),
        ("override_redirect", ctypes.c_int),
        ("screen", ctypes.c_void_p),
    ]


class _XImage(ctypes.Structure):
    _fields_ = [
        ("width", ctypes.c_int),
        ("height", ctypes.c_int),
        ("xoffset", ctypes.c_int),
        ("format", ctypes.c_int),
        ("data", ctypes.POINTER(ctypes.c_ubyte)),
        ("byte_order", ctypes.c_int),
        ("bitmap_unit", ctypes.c_int),
        ("bitmap_bit_order", ctypes.c_int),
        ("bitmap_pad", ctypes.c_int),
        ("depth", ctypes.c_int),
        ("bytes_per_line", ctypes.c_int),
        ("bits_per_pixel", ctypes.c_int),
    ]


_ERROR_HANDLER = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
# A window that goes away between two questions about it is no fault here.
_ignore_errors = _ERROR_HANDLER(lambda display, event: 0)
_x11.XSetErrorHandler(_ignore_errors)

_x11.XOpenDisplay.restype = ctypes.c_void_p
_x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
_x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
_x11.XDefaultRootWindow.restype = Window
_x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
_x11.XInternAtom.restype = Atom
_x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
_x11.XQueryTree.argtypes = [
    ctypes.c_void_p,
    Window,
    ctypes.POINTER(Window),
    ctypes.POINTER(Window),
    ctypes.POINTER(ctypes.POINTER(Window)),
    ctypes.POINTER(ctypes.c_uint),
]
_x11.XGetWindowAttributes.argtypes = [ctypes.c_void_p, Window, ctypes.POINTER(_XWindowAttributes)]
_x11.XGetWindowProperty.argtypes = [
    ctypes.c_void_p,
    Window,
    Atom,
    ctypes.c_long,
    ctypes.c_long,
    ctypes.c_int,
    Atom,
    ctypes.POINTER(Atom),
    ctypes.POINTER(ctypes.c_int),
    ctypes.POINTER(ctypes.c_ulong),
    ctypes.POINTER(ctypes.c_ulong),
    ctypes.POINTER(ctypes.POINTER(ctypes.c_ubyte)),
]
_x11.XGetTransientForHint.argtypes = [ctypes.c_void_p, Window, ctypes.POINTER(Window)]
_x11.XSendEvent.argtypes = [ctypes.c_void_p, Window, ctypes.c_int, ctypes.c_long, ctypes.POINTER(_XEvent)]
_x11.XSelectInput.argtypes = [ctypes.c_void_p, Window, ctypes.c_long]
_x11.XPending.argtypes = [ctypes.c_void_p]
_x11.XNextEvent.argtypes = [ctypes.c_void_p, ctypes.POINTER(_XEvent)]
_x11.XFlush.argtypes = [ctypes.c_void_p]
_x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
_x11.XConnectionNumber.argtypes = [ctypes.c_void_p]
_x11.XFree.argtypes = [ctypes.c_void_p]
_x11.XGetImage.restype = ctypes.POINTER(_XImage)
_x11.XGetImage.argtypes = [
    ctypes.c_void_p,
    Window,
    ctypes.c_int,
    ctypes.c_int,
    ctypes.c_uint,
    ctypes.c_uint,
    ctypes.c_ulong,
    ctypes.c_int,
]
_x11.XDestroyImage.argtypes = [ctypes.POINTER(_XImage)]
_x11.XTranslateCoordinates.argtypes = [
    ctypes.c_void_p,
    Window,
    Window,
    ctypes.c_int,
    ctypes.c_int,
    ctypes.POINTER(ctypes.c_int),
    ctypes.POINTER(ctypes.c_int),
    ctypes.POINTER(Window),
]

_CLIENT_MESSAGE = 33
_STRUCTURE_NOTIFY = 1 << 17
_SUBSTRUCTURE_NOTIFY = 1 << 19
_IS_VIEWABLE = 2
_ZPIXMAP = 2


class Win:
    """A top-level window as the X server sees it."""

    def __init__(self, wid, name, pid, x, y, width, height, transient_for, override_redirect):
        self.id = wid
        self.name = name
        self.pid = pid
        self.x, self.y, self.width, self.height = x, y, width, height
        self.transient_for = transient_for
        self.override_redirect = override_redirect

    def __repr__(self):
        return "<window 0x%x %r %dx%d+%d+%d>" % (self.id, self.name, self.width, self.height, self.x, self.y)

    @property
    def centre(self):
        return self.x + self.width // 2, self.y + self.height // 2


class XConnection:
    """One client connection to a display: window lists, pings, closes and pixels."""

    def __init__(self, display_name):
        self.display_name = display_name
        self._dpy = _x11.XOpenDisplay(display_name.encode())
        if not self._dpy:
            raise OSError("cannot open display " + display_name)
        self.root = _x11.XDefaultRootWindow(self._dpy)
        self._atoms = {}
        # Qt answers a ping by sending it back to the root window.
        _x11.XSelectInput(self._dpy, self.root, _STRUCTURE_NOTIFY | _SUBSTRUCTURE_NOTIFY)
        _x11.XSync(self._dpy, 0)
        self._ping_serial = 0

    def close(self):
        if self._dpy:
            _x11.XCloseDisplay(self._dpy)
            self._dpy = None

    def atom(self, name):
        if name not in self._atoms:
            self._atoms[name] = _x11.XInternAtom(self._dpy, name.encode(), 0)
        return self._atoms[name]

    def _property(self, wid, name, kind):
        actual_type = Atom()
        actual_format = ctypes.c_int()
        count = ctypes.c_ulong()
        after = ctypes.c_ulong()
        data = ctypes.POINTER(ctypes.c_ubyte)()
        status = _x11.XGetWindowProperty(
            self._dpy,
            wid,
            self.atom(name),
            0,
            4096,
            0,
            self.atom(kind) if kind else 0,
            ctypes.byref(actual_type),
            ctypes.byref(actual_format),
            ctypes.byref(count),
            ctypes.byref(after),
            ctypes.byref(data),
        )
        if status != 0 or not data:
            return None, 0, 0
        try:
            if actual_format.value == 32:
                # Format 32 comes as C longs.
                values = ctypes.cast(data, ctypes.POINTER(ctypes.c_long))
                return [values[i] for i in range(count.value)], 32, count.value
            return bytes(data[: count.value * (actual_format.value // 8)]), actual_format.value, count.value
        finally:
            _x11.XFree(data)

    def window_name(self, wid):
        value, _, _ = self._property(wid, "_NET_WM_NAME", "UTF8_STRING")
        if not value:
            value, _, _ = self._property(wid, "WM_NAME", "STRING")
            return value.decode("latin-1") if value else ""
        return value.decode("utf-8", "replace")

    def windows(self, pid=None):
        """The viewable top-level windows, bottom first; of one process when pid is given."""
        root_return, parent_return = Window(), Window()
        children = ctypes.POINTER(Window)()
        count = ctypes.c_uint()
        if not _x11.XQueryTree(
            self._dpy, self.root, ctypes.byref(root_return), ctypes.byref(parent_return),
            ctypes.byref(children), ctypes.byref(count)
        ):
            return []
        ids = [children[i] for i in range(count.value)]
        if children:
            _x11.XFree(children)
        found = []
        for wid in ids:
            attributes = _XWindowAttributes()
            if not _x11.XGetWindowAttributes(self._dpy, wid, ctypes.byref(attributes)):
                continue
            if attributes.map_state != _IS_VIEWABLE:
                continue
            pids, _, _ = self._property(wid, "_NET_WM_PID", "CARDINAL")
            owner = pids[0] if pids else None
            if pid is not None and owner != pid:
                continue
            transient = Window()
            has_transient = _x11.XGetTransientForHint(self._dpy, wid, ctypes.byref(transient))
            found.append(
                Win(
                    wid,
                    self.window_name(wid),
                    owner,
                    attributes.x,
                    attributes.y,
                    attributes.width,
                    attributes.height,
                    transient.value if has_transient else None,
                    bool(attributes.override_redirect),
                )
            )
        return found

    def _send_protocol(self, wid, protocol, extra=0):
        event = _XEvent()
        event.xclient.type = _CLIENT_MESSAGE
        event.xclient.window = wid
        event.xclient.message_type = self.atom("WM_PROTOCOLS")
        event.xclient.format = 32
        event.xclient.data[0] = self.atom(protocol)
        event.xclient.data[1] = extra
        event.xclient.data[2] = wid
        _x11.XSendEvent(self._dpy, wid, 0, 0, ctypes.byref(event))
        _x11.XFlush(self._dpy)

    def close_window(self, wid):
        """Asks a window to close, as its title bar's close button would."""
        self._send_protocol(wid, "WM_DELETE_WINDOW")

    def ping(self, wid, timeout):
        """True when the program that owns the window answers within the timeout (seconds).

        Its event loop answers in turn, after everything that reached it before."""
        self._ping_serial += 1
        serial = self._ping_serial
        self._send_protocol(wid, "_NET_WM_PING", serial)
        deadline = time.monotonic() + timeout
        event = _XEvent()
        fd = _x11.XConnectionNumber(self._dpy)
        while True:
            while _x11.XPending(self._dpy):
                _x11.XNextEvent(self._dpy, ctypes.byref(event))
                if (
                    event.type == _CLIENT_MESSAGE
                    and event.xclient.message_type == self.atom("WM_PROTOCOLS")
                    and event.xclient.data[0] == self.atom("_NET_WM_PING")
                    and event.xclient.data[1] == serial
                ):
                    return True
            left = deadline - time.monotonic()
            if left <= 0:
                return False
            select.select([fd], [], [], min(left, 0.1))

    def grab(self, x=0, y=0, width=None, height=None):
        """The screen's pixels in a rectangle, as an Image."""
        if width is None or height is None:
            attributes = _XWindowAttributes()
            _x11.XGetWindowAttributes(self._dpy, self.root, ctypes.byref(attributes))
            width = attributes.width - x if width is None else width
            height = attributes.height - y if height is None else height
        image = _x11.XGetImage(self._dpy, self.root, x, y, width, height, ~0 & 0xFFFFFFFF, _ZPIXMAP)
        if not image:
            raise OSError("cannot read the screen")
        try:
            im = image.contents
            if im.bits_per_pixel != 32:
                raise OSError("screen depth %d is not handled" % im.bits_per_pixel)
            stride = im.bytes_per_line
            raw = ctypes.string_at(im.data, stride * height)
        finally:
            _x11.XDestroyImage(image)
        rgb = bytearray(width * height * 3)
        for row in range(height):
            line = raw[row * stride : row * stride + width * 4]
            out = row * width * 3
            rgb[out : out + width * 3 : 3] = line[2::4]
            rgb[out + 1 : out + width * 3 : 3] = line[1::4]
            rgb[out + 2 : out + width * 3 : 3] = line[0::4]
        return Image(width, height, rgb)


# ---- pictures -----------------------------------------------------------------------------


class Image:
    """RGB pixels, 8 bits a channel, rows top down."""

    def __init__(self, width, height, rgb):
        self.width, self.height, self.rgb = width, height, rgb

    def crop(self, x, y, width, height):
        x, y = max(0, x), max(0, y)
        width, height = min(width, self.width - x), min(height, self.height - y)
        rows = bytearray()
        for row in range(y, y + height):
            start = (row * self.width + x) * 3
            rows += self.rgb[start : start + width * 3]
        return Image(width, height, rows)

    def padded(self, margin, colour):
        """The picture on a margin of one colour."""
        width = self.width + 2 * margin
        fill = bytes(colour) * width
        rows = bytearray(fill * margin)
        for row in range(self.height):
            rows += bytes(colour) * margin + self.rgb[row * self.width * 3 : (row + 1) * self.width * 3]
            rows += bytes(colour) * margin
        rows += fill * margin
        return Image(width, self.height + 2 * margin, rows)

    def scaled(self, factor):
        """Each pixel made factor x factor (for text recognition of small print)."""
        rows = bytearray()
        for row in range(self.height):
            line = self.rgb[row * self.width * 3 : (row + 1) * self.width * 3]
            wide = bytearray()
            for col in range(self.width):
                wide += line[col * 3 : col * 3 + 3] * factor
            rows += bytes(wide) * factor
        return Image(self.width * factor, self.height * factor, rows)

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.rgb[at : at + 3])

    def changed_pixels(self, other):
        """How many pixels differ from another picture of the same size."""
        a, b = self.rgb, other.rgb
        return sum(1 for i in range(0, len(a), 3) if a[i : i + 3] != b[i : i + 3])

    def colours(self, step=4):
        """The distinct colours among every step-th pixel."""
        return len({bytes(self.rgb[i : i + 3]) for i in range(0, len(self.rgb), 3 * step)})

    def png(self):
        raw = bytearray()
        stride = self.width * 3
        for row in range(self.height):
            raw += b"\x00" + self.rgb[row * stride : (row + 1) * stride]

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(raw), 6)) + chunk(
            b"IEND", b""
        )

    def save(self, path):
        with open(path, "wb") as f:
            f.write(self.png())


# ---- the display --------------------------------------------------------------------------


class NoDisplay(Exception):
    pass


def _display_taken(number):
    return os.path.exists("/tmp/.X%d-lock" % number) or os.path.exists("/tmp/.X11-unix/X%d" % number)


class VirtualDisplay:
    """An Xvfb server on the first free number of a range, with one connection to it."""

    def __init__(self, numbers, size="1280x800x24", log=None):
        self.process = None
        self.name = None
        self.x = None
        for number in numbers:
            if _display_taken(number):
                continue
            process = subprocess.Popen(
                ["Xvfb", ":%d" % number, "-screen", "0", size, "-nolisten", "tcp", "-ac"],
                stdout=subprocess.DEVNULL,
                stderr=log or subprocess.DEVNULL,
            )
            deadline = time.monotonic() + 10
            while time.monotonic() < deadline and process.poll() is None:
                try:
                    self.x = XConnection(":%d" % number)
                    break
                except OSError:
                    time.sleep(0.05)
            if self.x:
                self.process, self.name = process, ":%d" % number
                return
            # Another server took the number first, or this one failed: try the next.
            if process.poll() is None:
                process.terminate()
                process.wait()
        raise NoDisplay("no virtual display could start on :%s" % ",".join(str(n) for n in numbers))

    def stop(self):
        if self.x:
            self.x.close()
            self.x = None
        if self.process and self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()


# ---- input through xdotool ----------------------------------------------------------------


class Input:
    """Keys, typing, clicks, drags and wheel turns on a display."""

    def __init__(self, display_name):
        self.env = dict(os.environ, DISPLAY=display_name)
        # Where this input last put the pointer: xdotool's mousemove --sync to the place
        # where the pointer already stands waits for a move that never comes (many seconds).
        self._at = None

    def xdotool(self, *args):
        subprocess.run(["xdotool", *[str(a) for a in args]], env=self.env, check=True, timeout=30)

    def key(self, *keys, delay=40):
        self.xdotool("key", "--delay", delay, *keys)

    def type(self, text, delay=8):
        self.xdotool("type", "--delay", delay, "--", text)

    def _move_to(self, x, y):
        """The arguments that bring the pointer to a place, waiting until it is there."""
        if self._at == (x, y):
            return []
        self._at = (x, y)
        return ["mousemove", "--sync", x, y]

    def move(self, x, y):
        moving = self._move_to(x, y)
        if moving:
            self.xdotool(*moving)

    def click(self, x, y, button=1, repeat=1):
        self.xdotool(*self._move_to(x, y), "click", "--repeat", repeat, "--delay", 60, button)

    def drag(self, x1, y1, x2, y2, button=1):
        start = self._move_to(x1, y1)
        self._at = (x2, y2)
        self.xdotool(
            *start, "mousedown", button, "sleep", "0.05",
            "mousemove", "--sync", (x1 + x2) // 2, (y1 + y2) // 2, "sleep", "0.05",
            "mousemove", "--sync", x2, y2, "sleep", "0.05", "mouseup", button,
        )

    def wheel(self, x, y, up=True, turns=1):
        self.xdotool(*self._move_to(x, y), "click", "--repeat", turns, 4 if up else 5)

    def focus(self, wid):
        self.xdotool("windowfocus", "--sync", wid)


# ---- input straight through the X test extension ------------------------------------------

_xtst = ctypes.cdll.LoadLibrary(ctypes.util.find_library("Xtst") or "libXtst.so.6")
_xtst.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
_xtst.XTestFakeButtonEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
_xtst.XTestFakeMotionEvent.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_ulong]
_x11.XStringToKeysym.restype = ctypes.c_ulong
_x11.XStringToKeysym.argtypes = [ctypes.c_char_p]
_x11.XKeysymToKeycode.restype = ctypes.c_ubyte
_x11.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
_x11.XSetInputFocus.argtypes = [ctypes.c_void_p, Window, ctypes.c_int, ctypes.c_ulong]

_MODIFIERS = {"ctrl": "Control_L", "alt": "Alt_L", "shift": "Shift_L", "super": "Super_L"}
_CHARACTERS = {" ": "space", ".": "period", "-": "minus", ",": "comma", ":": "colon"}


class FastInput:
    """The same strokes as Input, sent through the X test extension of one connection: no
    process per stroke, for the many strokes of a random run."""

    def __init__(self, connection):
        self.x = connection
        self._dpy = connection._dpy

    def _code(self, name):
        name = _MODIFIERS.get(name.lower(), name)
        keysym = _x11.XStringToKeysym(name.encode())
        code = _x11.XKeysymToKeycode(self._dpy, keysym) if keysym else 0
        if not code:
            raise ValueError("no key %r" % name)
        return code

    def _flush(self):
        _x11.XSync(self._dpy, 0)

    def key_down(self, name):
        _xtst.XTestFakeKeyEvent(self._dpy, self._code(name), 1, 0)
        self._flush()

    def key_up(self, name):
        _xtst.XTestFakeKeyEvent(self._dpy, self._code(name), 0, 0)
        self._flush()

    def key(self, *keys, delay=0):
        for chord in keys:
            parts = chord.split("+")
            codes = [self._code(p) for p in parts]
            for code in codes:
                _xtst.XTestFakeKeyEvent(self._dpy, code, 1, 0)
            for code in reversed(codes):
                _xtst.XTestFakeKeyEvent(self._dpy, code, 0, 0)
            self._flush()
            if delay:
                time.sleep(delay / 1000)

    def type(self, text, delay=0):
        self.key(*[_CHARACTERS.get(c, c) for c in text], delay=delay)

    def move(self, x, y):
        _xtst.XTestFakeMotionEvent(self._dpy, -1, int(x), int(y), 0)
        self._flush()

    def click(self, x, y, button=1, repeat=1):
        self.move(x, y)
        for i in range(repeat):
            _xtst.XTestFakeButtonEvent(self._dpy, button, 1, 0)
            _xtst.XTestFakeButtonEvent(self._dpy, button, 0, 0)
            self._flush()
            if i + 1 < repeat:
                time.sleep(0.06)

    def drag(self, x1, y1, x2, y2, button=1):
        self.move(x1, y1)
        _xtst.XTestFakeButtonEvent(self._dpy, button, 1, 0)
        self._flush()
        for step in range(1, 5):
            time.sleep(0.02)
            self.move(x1 + (x2 - x1) * step // 4, y1 + (y2 - y1) * step // 4)
        _xtst.XTestFakeButtonEvent(self._dpy, button, 0, 0)
        self._flush()

    def wheel(self, x, y, up=True, turns=1):
        self.move(x, y)
        for _ in range(turns):
            _xtst.XTestFakeButtonEvent(self._dpy, 4 if up else 5, 1, 0)
            _xtst.XTestFakeButtonEvent(self._dpy, 4 if up else 5, 0, 0)
        self._flush()

    def focus(self, wid):
        _x11.XSetInputFocus(self._dpy, wid, 1, 0)
        self._flush()

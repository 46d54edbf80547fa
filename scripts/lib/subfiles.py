"""Reads the subtitle files the program writes, to compare them with what was done to it.

Deliberately independent of the program's own readers: a fault there must not hide a
fault in the writer.
"""

import re


def read_text(path):
    """A saved file's text: UTF-16 behind its byte-order mark, else UTF-8, else GBK."""
    with open(path, "rb") as f:
        data = f.read()
    if data[:2] in (b"\xff\xfe", b"\xfe\xff"):
        return data.decode("utf-16")
    if data[:3] == b"\xef\xbb\xbf":
        data = data[3:]
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("gbk")


def ass_time(text):
    """'0:01:02.34' in seconds."""
    h, m, s = text.strip().split(":")
    return int(h) * 3600 + int(m) * 60 + float(s)


def ass_section(text, name):
    """The entries of a section of an ASS or SSA script as (key, value) pairs, in order:
    "Title: x" gives ("Title", "x"); a Style or Dialogue line its fields by the section's
    Format line, as a dict."""
    entries = []
    fields = None
    inside = False
    for line in text.split("\r\n"):
        if line.startswith("["):
            inside = line.strip().lower() == "[%s]" % name.lower()
            fields = None
            continue
        if not inside or ":" not in line or line.startswith(";"):
            continue
        key, value = line.split(":", 1)
        value = value.lstrip()
        if key == "Format":
            fields = [f.strip() for f in value.split(",")]
        elif fields and key in ("Style", "Dialogue", "Comment"):
            entries.append((key, dict(zip(fields, value.split(",", len(fields) - 1)))))
        else:
            entries.append((key, value))
    return entries


def ass_rows(text):
    """The fields of every Dialogue line of an ASS or SSA script, as dicts, in order."""
    return [row for key, row in ass_section(text, "Events") if key == "Dialogue"]


def ass_events(text):
    """(start, end, dialogue) of every Dialogue line of an ASS or SSA script, in order."""
    return [(ass_time(row["Start"]), ass_time(row["End"]), row.get("Text", "")) for row in ass_rows(text)]


_KARAOKE_TAG = re.compile(r"\{\\[kK][fo]?(\d+)\}([^{]*)")
_KARAOKE_LINE = re.compile(r"(?:\{\\[kK][fo]?\d+\}[^{]*)+")


def karaoke(text):
    """(hundredths, syllable) of every karaoke tag of a dialogue, in order; None when
    anything but tags and their syllables stands in the text."""
    if not _KARAOKE_LINE.fullmatch(text):
        return None
    return [(int(length), syllable) for length, syllable in _KARAOKE_TAG.findall(text)]


_SRT_TIMES = re.compile(r"(\d+):(\d\d):(\d\d)[,.](\d{1,3})\s*-->\s*(\d+):(\d\d):(\d\d)[,.](\d{1,3})")


def srt_cues(text):
    """(start, end, text) of every cue of an SRT file, in order."""
    cues = []
    lines = text.replace("\r\n", "\n").split("\n")
    i = 0
    while i < len(lines):
        match = _SRT_TIMES.search(lines[i])
        if not match:
            i += 1
            continue
        g = match.groups()
        start = int(g[0]) * 3600 + int(g[1]) * 60 + int(g[2]) + int(g[3].ljust(3, "0")) / 1000
        end = int(g[4]) * 3600 + int(g[5]) * 60 + int(g[6]) + int(g[7].ljust(3, "0")) / 1000
        i += 1
        body = []
        while i < len(lines) and lines[i].strip():
            body.append(lines[i])
            i += 1
        cues.append((start, end, "\\N".join(body)))
    return cues

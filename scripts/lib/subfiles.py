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


def ass_events(text):
    """(start, end, dialogue) of every Dialogue line of an ASS or SSA script, in order."""
    fields = None
    events = []
    for line in text.split("\r\n"):
        if line.startswith("Format:") and fields is None and "Start" in line:
            fields = [f.strip() for f in line[len("Format:") :].split(",")]
        elif line.startswith("Dialogue:"):
            names = fields or ["Layer", "Start", "End", "Style", "Name", "MarginL", "MarginR", "MarginV", "Effect", "Text"]
            values = line[len("Dialogue:") :].split(",", len(names) - 1)
            row = dict(zip(names, values))
            events.append((ass_time(row["Start"]), ass_time(row["End"]), row.get("Text", "")))
    return events


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

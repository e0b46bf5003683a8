#!/usr/bin/env python3
"""Draws the rooms of src/ and what they use, as docs/rooms.svg.

    scripts/draw-rooms.py            writes the picture
    scripts/draw-rooms.py --check    fails where the picture is not what would be written

The rooms come from the cinder_folder(...) lines, so the picture shows what the build enforces. A
room stands one floor above the highest room it uses. An arrow that another path implies is left out.
"""
import pathlib
import re
import sys
from xml.sax.saxutils import escape

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURE = ROOT / "docs" / "rooms.svg"
BOX_HEIGHT, FLOOR_HEIGHT, GAP, MARGIN, CHAR = 34, 104, 26, 30, 7.6
STYLE = """
  .room { fill: #f4efe6; stroke: #5b4636; stroke-width: 1.4; }
  .empty { fill: #ffffff; stroke: #a8998a; stroke-width: 1.2; stroke-dasharray: 5 4; }
  text { font: 13px ui-monospace, monospace; fill: #2c2018; text-anchor: middle; }
  .arrow { fill: none; stroke: #b3552b; stroke-width: 1.3; opacity: 0.75; }
  .late { stroke: #c9bcae; }
"""


def read_rooms():
    """Name -> (names it uses, whether it has code yet)."""
    rooms = {}
    for path in sorted((ROOT / "src").rglob("CMakeLists.txt")):
        text = re.sub(r"#.*", "", path.read_text())
        for kind, body in re.findall(r"cinder_(folder|room_to_come)\(([^)]*)\)", text):
            words = body.split()
            uses, reading = [], False
            for word in words[1:]:
                if word.isupper():
                    reading = word == "USES"
                elif reading:
                    uses.append(word)
            rooms[words[0]] = (uses, kind == "folder")
    return rooms


def floors_of(rooms):
    floors = {}

    def floor(name):
        if name not in floors:
            floors[name] = 1 + max((floor(used) for used in rooms[name][0]), default=-1)
        return floors[name]

    for name in rooms:
        floor(name)
    return floors


def reachable(rooms, name, seen=None):
    seen = set() if seen is None else seen
    for used in rooms[name][0]:
        if used not in seen:
            seen.add(used)
            reachable(rooms, used, seen)
    return seen


def direct_uses(rooms, name):
    """What a room uses and does not reach through another room that it uses."""
    uses = rooms[name][0]
    return [u for u in uses if not any(u in reachable(rooms, v) for v in uses if v != u)]


def place(rooms, floors):
    """Name -> (x, y, width). Within a floor a room stands near the middle of what it uses."""
    top = max(floors.values())
    places, widths = {}, {name: len(name) * CHAR + 24 for name in rooms}
    rows = [[n for n in rooms if floors[n] == level] for level in range(top + 1)]
    breadth = max(sum(widths[n] + GAP for n in row) for row in rows)
    for level, row in enumerate(rows):
        def pull(name):
            below = [places[u][0] + places[u][2] / 2 for u in rooms[name][0] if u in places]
            return sum(below) / len(below) if below else 0
        row.sort(key=pull)
        x = MARGIN + (breadth - sum(widths[n] + GAP for n in row) + GAP) / 2
        for name in row:
            places[name] = (x, MARGIN + (top - level) * FLOOR_HEIGHT, widths[name])
            x += widths[name] + GAP
    return places, breadth + 2 * MARGIN, MARGIN * 2 + top * FLOOR_HEIGHT + BOX_HEIGHT


def draw(rooms):
    places, width, height = place(rooms, floors_of(rooms))
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {height:.0f}">',
             f"<style>{STYLE}</style>",
             '<defs><marker id="tip" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" '
             'markerHeight="7" orient="auto"><path d="M0 0 8 4 0 8z" fill="#b3552b"/></marker></defs>',
             f'<rect width="{width:.0f}" height="{height:.0f}" fill="#ffffff"/>']
    for name in rooms:
        x, y, w = places[name]
        for used in direct_uses(rooms, name):
            ux, uy, uw = places[used]
            x1, y1, x2, y2 = x + w / 2, y + BOX_HEIGHT, ux + uw / 2, uy
            bend = (y2 - y1) / 2
            late = "" if rooms[name][1] else " late"
            lines.append(f'<path class="arrow{late}" marker-end="url(#tip)" d="M{x1:.0f} {y1:.0f}C'
                         f'{x1:.0f} {y1 + bend:.0f} {x2:.0f} {y2 - bend:.0f} {x2:.0f} {y2:.0f}"/>')
    for name, (_, has_code) in rooms.items():
        x, y, w = places[name]
        lines.append(f'<rect class="{"room" if has_code else "empty"}" x="{x:.0f}" y="{y:.0f}" '
                     f'width="{w:.0f}" height="{BOX_HEIGHT}" rx="6"/>')
        lines.append(f'<text x="{x + w / 2:.0f}" y="{y + 22:.0f}">{escape(name)}</text>')
    return "\n".join(lines + ["</svg>", ""])


def main():
    picture = draw(read_rooms())
    if sys.argv[1:] == ["--check"]:
        if not PICTURE.exists() or PICTURE.read_text() != picture:
            sys.exit(f"{PICTURE.relative_to(ROOT)} is out of date: run scripts/draw-rooms.py")
    else:
        PICTURE.write_text(picture)


if __name__ == "__main__":
    main()

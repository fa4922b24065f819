#!/usr/bin/env python3
"""Makes a large CityGML file by tiling the city object members of a real one.

Each tile gets fresh ids (every gml:id and every reference to one gets a tile suffix) and its
own x/y offset, so the result reads like a bigger city rather than one city repeated.
usage: tile_citygml.py SOURCE OUTPUT MEGABYTES
"""
import re
import sys

MEMBER = re.compile(rb"<((?:\w+:)?cityObjectMember)\b.*?</\1>", re.S)
IDS = re.compile(rb'(gml:id="|xlink:href="#|uri="#|ring="#|<(?:\w+:)?target>#)([^"<]+)')
COORDS = re.compile(rb"(<gml:(?:posList|pos|lowerCorner|upperCorner)\b[^>]*>)([^<]*)(<)")


def shifted(numbers, dx, dy):
    values = numbers.split()
    if len(values) % 3:
        return numbers
    for i in range(0, len(values), 3):
        values[i] = b"%.3f" % (float(values[i]) + dx)
        values[i + 1] = b"%.3f" % (float(values[i + 1]) + dy)
    return b" ".join(values)


def main():
    source, output, megabytes = sys.argv[1], sys.argv[2], float(sys.argv[3])
    data = open(source, "rb").read()
    members = list(MEMBER.finditer(data))
    if not members:
        sys.exit("no city object members in " + source)
    head = data[: members[0].start()]
    tail = data[members[-1].end():]
    body = data[members[0].start(): members[-1].end()]
    target = int(megabytes * 1024 * 1024)
    written = len(head) + len(tail)
    with open(output, "wb") as out:
        out.write(head)
        tile = 0
        while written < target:
            suffix = b"_t%d" % tile
            dx, dy = 500.0 * (tile % 40), 500.0 * (tile // 40)
            text = IDS.sub(lambda m: m.group(1) + m.group(2) + suffix, body)
            text = COORDS.sub(lambda m: m.group(1) + shifted(m.group(2), dx, dy) + m.group(3), text)
            out.write(text)
            written += len(text)
            tile += 1
        out.write(tail)
    print("%s: %d tiles, %.1f MB" % (output, tile, written / 1048576.0))


if __name__ == "__main__":
    main()

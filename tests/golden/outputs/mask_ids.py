#!/usr/bin/env python3
"""Prints a CityGML document written by the tool in a form that random identifiers don't change.

Each random identifier (a version 4 UUID starting with a letter) becomes ID<n>, numbered by first
appearance, so references still show what they point at. Appearance targets are listed in the
order of their random polygon ids; runs of sibling targets (one line, or one block up to
</app:target>) are therefore sorted.
usage: mask_ids.py DOCUMENT
"""
import re
import sys

UUID = re.compile(rb"[a-f][0-9a-f]{7}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}")


def main():
    names = {}

    def name(match):
        return b"ID%d" % names.setdefault(match.group(0), len(names))

    lines = UUID.sub(name, open(sys.argv[1], "rb").read()).split(b"\n")
    out, run, i = [], [], 0
    while i < len(lines):
        line = lines[i]
        if line.lstrip().startswith(b"<app:target"):
            block = [line]
            if b"</app:target>" not in line:
                while i + 1 < len(lines) and b"</app:target>" not in lines[i]:
                    i += 1
                    block.append(lines[i])
            run.append(b"\n".join(block))
        else:
            out.extend(sorted(run))
            run = []
            out.append(line)
        i += 1
    out.extend(sorted(run))
    sys.stdout.buffer.write(b"\n".join(out))


main()

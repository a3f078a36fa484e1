#!/usr/bin/env python3
"""Writes saved-ranges-old.bin: a tree of saved ranges in the binary stream of earlier
versions, byte by byte as QDataStream writes it (big endian; a QString is its length in
bytes as quint32 followed by UTF-16BE; a bool one byte; a qint32 four bytes), independent of
the program's reader. Run it to remake the golden file:
    python3 tests/selection/data/make_old_tree.py
"""

import os
import struct

HERE = os.path.dirname(os.path.abspath(__file__))


def qstring(text):
    data = text.encode("utf-16-be")
    return struct.pack(">I", len(data)) + data


def qbool(value):
    return b"\x01" if value else b"\x00"


def qint32(value):
    return struct.pack(">i", value)


def folder(name, is_open, children):
    out = qstring("item") + qstring(name) + qbool(False) + qbool(is_open)
    out += qint32(len(children)) + b"".join(children)
    return out


def saved_range(name, text, groups=(), exclusive=True, block=False):
    out = qstring("item") + qstring(name) + qbool(True) + qbool(False)
    out += qint32(0) + qstring(text)
    out += qint32(len(groups)) + qstring("Full Range") + qbool(exclusive) + qbool(block)
    for group_name, group_text, parent in groups:
        out += qstring(group_name) + qstring(group_text) + qint32(parent)
    out += qint32(0)
    return out


def main():
    stream = folder("Preflop", True, [
        saved_range("UTG", "77,88,99,TT,JJ,QQ,KK,AA,ATs,AJs,AQs,AKs,KQs,AQo,AKo"),
        saved_range("BTN vs 3-Bet", "TT,JJ,QQ,KK,AA,AQs,AKs,AKo,A5s,A4s",
                    groups=[("Value", "QQ,KK,AA,AKs,AKo", 0),
                            ("Bluff", "A5s,A4s", 0),
                            ("Aces", "AA", 1)]),
    ])
    stream += folder("Flop \u00e9t\u00e9 <&\">", False, [
        saved_range("Sets", "22,33,44", block=True, groups=[("Low", "22", 0)]),
    ])
    with open(os.path.join(HERE, "saved-ranges-old.bin"), "wb") as target:
        target.write(stream)


if __name__ == "__main__":
    main()

# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The daemon's records as they travel: texts and truth values one behind the other."""

import struct


def record(*fields):
    """None is the null text, which is not the empty one."""
    return b"".join(map(_encoded, fields))


def network(flags, ssid, password="", identity=""):
    """What a client sends to join a network."""
    return record("b", "f", "s", flags, ssid, password, identity, True)


def _encoded(field):
    if isinstance(field, bool):
        return struct.pack("?", field)
    if field is None:
        return b"\xff\xff\xff\xff"
    text = field.encode("utf-16-be")
    return struct.pack(">I", len(text)) + text

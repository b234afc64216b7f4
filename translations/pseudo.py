#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Translates a file into a language that is easy to tell: texts are in brackets, and longer by the
third that others take more room than English. translations/pseudo.py FILE.ts"""

import sys
from xml.etree import ElementTree

WORDS = "one two three four five six seven eight nine ten eleven twelve"

tree = ElementTree.parse(sys.argv[1])
for message in tree.iter("message"):
    source = message.findtext("source")
    translation = message.find("translation")
    translation.text = f"[{source} {WORDS[:-(-len(source) // 3)]}]"
    del translation.attrib["type"]
tree.write(sys.argv[1], encoding="utf-8", xml_declaration=True)

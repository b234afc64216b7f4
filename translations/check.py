#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Says what a translation lacks: texts of the sources, what is put into them, or the options that
they name. translations/check.py LUPDATE FILE.ts..."""

import re
import shutil
import subprocess
import sys
from pathlib import Path
from tempfile import TemporaryDirectory
from xml.etree import ElementTree


def is_outdated(lupdate, file):
    with TemporaryDirectory() as folder:
        copy = Path(shutil.copy(file, folder))
        subprocess.run([Path(__file__).with_name("update"), lupdate, copy], check=True)
        return copy.read_text() != file.read_text()


def flaws(lupdate, file):
    if is_outdated(lupdate, file):
        yield "has other texts than the sources: build the target `translations`"
    for message in ElementTree.parse(file).iter("message"):
        source, translation = message.findtext("source"), message.find("translation")
        text = translation.text or ""
        if "type" in translation.attrib or not text.strip():
            yield f"does not translate {source!r}"
        elif len({str(sorted(re.findall(r"%\d|--[a-z-]+", each))) for each in (source, text)}) > 1:
            yield f"changes what belongs into {source!r}"


found = [f"{file}: {flaw}" for file in sys.argv[2:] for flaw in flaws(sys.argv[1], Path(file))]
print("\n".join(found))
sys.exit(bool(found))

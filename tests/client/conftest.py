# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
import os
from functools import partial

import pytest
from harness.bed import Bed

from panel import Panel
from radio import TABLE, Radio


@pytest.fixture(scope="module")
def bed(request):
    """One for all tests of a file, on a radio that finds the access points of its TABLE, if any."""
    table = getattr(request.module, "TABLE", TABLE)
    with Bed(partial(Radio, table=table)) as bed:
        bed.tools.script("fw_printenv", 'echo "$1=stored $1"')
        bed.tools.output("ifconfig", "  inet addr:10.0.0.9  Mask:255.0.0.0\n")
        os.environ["HOME"] = str(bed.folder)
        bed.start()
        yield bed


@pytest.fixture
def radio(bed):
    """As at the beginning; nothing is stored."""
    bed.bus.call("ipRequest")  # whoever was killed may have left calls, which come first
    bed.supplicant.begin()
    bed.journal.take()
    return bed.supplicant


@pytest.fixture
def panel(radio):
    panel = Panel()
    yield panel
    panel.close()

# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
import pytest

pytest.register_assert_rewrite("harness")
from harness.bed import Bed  # noqa: E402


@pytest.fixture
def bed():
    with Bed() as bed:
        yield bed

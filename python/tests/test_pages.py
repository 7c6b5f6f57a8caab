"""The Python of the pages runs as it stands, in the order of a page, and prints what the block below it shows."""

import contextlib
import io
import pathlib
import re

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]


@pytest.mark.parametrize("page", ["README.md", "docs/tutorial.md", "docs/recipes.md", "docs/python.md"])
def test_blocks(page, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    text = (ROOT / page).read_text(encoding="utf-8")
    blocks = re.findall(r"^```python\n(.*?)^```\n(?:\n```\n(.*?)^```$)?", text, re.M | re.S)
    assert blocks
    names = {}
    for code, shown in blocks:
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            exec(compile(code, page, "exec"), names)  # noqa: S102: our own pages
        assert printed.getvalue() == shown

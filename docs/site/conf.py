"""The site: guides from Markdown, the reference from what Doxygen read in the headers. Built by scripts/docs."""

import json
import re
from pathlib import Path

from docutils import nodes
from sphinx.util import logging

ROOT = Path(__file__).resolve().parents[2]
ATLAS = ROOT / "web/atlas/dist/projections.json"  # what the atlas has, where it has been built
LOGGER = logging.getLogger(__name__)

project = "Orvex"
version = re.search(r"project\(orvex VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text()).group(1)
extensions = ["myst_parser", "breathe"]
root_doc = "index"
exclude_patterns = ["examples", "docs/site"]

myst_heading_anchors = 4
myst_enable_extensions = []
highlight_language = "text"
pygments_style = "friendly"
pygments_dark_style = "native"

breathe_projects = {"orvex": str(ROOT / "build/docs/api")}
breathe_default_project = "orvex"
breathe_show_enumvalue_initializer = True
primary_domain = "cpp"
nitpicky = True
nitpick_ignore_regex = [("cpp:identifier", r"orvex|shr|std(::\w+)?|u?int\d+_t")]
toc_object_entries_show_parents = "hide"

html_theme = "furo"
html_title = "Orvex"
html_copy_source = False
html_show_sourcelink = False
html_show_sphinx = False
html_static_path = ["_static"]
html_css_files = ["style.css"]
templates_path = ["_templates"]
html_context = {"atlas": ATLAS.exists()}
html_sidebars = {"**": [f"sidebar/{part}.html" for part in ("brand", "search", "scroll-start", "navigation")]
                 + ["more.html", "sidebar/scroll-end.html"]}
html_theme_options = {
    "light_css_variables": {
        "color-foreground-primary": "#1d2b33",
        "color-foreground-secondary": "#46565f",
        "color-background-secondary": "#f3f8fb",
        "color-background-border": "#d5e3ea",
        "color-brand-primary": "#1f5f7a",
        "color-brand-content": "#1f5f7a",
        "color-api-name": "#1f5f7a",
        "color-api-pre-name": "#46565f",
        "color-inline-code-background": "#eef4f7",
        "color-sidebar-item-background--hover": "#dcecf5",
        "color-sidebar-item-background--current": "#dcecf5",
        "color-highlight-on-target": "#efe8d6",
        "site-land": "#d9ceb0",
    },
    "dark_css_variables": {
        "color-foreground-primary": "#e6ecef",
        "color-foreground-secondary": "#a9b6bd",
        "color-background-primary": "#14212b",
        "color-background-secondary": "#101b23",
        "color-background-hover": "#1d2f3b",
        "color-background-border": "#2b3d49",
        "color-brand-primary": "#d9ceb0",
        "color-brand-content": "#8cc4de",
        "color-api-name": "#8cc4de",
        "color-api-pre-name": "#a9b6bd",
        "color-inline-code-background": "#1d2f3b",
        "color-sidebar-item-background--hover": "#1d2f3b",
        "color-sidebar-item-background--current": "#1d2f3b",
        "color-highlight-on-target": "#3a3a30",
        "site-land": "#4a4a3c",
    },
}


def link_guides(app, doctree):
    """Guides that the headers name become links."""
    if not app.env.docname.startswith("api/"):
        return
    for text in list(doctree.findall(nodes.Text)):
        parts = re.split(r"docs/(\w+)\.md", text)
        if len(parts) > 1 and not isinstance(text.parent, nodes.literal):
            new = [nodes.Text(part) if i % 2 == 0 else nodes.reference(part, part, refuri=f"../docs/{part}.html", internal=True)
                   for i, part in enumerate(parts)]
            text.parent.replace(text, new)


def link_atlas(app, doctree, docname):
    """The pictures of the gallery lead to their projections in the atlas."""
    if docname != "docs/gallery" or not ATLAS.exists():
        return
    slugs = {projection["name"]: projection["slug"] for projection in json.loads(ATLAS.read_text())}
    for image in list(doctree.findall(nodes.image)):
        if image["alt"] not in slugs:
            LOGGER.warning("the atlas lacks %s", image["alt"], location=docname)
            continue
        link = nodes.reference("", "", refuri=f"../atlas/index.html#{slugs[image['alt']]}", internal=True)
        image.replace_self(link)
        link += image


def setup(app):
    app.connect("doctree-read", link_guides)
    app.connect("doctree-resolved", link_atlas)

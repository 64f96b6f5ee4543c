#!/usr/bin/env python3
"""Gathers what the demo made on one page. Argument: the folder, with a folder for each host in it.

A host's folder has pictures (SVG) and a page of its own, or tables (text); its inputs are in the folder "data".
"""

import html
import pathlib
import re
import sys

STYLE = (pathlib.Path(__file__).parent / "common/page.css").read_text()

HOSTS = {  # in the order of the page
    "sections": ("Sections and blends", "Documents of outlines, cut into convex loops, and the sections between two. "
                 "The numbers of each section and the documents written back are on the"),
    "meshes": ("Meshes and extrusions", "Imported models with near positions merged, and parts made of polylines. The "
               "numbers are on the"),
    "records": ("Records", "Stored geometry, pulled from a model database in each of its two schemas."),
}

demo = pathlib.Path(sys.argv[1])


def title(svg):
    """As it stands in the picture, so escaped already."""
    return re.search(r"<title>(.*?)</title>", svg.read_text(), re.S).group(1)


def input_of(svg):
    """A link to the file that the picture was made from: "pier_1_stem.svg" or "1-pier.svg" from one called "pier"."""
    stem = re.sub(r"^\d+-", "", svg.stem.split("_")[0]).removesuffix("-blend")
    return "".join(f'<br><a href="data/{file.name}">{file.name}</a>' for file in (demo / "data").glob(f"{stem}.*"))


def part(folder, heading, text):
    """What a host made, its pictures in the order of its own page."""
    page = folder / "index.html"
    if page.exists():
        text += f' <a href="{folder.name}/index.html">page of this host</a>.'
    body = f'<h2 id="{folder.name}">{heading}</h2>\n<p>{text}</p>\n'
    order = page.read_text() if page.exists() else ""
    pictures = sorted(folder.glob("*.svg"), key=lambda svg: (order.find(f'"{svg.name}"'), svg.name))
    if pictures:
        links = (f'<div><a href="{folder.name}/{svg.name}"><img src="{folder.name}/{svg.name}" alt="" loading="lazy">'
                 f"</a>{title(svg)}{input_of(svg)}</div>" for svg in pictures)
        body += '<div class="pictures">\n' + "\n".join(links) + "\n</div>\n"
    else:
        for table in sorted(folder.glob("*.txt")):
            body += f"<p>{html.escape(table.stem)}</p>\n<pre>{html.escape(table.read_text())}</pre>\n"
    return body


parts = [(demo / name, *texts) for name, texts in HOSTS.items() if (demo / name).is_dir()]
inputs = "\n".join(f'<li><a href="data/{file.name}">{file.name}</a></li>' for file in sorted((demo / "data").iterdir()))
navigation = " ".join(f'<a href="#{folder.name}">{heading}</a>' for folder, heading, _ in parts)
body = "".join(part(*arguments) for arguments in parts)
(demo / "index.html").write_text(f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>ORL_Sectrix: what the example hosts made</title>
<style>
{STYLE}</style>
</head>
<body>
<h1>What the example hosts made</h1>
<p>Each picture opens by itself when it is clicked.</p>
<nav>{navigation} <a href="#inputs">Inputs</a></nav>
{body}<h2 id="inputs">Inputs</h2>
<ul>
{inputs}
</ul>
</body>
</html>
""")

#!/usr/bin/env python3
"""Gathers what the demo made on one page. Argument: the folder, with a folder for each part in it.

A part has what was run and printed (commands.txt), pictures (SVG), and other files; inputs are in the folder "data".
"""

import html
import pathlib
import re
import sys

STYLE = (pathlib.Path(__file__).parent / "page.css").read_text()

PARTS = {  # in the order of the page
    "solids": ("Solids", "A haunched box girder between its sections at the pier and at midspan, and a curved deck: closed "
               "solids, which any viewer of glTF or STL shows."),
    "sections": ("Sections", "Documents of outlines, checked, cut into convex loops, and measured."),
    "blends": ("Blends", "The sections between two others, and what keeps two documents from being blended."),
    "models": ("Meshes and extrusions", "Imported models with near positions merged, and a part made of polylines."),
    "records": ("Records", "Stored geometry, pulled from a model database in each of its two schemas."),
}

demo = pathlib.Path(sys.argv[1])


def title(svg):
    """As it stands in the picture, so escaped already."""
    return re.search(r"<title>(.*?)</title>", svg.read_text(), re.S).group(1)


def link(file):
    return f'<a href="{file.parent.name}/{file.name}">{file.name}</a>'


def input_of(svg):
    """A link to the file that the picture was made from: "pier_1_stem.svg" from one called "pier"."""
    stem = svg.stem.split("_")[0].removesuffix("-blend")
    return "".join(f"<br>{link(file)}" for file in sorted((demo / "data").glob(f"{stem}.*")))


def part(name, heading, text):
    files = sorted(file for file in (demo / name).iterdir() if file.name != "commands.txt")
    pictures = [file for file in files if file.suffix == ".svg"]
    body = f'<h2 id="{name}">{heading}</h2>\n<p>{text}</p>\n<div class="pictures">\n'
    for svg in pictures:
        body += (f'<div><a href="{name}/{svg.name}"><img src="{name}/{svg.name}" alt="" loading="lazy"></a>'
                 f"{title(svg)}{input_of(svg)}</div>\n")
    body += "</div>\n" + "".join(f"<p>{link(file)}</p>\n" for file in files if file not in pictures)
    return body + f"<pre>{html.escape((demo / name / 'commands.txt').read_text())}</pre>\n"


navigation = " ".join(f'<a href="#{name}">{heading}</a>' for name, (heading, _) in PARTS.items())
body = "".join(part(name, *texts) for name, texts in PARTS.items())
inputs = "\n".join(f"<li>{link(file)}</li>" for file in sorted((demo / "data").iterdir()))
(demo / "index.html").write_text(f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>ORL_Sectrix: what the command makes of the sample data</title>
<style>
{STYLE}</style>
</head>
<body>
<h1>What the command makes of the sample data</h1>
<p>Each picture opens by itself when it is clicked.</p>
<nav>{navigation} <a href="#data">Sample data</a></nav>
{body}<h2 id="data">Sample data</h2>
<ul>
{inputs}
</ul>
</body>
</html>
""")

#!/usr/bin/env python3
"""Validates documents against the schemas in docs/schemas/.

usage: schemas_test.py SOURCE FILE...

The files, the sample documents and the JSON blocks of the documentation are valid, each by the schema of its kind; the
document of bad elements is not, and every bad element in it is told apart from the good ones.
"""

import json
import pathlib
import re
import sys

import jsonschema

source = pathlib.Path(sys.argv[1])
schemas = {}
for kind in ("section-document", "extrusion-document", "end-plane"):
    schema = json.loads((source / f"docs/schemas/{kind}.schema.json").read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    schemas[kind] = jsonschema.Draft202012Validator(schema)


def kind_of(document):
    if "Sections" in document:
        return "extrusion-document"
    return "end-plane" if "Normal" in document else "section-document"


def describe_all(schema, path=""):
    """Every key that a schema names has a description, its own or that of what it refers to."""
    for name, value in schema.items() if isinstance(schema, dict) else ():
        if name == "properties":
            for key, child in value.items():
                assert "description" in child or "$ref" in child, f"{path}/{key} has no description"
        if name != "const":
            for child in value if isinstance(value, list) else [value]:
                describe_all(child, f"{path}/{name}")


valid = [(str(file), file.read_text()) for file in map(pathlib.Path, sys.argv[2:])]
bad = source / "examples/data/bad-elements.json"
valid += [(str(file), file.read_text()) for file in source.glob("examples/data/*.json") if file != bad]
for page in [source / "README.md", *source.glob("docs/*.md")]:
    valid += [(str(page), block) for block in re.findall(r"^```json\n(.*?)^```", page.read_text(), re.M | re.S)]

for name, text in valid:
    document = json.loads(text)
    schemas[kind_of(document)].validate(document)
for schema in schemas.values():
    describe_all(schema.schema)

document = json.loads(bad.read_text())
positions, sections = document["Outlines"][:2]
validator = schemas["section-document"]
assert not validator.is_valid(document), "the document of bad elements is valid"


def accepted(outlines):
    return validator.is_valid({"Outlines": outlines})


good_positions = [position for position in positions if accepted([[position]])]
good_sections = [section for section in sections if accepted([[], [section]])]
assert len(good_positions) == 7, good_positions
# Among them one that a schema cannot tell: a loop of two vertices that repeats the first.
assert len(good_sections) == 5, good_sections
print(f"{len(valid)} documents valid; of bad-elements.json {len(good_positions)} of {len(positions)} positions and "
      f"{len(good_sections)} of {len(sections)} sections")

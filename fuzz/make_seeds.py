#!/usr/bin/env python3
"""Writes the documents of the test cases as files that the fuzzers start from: make_seeds.py CASES FOLDER

CASES is the folder of the test data. FOLDER gets a folder a target with a file a document, in the order of the cases;
what an earlier call has left in it is deleted."""
import json
import pathlib
import shutil
import sys


def section_documents(cases):
    for path in sorted(cases.glob("sections/*.json")):
        for case in json.loads(path.read_text()):
            yield json.dumps(case["document"]) if "document" in case else case["text"]


def extrusion_documents(cases):
    for case in json.loads((cases / "extrusion.json").read_text()):
        for kind in sorted(case.keys() - {"text"}):
            yield from map(json.dumps, case[kind])


def checked_documents(cases):
    for path in sorted(cases.glob("checks/*.json")):
        for case in json.loads(path.read_text()):
            if "text" in case:
                yield case["text"]
    yield from section_documents(cases)
    yield from extrusion_documents(cases)


cases, folder = map(pathlib.Path, sys.argv[1:])
for target, documents in (("section_document", section_documents), ("extrusion", extrusion_documents),
                          ("checks", checked_documents)):
    shutil.rmtree(folder / target, ignore_errors=True)
    (folder / target).mkdir(parents=True)
    for number, text in enumerate(documents(cases)):
        (folder / target / f"case-{number}.json").write_bytes(text.encode())

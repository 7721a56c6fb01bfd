#!/usr/bin/python3
"""Holds answers of frctl, one {"command": ..., "answer": ...} a line, against the schema. Exit status 1 when one fails."""

import json
import sys

import jsonschema

DOCUMENTS = {
    "open-shift", "x-report", "z-report", "accounting-report", "print-document", "print-last-document", "registration",
    "sell", "refund", "cash-in", "cash-out", "print",
}


def definition_of(command, answer):
    """The part of the schema that the answer of this command must be; the whole of it for the others."""
    if DOCUMENTS & set(command):
        return "documentAnswer"
    if "error" in answer and "attempts" not in answer:
        return "failure"
    names = {"status": "status", "fn": "drive", "ofd": "ofd", "counters": "counters", "registers": "registers"}
    return next((names[word] for word in command if word in names), None)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    failed = False
    for line in sys.stdin:
        entry = json.loads(line)
        name = definition_of(entry["command"], entry["answer"])
        wanted = {"$ref": "#/definitions/" + name, "definitions": schema["definitions"]} if name else schema
        for error in jsonschema.Draft202012Validator(wanted).iter_errors(entry["answer"]):
            failed = True
            path = "/".join(map(str, error.absolute_path))
            print(f"{' '.join(entry['command'])}: {path}: {error.message[:400]}\n  {line[:1500]}")
    return failed


sys.exit(main())

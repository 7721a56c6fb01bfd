#!/usr/bin/python3
"""The schema of receipts and frctl agree: on the words, on the fields, and on every example and receipts made wrong from
them by rule, which both take or both refuse. Arguments: frctl, the folder docs, the folder examples."""

import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

FRCTL, DOCS, EXAMPLES = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
SCHEMA = json.loads((DOCS / "receipt.schema.json").read_text(encoding="utf-8"))
DEFINITIONS = SCHEMA["definitions"]
NOT_PRINTED = {"PDF417"}
# Wrong receipts that the rules make at least.
MANY = 200


def ask(*arguments):
    run = subprocess.run([FRCTL, "--json", *arguments], capture_output=True, text=True, check=False)
    return json.loads(run.stdout)


def generic(keys):
    """The path of a value without places in arrays, as frctl names fields tells it."""
    return "".join("[]" if isinstance(key, int) else f".{key}" for key in keys).lstrip(".")


def leaves(schema, keys=()):
    """Path and schema of each field that holds values."""
    if "$ref" in schema:
        schema = DEFINITIONS[schema["$ref"].rsplit("/", 1)[1]]
    fields = [(field, (*keys, name)) for name, field in schema.get("properties", {}).items()]
    kinds = [(part, keys) for part in schema.get("anyOf", []) if "$ref" in part or "properties" in part]
    kinds += [(schema[key], keys) for key in ("then", "else") if {"$ref", "if"} & set(schema.get(key, {}))]
    elements = [(schema["items"], (*keys, 0))] if "items" in schema else []
    for beneath in fields + kinds + elements:
        yield from leaves(*beneath)
    if not fields and not kinds and not elements:
        # Of an array of plain values the field is the array.
        yield generic(keys[:-1] if keys[-1] == 0 else keys), schema


def values(value, keys=()):
    """Keys and value of all that a receipt holds, itself first."""
    yield keys, value
    for key, inner in value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ():
        yield from values(inner, (*keys, key))


def changes(path, value, words):
    """Name of the rule and what it puts in the place of the value; ... takes it out."""
    yield from (("null", None), ("list", [[]]), ("object", {"a": 1}))
    if path in words:
        names, codes = zip(*words[path])
        yield from (("drop", ...), ("word", "nothing"), ("number", 777), ("part", codes[0] + 0.5))
        # Without cash there is no change, which no schema can tell.
        yield from (("name", name) for name in (names + codes) if path != "payments[].type")
    elif isinstance(value, str):
        yield from (("drop", ...), ("number", 7), ("empty", ""), ("blank", " "), ("control", "a\u0001b"), ("long", "я" * 513))
    elif isinstance(value, bool):
        yield from (("drop", ...), ("text", "true"), ("number", 1))
    elif isinstance(value, (int, float)):
        yield from (("text", str(value)), ("flag", True), ("negative", -1), ("large", 1e9))
        # Without its discount a position costs something else.
        yield from (("drop", ...) for _ in range(path != "items[].infoDiscountAmount"))
    elif isinstance(value, list):
        yield from (("drop", ...), ("text", "text"), ("empty", []), ("another", value + ["+7"]))
    else:
        yield from (("drop", ...), ("number", 7), ("extra", {**value, "extra": 1}))


def changed(value, keys, wrong):
    if not keys:
        return wrong
    result = value.copy()
    result[keys[0]] = changed(value[keys[0]], keys[1:], wrong)
    if result[keys[0]] is ...:
        del result[keys[0]]
    return result


def variants(examples, words):
    """Every example, and every change that a rule makes of one, each rule once a field of a kind of item."""
    seen = set()
    for name, example in examples.items():
        yield f"{name} as it is", example
        for keys, value in values(example):
            kind = example["items"][keys[1]].get("type") if keys[:1] == ("items",) and len(keys) > 1 else None
            for rule, wrong in changes(generic(keys), value, words):
                key = (generic(keys), kind, rule, str(wrong) if rule == "name" else "")
                # An item or a payment less changes the sums; what is no object is no receipt in a line of its own.
                is_element = wrong is ... and keys and isinstance(keys[-1], int)
                if key not in seen and not is_element and (keys or isinstance(wrong, dict)):
                    seen.add(key)
                    yield f"{name} {generic(keys)}: {rule}", changed(example, keys, wrong)


def accepted_by_frctl(receipts):
    with tempfile.NamedTemporaryFile("w", suffix=".jsonl", encoding="utf-8") as file:
        file.writelines(json.dumps(receipt, ensure_ascii=False) + "\n" for receipt in receipts)
        file.flush()
        return [(bool(receipt["acceptedOver"]), receipt["errors"]) for receipt in ask("check", file.name)["receipts"]]


def words_differ(lists):
    """The words and numbers of the schema are those of the program's tables, each with a title."""
    differ = []
    told = {leaf: schema for leaf, schema in leaves(SCHEMA)}
    for entry in lists:
        rows = [row for row in told[entry["field"]]["anyOf"] if "enum" in row]
        table = [(word["name"], word["value"]) for word in entry["values"] if word["name"] not in NOT_PRINTED]
        if sorted(map(tuple, (row["enum"] for row in rows))) != sorted(table) or not all(row["title"] for row in rows):
            differ.append(f"{entry['list']}: {rows}\n  {table}")
    fields = {field["path"] for field in ask("names", "fields")["fields"]}
    if fields != set(told):
        differ.append(f"fields: {sorted(fields ^ set(told))}")
    return differ + [f"{path}: without {key}" for path, schema in told.items() for key in ("title", "description") if not schema.get(key)]


def main():
    jsonschema.Draft202012Validator.check_schema(SCHEMA)
    jsonschema.Draft7Validator.check_schema(SCHEMA)
    lists = [ask("names", name) for name in ask("names")["lists"] if name not in ("fields", "error-kinds")]
    failures = words_differ(lists)
    words = {entry["field"]: [(word["name"], word["value"]) for word in entry["values"]] for entry in lists}
    words["items[].agentInfo.agents[]"] = words.pop("items[].agentInfo.agents")
    examples = {file.name: json.loads(file.read_text(encoding="utf-8")) for file in sorted(EXAMPLES.glob("*.json"))}
    examples |= {f"the schema's {number}": example for number, example in enumerate(SCHEMA["examples"])}
    named = list(variants(examples, words))
    validators = [kind(SCHEMA) for kind in (jsonschema.Draft202012Validator, jsonschema.Draft7Validator)]
    refused = 0
    for (name, receipt), (accepted, errors) in zip(named, accepted_by_frctl([receipt for _, receipt in named]), strict=True):
        refused += not accepted
        if name.endswith("as it is") and not accepted:
            failures.append(f"{name}: {errors}")
        for validator in validators:
            if validator.is_valid(receipt) != accepted:
                why = [error["path"] + ": " + error["text"] for error in errors] or [
                    error.message[:200] for error in validator.iter_errors(receipt)]
                failures.append(f"{name}: frctl {'takes' if accepted else 'refuses'} it, the schema does not agree: {why}")
    if refused < MANY:
        failures.append(f"only {refused} wrong receipts")
    print(*failures, f"{len(named)} receipts, {refused} of them wrong, {len(failures)} failures", sep="\n")
    return bool(failures)


sys.exit(main())

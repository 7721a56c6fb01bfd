#!/usr/bin/python3
"""Holds the routes and answers of a program against the description of its interface. Exit status 1 when one differs.

The arguments are the description and the files of other schemas that have some of the same words. Standard input has a line for
each route, {"route": [METHOD, PATTERN]}, and one for each answer of it, with "status", "type" and "body" besides."""

import json
import re
import sys

import jsonschema

METHODS = ("get", "put", "post", "delete")


def operations(document):
    """Each operation by its method and its paths: one for each place where it is served."""
    for path, item in document["paths"].items():
        places = tuple(server["url"].rstrip("/") + path for server in item.get("servers", document["servers"]))
        for method in METHODS:
            if method in item:
                yield (method.upper(), places), item[method], item.get("parameters", [])


def references(value):
    if isinstance(value, dict):
        if "$ref" in value:
            yield value["$ref"]
        for inside in value.values():
            yield from references(inside)
    elif isinstance(value, list):
        for inside in value:
            yield from references(inside)


def resolved(document, value):
    while "$ref" in value:
        part = document
        for name in value["$ref"].removeprefix("#/").split("/"):
            part = part[name]
        value = part
    return value


def findings_in(document):
    if not document["openapi"].startswith("3.1."):
        yield "no OpenAPI 3.1"
    for reference in references(document):
        try:
            resolved(document, {"$ref": reference})
        except KeyError:
            yield f"{reference} is missing"
    for name, schema in document["components"]["schemas"].items():
        jsonschema.Draft202012Validator.check_schema(schema)
        if not name[0].islower():
            yield f"schema {name}: not in camelCase"
    identifiers = [operation["operationId"] for _, operation, _ in operations(document)]
    yield from (f"{one} stands twice" for one in set(identifiers) if identifiers.count(one) > 1)
    for (method, (path, *_)), operation, shared in operations(document):
        described = {one["name"] for one in shared + operation.get("parameters", []) if one["in"] == "path"}
        if described != set(re.findall(r"{(\w+)}", path)):
            yield f"{method} {path}: parameters of the path"
        if "default" not in operation["responses"] or not operation["summary"]:
            yield f"{method} {path}: no summary, or no default response"


def without_format(path):
    return re.sub(r"\.(svg|png|pdf)$", "", path)


def route_findings(described, routes):
    wanted = {(method, without_format(path)) for method, paths in described for path in paths}
    # A picture of a thing may be all that there is of one.
    yield from (f"{method} {path}: not served" for method, path in sorted(wanted - routes))
    yield from (f"{method} {path}: not described" for method, path in sorted(routes - wanted))


def same_words(document, other):
    """What two schemas have by the same name is the same in both."""
    for name, schema in other["definitions"].items():
        text = json.dumps(schema, sort_keys=True).replace("#/definitions/", "#/components/schemas/")
        known = document["components"]["schemas"].get(name)
        if known is not None and json.dumps(known, sort_keys=True) != text:
            yield f"schema {name}: not as in the other file"


def answer_findings(document, described, answer):
    method, path = answer["route"]
    operation = next((one for (verb, paths), one in described.items() if verb == method and path in paths), None)
    name = f"{method} {path}: {answer['status']}"
    if operation is None:
        yield f"{name}: no such operation"
        return
    responses = operation["responses"]
    if str(answer["status"]) not in responses:
        told = resolved(document, responses["default"])["description"]
        if str(answer["status"]) not in re.findall(r"\b\d{3}\b", told):
            yield f"{name}: not described, nor is it among the common ones"
    response = resolved(document, responses.get(str(answer["status"]), responses["default"]))
    if not response.get("content"):
        if answer["body"]:
            yield f"{name}: a body"
        return
    kind = answer["type"].split(";")[0]
    if kind not in response["content"]:
        yield f"{name}: {kind or 'no type'}"
    elif kind.endswith("json"):
        schema = {**response["content"][kind]["schema"], "components": document["components"]}
        for error in jsonschema.Draft202012Validator(schema).iter_errors(json.loads(answer["body"])):
            where = "/".join(map(str, error.absolute_path))
            yield f"{name}: {where}: {error.message[:300]}"


def unseen(described, answers):
    """What is described and was never answered."""
    seen = {(*answer["route"], str(answer["status"])) for answer in answers}
    for (method, paths), operation in described.items():
        for status in operation["responses"]:
            if status != "default" and not {(method, path, status) for path in paths} & seen:
                yield f"{method} {paths[0]}: {status} was never answered"


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        document = json.load(file)
    lines = [json.loads(line) for line in sys.stdin]
    described = {key: operation for key, operation, _ in operations(document)}
    answers = [line for line in lines if "status" in line]
    findings = list(findings_in(document))
    for name in sys.argv[2:]:
        with open(name, encoding="utf-8") as file:
            findings += same_words(document, json.load(file))
    findings += route_findings(described, {tuple(line["route"]) for line in lines if "status" not in line})
    for answer in answers:
        findings += answer_findings(document, described, answer)
    findings += unseen(described, answers)
    print("\n".join(findings))
    return 1 if findings else 0


sys.exit(main())

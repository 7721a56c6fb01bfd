#!/usr/bin/python3
"""Holds the routes and answers of the panel against the description of its interface. Exit status 1 when one differs.

Standard input has a line for each route, {"route": [METHOD, PATTERN]}, and one for each answer of it, with "status", "type" and
"body" besides."""

import json
import re
import sys

import jsonschema

METHODS = ("get", "put", "post", "delete")
FIRST, ANY = "/v1", "/v1/registers/{register}"


def operations(document):
    """Each operation by its method and the place of the path within a register, or the whole path of one without."""
    for path, item in document["paths"].items():
        place = item["servers"][0]["url"] if "servers" in item else ""
        for method in METHODS:
            if method in item:
                yield (method.upper(), place + path), item[method], item.get("parameters", [])


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
    for (method, path), operation, shared in operations(document):
        described = {one["name"] for one in shared + operation.get("parameters", []) if one["in"] == "path"}
        if described != set(re.findall(r"{(\w+)}", path)):
            yield f"{method} {path}: parameters of the path"
        if "default" not in operation["responses"] or not operation["summary"]:
            yield f"{method} {path}: no summary, or no default response"


def without_format(path):
    return re.sub(r"\.(svg|png|pdf)$", "", path)


def place_of(path):
    return path.removeprefix(ANY) if path.startswith(ANY) else path.removeprefix(FIRST)


def route_findings(described, routes):
    """Each operation of a register is there twice, at /v1 and at /v1/registers/{register}."""
    wanted = set()
    for method, path in described:
        plain = without_format(path)
        alone = plain.startswith(FIRST)
        wanted |= {(method, plain)} if alone else {(method, FIRST + plain), (method, ANY + plain)}
    # A picture of a tape's entry is all that there is of one.
    yield from (f"{method} {path}: not served" for method, path in sorted(wanted - routes))
    yield from (f"{method} {path}: not described" for method, path in sorted(routes - wanted))


def answer_findings(document, described, answer):
    method, path = answer["route"]
    operation = described.get((method, path)) or described.get((method, place_of(path)))
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
    for (method, path), operation in described.items():
        for status in operation["responses"]:
            if status != "default" and not {(method, path, status), (method, FIRST + path, status)} & seen:
                yield f"{method} {path}: {status} was never answered"


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        document = json.load(file)
    lines = [json.loads(line) for line in sys.stdin]
    described = {key: operation for key, operation, _ in operations(document)}
    answers = [line for line in lines if "status" in line]
    findings = list(findings_in(document))
    findings += route_findings(described, {tuple(line["route"]) for line in lines if "status" not in line})
    for answer in answers:
        findings += answer_findings(document, described, answer)
    findings += unseen(described, answers)
    print("\n".join(findings))
    return 1 if findings else 0


sys.exit(main())

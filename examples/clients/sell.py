#!/usr/bin/python3
"""Sells over frserver, to copy from: standard library alone.

    sell.py http://127.0.0.1:8403 till1 shop:2025-03-01:42 receipt.json

The id is kept where the sale itself is kept, before the first attempt: after any failure it is the same again. Exit status
0 issued, 1 not issued or refused, 3 a person is needed."""

import http.client
import json
import os
import sys
import time
import urllib.error
import urllib.request

PATIENCE = 300
PAUSE = 2


class NeedsPerson(Exception):
    """Nobody knows whether it is issued: look at the register's tape."""


class Refused(Exception):
    """It is not issued. The same id may be posted again, also with a corrected body."""


def post(url, register, document_id, body):
    """One attempt: status and what was said; None for an answer that is none of the service's."""
    request = urllib.request.Request(f"{url}/v1/registers/{register}/documents", json.dumps(body).encode())
    request.add_header("Content-Type", "application/json")
    request.add_header("Idempotency-Key", document_id)
    request.add_header("Prefer", "wait=30")
    if token := os.environ.get("FRSERVER_TOKEN"):
        request.add_header("Authorization", "Bearer " + token)
    try:
        with urllib.request.urlopen(request, timeout=45) as answer:
            return answer.status, said_by_service(answer)
    except urllib.error.HTTPError as error:
        with error:
            return error.code, said_by_service(error)
    except (OSError, http.client.HTTPException):
        return 0, None


def said_by_service(answer):
    """None for what a proxy says of its own, which is no news of the document."""
    try:
        said = json.load(answer)
    except (OSError, http.client.HTTPException, ValueError):
        return None
    is_problem = answer.headers.get_content_type() == "application/problem+json"
    return said if isinstance(said, dict) and (is_problem or "state" in said) else None


def sell(url, register, document_id, body, patience=PATIENCE):
    """Any 5xx, time-out or answer that is not ours: the same id again; otherwise state decides."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        status, answer = post(url, register, document_id, body)
        if status >= 500 or status == 429 or answer is None:
            time.sleep(PAUSE)
            continue
        state = answer.get("state")
        if state == "issued":
            return answer
        if state == "unknown":
            raise NeedsPerson(answer["detail"])
        if state not in ("queued", "running"):
            raise Refused(json.dumps(answer.get("errors") or answer.get("error") or answer, ensure_ascii=False))
    raise NeedsPerson(f"no answer within {patience} seconds: ask again with the same id")


def main():
    url, register, document_id, name = sys.argv[1:]
    with open(name, encoding="utf-8") as file:
        body = json.load(file)
    try:
        print(json.dumps(sell(url.rstrip("/"), register, document_id, body), ensure_ascii=False))
    except Refused as refused:
        sys.exit(f"not issued: {refused}")
    except NeedsPerson as needed:
        print(needed, file=sys.stderr)
        sys.exit(3)


if __name__ == "__main__":
    main()

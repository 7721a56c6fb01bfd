#!/usr/bin/python3
"""Wireshark reads what "frctl trace pcapng" writes, with the script of "frctl trace dissector", as "frctl trace show" reads the
trace. Arguments: frctl, the folder of the traces."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

FRCTL, TRACES = sys.argv[1], pathlib.Path(sys.argv[2])
HEAD = "# frtrace 1 full\n# a note\n"
LINE = "2026-03-01T14:05:09.{:06}+03:00 {} {} {}\n"
TREE = '<pa t="7"><pa n="1059" t="6"><pa t="7"><pa n="1030" t="1">&lt;Хлеб&gt; &#x1F35E;</pa><pa n="x"/></pa></pa></pa>'
DOCUMENT = "<?xml version='1.0'?><ArmRequest><RequestBody><RequestId>{{7}}</RequestId><Command>8</Command></RequestBody>{}</ArmRequest>"
# What recorded traces have not.
RARE = [
    (">", b"\x02PASS A0\x0300"), ("<", b"\x02 A000\x06" + b"0\x1c4\x1c\x03"), ("<", b"\x02PASS A0\x0300"), (">", b"\x02PASS!6B\xd0\x98\n\x1c\xff\x1c"),
    (">", b"\x02PASS\"6B\xd0\x98\x1c\x1c\x00\x1c\x0312"), (">", b"\x1bBM\0\1"),
    ("<", b"\xff\x00"), ("<", b"\x02\xe90"), (">", DOCUMENT.format(f"<RequestData><![CDATA[{TREE}]]></RequestData>").encode()),
    (">", DOCUMENT.format("<RequestData>" + TREE.replace("&", "&amp;").replace("<", "&lt;") + "</RequestData>").encode()),
    (">", DOCUMENT.format("<RequestData>&lt;pa>&lt;/px></RequestData>").encode()), ("<", b"<ArmResponse><ResponseBody><Result>1<"),
]


def run(*command):
    # Neither the settings of who runs the test nor their language matter.
    with tempfile.TemporaryDirectory() as folder:
        environment = {**os.environ, "WIRESHARK_CONFIG_DIR": folder, "LC_ALL": "C.UTF-8"}
        return subprocess.run(command, capture_output=True, check=True, env=environment).stdout


def plain(text):
    """Signs that are no letters stand in many ways."""
    return "".join(sign for sign in text or "" if sign.isalnum())


def dissected(packet):
    """Of a packet what trace show tells of a frame, as far as both tell it."""
    values = {}
    for field in packet.iter("field"):
        values.setdefault(field.get("name"), []).append(field.get("show"))
    data = [field for field in packet.iter("field") if field.get("name").startswith(("frspf.data", "frspf.field"))]
    one = {name: shown[0] for name, shown in values.items()}
    texts = [plain(one.get(f"frspf.{name}")) for name in ("protocol", "kind", "id", "code", "name", "error")]
    taken = round(float(one["frspf.taken"]) * 1e6) if "frspf.taken" in one else None
    fields = [(field.get("showname").split(":")[0], plain(field.get("show"))) for field in data]
    connection = int(one["frame.interface_name"].split()[1])
    direction = {1: "<", 2: ">"}[int(one["frame.packet_flags_direction"], 0)]
    return (connection, direction, texts, "frspf.fault" in one, taken, fields), values.get("frame.comment", [])


def told(frame):
    texts = [plain(frame[name]) for name in ("protocol", "kind", "id", "code", "name", "error")]
    is_frame = frame["kind"] not in ("picture", "unknown")
    fields = [(field["name"], plain(field["value"])) for field in frame["fields"] if is_frame]
    return (frame["connection"], frame["direction"], texts, frame["fault"] is not None, frame["microseconds"], fields)


def differences(trace, folder):
    capture, script = folder / "capture.pcapng", folder / "frspf.lua"
    script.write_bytes(run(FRCTL, "trace", "dissector"))
    run(FRCTL, "trace", "pcapng", trace, capture)
    shown = json.loads(run(FRCTL, "--json", "trace", "show", trace))
    packets = ElementTree.fromstring(run("tshark", "-r", capture, "-X", f"lua_script:{script}", "-T", "pdml")).findall("packet")
    if len(packets) != len(shown["frames"]):
        yield f"{len(packets)} packets of {len(shown['frames'])} frames"
    comments = []
    for number, (packet, frame) in enumerate(zip(packets, shown["frames"]), 1):
        found, said = dissected(packet)
        comments += said
        if found != told(frame):
            yield f"{number}:\n  {found}\n  {told(frame)}"
    if comments != shown["notes"]:
        yield f"{comments}\n  {shown['notes']}"


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        rare = [LINE.format(at, 1 + at % 2, direction, data.hex().upper()) for at, (direction, data) in enumerate(RARE)]
        # Traces can stand behind each other, and Wireshark takes long to start.
        traces = [file.read_text(encoding="utf-8") for file in sorted(TRACES.glob("*.trace"))] + [HEAD + "".join(rare)]
        (folder / "all.trace").write_text("".join(traces), encoding="utf-8")
        found = list(differences(folder / "all.trace", folder))
    print(*found, f"{len(traces)} traces, {len(found)} differences", sep="\n")
    return bool(found)


sys.exit(main())

#!/usr/bin/env python3
"""End-to-end tests of the velkor tool, run on the INSTALLED binary.

The build is installed into a scratch prefix (cmake --install) and every case
runs PREFIX/bin/velkor as a user would:
  - decode <-> encode round trips for every type the tool lists (samples are
    made from `velkor types --json`, so a type added later is covered too);
  - each `convert` subcommand on a sample, checked against known results;
  - malformed input exits 1 with one stderr line "velkor: <command>: ...";
  - usage mistakes exit 2; -o leaves no file behind on failure;
  - --help of every subcommand shows an example; demo, --version, tracing.

usage: velkor_e2e.py BUILD_DIR PREFIX [CMAKE]
"""

import atexit
import base64
import collections
import contextlib
import itertools
import json
import os
import pty
import resource
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

VELKOR = None  # set in main()
WORK = tempfile.mkdtemp(prefix="velkor_e2e.")  # scratch files
atexit.register(shutil.rmtree, WORK, True)
OBJECTS = os.path.join(WORK, "objects.json")  # a return-code map for --map


def big_capture():
    """A capture of QAsnColumn records larger than 64 MiB, made once."""
    path = os.path.join(WORK, "big.ber")
    if not os.path.exists(path):
        text = b"x" * 65000
        column = b"\x04\x83" + len(text).to_bytes(3, "big") + text
        Path(path).write_bytes((b"\x30\x83" + len(column).to_bytes(3, "big") + column) * 1040)
    return path


def run(args, stdin=b"", env=None):
    """Runs the installed velkor; returns (exit code, stdout bytes, stderr text)."""
    stdin = stdin.encode() if isinstance(stdin, str) else stdin
    result = subprocess.run([VELKOR] + args, input=stdin, capture_output=True, env=env, timeout=120)
    return result.returncode, result.stdout, result.stderr.decode(errors="replace")


def ok(args, stdin=b""):
    code, out, err = run(args, stdin)
    if code != 0:
        raise AssertionError("velkor %s exited %d: %s" % (" ".join(args), code, err))
    return out


Hex = collections.namedtuple("Hex", "type value")  # input: a record given as JSON, encoded to hex
Piped = collections.namedtuple("Piped", "args input")  # input: what `velkor convert ARGS` makes of another input
Ber = collections.namedtuple("Ber", "type value")  # output: a record, compared as JSON after decoding it


class Part(dict):
    """The members a JSON object must have (others may follow)."""


class Ordered(dict):
    """A JSON object whose members must come in this order."""


def stdin_of(cell):
    if isinstance(cell, Hex):
        return ok(["encode", cell.type, "--hex"], json.dumps(cell.value))
    return ok(["convert"] + cell.args, stdin_of(cell.input)) if isinstance(cell, Piped) else cell


def matches(actual, expected):
    if isinstance(expected, dict):
        keys_match = set(expected) <= set(actual) if isinstance(expected, Part) else set(expected) == set(actual)
        in_order = not isinstance(expected, Ordered) or list(actual) == list(expected)
        return keys_match and in_order and all(matches(actual[k], v) for k, v in expected.items())
    if isinstance(expected, list):
        return len(actual) == len(expected) and all(map(matches, actual, expected))
    return actual == expected and isinstance(actual, bool) == isinstance(expected, bool)


def sample_maker(types):
    """Deterministic sample values of the catalogue's types, as `types --json` describes them."""
    described = {t["name"]: t for t in types}
    counter = itertools.count(1)

    def value(type_name, with_optional):
        type_name = type_name.split("::")[-1]
        n = next(counter)
        if type_name == "AsnOcts":  # plain text, UTF-8 text and octets that are no text, in turn
            return ["text %d" % n, "grüße %d" % n, {"hex": "00ff%02x" % (n % 256)}][n % 3]
        if type_name in ("AsnTinyInt", "AsnInt"):
            small = [-5, 300, 70000, -2147483648, 2147483647][n % 5]
            return str(small * 1000003 if n % 2 else small) if type_name == "AsnInt" else small  # 64-bit: a string
        if type_name == "AsnBool":
            return n % 2 == 0
        if described[type_name]["kind"] == "list":
            return [value(described[type_name]["element"], with_optional) for _ in range(2)]
        return {m["name"]: value(m["type"], with_optional) for m in described[type_name]["members"]
                if with_optional or not m["optional"]}
    return value


PORT = {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level4ID": 4}
PORT_MODEL = {k: str(v) for k, v in PORT.items()}  # 64-bit fields of a model: decimal strings
FIBER = {"fiberText1": "F-1", "fiberValue1": 12, "fiberText2": "Cable 12", "fiberValue2": 70000, "fiberValue3": 300,
         "aEndPort": {"level1ID": 1001, "level2ID": 1, "level3ID": 3, "level4ID": 2, "strIndexText": "a"},
         "zEndPort": {"level1ID": 1002, "level2ID": 1, "level3ID": 5, "level3SubID": 1, "level4ID": -1},
         "doubleValue": "2.5", "fiberText5": "F-5",
         "attrList": [{"name": "Reserve", "value": "0"}, {"name": "Reserve", "value": "7"},
                      {"name": "Memo", "value": "m"}, {"name": "MaintenanceState", "value": "3"}]}
LINK = {"linkResID": {"strFDN": "LINK=88", "strMOC": "LINK", "neID": 0}, "strText1": "t1", "strText2": "t2",
        "strText3": "t3", "strText4": "t4", "tinyValue1": 70001, "tinyValue2": 2,
        "srcResID": {"strFDN": "NE=1001,SH=1,SL=3,PP=2", "strMOC": "PP", "neID": 1001},
        "dstResID": {"strFDN": "NE=1002,SH=1,SL=5,GRP=2,SUBGRP=3,PP=0x7", "strMOC": "PP", "neID": 1002},
        "tinyValue3": 3, "tinyValue4": 4, "spareValue": "", "intValue1": 1, "intValue2": -3, "intValue3": 9,
        "attrList": [{"name": "BuildTime_t", "value": "1500000000"}, {"name": "P2MPLable", "value": "-1"},
                     {"name": "srcNeName", "value": "Berlin"}, {"name": "a_oneID", "value": "77"}],
        "strText5": "t5", "strText6": "t6", "strText7": "t7", "tinyValue5": 5, "optTinyValue": 9}
STATES = Hex("QAsnPortUseStateList", [{"portIndex": PORT, "useState": 1}, {"portIndex": PORT, "useState": 3},
                                      {"portIndex": dict(PORT, level1ID=9), "useState": 2}])
TEMPLATE = "3008a2020400ab020400"  # QAsnFiberInfoTemplate with column3 and column12


def ret(ret_code, name=""):
    """An entry of a return-code map."""
    return {"strObjName": name, "ulRetCode": str(ret_code)}


CODES = {"1": ret(0), "2": ret(7), "3": ret(8)}


CONVERSIONS = [  # (convert arguments, input, expected output)
    # Narrowed integers, defaults for what is absent ("-0.1"), the last "Reserve" counts.
    (["fiber-to-cable", "--hex"], Hex("QAsnFiberInfo", FIBER),
     Part(fiberValue2=4464, fiberValue3=44, doubleValue=2.5, floatValue=-0.1, reserve=7, hybridMaxCapacity=-1,
          aEnd=Part(level2SubID=-1, level1ID="1001"), zEnd=Part(level4ID=str(2**64 - 1)))),
    # The cable it writes reads back; its fiberText5 fills both texts, a non-zero reserve is "1".
    (["cable-to-fiber"], Piped(["fiber-to-cable", "--hex"], Hex("QAsnFiberInfo", FIBER)),
     Ber("QAsnFiberInfo", Part(fiberText1="F-5", fiberText5="F-5", doubleValue="2.500000", attrList=[
         Part(name="Memo"), Part(name="Reserve", value="1"), Part(name="MaintenanceState"),
         Part(name="BuildTime_t"), Part(name="DelayTime")]))),
    (["mask-to-template", "0x804", "--hex"], "", TEMPLATE.encode() + b"\n"),
    (["template-to-mask", "--hex"], TEMPLATE, {"templateType": str(0x804)}),
    (["links-to-models", "--hex"], Hex("QAsnLinkInfoList", [LINK, dict(LINK, attrList=[])]),
     [Part(buildTime="1500000000", p2mpLabel=65535, tinyValue1=70001 % 65536, intValue2=-3.0, optTinyValue=9,
           srcNeName="Berlin", strLinkFDN="LINK=88", srcPortIndex=Part(nodeID="1001", oneID="77", strPortMOC="PP")),
      Part(srcNeName="", p2mpLabel=0)]),
    (["link-to-model", "--hex"], Hex("QAsnLinkInfo", LINK), Part(strText4="t4", srcNeName="Berlin")),
    (["resid-to-link-port", "--hex"],
     Hex("QAsnUniResID", {"strFDN": "NE=1002,SH=1,SL=5,GRP=2,SUBGRP=3,PP=7", "strMOC": "PP", "neID": 0}),
     Part(filled=True, r1LinkPortId=str(0x2030007))),
    (["resid-to-link-port", "--hex", "--moc", "NE", "--accept-node"],
     Hex("QAsnUniResID", {"strFDN": "NE=1001", "strMOC": "NE", "neID": 0}), Part(filled=True, index=Part(nodeID="1001"))),
    # Map keys in numeric order; a repeated id goes to 1000000.
    (["errinfo-list-to-map", "--hex"], Hex("QAsnErrInfoList", [
        {"objID": [5], "errCode": 2, "objName": "ab"}, {"objID": [5], "errCode": 3}, {"objID": [7], "errCode": 4}]),
     {"result": "2", "map": Ordered([("5", ret(2, "ab")), ("7", ret(4)), ("1000000", ret(3))])}),
    (["errinfo-return-to-map", "--hex", "--map", OBJECTS], Hex("QAsnErrInfoReturn", {"retCode": 5}),
     {"result": "5", "map": {"1": ret(0, "x"), "2": ret(0, "y")}}),
    (["errinfo-return-to-map", "--hex", "--map", OBJECTS, "--fill-all"], Hex("QAsnErrInfoReturn", {"retCode": 5}),
     {"result": "5", "map": {"1": ret(5), "2": ret(5)}}),
    (["ignore-codes", "--code", "8", "--ignore", "7"], json.dumps(CODES), {"result": "8", "map": {"3": ret(8)}}),
    (["ignore-codes", "--code", "8", "--ignore", "7"], json.dumps({"1": ret(0), "2": ret(7)}),
     {"result": "0", "map": {}}),
    (["ignore-codes", "--code", "8", "--ignore", "7"], "{}", {"result": "8", "map": {}}),
    (["ignore-codes", "--ignore", "7,0,0"], json.dumps({"result": 7, "map": CODES}),  # the piped form
     {"result": "0", "map": {"3": ret(8)}}),
    (["single-return", str(2**32)], "", Ber("AsnSingleReturn", {"success": False, "retCode": "0"})),
    (["nvs-to-map", "--hex"], Hex("QAsnNVSList", [{"name": "A", "value": "1"}, {"name": "B", "value": "2"},
                                                  {"name": "A", "value": "3"}]), {"A": "3", "B": "2"}),
    (["alarm-compose"], '{"sFaultID": 12, "lAlarmGroupID": -7}', b"12--7\n"),
    (["alarm-compose"], "{}", b"0-0\n"),
] + [(["alarm-split", "--", text], "", {"sFaultID": fault, "lAlarmGroupID": group})
     for text, fault, group in [("12-34", 12, 34), ("12x-34", 12, 34), ("x-34", 0, 0), ("-5-7", -5, 7)]] + [
    (["fault-report-to-alarm-id", "--hex"], Hex("AsnOtherToSvrFaultRptStrc", {
        "neID": 1, "alarmGroupID": 9, "alarmCode": 2, "strAlarmText": "LOS", "faultID": 3, "occurTime": 0}), b"3-9\n"),
    (["model-to-port-index"], json.dumps(dict(PORT, level3SubID=-7, level2SubID=-1, strIndexText="")),
     Ber("QAsnPortIndex", dict(PORT, level3SubID=-7, strIndexText=""))),  # level2SubID -1: absent
    (["port-index-to-model", "--hex"], Hex("QAsnPortIndex", dict(PORT, level3SubID=-7)),
     dict(PORT_MODEL, level3SubID=-7, level2SubID=-1, strIndexText="")),
    (["port-states-to-map", "--hex", "--mask", "0x0A"], STATES, [Part(portIndex=Part(PORT_MODEL), useState=3)]),
    (["port-states-to-map", "--hex"], STATES, [Part(useState=3), Part(useState=2)]),
    (["port-states-to-map", "--hex", "--mask", "0"], STATES, []),
] + [(["virtual-port", "--", str(number)], "", Part(virtual=virtual))
     for number, virtual in [((16 << 16) + 40001, True), ((16 << 16) + 40960, False), (-1, False)]]

PORT_HEX = "300c020101020102020103020104"  # PORT as QAsnPortIndex
BAD_INPUT = [  # (arguments, input, the one stderr line's start after "velkor: ", a part of it): exit 1
    (["decode", "QAsnPortIndex", "--hex"], PORT_HEX[:-4], "decode: ", "offset"),  # truncated
    (["decode", "QAsnUniResID", "--hex"], PORT_HEX, "decode: ", "QAsnUniResID"),  # the wrong type
    (["decode", "QAsnPortIndex", "--hex"], PORT_HEX + "00", "decode: ", "left over"),
    (["decode", "QAsnPortIndex", "--hex"], "30 0g", "decode: ", "bad hex"),
    (["decode", "QAsnPortIndex", "--hex"], "300", "decode: ", "odd number"),
    (["decode", "QAsnPortIndex"], "", "decode: ", ""),
    (["decode", "QAsnPortIndex", "/nonexistent/file"], "", "decode: ", "/nonexistent/file"),
    (["decode", "QAsnPortIndex", "/"], "", "decode: ", "cannot read /: it is a directory"),
    (["encode", "QAsnPortIndex"], "{", "encode: ", "bad JSON"),
    (["encode", "QAsnPortIndex"], '{"level1ID": 1}', "encode: ", "QAsnPortIndex.level2ID"),
    (["encode", "QAsnPortIndex"], '{"level1ID": 1, "bogus": 2}', "encode: ", "bogus"),
    (["encode", "QAsnPortIndex"], '{"level1ID": 1e3}', "encode: ", "level1ID"),
    (["encode", "QAsnErrInfo"], '{"objID": [99999999999], "errCode": 1}', "encode: ", "QAsnErrInfo.objID[0]"),
    (["encode", "QAsnColumn"], '{"strCondition": {"hex": "abc"}}', "encode: ", "strCondition"),
    (["convert", "fiber-to-cable", "--hex"], PORT_HEX, "convert fiber-to-cable: ", "QAsnFiberInfo"),
    (["convert", "cable-to-fiber"], '{"aEnd": {"level9ID": 1}}', "convert cable-to-fiber: ", "cable.aEnd"),
    (["convert", "model-to-port-index"], '{"level2SubID": 2147483648}', "convert model-to-port-index: ",
     "level2SubID"),
    (["convert", "ignore-codes", "--code", "1"], '{"x": {}}', "convert ignore-codes: ", "x"),
] + [(["dump", "--hex"], hex_text, "dump: ", message) for hex_text, message in [  # where the bytes break
    ("30 05 02 01 05", "input ends 2 octets short of the value at offset 0"),  # a cut capture
    ("30 03 02 02 05 00", "length 2 runs past its enclosing value (1 octets left) at offset 2"),
    ("30 02 1f 81 01 00", "tag runs past its enclosing value at offset 2"),
    ("30 80 02 01 05", "input ends before the end-of-contents of the value at offset 0"),
    ("04 80 00 00", "indefinite length on a primitive value at offset 0"),
    ("00 00", "end-of-contents outside an indefinite-length value at offset 0"),
    ("30 80 00 01 00", "end-of-contents with content at offset 2"),
    ("1f", "input ends inside a tag at offset 0"),
    ("30", "input ends inside a length at offset 0"),
    ("30 ff", "length octet 0xFF is reserved at offset 0"),
    ("1f 80 01 00", "leading 0x80 octet at offset 0"),
    ("30 80" * 33, "nested deeper than 32 levels at offset 64"),
    ("30 06 02 01 05 04 05 41", "length 5 runs past its enclosing value (1 octets left) at offset 5"),
    ("30 0a 02 01 05 04 05 41", "length 5 runs past its input (1 octets left) at offset 5")]] + [
    (["decode", "QAsnPortIndex"], PORT_HEX, "decode: ", "add --hex"),  # text given as bytes: a hint
    (["dump"], base64.b64encode(bytes.fromhex(PORT_HEX)).decode(), "dump: ", "add --base64"),
    (["decode", "QAsnPortIndex", "--hex"], bytes.fromhex(PORT_HEX), "decode: ", "octet 0x0C at line 1, column 2"),
    (["decode", "QAsnPortIndex", "--base64"], "MAw*", "decode: ", "'*' at line 1, column 4"),
    (["encode", "QAsnPortIndex"], b'{"level1ID": 1}\0garbage', "encode: ", "NUL octet at position 15"),
    (["encode", "QAsnPortIndex"], "{} {}", "encode: ", "bad JSON"),
    (["encode", "QAsnColumn", "--all"], '{"strCondition": "c"}\n{', "encode: ", "(line 2)")]
USAGE_MISTAKES = [  # (arguments, the one stderr line's start after "velkor: ", a part of it): exit 2
    ([], "", "a command is required"), (["bogus"], "", ""), (["dumpp"], "", 'did you mean "dump"?'),
    (["decode"], "decode: ", "missing TYPE"), (["decode", "NoSuchType"], "decode: ", ""),
    (["decode", "QAsnPortIdx"], "decode: ", 'did you mean "QAsnPortIndex"?'),
    (["decode", "QAsnPortIndex", "--bogus"], "decode: ", 'unexpected argument "--bogus"'),
    (["decode", "QAsnPortIndex", "--hex", "--base64"], "decode: ", "cannot be given together"),
    (["decode", "QAsnPortIndex", "--keep-going"], "decode: ", "--keep-going requires --all"),
    (["decode", "QAsnPortIndex", "-o"], "decode: ", "--output: needs a value"),
    (["types", "other::QAsnNVSList"], "types: ", ""),
    (["convert"], "convert: ", "a command is required"),
    (["convert", "fiber-to-cabel"], "convert: ", 'did you mean "fiber-to-cable"?'),
    (["convert", "mask-to-template", "abc"], "convert mask-to-template: ", ""),
    (["convert", "ignore-codes", "--ignore", "1,2,3,4", "--code", "1"], "convert ignore-codes: ", ""),
    (["convert", "ignore-codes"], "convert ignore-codes: ", ""),
    (["convert", "port-states-to-map", "--mask", "70000"], "convert port-states-to-map: ",
     '--mask: "70000" is out of range (0 to 65535)'),
    (["convert", "port-states-to-map", "--mask", "x"], "convert port-states-to-map: ", '"x" is not a number')]


class Velkor(unittest.TestCase):
    def test_every_type_decodes_what_it_encodes(self):
        types = json.loads(ok(["types", "--json"]))
        self.assertGreater(len(types), 10)
        value = sample_maker(types)
        for described, with_optional in itertools.product(types, (True, False)):
            with self.subTest(type=described["name"], optional=with_optional):
                sample = value(described["name"], with_optional)
                hex_text = stdin_of(Hex(described["name"], sample))
                self.assertEqual(json.loads(ok(["decode", described["name"], "--hex", "--json"], hex_text)), sample)
                ok(["decode", described["name"], "--hex"], hex_text)  # value notation
                ok(["encode", described["name"]], ok(["template", described["name"]]))  # the skeleton encodes

    def test_files_and_all(self):
        records = [{"strFDN": "NE=%d" % n, "strMOC": "NE", "neID": n} for n in range(3)]
        path = os.path.join(WORK, "ids.ber")
        ok(["encode", "QAsnUniResID", "--all", "-o", path], json.dumps(records))
        self.assertEqual(json.loads(ok(["decode", "QAsnUniResID", "--all", "--json", path])), records)
        spaced = " ".join("%02x" % octet for octet in Path(path).read_bytes()).replace(" 30", "\n30")  # blanks
        self.assertEqual(json.loads(ok(["decode", "QAsnUniResID", "--all", "--json", "--hex"], spaced)), records)

    def test_conversions(self):
        Path(OBJECTS).write_text(json.dumps({"1": ret(0, "x"), "2": ret(0, "y")}))
        for args, stdin, expected in CONVERSIONS:
            with self.subTest(args=args):
                out = ok(["convert"] + args, stdin_of(stdin))
                if isinstance(expected, Ber):
                    out, expected = ok(["decode", expected.type, "--json"], out), expected.value
                if isinstance(expected, bytes):
                    self.assertEqual(out, expected)
                else:
                    self.assertTrue(matches(json.loads(out), expected), out.decode())

    def test_failures_give_one_line_and_the_exit_code(self):
        cases = [(1,) + case for case in BAD_INPUT] + [(2, args, "{}", start, part) for args, start, part in USAGE_MISTAKES]
        for exit_code, args, stdin, start, part in cases:
            with self.subTest(args=args, stdin=stdin):
                code, _, err = run(args, stdin)
                self.assertEqual((code, len(err.splitlines())), (exit_code, 1), err)
                self.assertTrue(err.startswith("velkor: " + start), err)
                self.assertIn(part, err)
                for wording in ("Could not convert", "not expected", "subcommand", "basic_filebuf"):
                    self.assertNotIn(wording, err)  # the parser's and the library's own wording
        self.assertIn(b"INTEGER", run(["dump", "--hex"], "30 06 02 01 05 04 05 41")[1])
        dump = ok(["dump", "--hex"], "30 80 02 01 05 a1 03 81 01 ff 00 00").decode()
        for shown in ("length indefinite", "end-of-contents", "[1] constructed"):
            self.assertIn(shown, dump)

    def test_output_file_is_all_or_nothing(self):
        with tempfile.TemporaryDirectory() as work:
            target = os.path.join(work, "out.ber")
            self.assertEqual((run(["encode", "QAsnColumn", "-o", target], "{")[0], os.listdir(work)), (1, []))
            Path(target).write_bytes(b"old")
            code, out, _ = run(["dump", "--hex", "-o", target], "30 05 02")
            self.assertEqual((code, out, os.listdir(work), Path(target).read_bytes()), (1, b"", ["out.ber"], b"old"))
            ok(["encode", "QAsnColumn", "-o", target], '{"strCondition": "c"}')
            self.assertEqual((Path(target).read_bytes(), os.listdir(work)), (bytes.fromhex("3003040163"), ["out.ber"]))
            missing = os.path.join(work, "missing", "x")
            self.assertEqual(run(["encode", "QAsnColumn", "-o", missing], '{"strCondition": "c"}')[0], 1)

    def test_output_through_links_onto_fifos_and_keeping_the_mode(self):
        column = '{"strCondition": "c"}'
        with tempfile.TemporaryDirectory() as work:
            target, link = os.path.join(work, "target.ber"), os.path.join(work, "link.ber")
            Path(target).write_bytes(b"old")
            os.chmod(target, 0o600)
            os.symlink("target.ber", link)
            ok(["encode", "QAsnColumn", "-o", link], column)
            self.assertTrue(os.path.islink(link))
            self.assertEqual(Path(target).read_bytes(), bytes.fromhex("3003040163"))
            self.assertEqual(os.stat(target).st_mode & 0o777, 0o600)
            fifo = os.path.join(work, "fifo")
            os.mkfifo(fifo)
            reader = subprocess.Popen(["cat", fifo], stdout=subprocess.PIPE)
            ok(["encode", "QAsnColumn", "--hex", "-o", fifo], column)
            self.assertEqual((reader.communicate(timeout=60)[0], stat.S_ISFIFO(os.stat(fifo).st_mode)),
                             (b"3003040163\n", True))
            self.assertEqual(sorted(os.listdir(work)), ["fifo", "link.ber", "target.ber"])
        ok(["encode", "QAsnColumn", "-o", "/dev/null"], column)
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))

    def test_a_signal_leaves_no_temporary_file(self):
        capture = big_capture()
        for signal_number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGPIPE):
            with self.subTest(signal=signal_number), tempfile.TemporaryDirectory() as work:
                target = os.path.join(work, "out.txt")
                Path(target).write_bytes(b"old")
                process = subprocess.Popen([VELKOR, "decode", "QAsnColumn", "--all", capture, "-o", target])
                while len(os.listdir(work)) < 2 and process.poll() is None:
                    time.sleep(0.001)
                process.send_signal(signal_number)
                self.assertEqual(process.wait(timeout=120), -signal_number)
                self.assertEqual((os.listdir(work), Path(target).read_bytes()), (["out.txt"], b"old"))

    def test_big_capture_streams_in_bounded_memory(self):
        if b"__asan_init" in Path(VELKOR).read_bytes():
            self.skipTest("the sanitizers reserve more address space than the cap")
        capture = big_capture()
        size = os.path.getsize(capture)
        one_record = os.path.join(WORK, "one_record.ber")  # the capture as the content of a single record
        Path(one_record).write_bytes(b"\x30\x84" + size.to_bytes(4, "big") + Path(capture).read_bytes())
        cap = size + 64 * 1024 * 1024  # the input itself and a fixed amount besides

        def limited():
            resource.setrlimit(resource.RLIMIT_AS, (cap, cap))
        for args in (["dump", capture], ["dump", one_record], ["decode", "QAsnColumn", "--all", capture],
                     ["decode", "QAsnColumn", "--all", "--json", capture]):
            with self.subTest(args=args):
                with subprocess.Popen([VELKOR] + args, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                      preexec_fn=limited) as process:
                    lines = sum(1 for _ in process.stdout)
                    self.assertEqual((process.wait(timeout=300), process.stderr.read()), (0, b""))
                self.assertGreater(lines, 1000 if args[0] == "dump" else 1)
        process = subprocess.Popen([VELKOR, "dump", capture], stdout=subprocess.PIPE, preexec_fn=limited)
        first = process.stdout.readline()  # as `velkor dump | head -1`
        process.stdout.close()
        self.assertEqual((first, process.wait(timeout=120)),
                         (b"     0  [UNIVERSAL 16] constructed (SEQUENCE), length 65005\n", -signal.SIGPIPE))

    def test_cut_capture_dump_shows_what_it_holds(self):
        cut = bytes.fromhex(PORT_HEX * 2)[:-3]
        code, out, err = run(["dump"], cut)
        self.assertEqual((code, out.decode().count("INTEGER"), err.count("\n")), (1, 7, 1), err)
        self.assertIn("short of the value at offset 14", err)

    def test_every_hex_form_and_base64(self):
        octets = bytes.fromhex(PORT_HEX)
        rows = [octets[i:i + 16] for i in range(0, len(octets), 16)]
        pairs = ["%02x" % octet for octet in octets]
        forms = [" ".join(pairs), ":".join(pairs), ", ".join(pairs), " ".join("0x" + p for p in pairs),
                 ",".join("0x%x" % octet for octet in octets), PORT_HEX.upper(), "\r\n".join(pairs),
                 "".join("%08x: %s  %s\n" % (16 * i, " ".join(row.hex()[k:k + 4] for k in range(0, 32, 4)),
                                            row.decode("latin-1")) for i, row in enumerate(rows)),  # xxd
                 "".join("%07o %s\n" % (16 * i, " ".join("%02x" % o for o in row)) for i, row in enumerate(rows))
                 + "%07o\n" % len(octets),  # od -t x1
                 "".join("%08x  %s  |%s|\n" % (16 * i, " ".join("%02x" % o for o in row), row.decode("latin-1"))
                         for i, row in enumerate(rows))]  # hexdump -C
        for text in forms:
            with self.subTest(text=text):
                self.assertEqual(json.loads(ok(["decode", "QAsnPortIndex", "--hex", "--json"], text)), PORT)
        encoded = base64.b64encode(octets).decode()
        for text in (encoded, encoded.rstrip("="), "-----BEGIN X-----\n%s\n-----END X-----\n" % encoded):
            with self.subTest(text=text):
                self.assertEqual(json.loads(ok(["decode", "QAsnPortIndex", "--base64", "--json"], text)), PORT)

    def test_json_lines_round_trip_and_keep_going(self):
        records = [{"strFDN": "NE=%d" % n, "strMOC": "NE", "neID": n} for n in range(3)]
        lines = "".join(json.dumps(r, separators=(",", ":")) + "\n" for r in records)
        capture = ok(["encode", "QAsnUniResID", "--all"], lines)
        self.assertEqual(ok(["decode", "QAsnUniResID", "--all", "--json", "--compact"], capture).decode(), lines)
        self.assertEqual(json.loads(ok(["decode", "QAsnUniResID", "--all", "--json"], capture)), records)
        broken = capture.replace(b"NE=1\x04\x02NE\x02", b"NE=1\x04\x02NE\x05")  # a wrong tag in record 2
        code, out, err = run(["decode", "QAsnUniResID", "--all", "--json", "--compact", "--keep-going"], broken)
        self.assertEqual((code, [json.loads(line)["neID"] for line in out.splitlines()]), (1, [0, 2]), err)
        self.assertIn("record 2: ", err)
        self.assertIn("1 of 3 records could not be decoded", err)

    def test_64_bit_integers_are_strings_and_survive_jq(self):
        big = 2**53 + 1  # a double would round it to 2**53
        for given in (big, str(big)):
            with self.subTest(given=given):
                record = ok(["encode", "AsnSingleReturn"], json.dumps({"success": True, "retCode": given}))
                self.assertEqual(json.loads(ok(["decode", "AsnSingleReturn", "--json"], record))["retCode"], str(big))
        if shutil.which("jq") is None:
            self.skipTest("jq is not installed")
        for args in (["--json"], ["--json", "--compact"]):
            with self.subTest(args=args):
                through_jq = subprocess.run(["jq", "-c", "."], input=ok(["decode", "AsnSingleReturn"] + args, record),
                                            capture_output=True, check=True).stdout
                self.assertEqual(ok(["encode", "AsnSingleReturn"], through_jq), record)

    def test_decoding_errors_name_the_item_the_dump_shows(self):
        for args, hex_text, names, offset in [  # (decode arguments, input, what the error names, item offset)
                (["QAsnPortIndex"], "300d02010102010202010302020004", "QAsnPortIndex.level4ID: ", 11),  # not minimal
                (["QAsnPortIndex"], "300c02010102010202010302010400", "left over", 14),
                (["QAsnPortIndex"], "300c04010102010202010302010400", "QAsnPortIndex.level1ID: wrong tag", 2),
                (["QAsnPortIndex", "--all"], PORT_HEX + "300c0201010201020201030202", "record 2: QAsnPortIndex", 14),
                (["QAsnPortIndex", "--all"], PORT_HEX * 2 + "300d02010102010202010302020004", "level4ID", 39),
                (["QAsnNVSList"], "3100", "QAsnNVSList", 0),  # a list's wrong tag
                (["QAsnNVSList"], "300a30040400040030020400", "QAsnNameAndValueString.value: mandatory member missing", 8)]:
            with self.subTest(hex=hex_text):
                code, _, err = run(["decode"] + args + ["--hex"], hex_text)
                self.assertEqual(code, 1)
                self.assertIn(names, err)
                self.assertTrue(err.rstrip().endswith("at offset %d" % offset) or
                                ("at offset %d)" % offset) in err, err)
                dumped = run(["dump", "--hex"], hex_text)[1].decode()
                if "left over" not in names:
                    self.assertIn("\n%6d  " % offset, "\n" + dumped)

    def test_man_page_and_completion_are_installed(self):
        prefix = os.path.dirname(os.path.dirname(VELKOR))
        man = Path(prefix, "share", "man", "man1", "velkor.1").read_text()
        for command in ("types", "dump", "decode", "encode", "template", "demo", "convert fiber-to-cable"):
            self.assertIn('.SS "velkor %s' % command.replace("-", "\\-"), man)
        self.assertIn("\\-\\-keep\\-going", man)
        completion = os.path.join(prefix, "share", "bash-completion", "completions", "velkor")
        for words, expected in [("velkor de", "decode demo"), ("velkor decode QAsnPortI", "QAsnPortIndex"),
                                ("velkor convert fiber-to-c", "fiber-to-cable"), ("velkor dump --he", "--help --hex")]:
            script = 'source %s; COMP_WORDS=(%s); COMP_CWORD=%d; _velkor; echo "${COMPREPLY[*]}"' % (
                completion, words, len(words.split()) - 1)
            result = subprocess.run(["bash", "-c", script], capture_output=True, text=True,
                                    env=dict(os.environ, PATH=os.path.dirname(VELKOR) + ":" + os.environ["PATH"]))
            self.assertEqual(result.stdout.strip(), expected, result.stderr)

    def test_every_subcommand_has_help_with_an_example(self):
        listing = ok(["convert", "--help"]).decode().split("Subcommands:")[1].split("Example:")[0]
        conversions = [["convert", line.split()[0]] for line in listing.splitlines() if line.strip()]
        self.assertGreaterEqual(len(conversions), 15)
        for command in [["types"], ["dump"], ["decode"], ["encode"], ["template"], ["demo"], ["convert"]] + conversions:
            with self.subTest(command=command):
                help_text = ok(command + ["--help"]).decode()
                self.assertIn("Example:\n  ", help_text)
                self.assertIn("velkor " + " ".join(command), help_text.split("Example:")[1])

    def test_version_demo_types_and_trace(self):
        self.assertTrue(ok(["--version"]).startswith(b"velkor "))
        demo = ok(["demo"]).decode()
        for step in ["QAsnFiberInfo {", "0000  30", "[Convert2FiberCable]FixInvalidFiberParam",
                     "IgnoreMapRetCodeErrorCode", "Convert2LinkMgrModelList", "12--7"]:
            self.assertIn(step, demo)
        self.assertIn("level2SubID   AsnTinyInt  optional [0]", ok(["types", "QAsnPortIndex"]).decode())
        listed = ok(["types", "QAsnErrInfoReturn"]).decode().split()  # a member's type, as shown, is a name `types` takes
        self.assertIn("QAsnErrInfoList (qcommon)", ok(["types", next(t for t in listed if "::" in t)]).decode())
        fiber = stdin_of(Hex("QAsnFiberInfo", dict(FIBER, doubleValue="-1")))  # repaired, with a trace line
        for args, env in [(["--trace"], None), ([], dict(os.environ, TN_TRACE="stderr"))]:
            code, out, err = run(["convert", "fiber-to-cable", "--hex"] + args, fiber, env)
            self.assertEqual((code, json.loads(out)["doubleValue"]), (0, 1.0))
            self.assertIn("[Convert2FiberCable]FixInvalidFiberParam", err)

    def test_long_capture_shows_progress_on_a_terminal(self):
        master, slave = pty.openpty()
        capture = bytes.fromhex("3003040163") * ((1 << 20) // 5 + 1)  # QAsnColumn records, over 1 MiB
        result = subprocess.run([VELKOR, "decode", "QAsnColumn", "--all"], input=capture, stdout=subprocess.DEVNULL,
                                stderr=slave, timeout=120)
        os.close(slave)
        shown = []
        with os.fdopen(master, "rb", buffering=0) as terminal, contextlib.suppress(OSError):  # the other side closed
            shown.extend(iter(lambda: terminal.read(4096), b""))
        self.assertEqual(result.returncode, 0)
        self.assertIn(b"velkor: decode: ", b"".join(shown))
        self.assertIn(b" records, ", b"".join(shown))


def main():
    global VELKOR
    if len(sys.argv) < 3:
        print(__doc__)
        return 2
    build_dir, prefix = sys.argv[1], sys.argv[2]
    cmake = sys.argv[3] if len(sys.argv) > 3 else "cmake"
    shutil.rmtree(prefix, ignore_errors=True)
    subprocess.run([cmake, "--install", build_dir, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
    VELKOR = os.path.join(prefix, "bin", "velkor")
    program = unittest.main(argv=[sys.argv[0], "-v"], exit=False)
    return 0 if program.result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())

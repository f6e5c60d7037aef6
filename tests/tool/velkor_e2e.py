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

import json
import os
import pty
import shutil
import subprocess
import sys
import tempfile
import unittest

VELKOR = None  # set in main()


def run(args, stdin=b"", env=None):
    """Runs the installed velkor; returns (exit code, stdout bytes, stderr text)."""
    if isinstance(stdin, str):
        stdin = stdin.encode()
    result = subprocess.run([VELKOR] + args, input=stdin, capture_output=True, env=env, timeout=60)
    return result.returncode, result.stdout, result.stderr.decode(errors="replace")


def ok(test, args, stdin=b""):
    code, out, err = run(args, stdin)
    test.assertEqual(code, 0, "velkor %s failed: %s" % (" ".join(args), err))
    return out


def ok_json(test, args, stdin=b""):
    return json.loads(ok(test, args, stdin))


def read_file(path):
    with open(path, "rb") as f:
        return f.read()


def encode_hex(test, type_name, value):
    return ok(test, ["encode", type_name, "--hex"], json.dumps(value)).decode().strip()


# ---- samples ---------------------------------------------------------------------

def strip_namespace(type_name):
    return type_name.split("::")[-1]


class SampleMaker:
    """Deterministic sample values for the catalogue's types, from `types --json`."""

    def __init__(self, types):
        self.types = {t["name"]: t for t in types}
        self.counter = 0

    def next_octets(self):
        self.counter += 1
        # Plain text, UTF-8 text and octets that are no text, in turn.
        return ["text %d" % self.counter, "grüße %d" % self.counter,
                {"hex": "00ff%02x" % (self.counter % 256)}][self.counter % 3]

    def next_integer(self, wide):
        self.counter += 1
        small = [-5, 300, 70000, -2147483648, 2147483647][self.counter % 5]
        return small * 1000003 if wide and self.counter % 2 else small

    def value(self, type_name, with_optional):
        type_name = strip_namespace(type_name)
        if type_name in ("AsnOcts",):
            return self.next_octets()
        if type_name in ("AsnTinyInt", "AsnInt"):
            return self.next_integer(type_name == "AsnInt")
        if type_name == "AsnBool":
            self.counter += 1
            return self.counter % 2 == 0
        described = self.types[type_name]
        if described["kind"] == "list":
            return [self.value(described["element"], with_optional) for _ in range(2)]
        record = {}
        for member in described["members"]:
            if member["optional"] and not with_optional:
                continue
            record[member["name"]] = self.value(member["type"], with_optional)
        return record


FIBER = {
    "fiberText1": "F-1", "fiberValue1": 12, "fiberText2": "Cable 12", "fiberValue2": 70000, "fiberValue3": 300,
    "aEndPort": {"level1ID": 1001, "level2ID": 1, "level3ID": 3, "level4ID": 2, "strIndexText": "a"},
    "zEndPort": {"level1ID": 1002, "level2ID": 1, "level3ID": 5, "level3SubID": 1, "level4ID": -1},
    "doubleValue": "2.5",
    "attrList": [{"name": "Reserve", "value": "0"}, {"name": "Reserve", "value": "7"},
                 {"name": "Memo", "value": "m"}, {"name": "MaintenanceState", "value": "3"}],
}

LINK = {
    "linkResID": {"strFDN": "LINK=88", "strMOC": "LINK", "neID": 0},
    "strText1": "t1", "strText2": "t2", "strText3": "t3", "strText4": "t4", "tinyValue1": 70001, "tinyValue2": 2,
    "srcResID": {"strFDN": "NE=1001,SH=1,SL=3,PP=2", "strMOC": "PP", "neID": 1001},
    "dstResID": {"strFDN": "NE=1002,SH=1,SL=5,GRP=2,SUBGRP=3,PP=0x7", "strMOC": "PP", "neID": 1002},
    "tinyValue3": 3, "tinyValue4": 4, "spareValue": "",
    "attrList": [{"name": "BuildTime_t", "value": "1500000000"}, {"name": "P2MPLable", "value": "-1"},
                 {"name": "srcNeName", "value": "Berlin"}, {"name": "a_oneID", "value": "77"}],
    "intValue1": 1, "intValue2": -3, "intValue3": 9, "strText5": "t5", "strText6": "t6", "strText7": "t7",
    "tinyValue5": 5, "optTinyValue": 9,
}


def err_info(ids, code, name=None):
    element = {"objID": ids, "errCode": code}
    if name is not None:
        element["objName"] = name
    return element


# ---- the cases ---------------------------------------------------------------------

class RoundTrips(unittest.TestCase):
    def test_every_type_decodes_what_it_encodes(self):
        types = ok_json(self, ["types", "--json"])
        self.assertGreater(len(types), 10)
        maker = SampleMaker(types)
        for described in types:
            for with_optional in (True, False):
                with self.subTest(type=described["name"], optional=with_optional):
                    sample = maker.value(described["name"], with_optional)
                    hex_text = encode_hex(self, described["name"], sample)
                    back = ok_json(self, ["decode", described["name"], "--hex", "--json"], hex_text)
                    self.assertEqual(back, sample)
                    ok(self, ["decode", described["name"], "--hex"], hex_text)  # value notation

    def test_binary_and_all(self):
        with tempfile.TemporaryDirectory() as work:
            records = [{"strFDN": "NE=%d" % n, "strMOC": "NE", "neID": n} for n in range(3)]
            path = os.path.join(work, "ids.ber")
            ok(self, ["encode", "QAsnUniResID", "--all", "-o", path], json.dumps(records))
            self.assertEqual(ok_json(self, ["decode", "QAsnUniResID", "--all", "--json", path]), records)
            # Hex input ignores blanks and line breaks.
            spaced = " ".join(read_file(path).hex()[i:i + 2] for i in range(0, 2 * os.path.getsize(path), 2))
            self.assertEqual(ok_json(self, ["decode", "QAsnUniResID", "--all", "--json", "--hex"],
                                     spaced.replace(" 30", "\n30")), records)


class Convert(unittest.TestCase):
    def test_fiber_to_cable_and_back(self):
        cable = ok_json(self, ["convert", "fiber-to-cable", "--hex"], encode_hex(self, "QAsnFiberInfo", FIBER))
        self.assertEqual(cable["fiberValue3"], 44)         # low 8 bits of 300
        self.assertEqual(cable["fiberValue2"], 4464)       # low 16 bits of 70000
        self.assertEqual(cable["doubleValue"], 2.5)
        self.assertEqual(cable["floatValue"], -0.1)        # absent: "-0.1"
        self.assertEqual(cable["reserve"], 7)              # the last "Reserve" counts
        self.assertEqual(cable["zEnd"]["level4ID"], 2 ** 64 - 1)
        self.assertEqual(cable["aEnd"]["level2SubID"], -1)
        self.assertEqual(cable["hybridMaxCapacity"], -1)
        record = ok_json(self, ["decode", "QAsnFiberInfo", "--json"],
                         ok(self, ["convert", "cable-to-fiber"], json.dumps(cable)))
        self.assertEqual(record["fiberText1"], record["fiberText5"])
        self.assertEqual([e["name"] for e in record["attrList"]],
                         ["Memo", "Reserve", "MaintenanceState", "BuildTime_t", "DelayTime"])
        self.assertEqual(record["attrList"][1]["value"], "1")
        self.assertEqual(record["doubleValue"], "2.500000")

    def test_fiber_repair_is_traced(self):
        fiber = dict(FIBER, doubleValue="-1")
        code, out, err = run(["convert", "fiber-to-cable", "--hex", "--trace"], encode_hex(self, "QAsnFiberInfo", fiber))
        self.assertEqual(code, 0)
        self.assertEqual(json.loads(out)["doubleValue"], 1.0)
        self.assertIn("[Convert2FiberCable]FixInvalidFiberParam", err)
        env = dict(os.environ, TN_TRACE="stderr")
        code, out, err = run(["convert", "fiber-to-cable", "--hex"], encode_hex(self, "QAsnFiberInfo", fiber), env)
        self.assertIn("[Convert2FiberCable]FixInvalidFiberParam", err)

    def test_templates(self):
        hex_text = ok(self, ["convert", "mask-to-template", "0x804", "--hex"]).decode()
        record = ok_json(self, ["decode", "QAsnFiberInfoTemplate", "--hex", "--json"], hex_text)
        self.assertEqual(sorted(record), ["column12", "column3"])
        self.assertEqual(ok_json(self, ["convert", "template-to-mask", "--hex"], hex_text), {"templateType": 0x804})

    def test_links(self):
        models = ok_json(self, ["convert", "links-to-models", "--hex"],
                         encode_hex(self, "QAsnLinkInfoList", [LINK, dict(LINK, attrList=[])]))
        self.assertEqual(len(models), 2)
        model = models[0]
        self.assertEqual(model["buildTime"], 1500000000)
        self.assertEqual(model["p2mpLabel"], 65535)
        self.assertEqual(model["tinyValue1"], 70001 % 65536)
        self.assertEqual(model["intValue2"], -3.0)
        self.assertEqual(model["optTinyValue"], 9)
        self.assertEqual(model["srcNeName"], "Berlin")
        self.assertEqual(model["strLinkFDN"], "LINK=88")
        self.assertEqual(model["srcPortIndex"]["nodeID"], 1001)
        self.assertEqual(model["srcPortIndex"]["oneID"], 77)
        self.assertEqual(model["srcPortIndex"]["strPortMOC"], "PP")
        single = ok_json(self, ["convert", "link-to-model", "--hex"], encode_hex(self, "QAsnLinkInfo", LINK))
        self.assertEqual(single["strText4"], "t4")
        resid = encode_hex(self, "QAsnUniResID", {"strFDN": "NE=1002,SH=1,SL=5,GRP=2,SUBGRP=3,PP=7",
                                                  "strMOC": "PP", "neID": 0})
        port = ok_json(self, ["convert", "resid-to-link-port", "--hex"], resid)
        self.assertTrue(port["filled"])
        self.assertEqual(port["r1LinkPortId"], 0x2030007)
        node = encode_hex(self, "QAsnUniResID", {"strFDN": "NE=1001", "strMOC": "NE", "neID": 0})
        port = ok_json(self, ["convert", "resid-to-link-port", "--hex", "--moc", "NE", "--accept-node"], node)
        self.assertEqual((port["filled"], port["index"]["nodeID"]), (True, 1001))

    def test_return_codes(self):
        errors = encode_hex(self, "QAsnErrInfoList", [err_info([5], 2, "ab"), err_info([5], 3), err_info([7], 4)])
        result = ok_json(self, ["convert", "errinfo-list-to-map", "--hex"], errors)
        self.assertEqual(result, {"result": 2, "map": {
            "5": {"strObjName": "ab", "ulRetCode": 2}, "7": {"strObjName": "", "ulRetCode": 4},
            "1000000": {"strObjName": "", "ulRetCode": 3}}})
        self.assertEqual(list(result["map"]), ["5", "7", "1000000"])  # key order

        with tempfile.TemporaryDirectory() as work:
            objects = os.path.join(work, "objects.json")
            with open(objects, "w") as f:
                json.dump({"1": {"strObjName": "x", "ulRetCode": 0}, "2": {"strObjName": "y", "ulRetCode": 0}}, f)
            failed = encode_hex(self, "QAsnErrInfoReturn", {"retCode": 5})
            kept = ok_json(self, ["convert", "errinfo-return-to-map", "--hex", "--map", objects], failed)
            self.assertEqual(kept["map"]["1"], {"strObjName": "x", "ulRetCode": 0})
            filled = ok_json(self, ["convert", "errinfo-return-to-map", "--hex", "--map", objects, "--fill-all"],
                             failed)
            self.assertEqual(filled, {"result": 5, "map": {"1": {"strObjName": "", "ulRetCode": 5},
                                                           "2": {"strObjName": "", "ulRetCode": 5}}})

        codes = {"1": {"strObjName": "", "ulRetCode": 0}, "2": {"strObjName": "", "ulRetCode": 7},
                 "3": {"strObjName": "", "ulRetCode": 8}}
        cases = [  # (input, options, expected result, expected keys)
            (codes, ["--code", "8", "--ignore", "7"], 8, ["3"]),
            ({k: codes[k] for k in ("1", "2")}, ["--code", "8", "--ignore", "7"], 0, []),
            ({}, ["--code", "8", "--ignore", "7"], 8, []),
            ({"result": 7, "map": codes}, ["--ignore", "7,0,0"], 0, ["3"]),  # the piped form
        ]
        for source, options, expected, keys in cases:
            with self.subTest(options=options, source=source):
                result = ok_json(self, ["convert", "ignore-codes"] + options, json.dumps(source))
                self.assertEqual((result["result"], list(result["map"])), (expected, keys))

        record = ok_json(self, ["decode", "AsnSingleReturn", "--hex", "--json"],
                         ok(self, ["convert", "single-return", str(2 ** 32), "--hex"]))
        self.assertEqual(record, {"success": False, "retCode": 0})

    def test_name_values_and_alarm_ids(self):
        nvs = encode_hex(self, "QAsnNVSList", [{"name": "A", "value": "1"}, {"name": "B", "value": "2"},
                                               {"name": "A", "value": "3"}])
        self.assertEqual(ok_json(self, ["convert", "nvs-to-map", "--hex"], nvs), {"A": "3", "B": "2"})
        self.assertEqual(ok(self, ["convert", "alarm-compose"], '{"sFaultID": 12, "lAlarmGroupID": -7}'), b"12--7\n")
        self.assertEqual(ok(self, ["convert", "alarm-compose"], '{}'), b"0-0\n")
        for text, expected in [("12-34", {"sFaultID": 12, "lAlarmGroupID": 34}),
                               ("12x-34", {"sFaultID": 12, "lAlarmGroupID": 34}),
                               ("x-34", {"sFaultID": 0, "lAlarmGroupID": 0}),
                               ("-5-7", {"sFaultID": -5, "lAlarmGroupID": 7})]:
            with self.subTest(text=text):
                self.assertEqual(ok_json(self, ["convert", "alarm-split", "--", text]), expected)
        report = encode_hex(self, "AsnOtherToSvrFaultRptStrc", {"neID": 1, "alarmGroupID": 9, "alarmCode": 2,
                                                                "strAlarmText": "LOS", "faultID": 3, "occurTime": 0})
        self.assertEqual(ok(self, ["convert", "fault-report-to-alarm-id", "--hex"], report), b"3-9\n")

    def test_ports(self):
        index = {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level4ID": 4, "level3SubID": -7, "level2SubID": -1,
                 "strIndexText": ""}
        record = ok_json(self, ["decode", "QAsnPortIndex", "--json"], ok(self, ["convert", "model-to-port-index"],
                                                                           json.dumps(index)))
        self.assertEqual(record, {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level3SubID": -7, "level4ID": 4,
                                  "strIndexText": ""})
        back = ok_json(self, ["convert", "port-index-to-model", "--hex"], encode_hex(self, "QAsnPortIndex", record))
        self.assertEqual(back, index)

        port = {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level4ID": 4}
        states = encode_hex(self, "QAsnPortUseStateList", [{"portIndex": port, "useState": 1},
                                                           {"portIndex": port, "useState": 3},
                                                           {"portIndex": dict(port, level1ID=9), "useState": 2}])
        result = ok_json(self, ["convert", "port-states-to-map", "--hex", "--mask", "0x0A"], states)
        self.assertEqual([(e["portIndex"]["level1ID"], e["useState"]) for e in result], [(1, 3)])
        self.assertEqual(len(ok_json(self, ["convert", "port-states-to-map", "--hex"], states)), 2)
        self.assertEqual(ok_json(self, ["convert", "port-states-to-map", "--hex", "--mask", "0"], states), [])

        for number, virtual in [((16 << 16) + 40001, True), ((16 << 16) + 40960, False), (-1, False)]:
            with self.subTest(number=number):
                self.assertEqual(ok_json(self, ["convert", "virtual-port", "--", str(number)])["virtual"], virtual)


class Failures(unittest.TestCase):
    def assert_fails(self, args, stdin, exit_code, command, fragment=""):
        code, out, err = run(args, stdin)
        self.assertEqual(code, exit_code, "velkor %s: %s" % (" ".join(args), err))
        lines = err.splitlines()
        self.assertEqual(len(lines), 1, err)
        self.assertTrue(lines[0].startswith("velkor: " + command), lines[0])
        self.assertIn(fragment, lines[0])
        return out

    def test_bad_input_exits_1(self):
        port = encode_hex(self, "QAsnPortIndex", {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level4ID": 4})
        cases = [  # (arguments, input, command, part of the message)
            (["decode", "QAsnPortIndex", "--hex"], port[:-4], "decode: ", "offset"),     # truncated
            (["decode", "QAsnUniResID", "--hex"], port, "decode: ", "QAsnUniResID"),     # wrong type
            (["decode", "QAsnPortIndex", "--hex"], port + "00", "decode: ", "left over"),
            (["decode", "QAsnPortIndex", "--hex"], "30 0g", "decode: ", "bad hex"),
            (["decode", "QAsnPortIndex", "--hex"], "300", "decode: ", "odd number"),
            (["decode", "QAsnPortIndex"], b"", "decode: ", ""),
            (["encode", "QAsnPortIndex"], "{", "encode: ", "bad JSON"),
            (["encode", "QAsnPortIndex"], '{"level1ID": 1}', "encode: ", "QAsnPortIndex.level2ID"),
            (["encode", "QAsnPortIndex"], '{"level1ID": 1, "bogus": 2}', "encode: ", "bogus"),
            (["encode", "QAsnPortIndex"], '{"level1ID": 1e3}', "encode: ", "level1ID"),
            (["encode", "QAsnErrInfo"], '{"objID": [99999999999], "errCode": 1}', "encode: ",
             "QAsnErrInfo.objID[0]"),
            (["encode", "QAsnColumn"], '{"strCondition": {"hex": "abc"}}', "encode: ", "strCondition"),
            (["convert", "fiber-to-cable", "--hex"], port, "convert fiber-to-cable: ", "QAsnFiberInfo"),
            (["convert", "cable-to-fiber"], '{"aEnd": {"level9ID": 1}}', "convert cable-to-fiber: ", "cable.aEnd"),
            (["convert", "model-to-port-index"], '{"level2SubID": 2147483648}', "convert model-to-port-index: ",
             "level2SubID"),
            (["convert", "ignore-codes", "--code", "1"], '{"x": {}}', "convert ignore-codes: ", "x"),
            (["decode", "QAsnPortIndex", "/nonexistent/file"], b"", "decode: ", "/nonexistent/file"),
        ]
        for args, stdin, command, fragment in cases:
            with self.subTest(args=args, stdin=stdin):
                self.assert_fails(args, stdin, 1, command, fragment)

    def test_dump_shows_what_it_could(self):
        out = self.assert_fails(["dump", "--hex"], "30 06 02 01 05 04 05 41", 1, "dump: ",
                                "in the item at offset 5")
        self.assertIn(b"INTEGER", out)
        dump = ok(self, ["dump", "--hex"], "30 80 02 01 05 a1 03 81 01 ff 00 00").decode()
        self.assertIn("length indefinite", dump)
        self.assertIn("end-of-contents", dump)
        self.assertIn("[1] constructed", dump)

    def test_dump_names_where_the_bytes_break(self):
        cases = [  # (hex, the error's end)
            ("30 05 02 01 05", "runs past the input (3 octets left) at offset 2 (in the item at offset 0)"),
            ("30 03 02 02 05 00", "length 2 runs past its enclosing value (1 octets left) at offset 2"),
            ("30 02 1f 81 01 00", "tag runs past its enclosing value at offset 2"),
            ("30 80 02 01 05", "missing end-of-contents at offset 5"),
            ("04 80 00 00", "indefinite length on a primitive value at offset 0"),
            ("00 00", "end-of-contents outside an indefinite-length value at offset 0"),
            ("30 80 00 01 00", "end-of-contents with content at offset 2"),
            ("1f", "input ends inside a tag at offset 0"),
            ("30", "input ends inside a length at offset 0"),
            ("30 ff", "reserved at offset 2 (in the item at offset 0)"),
            ("1f 80 01 00", "leading 0x80 octet at offset 2 (in the item at offset 0)"),
            ("30 80" * 33, "nested deeper than 32 levels at offset 64"),
        ]
        for hex_text, expected in cases:
            with self.subTest(hex=hex_text):
                code, _, err = run(["dump", "--hex"], hex_text)
                self.assertEqual(code, 1)
                self.assertTrue(err.strip().endswith(expected), err)

    def test_usage_mistakes_exit_2(self):
        cases = [  # (arguments, command)
            ([], ""), (["bogus"], ""), (["decode"], "decode: "), (["decode", "NoSuchType"], "decode: "),
            (["decode", "QAsnPortIndex", "--bogus"], "decode: "), (["convert"], "convert: "),
            (["convert", "no-such-conversion"], "convert: "),
            (["convert", "mask-to-template", "abc"], "convert mask-to-template: "),
            (["convert", "ignore-codes", "--ignore", "1,2,3,4", "--code", "1"], "convert ignore-codes: "),
            (["convert", "ignore-codes"], "convert ignore-codes: "),
            (["convert", "port-states-to-map", "--mask", "x"], "convert port-states-to-map: "),
        ]
        for args, command in cases:
            with self.subTest(args=args):
                self.assert_fails(args, "{}", 2, command)

    def test_output_file_is_all_or_nothing(self):
        with tempfile.TemporaryDirectory() as work:
            target = os.path.join(work, "out.ber")
            code, _, _ = run(["encode", "QAsnColumn", "-o", target], "{")
            self.assertEqual((code, os.listdir(work)), (1, []))
            with open(target, "wb") as f:
                f.write(b"old")
            code, out, _ = run(["dump", "--hex", "-o", target], "30 05 02")
            self.assertEqual((code, out, os.listdir(work)), (1, b"", ["out.ber"]))
            self.assertEqual(read_file(target), b"old")
            ok(self, ["encode", "QAsnColumn", "-o", target], '{"strCondition": "c"}')
            self.assertEqual(read_file(target), bytes.fromhex("3003040163"))
            self.assertEqual(os.listdir(work), ["out.ber"])
            code, _, _ = run(["encode", "QAsnColumn", "-o", os.path.join(work, "missing", "x")],
                             '{"strCondition": "c"}')
            self.assertEqual(code, 1)


class Help(unittest.TestCase):
    def test_every_subcommand_has_help_with_an_example(self):
        commands = [["types"], ["dump"], ["decode"], ["encode"], ["demo"], ["convert"]]
        listing = ok(self, ["convert", "--help"]).decode()
        names = [line.split()[0] for line in listing.split("Subcommands:")[1].split("Example:")[0].splitlines()
                 if line.strip()]
        self.assertGreaterEqual(len(names), 15)
        for name in names:
            commands.append(["convert", name])
        for command in commands:
            with self.subTest(command=command):
                help_text = ok(self, command + ["--help"]).decode()
                self.assertIn("Example:\n  ", help_text)
                self.assertIn("velkor " + " ".join(command), help_text.split("Example:")[1])

    def test_long_capture_shows_progress_on_a_terminal(self):
        record = bytes.fromhex("3003040163")  # QAsnColumn {strCondition "c"}
        capture = record * ((1 << 20) // len(record) + 1)
        master, slave = pty.openpty()
        try:
            result = subprocess.run([VELKOR, "decode", "QAsnColumn", "--all"], input=capture,
                                    stdout=subprocess.DEVNULL, stderr=slave, timeout=120)
            os.close(slave)
            shown = b""
            while True:
                try:
                    chunk = os.read(master, 4096)
                except OSError:  # the terminal's other side is closed
                    break
                if not chunk:
                    break
                shown += chunk
        finally:
            os.close(master)
        self.assertEqual(result.returncode, 0)
        self.assertIn(b"velkor: decode: ", shown)
        self.assertIn(b" records, ", shown)

    def test_version_demo_and_types(self):
        self.assertTrue(ok(self, ["--version"]).startswith(b"velkor "))
        demo = ok(self, ["demo"]).decode()
        for step in ["QAsnFiberInfo {", "0000  30", "[Convert2FiberCable]FixInvalidFiberParam", "IgnoreMapRetCodeErrorCode",
                     "Convert2LinkMgrModelList", "12--7"]:
            self.assertIn(step, demo)
        listing = ok(self, ["types", "QAsnPortIndex"]).decode()
        self.assertIn("level2SubID   AsnTinyInt  optional [0]", listing)


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

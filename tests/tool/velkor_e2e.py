#!/usr/bin/env python3
"""End-to-end tests of the velkor tool, run on the INSTALLED binary (the build
installed into a scratch prefix with cmake --install), as a user runs it.

usage: velkor_e2e.py BUILD_DIR PREFIX [CMAKE [MODULE_LIBRARY]]

MODULE_LIBRARY: the test interface module (tests/qprobe), loaded with --module.
"""

import atexit
import base64
import collections
import json
import os
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

VELKOR = None  # the installed tool, set at the start
PROBE = None  # the test module's library, when given
WORK = tempfile.mkdtemp(prefix="velkor_e2e.")  # scratch files
atexit.register(shutil.rmtree, WORK, True)
OBJECTS = os.path.join(WORK, "objects.json")  # a return-code map for --map


def big_capture():
    """A capture of QAsnColumn records larger than 64 MiB, made once."""
    path = os.path.join(WORK, "big.ber")
    if not os.path.exists(path):
        Path(path).write_bytes(ber_tlv(0x30, ber_tlv(4, b"x" * 65000)) * 1040)
    return path


def ber_tlv(tag, content):
    """One BER value with a definite, minimal length."""
    size, octets = len(content), (len(content).bit_length() + 7) // 8
    length = bytes([size]) if size < 128 else bytes([0x80 | octets]) + size.to_bytes(octets, "big")
    return bytes([tag]) + length + content


def capped(kib):
    """The command prefix that runs the tool with `kib` KiB of address space (skips under the sanitizers)."""
    if b"__asan_init" in Path(VELKOR).read_bytes():
        raise unittest.SkipTest("the sanitizers reserve more address space than the cap")
    return ["bash", "-c", 'ulimit -v %d && exec "$0" "$@"' % kib, VELKOR]


def run_capped(kib, args):
    """Runs velkor under capped(kib); returns (exit code, number of output lines, stderr bytes)."""
    with subprocess.Popen(capped(kib) + args, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
        lines = sum(1 for _ in process.stdout)
        return process.wait(timeout=300), lines, process.stderr.read()


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
Ber = collections.namedtuple("Ber", "type value")  # output: a record, compared as JSON after decoding it


class Part(dict):
    """The members a JSON object must have (others may follow)."""


def stdin_of(cell):
    return ok(["encode", cell.type, "--hex", "--readable"], json.dumps(cell.value)) if isinstance(cell, Hex) else cell


def matches(actual, expected):
    if isinstance(expected, dict):
        keys_match = set(expected) <= set(actual) if isinstance(expected, Part) else set(expected) == set(actual)
        return keys_match and all(matches(actual[k], v) for k, v in expected.items())
    if isinstance(expected, list):
        return len(actual) == len(expected) and all(map(matches, actual, expected))
    return actual == expected and isinstance(actual, bool) == isinstance(expected, bool)


PORT = {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level4ID": 4}
PORT_HEX = "300c020101020102020103020104"  # PORT as QAsnPortIndex
PORT_MODEL = {k: str(v) for k, v in PORT.items()}  # 64-bit fields of a model: decimal strings
TEMPLATE = "3008a2020400ab020400"  # QAsnFiberInfoTemplate with column3 and column12


def record(type_name, **members):
    """A record with every member: the skeleton `velkor template` prints, with `members` set."""
    return dict(json.loads(ok(["template", type_name])), **members)


def fiber(double_value="2.5"):
    return record("QAsnFiberInfo", doubleValue=double_value, fiberText5="F-5", aEndPort=dict(PORT, level1ID=1001),
                  attrList=[{"name": "Reserve", "value": "7"}])


def ret(ret_code, name=""):
    """An entry of a return-code map."""
    return {"strObjName": name, "ulRetCode": str(ret_code)}


def conversions():
    """(convert arguments, input, expected output): each command's wiring, not the library's rules."""
    link = record("QAsnLinkInfo", strText4="t4", srcResID={"strFDN": "NE=1001,SH=1,PP=2", "strMOC": "PP", "neID": 1},
                  attrList=[{"name": "BuildTime_t", "value": "1500000000"}, {"name": "srcNeName", "value": "Berlin"}])
    states = Hex("QAsnPortUseStateList", [{"portIndex": PORT, "useState": 1}, {"portIndex": PORT, "useState": 3},
                                          {"portIndex": dict(PORT, level1ID=9), "useState": 2}])
    return [
        (["fiber-to-cable", "--hex"], Hex("QAsnFiberInfo", fiber()),
         Part(doubleValue=2.5, reserve=7, fiberText5="F-5", aEnd=Part(level1ID="1001"))),
        (["cable-to-fiber"], json.dumps({"fiberText5": "F-5", "doubleValue": 2.5, "aEnd": {"level1ID": "1001"}}),
         Ber("QAsnFiberInfo", Part(fiberText5="F-5", doubleValue="2.500000", aEndPort=Part(level1ID=1001)))),
        (["mask-to-template", "0x804", "--hex"], "", TEMPLATE.encode() + b"\n"),
        (["mask-to-template", "02052", "--hex"], "", TEMPLATE.encode() + b"\n"),  # a leading 0 is no octal
        (["template-to-mask", "--hex"], TEMPLATE, {"templateType": str(0x804)}),
        (["links-to-models", "--hex"], Hex("QAsnLinkInfoList", [link, dict(link, attrList=[])]),
         [Part(buildTime="1500000000", srcNeName="Berlin", srcPortIndex=Part(nodeID="1001")), Part(srcNeName="")]),
        (["resid-to-link-port", "--hex", "--moc", "NE", "--accept-node"],
         Hex("QAsnUniResID", {"strFDN": "NE=1001", "strMOC": "NE", "neID": 0}), Part(filled=True)),
        (["errinfo-list-to-map", "--hex"], Hex("QAsnErrInfoList", [
            {"objID": [5], "errCode": 2, "objName": "ab"}, {"objID": [5], "errCode": 3}, {"objID": [7], "errCode": 4}]),
         {"result": "2", "map": {"5": ret(2, "ab"), "7": ret(4), "1000000": ret(3)}}),
        (["errinfo-return-to-map", "--hex", "--map", OBJECTS, "--fill-all"], Hex("QAsnErrInfoReturn", {"retCode": 5}),
         {"result": "5", "map": {"1": ret(5), "2": ret(5)}}),
        (["ignore-codes", "--code", "8", "--ignore", "7"], json.dumps({"1": ret(0), "2": ret(7), "3": ret(8)}),
         {"result": "8", "map": {"3": ret(8)}}),
        (["ignore-codes", "--ignore", "7,0,0"], json.dumps({"result": 7, "map": {"2": ret(7)}}),  # the piped form
         {"result": "0", "map": {}}),
        (["single-return", str(2**32)], "", Ber("AsnSingleReturn", {"success": False, "retCode": "0"})),
        (["nvs-to-map", "--hex"], Hex("QAsnNVSList", [{"name": "A", "value": "1"}, {"name": "A", "value": "3"}]),
         {"A": "3"}),
        (["alarm-compose"], '{"sFaultID": 12, "lAlarmGroupID": -7}', b"12--7\n"),
        (["alarm-split", "--", "-5-7"], "", {"sFaultID": -5, "lAlarmGroupID": 7}),
        (["fault-report-to-alarm-id", "--hex"],
         Hex("AsnOtherToSvrFaultRptStrc", record("AsnOtherToSvrFaultRptStrc", alarmGroupID=9, faultID=3)), b"3-9\n"),
        (["model-to-port-index"], json.dumps(dict(PORT, level2SubID=-1)), Ber("QAsnPortIndex", Part(PORT))),  # -1: absent
        (["port-index-to-model", "--hex", "--compact"], Hex("QAsnPortIndex", PORT),  # fields in declaration order
         b'{"level1ID":"1","level2ID":"2","level3ID":"3","level4ID":"4",'
         b'"level3SubID":-1,"level2SubID":-1,"strIndexText":""}\n'),
        (["port-states-to-map", "--hex", "--mask", "0x0A"], states, [Part(portIndex=Part(PORT_MODEL), useState=3)]),
        (["virtual-port", "--", "-1"], "", Part(virtual=False)),
    ]

BAD_INPUT = [  # (arguments, input, the one stderr line's start after "velkor: ", a part of it): exit 1
    (["decode", "QAsnPortIndex", "--hex"], "300", "decode: ", "odd number"),
    (["decode", "QAsnPortIndex", "/nonexistent/file"], "", "decode: ", "/nonexistent/file"),
    (["decode", "QAsnPortIndex", "/"], "", "decode: ", "cannot read /: it is a directory"),
    (["convert", "cable-to-fiber"], '{"aEnd": {"level9ID": 1}}', "convert cable-to-fiber: ", "cable.aEnd"),
] + [(["dump", "--hex"], hex_text, "dump: ", message) for hex_text, message in [  # where the bytes break
    ("30 03 02 02 05 00", "length 2 runs past its enclosing value (1 octet left) at offset 2"),
    ("30 02 1f 81 01 00", "tag runs past its enclosing value at offset 2"),
    ("30 80 02 01 05", "input ends before the end-of-contents of the value at offset 5"),
    ("04 80 00 00", "indefinite length on a primitive value at offset 0"),
    ("00 00", "end-of-contents outside an indefinite-length value at offset 0"),
    ("30 80 00 01 00", "end-of-contents with content at offset 2"),
    ("30 ff", "length octet 0xFF is reserved at offset 0"),
    ("30 80" * 33, "nested deeper than 32 levels at offset 64")]] + [
    (["dump"], "", "dump: ", "empty input"),
    (["decode", "QAsnPortIndex"], PORT_HEX, "decode: ", "add --hex"),  # text given as bytes: a hint
    (["dump"], base64.b64encode(bytes.fromhex(PORT_HEX)).decode(), "dump: ", "add --base64"),
    (["decode", "QAsnPortIndex", "--hex"], bytes.fromhex(PORT_HEX), "decode: ", "octet 0x0C at line 1, column 2"),
    (["decode", "QAsnPortIndex", "--hex"], "30 0g", "decode: ", "'g' at line 1, column 5"),
    (["decode", "QAsnPortIndex", "--base64"], "MAw*", "decode: ", "'*' at line 1, column 4"),
    (["convert", "alarm-compose"], b'{"sFaultID": 1}\0garbage', "convert alarm-compose: ", "NUL octet"),
    (["encode", "QAsnColumn", "--all"], '{"strCondition": "c"}\n{', "encode: ", "QAsnColumn[1]: the text ends inside the value at offset 23"),
    (["encode", "QAsnNVSList", "--jer"], '[{"name": "", "value": ""}, {"name": ""}]', "encode: ", "QAsnNVSList[1].value: missing (a mandatory member) at offset 28")]
USAGE_MISTAKES = [  # (arguments, the one stderr line's start after "velkor: ", a part of it): exit 2
    (["decode", "QAsnColumn", "--lines"], "decode: ", "--lines needs a list type"),
    ([], "", "a command is required"), (["--bogus"], "", 'unexpected argument "--bogus"'),
    (["--module", "/nonexistent/module.so", "types"], "", "cannot load module /nonexistent/module.so"),
    (["dumpp"], "", 'unknown command "dumpp" (did you mean "dump"?)'),
    (["decode"], "decode: ", "missing TYPE"),
    (["decode", "QAsnPortIdx"], "decode: ", 'TYPE: unknown record type "QAsnPortIdx" (did you mean "QAsnPortIndex"?)'),
    (["types", "other::QAsnNVSList"], "types: ", "unknown record type"),
    (["decode", "QAsnPortIndex", "--bogus"], "decode: ", 'unexpected argument "--bogus"'),
    (["decode", "QAsnPortIndex", "--hex", "--base64"], "decode: ", "cannot be given together"),
    (["decode", "QAsnPortIndex", "--keep-going"], "decode: ", "--keep-going requires --all"),
    (["decode", "QAsnPortIndex", "-o"], "decode: ", "--output: needs a value"),
    (["decode", "QAsnPortIndex", "--json=maybe"], "decode: ", '--json: "maybe" is neither true nor false'),
    (["convert", "fiber-to-cabel"], "convert: ", 'did you mean "fiber-to-cable"?'),
    (["convert", "mask-to-template", "abc"], "convert mask-to-template: ", 'MASK: "abc" is not a number'),
    (["convert", "mask-to-template", "--", "-1"], "convert mask-to-template: ",
     'MASK: "-1" is out of range (0 to 18446744073709551615)'),
    (["convert", "single-return", str(2**64)], "convert single-return: ", 'CODE: "18446744073709551616" is out of'),
    (["convert", "virtual-port", str(2**31)], "convert virtual-port: ", "out of range (-2147483648 to 2147483647)"),
    (["convert", "ignore-codes"], "convert ignore-codes: ", '--code is required when the input has no "result"'),
    (["convert", "ignore-codes", "--ignore", "1,2,3,4"], "convert ignore-codes: ", "--ignore: at most 3 values"),
    (["convert", "ignore-codes", "--code", "1", "--code", "2"], "convert ignore-codes: ", "given more than once"),
    (["convert", "port-states-to-map", "--mask", "70000"], "convert port-states-to-map: ",
     '--mask: "70000" is out of range (0 to 65535)')]


class Velkor(unittest.TestCase):
    def test_every_type_from_its_template(self):
        load = ["--module", PROBE] if PROBE else []  # with the test module's types, loaded with --module
        types = [t["name"] for t in json.loads(ok(load + ["types", "--json"]))]
        if PROBE:
            self.assertLessEqual({"CodecProbe", "QProbeLabels", "QProbePart", "QProbePartList", "QProbeRecord",
                                  "QKindsRecord", "QKindName", "QKindColour", "QKindUsage", "QKindHuge", "QKindShades"},
                                 set(types))
        for name in types:  # the skeleton encodes; its bytes go to JSON and back, and to value notation
            with self.subTest(type=name):
                hex_text = ok(load + ["encode", name, "--hex", "--readable"], ok(load + ["template", name]))
                decoded = ok(load + ["decode", name, "--hex", "--json"], hex_text)
                self.assertEqual(ok(load + ["encode", name, "--hex", "--readable"], decoded), hex_text)
                ok(load + ["decode", name, "--hex"], hex_text)
        long_form = "3089000000000000000003040141"  # nine length octets, eight of them leading zeros
        self.assertIn(b"(SEQUENCE), length 3\n", ok(["dump", "--hex"], long_form))
        self.assertEqual(ok(["dump", "--hex"], "0450" + "61" * 80 + "0241" + "ff" * 65),  # long content is cut
                         b'     0   2  [UNIVERSAL 4] primitive (OCTET STRING), length 80: "' + b"a" * 64 + b'"...\n'
                         b"    82   2  [UNIVERSAL 2] primitive (INTEGER), length 65: '" + b"FF" * 64 + b"'H...\n")

    def test_conversions_and_their_compact_json(self):
        Path(OBJECTS).write_text(json.dumps({"1": ret(0, "x"), "2": ret(0, "y")}))
        for args, stdin, expected in conversions():
            with self.subTest(args=args):
                out = ok(["convert"] + args, stdin_of(stdin))
                if isinstance(expected, bytes):
                    self.assertEqual(out, expected)
                elif isinstance(expected, Ber):
                    decoded = json.loads(ok(["decode", expected.type, "--json"], out))
                    self.assertTrue(matches(decoded, expected.value), decoded)
                else:  # JSON, also on one line (runs apart: a model may hold the time)
                    compact = ok(["convert", args[0], "--compact"] + args[1:], stdin_of(stdin))
                    self.assertEqual(compact.count(b"\n"), 1)
                    for written in (out, compact):
                        self.assertTrue(matches(json.loads(written), expected), written.decode())

    def test_failures_give_one_line_and_the_exit_code(self):
        cases = [(1,) + case for case in BAD_INPUT] + [(2, args, "{}", start, part) for args, start, part in USAGE_MISTAKES]
        for exit_code, args, stdin, start, part in cases:
            with self.subTest(args=args, stdin=stdin):
                code, _, err = run(args, stdin)
                self.assertEqual((code, len(err.splitlines())), (exit_code, 1), err)
                self.assertTrue(err.startswith("velkor: " + start), err)
                self.assertIn(part, err)
                for wording in ("Could not convert", "not expected", "subcommand", "basic_filebuf", "Value ",
                                "not in range", "At Most", "required but"):
                    self.assertNotIn(wording, err)  # the parser's and the library's own wording

    def test_output_files(self):
        column, column_ber = '{"strCondition": "c"}', bytes.fromhex("3003040163")
        with tempfile.TemporaryDirectory() as work:
            target, link, fifo, readonly = (os.path.join(work, n) for n in ("target.ber", "link.ber", "fifo", "ro.ber"))
            self.assertEqual((run(["encode", "QAsnColumn", "-o", target], "{")[0], os.listdir(work)), (1, []))
            Path(target).write_bytes(b"old")
            os.chmod(target, 0o600)
            code, out, _ = run(["dump", "--hex", "-o", target], "30 05 02")  # a failure keeps the old file
            self.assertEqual((code, out, os.listdir(work), Path(target).read_bytes()), (1, b"", ["target.ber"], b"old"))
            os.symlink("target.ber", link)
            ok(["encode", "QAsnColumn", "-o", link], column)  # through the link, keeping it and the mode
            self.assertEqual((os.path.islink(link), Path(target).read_bytes(), os.stat(target).st_mode & 0o777),
                             (True, column_ber, 0o600))
            Path(readonly).write_bytes(b"old")  # no write permission: refused as a shell would (root too)
            os.chmod(readonly, 0o444)
            code, _, err = run(["encode", "QAsnColumn", "-o", readonly], column)
            self.assertEqual((code, err, Path(readonly).read_bytes()),
                             (1, "velkor: encode: cannot write %s: Permission denied\n" % readonly, b"old"))
            os.mkfifo(fifo)
            reader = subprocess.Popen(["cat", fifo], stdout=subprocess.PIPE)
            ok(["encode", "QAsnColumn", "--hex", "-o", fifo], column)
            self.assertEqual((reader.communicate(timeout=60)[0], stat.S_ISFIFO(os.stat(fifo).st_mode)),
                             (b"3003040163\n", True))
            self.assertEqual(sorted(os.listdir(work)), ["fifo", "link.ber", "ro.ber", "target.ber"])  # no temporary
            self.assertEqual(run(["encode", "QAsnColumn", "-o", os.path.join(work, "no", "x")], column)[0], 1)
            # A list's elements wait in a temporary file in TMPDIR, gone at the end.
            list_json, spill = '[{"name": "a", "value": "b"}]', os.path.join(work, "spill")
            os.mkdir(spill)
            self.assertEqual(run(["encode", "QAsnNVSList", "--hex"], list_json, dict(os.environ, TMPDIR=spill))[:2]
                             + (os.listdir(spill),), (0, b"30083006040161040162\n", []))
            missing = os.path.join(work, "missing")
            self.assertEqual(run(["encode", "QAsnNVSList", "-o", target], list_json, dict(os.environ, TMPDIR=missing)),
                             (1, b"", "velkor: encode: cannot make a temporary file in %s: No such file or directory\n"
                              % missing))
            self.assertEqual(Path(target).read_bytes(), column_ber)
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

    def test_a_million_element_list_streams_in_64_mib(self):
        ber, jer, back = (os.path.join(WORK, "million" + suffix) for suffix in (".ber", ".jer", "_back.ber"))
        Path(ber).write_bytes(ber_tlv(0x30, b"".join(ber_tlv(0x30, ber_tlv(4, b"attr%07d" % i) + ber_tlv(
            4, b"value-%010d" % i)) for i in range(1000000))))
        for args in (["decode", "QAsnNVSList", "--jer", ber, "-o", jer],
                     ["encode", "QAsnNVSList", "--jer", jer, "-o", back]):
            self.assertEqual(run_capped(64 * 1024, args), (0, 0, b""), args)
        self.assertEqual(Path(back).read_bytes(), Path(ber).read_bytes())
        start = b'[\n  {\n    "name": "6174747230303030303030",\n    "value": "76616c75652d30303030303030303030"\n'
        self.assertEqual(Path(jer).read_bytes()[:len(start)], start)
        # One refused element, the very last: nothing is written.
        Path(jer).write_bytes(Path(jer).read_bytes()[:-3] + b',\n  {"name": "0"}\n]\n')
        code, _, err = run_capped(64 * 1024, ["encode", "QAsnNVSList", "--jer", jer, "-o", back + ".new"])
        self.assertEqual(code, 1)
        self.assertIn(b"QAsnNVSList[1000000].name: odd number of hex digits", err)
        self.assertFalse(os.path.exists(back + ".new"))
        self.assertEqual(run(["encode", "QAsnNVSList", "--jer", jer])[:2], (1, b""))

    def test_big_capture_streams_in_bounded_memory(self):
        capture = big_capture()
        for args in (["decode", "QAsnColumn", "--all", capture], ["decode", "QAsnColumn", "--all", "--json", capture]):
            with self.subTest(args=args):
                code, lines, err = run_capped((os.path.getsize(capture) >> 10) + 64 * 1024, args)  # input + 64 MiB
                self.assertEqual((code, err, lines > 1), (0, b"", True))

    def test_dump_streams_in_64_mib(self):
        element = ber_tlv(0x30, ber_tlv(4, b"attribute-name") + ber_tlv(4, b"a value of twenty-five ."))
        count = 100 * 1024 * 1024 // len(element)
        big_list = os.path.join(WORK, "big_list.ber")
        with open(big_list, "wb") as out:
            out.write(b"\x30\x84" + (count * len(element)).to_bytes(4, "big"))
            for _ in range(count // 4096):
                out.write(element * 4096)
            out.write(element * (count % 4096))
        capture = big_capture()
        one_record = os.path.join(WORK, "one_record.ber")  # a capture as the content of a single record
        Path(one_record).write_bytes(b"\x30\x84" + os.path.getsize(capture).to_bytes(4, "big") +
                                     Path(capture).read_bytes())
        for args, lines in ((["dump", big_list], 3 * count + 1), (["dump", capture], 2 * 1040),
                            (["dump", one_record], 2 * 1040 + 1)):
            with self.subTest(args=args):
                self.assertEqual(run_capped(64 * 1024, args), (0, lines, b""))  # 64 MiB of address space
        process = subprocess.Popen(capped(64 * 1024) + ["dump", capture], stdout=subprocess.PIPE)
        first = process.stdout.readline()  # as `velkor dump | head -1`
        process.stdout.close()
        self.assertEqual((first, process.wait(timeout=120)),
                         (b"     0   4  [UNIVERSAL 16] constructed (SEQUENCE), length 65004\n", -signal.SIGPIPE))

    def test_every_hex_form_and_base64(self):
        octets = bytes.fromhex(PORT_HEX)
        pairs = ["%02x" % octet for octet in octets]

        def dump(line):  # one line per 16 octets, as the dump tools write them
            return "".join(line(at, octets[at:at + 16]) for at in range(0, len(octets), 16))
        encoded = base64.b64encode(octets).decode()
        forms = [("--hex", text) for text in (
            " ".join(pairs), ":".join(pairs), ", ".join(pairs), " ".join("0x" + p for p in pairs),
            ",".join("0x%x" % octet for octet in octets), PORT_HEX.upper(), "\r\n".join(pairs),
            dump(lambda at, row: "%08x: %s  %s\n" % (at, row.hex(" ", -2), row.decode("latin-1"))),  # xxd
            dump(lambda at, row: "%07o %s\n" % (at, row.hex(" "))) + "%07o\n" % len(octets),  # od -t x1
            dump(lambda at, row: "%08x  %s  |%s|\n" % (at, row.hex(" "), row.decode("latin-1"))))]  # hexdump -C
        forms += [("--base64", text) for text in (encoded, encoded.rstrip("="),
                                                  "-----BEGIN X-----\n%s\n-----END X-----\n" % encoded)]
        for flag, text in forms:
            with self.subTest(text=text):
                self.assertEqual(json.loads(ok(["decode", "QAsnPortIndex", flag, "--json"], text)), PORT)

    def test_json_lines_64_bit_integers_and_keep_going(self):
        records = [{"strFDN": "NE=%d" % n, "strMOC": "NE", "neID": n} for n in range(3)]
        lines = "".join(json.dumps(r, separators=(",", ":")) + "\n" for r in records)
        path = os.path.join(WORK, "ids.ber")
        ok(["encode", "QAsnUniResID", "--all", "-o", path], lines)
        self.assertEqual(ok(["decode", "QAsnUniResID", "--all", "--compact", path]).decode(), lines)
        self.assertEqual(ok(["encode", "QAsnUniResID", "--all"], json.dumps(records)), Path(path).read_bytes())
        self.assertEqual(json.loads(ok(["decode", "QAsnUniResID", "--all", "--json", path])), records)
        broken = Path(path).read_bytes().replace(b"NE=1\x04\x02NE\x02", b"NE=1\x04\x02NE\x05")  # wrong tag in record 2
        code, out, err = run(["decode", "QAsnUniResID", "--all", "--compact", "--keep-going"], broken)
        self.assertEqual((code, [json.loads(line)["neID"] for line in out.splitlines()]), (1, [0, 2]), err)
        self.assertIn("record 2: ", err)
        self.assertIn("1 of 3 records could not be decoded", err)
        self.assertEqual([json.loads(line) for line in ok(["types", "--compact"]).splitlines()],
                         json.loads(ok(["types", "--json"])))
        big = 2**53 + 1  # 64-bit integers are strings: a double (jq) would round this one to 2**53
        record = ok(["encode", "AsnSingleReturn"], json.dumps({"success": True, "retCode": big}))
        written = ok(["decode", "AsnSingleReturn", "--compact"], record)
        self.assertEqual((json.loads(written)["retCode"], ok(["encode", "AsnSingleReturn"], written)),
                         (str(big), record))

    def test_errors_name_the_item_and_its_offset(self):
        cut = bytes.fromhex(PORT_HEX * 2)[:-3]  # a cut capture: every item before the cut is shown
        code, out, err = run(["dump"], cut)
        self.assertEqual((code, out.decode().count("INTEGER"), err.count("\n")), (1, 7, 1), err)
        self.assertIn("input ends 3 octets short of the value at offset %d" % len(cut), err)
        # (decode arguments, input, the message: path, what, offset of the item at fault as dump shows it): the
        # tool's own paths (a list streamed, records of a capture, a value with octets after it)
        for args, hex_text, message, offset in [
                (["QAsnTinyIntList"], "300402010502", "QAsnTinyIntList[1]: element runs past the end of its list "
                 "(content length 4)", 5),
                (["QAsnTinyIntList"], "30030201", "QAsnTinyIntList[0]: input ends 1 octet short of the value", 4),
                (["QAsnNVSList"], "3100", "QAsnNVSList: wrong tag [UNIVERSAL 17] constructed (SET), "
                 "expected [UNIVERSAL 16] constructed (SEQUENCE)", 0),
                (["QAsnPortIndex"], "300c02010102010202010302010400", "QAsnPortIndex: 1 octet left over after the value", 14),
                (["QAsnPortIndex", "--all"], PORT_HEX + "300c0201010201020201030202",
                 "record 2: QAsnPortIndex.level4ID: length 2 runs past the end of the record (1 octet left in it)", 25),
                (["QAsnPortIndex", "--all"], PORT_HEX * 2 + "300d02010102010202010302020004",
                 "record 3: QAsnPortIndex.level4ID: INTEGER content is not minimal", 39)]:
            with self.subTest(hex=hex_text):
                code, _, err = run(["decode"] + args + ["--hex"], hex_text)
                self.assertEqual((code, err), (1, "velkor: decode: %s at offset %d\n" % (message, offset)))

    def test_man_page_and_completion(self):
        prefix = os.path.dirname(os.path.dirname(VELKOR))
        man = Path(prefix, "share", "man", "man1", "velkor.1").read_text()
        for text in ('.SS "velkor decode', '.SS "velkor convert fiber\\-to\\-cable', "\\-\\-keep\\-going"):
            self.assertIn(text, man)  # commands, subcommands and their options
        completion = os.path.join(prefix, "share", "bash-completion", "completions", "velkor")
        for words, expected in [("velkor de", "decode demo"), ("velkor decode QAsnPortI", "QAsnPortIndex")]:
            script = 'source %s; COMP_WORDS=(%s); COMP_CWORD=%d; _velkor; echo "${COMPREPLY[*]}"' % (
                completion, words, len(words.split()) - 1)
            result = subprocess.run(["bash", "-c", script], capture_output=True, text=True,
                                    env=dict(os.environ, PATH=os.path.dirname(VELKOR) + ":" + os.environ["PATH"]))
            self.assertEqual(result.stdout.strip(), expected, result.stderr)

    def test_demo_types_and_trace(self):
        self.assertIn("[Convert2FiberCable]FixInvalidFiberParam", ok(["demo"]).decode())
        self.assertEqual(ok(["types", "QAsnErrInfoReturn"]).decode(),  # in ASN.1 terms; a member's type is a name
                         "QAsnErrInfoReturn ::= SEQUENCE {  -- qcommon\n  retCode      INTEGER,\n"
                         "  errInfoList  [0] IMPLICIT QAsnErrInfoList OPTIONAL\n}\n")
        self.assertIn("QAsnErrInfoList ::= SEQUENCE OF QAsnErrInfo", ok(["types", "QAsnErrInfoList"]).decode())
        repaired = stdin_of(Hex("QAsnFiberInfo", fiber("-1")))  # repaired, with a trace line
        for args, env in [(["--trace"], None), ([], dict(os.environ, TN_TRACE="stderr"))]:
            code, out, err = run(["convert", "fiber-to-cable", "--hex"] + args, repaired, env)
            self.assertEqual((code, json.loads(out)["doubleValue"]), (0, 1.0))
            self.assertIn("[Convert2FiberCable]FixInvalidFiberParam", err)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    shutil.rmtree(sys.argv[2], ignore_errors=True)
    subprocess.run([sys.argv[3] if len(sys.argv) > 3 else "cmake", "--install", sys.argv[1], "--prefix", sys.argv[2]],
                   check=True, stdout=subprocess.DEVNULL)
    VELKOR = os.path.join(sys.argv[2], "bin", "velkor")
    PROBE = sys.argv[4] if len(sys.argv) > 4 else None
    sys.exit(not unittest.main(argv=[sys.argv[0], "-v"], exit=False).result.wasSuccessful())

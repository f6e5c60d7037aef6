#!/usr/bin/env python3
"""End-to-end tests of the velkor tool, run on the INSTALLED binary (the build
installed into a scratch prefix with cmake --install), as a user runs it.

usage: velkor_e2e.py BUILD_DIR PREFIX [CMAKE [MODULE_LIBRARY]]

MODULE_LIBRARY: the test interface module (tests/qprobe), loaded with --module.
"""

import atexit
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


def golden(name):
    """The rows of tests/tool/<name>, '#' lines and empty ones left out."""
    lines = Path(__file__).with_name(name).read_text().splitlines()
    return [line for line in lines if line.strip() and not line.startswith("#")]


def resolved(value):
    """A value of conversions.golden with each {"template": TYPE, ...} made the skeleton of TYPE with those members."""
    if isinstance(value, list):
        return [resolved(v) for v in value]
    if isinstance(value, dict):
        value = {k: resolved(v) for k, v in value.items()}
        return record(value.pop("template"), **value) if "template" in value else value
    return value


def stdin_of(cell):
    if isinstance(cell, dict) and "hex" in cell:
        return ok(["encode", cell["hex"], "--hex", "--readable"], json.dumps(resolved(cell["value"])))
    return json.dumps(cell["json"]) if isinstance(cell, dict) else cell


def matches(actual, expected):
    """`actual` is `expected`; an expected object with "...": true may have fewer members."""
    if isinstance(expected, dict):
        keys = set(expected) - {"..."}
        if not (keys <= set(actual) if expected.get("...") else keys == set(actual)):
            return False
        return all(matches(actual[k], expected[k]) for k in keys)
    if isinstance(expected, list):
        return len(actual) == len(expected) and all(map(matches, actual, expected))
    return actual == expected and isinstance(actual, bool) == isinstance(expected, bool)


PORT = {"level1ID": 1, "level2ID": 2, "level3ID": 3, "level4ID": 4}
PORT_HEX = "300c020101020102020103020104"  # PORT as QAsnPortIndex


def record(type_name, **members):
    """A record with every member: the skeleton `velkor template` prints, with `members` set."""
    return dict(json.loads(ok(["template", type_name])), **members)


def fiber(double_value="2.5"):
    return record("QAsnFiberInfo", doubleValue=double_value, fiberText5="F-5", aEndPort=dict(PORT, level1ID=1001),
                  attrList=[{"name": "Reserve", "value": "7"}])


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
        ret = {"strObjName": "", "ulRetCode": "0"}
        Path(OBJECTS).write_text(json.dumps({"1": dict(ret, strObjName="x"), "2": dict(ret, strObjName="y")}))
        for row in map(json.loads, golden("conversions.golden")):
            args, stdin, expected = [a.replace("$OBJECTS", OBJECTS) for a in row["args"]], row["stdin"], row["expect"]
            with self.subTest(args=args):
                out = ok(["convert"] + args, stdin_of(stdin))
                if "text" in expected:
                    self.assertEqual(out.decode(), expected["text"])
                elif "ber" in expected:
                    decoded = json.loads(ok(["decode", expected["ber"], "--json"], out))
                    self.assertTrue(matches(decoded, expected["value"]), decoded)
                else:  # JSON, also on one line (runs apart: a model may hold the time)
                    compact = ok(["convert", args[0], "--compact"] + args[1:], stdin_of(stdin))
                    self.assertEqual(compact.count(b"\n"), 1)
                    for written in (out, compact):
                        self.assertTrue(matches(json.loads(written), expected), written.decode())

    def test_constraint_violations_refused_or_reported(self):
        if not PROBE:
            self.skipTest("the test module was not given")
        load, limits = ["--module", PROBE], "30 10 02 03 01 11 70 02 01 fa 0c 02 61 62 04 02 78 79"
        code, _, err = run(load + ["decode", "Limits", "--hex"], limits)
        self.assertEqual((code, err), (1, "velkor: decode: Limits.port: value 70000 is outside 0..65535 at offset 2\n"))
        code, out, err = run(load + ["decode", "Limits", "--hex", "--compact", "--accept-constraint-violations"], limits)
        self.assertEqual((code, json.loads(out)["port"], err.splitlines()), (0, 70000, [
            "velkor: decode: warning: Limits.port: value 70000 is outside 0..65535",
            "velkor: decode: warning: Limits.level: value -6 is outside -5..MAX"]))

    def test_failures_give_one_line_and_the_exit_code(self):
        for row in golden("failures.golden"):
            exit_code, args, stdin, line = row.split(" | ", 3)
            stdin = b"" if stdin == "-" else stdin.encode().decode("unicode_escape").encode("latin-1")
            with self.subTest(args=args, stdin=stdin):
                code, _, err = run(json.loads(args), stdin)
                self.assertEqual((code, len(err.splitlines())), (int(exit_code), 1), err)
                start, _, part = line.partition("... ")
                if part:
                    self.assertTrue(err.startswith("velkor: " + start), err)
                    self.assertIn(part, err)
                else:
                    self.assertEqual(err, "velkor: %s\n" % line)
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
        for row in golden("text_forms.golden"):
            flag, text = row.split(" | ", 1)
            with self.subTest(text=text):
                text = text.encode().decode("unicode_escape")
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

    def test_a_cut_capture_dumps_up_to_the_cut(self):
        cut = bytes.fromhex(PORT_HEX * 2)[:-3]  # every item before the cut is shown
        code, out, err = run(["dump"], cut)
        self.assertEqual((code, out.decode().count("INTEGER"), err.count("\n")), (1, 7, 1), err)
        self.assertIn("input ends 3 octets short of the value at offset %d" % len(cut), err)
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
        repaired = stdin_of({"hex": "QAsnFiberInfo", "value": fiber("-1")})  # repaired, with a trace line
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

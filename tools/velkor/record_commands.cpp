#include "tools/velkor/record_commands.h"

#include <iostream>
#include <memory>
#include <optional>

#include "tn_platform/asn/asn_ber_dump.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/asn/csm_exception.h"
#include "tn_platform/asn/asn_ber_list_reader.h"
#include "tn_platform/asn/asn_json_either_form.h"
#include "tn_platform/asn/asn_json_list_reader.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/asn_value_notation.h"
#include "tn_platform/asn/indent_table.h"
#include "tools/velkor/byte_streams.h"
#include "tools/velkor/decode_errors.h"
#include "tools/velkor/io.h"
#include "tools/velkor/json.h"
#include "tools/velkor/record_types.h"

namespace velkor {

namespace {

// The octets the value at the front of `bytes` takes by its header, when its
// length is definite and the input holds it; nothing otherwise.
std::optional<std::size_t> ValueSize(std::string_view bytes) {
  AsnBuf buf(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  unsigned long octets = 0;
  try {
    BDecTag(buf, octets);
    const unsigned long length = BDecLen(buf, octets);
    if (buf.ReadError() || length == kIndefiniteLength) return std::nullopt;
    return buf.Offset() + length;
  } catch (CSM_Exception* exception) {
    delete exception;
    return std::nullopt;
  }
}

// A hint for bytes that fail to decode and were read raw though they look
// like text.
std::string RawInputHint(const InputOutput& io, std::string_view bytes) {
  return io.hex || io.base64 ? std::string() : TextFormHint(bytes.substr(0, 4096));
}

// How a run of values is written.
enum class RunLayout {
  kNotation,      // value notation, one value after another
  kListNotation,  // the elements of one list in value notation, framed as the list
  kArray,         // one indented JSON array
  kOneLineArray,  // one JSON array on one line
  kLines,         // JSON Lines, one value per line
};

// Writes values one by one as they are decoded: the JSON straight from the
// runtime's writer, each value's text written as soon as it is made.
class RunWriter {
 public:
  RunWriter(RunLayout layout, AsnJsonForm form, std::string listName, std::ostream& out)
      : m_layout(layout), m_form(form), m_listName(std::move(listName)), m_out(out) {}

  void Write(const AsnType& value) {
    switch (m_layout) {
      case RunLayout::kNotation:
        Flush();
        PrintValue(m_out, value);
        m_out << '\n';
        break;
      case RunLayout::kListNotation:
        Flush();
        m_out << (m_written == 0 ? "{\n" : ",\n") << IndentText(1);
        AsnWriteValueNotation(m_out, value, 1);
        break;
      case RunLayout::kArray:
        m_text.append(m_written == 0 ? "[\n  " : ",\n  ");
        AsnWriteJson(m_text, value, m_form, AsnJsonLayout::kIndented, 1);
        break;
      case RunLayout::kOneLineArray:
        m_text.push_back(m_written == 0 ? '[' : ',');
        AsnWriteJson(m_text, value, m_form, AsnJsonLayout::kOneLine);
        break;
      case RunLayout::kLines:
        AsnWriteJson(m_text, value, m_form, AsnJsonLayout::kOneLine);
        m_text.push_back('\n');
        break;
    }
    if (m_text.size() >= kFlushSize) Flush();
    ++m_written;
  }

  // Writes out the text gathered so far.
  void Flush() {
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
    m_text.clear();
  }

  void Finish() {
    Flush();
    switch (m_layout) {
      case RunLayout::kListNotation:
        m_out << (m_written == 0 ? "{}\n" : "\n}\n");
        break;
      case RunLayout::kArray:
        m_out << (m_written == 0 ? "[]\n" : "\n]\n");
        break;
      case RunLayout::kOneLineArray:
        m_out << (m_written == 0 ? "[]\n" : "]\n");
        break;
      default:
        break;
    }
  }

 private:
  // JSON text gathers in m_text and goes out in pieces as large as the
  // output's own buffer, which then passes them straight to the file.
  static constexpr std::size_t kFlushSize = 64 * 1024;

  const RunLayout m_layout;
  const AsnJsonForm m_form;
  const std::string m_listName;
  std::ostream& m_out;
  std::string m_text;
  std::size_t m_written = 0;
};

AsnJsonForm FormOf(bool jer) { return jer ? AsnJsonForm::kJer : AsnJsonForm::kReadable; }

// The own tag of a list type read or written one element at a time; none for
// a type that is read whole: a record, a list type with EXPLICIT tags, and,
// when writing, a SET OF, whose DER orders the elements.
std::optional<AsnTag> StreamedListTag(const AsnCatalogueEntry& entry, bool writing) {
  if (entry.createElement == nullptr) return std::nullopt;
  const std::unique_ptr<AsnType> value(entry.create());
  const auto& list = static_cast<const AsnListBase&>(*value);
  const AsnTagChain tags = list.OwnTags();
  if (tags.Wrapped() || (writing && list.SortedInDer())) return std::nullopt;
  return tags.Outer();
}

// Reports values taken outside their constraints, one warning line each;
// `where` names a record of a capture ("record 3: "), `path` replaces the
// type name the paths start with (a list's element: "QList[4]").
void WarnViolations(const std::vector<AsnConstraintViolation>& violations, const std::string& where,
                    std::size_t typeNameLength = 0, const std::string& path = std::string()) {
  for (const AsnConstraintViolation& violation : violations) {
    const std::string at = path.empty() ? violation.path : path + violation.path.substr(typeNameLength);
    std::cerr << "velkor: decode: warning: " << where << at << ": " << violation.message << std::endl;
  }
}

// Decodes a list type one element at a time, writing each as it comes.
void DecodeListStream(const DecodeOptions& options, const AsnCatalogueEntry& entry, AsnTag listTag,
                      std::ostream& out) {
  const bool json = options.json || options.compact || options.jer || options.lines;
  const RunLayout layout = !json           ? RunLayout::kListNotation
                           : options.lines ? RunLayout::kLines
                           : options.compact ? RunLayout::kOneLineArray
                                             : RunLayout::kArray;
  auto head = std::make_shared<std::string>();
  std::string text;  // hex or Base64 input, read whole and decoded first
  AsnByteSource source;
  if (options.io.hex || options.io.base64) {
    text = ReadBytes(options.io.input, options.io.hex, options.io.base64);
    source = AsnBytesSource(text);
  } else {
    source = InputSource(options.io.input, head);
  }
  AsnBerListReader reader(std::move(source), entry.createElement, entry.name, listTag);
  if (options.acceptViolations) reader.AcceptConstraintViolations();
  RunWriter writer(layout, FormOf(options.jer), entry.name, out);
  Progress progress("decode", InputSize(options.io.input));
  try {
    while (const AsnType* element = reader.Next()) {
      if (options.acceptViolations) {
        WarnViolations(AsnFindConstraintViolations(*element), "", std::string(element->typeName()).size(),
                       entry.name + "[" + std::to_string(reader.Count() - 1) + "]");
      }
      writer.Write(*element);
      progress.Update(reader.Count(), reader.Offset());
    }
  } catch (CSM_Exception* exception) {
    const std::string hint = reader.Count() == 0 && text.empty() ? RawInputHint(options.io, *head) : std::string();
    ThrowBadInput(DecodeErrorMessage(exception, 0) + hint);
  }
  writer.Finish();
}

// The runtime's refusal of JSON input as the tool's error.
// An input both forms read to different bytes also names the flags that say
// which form it is in.
[[noreturn]] void ThrowJsonRefusal(CSM_Exception* exception) {
  const bool ambiguous = dynamic_cast<AsnJsonAmbiguity*>(exception) != nullptr;
  const std::string message = DecodeErrorMessage(exception, 0);
  ThrowBadInput(ambiguous ? message + "; give --jer for JER or --readable for the readable form" : message);
}

}  // namespace

void RunTypes(const std::string& only, bool json, bool compact, std::ostream& out) {
  if (compact) {
    for (const Json& type : DescribeTypesJson(only)) out << JsonText(type, JsonLayout::kOneLine);
  } else if (json) {
    out << JsonText(DescribeTypesJson(only));
  } else {
    DescribeTypes(out, only);
  }
}

void RunTemplate(const std::string& type, bool compact, bool jer, std::ostream& out) {
  const std::unique_ptr<AsnType> value = CreateCatalogued(type);
  out << AsnJsonTemplate(*value, FormOf(jer), compact ? AsnJsonLayout::kOneLine : AsnJsonLayout::kIndented) << '\n';
}

void RunDump(const InputOutput& io, std::ostream& out) {
  auto head = std::make_shared<std::string>();
  std::string text;  // hex or Base64 input, read whole and decoded first
  AsnByteSource source;
  if (io.hex || io.base64) {
    text = ReadBytes(io.input, io.hex, io.base64);
    source = AsnBytesSource(text);
    *head = text.substr(0, 4096);
  } else {
    source = InputSource(io.input, head);
  }
  Progress progress("dump", InputSize(io.input));
  std::size_t items = 0;
  try {
    items = AsnDumpBer(std::move(source), out,
                       [&progress](std::size_t values, std::size_t offset) { progress.Update(values, offset); });
  } catch (CSM_Exception* exception) {
    const std::unique_ptr<CSM_Exception> error(exception);
    ThrowBadInput("bytes break: " + error->Message() + RawInputHint(io, *head));
  }
  if (items == 0) ThrowBadInput("empty input");
}

void RunDecode(const DecodeOptions& options, std::ostream& out) {
  const AsnCatalogueEntry& entry = CatalogueEntryOf(options.type);
  if (options.lines && (options.all || entry.createElement == nullptr)) {
    ThrowBadUsage("--lines needs a list type (and no --all): " + options.type + " is " +
                  (options.all ? "decoded with --all" : "a record"));
  }
  if (!options.all) {
    if (const std::optional<AsnTag> listTag = StreamedListTag(entry, false)) {
      return DecodeListStream(options, entry, *listTag, out);
    }
  }
  const std::string bytes = ReadBytes(options.io.input, options.io.hex, options.io.base64);
  const bool json = options.json || options.compact || options.jer;
  const RunLayout layout = !json                            ? RunLayout::kNotation
                           : options.compact || !options.all ? RunLayout::kLines
                                                             : RunLayout::kArray;
  const bool indentedSingle = json && !options.compact && !options.all;
  RunWriter writer(layout, FormOf(options.jer), entry.name, out);
  std::size_t offset = 0;
  std::size_t count = 0;
  std::size_t broken = 0;
  Progress progress("decode", bytes.size());
  do {
    const std::unique_ptr<AsnType> value = CreateCatalogued(options.type);
    const std::string_view rest = std::string_view(bytes).substr(offset);
    ++count;
    std::vector<AsnConstraintViolation> violations;
    std::vector<AsnConstraintViolation>* const accepted = options.acceptViolations ? &violations : nullptr;
    try {
      if (options.all) {
        offset += DecodeFrontBytes(*value, rest, offset, accepted);
      } else {
        DecodeBytes(*value, rest, accepted);
        offset = bytes.size();
      }
    } catch (const ToolError& error) {
      const std::string what = options.all ? "record " + std::to_string(count) + ": " + error.what() : error.what();
      const std::optional<std::size_t> size = ValueSize(rest);
      if (!options.keepGoing || !size) {
        writer.Finish();
        ThrowBadInput(what + (count == 1 ? RawInputHint(options.io, bytes) : std::string()));
      }
      // Reported now, between the records around it; the exit code tells at the end.
      writer.Flush();
      out.flush();
      std::cerr << "velkor: decode: " << what << std::endl;
      ++broken;
      offset += *size;
      continue;
    }
    WarnViolations(violations, options.all ? "record " + std::to_string(count) + ": " : std::string());
    if (indentedSingle) {
      out << AsnToJson(*value, FormOf(options.jer), AsnJsonLayout::kIndented) << '\n';
    } else {
      writer.Write(*value);
    }
    progress.Update(count, offset);
  } while (options.all && offset < bytes.size());
  writer.Finish();
  if (broken > 0) {
    ThrowBadInput(std::to_string(broken) + " of " + std::to_string(count) + " records could not be decoded");
  }
}

void RunEncode(const std::string& type, const InputOutput& io, bool all, std::optional<AsnJsonForm> form,
               std::ostream& out) {
  const AsnCatalogueEntry& entry = CatalogueEntryOf(type);
  const bool hex = BytesAsHex(io.hex, io.output);
  const std::optional<AsnTag> listTag = StreamedListTag(entry, true);
  if (!all && !listTag) {
    const std::unique_ptr<AsnType> prototype(entry.create());
    const std::string text = ReadInput(io.input);
    std::string bytes;
    try {
      if (form) {
        AsnJsonToBerInto(*prototype, text, *form, bytes);
      } else {
        AsnJsonToBerEitherForm(*prototype, text, bytes);
      }
    } catch (CSM_Exception* exception) {
      ThrowJsonRefusal(exception);
    }
    out << FormatBytes(bytes, io.hex, io.output);
    return;
  }
  // Records of a capture (--all) or the elements of a list, one at a time:
  // their bytes wait in a temporary file, so that a refused document writes
  // nothing and a list's length can come first. Without a form the input is
  // read once per form the judging takes, each reading into a spill of its own.
  std::string bytes;
  const auto encode = [&](AsnByteSource source, AsnJsonForm reading, bool refuseAmbiguous, Spill& spill) {
    AsnJsonListReader reader(std::move(source), reading, all ? entry.create : entry.createElement, entry.name);
    if (refuseAmbiguous) reader.RefuseAmbiguousOctets();
    if (!all) reader.ReadInsideList();
    while (reader.NextEncoded(bytes)) {
      spill.Append(bytes);
      bytes.clear();
    }
  };
  std::unique_ptr<Spill> spill;
  try {
    if (form) {
      spill = std::make_unique<Spill>();
      encode(InputSource(io.input, nullptr), *form, false, *spill);
    } else {
      ReplayableInput input(io.input);
      std::unique_ptr<Spill> jer;
      std::unique_ptr<Spill> readable;
      const AsnJsonForm chosen = AsnChooseJsonForm([&](AsnJsonForm reading, bool refuseAmbiguous) {
        std::unique_ptr<Spill>& into = reading == AsnJsonForm::kJer ? jer : readable;
        into = std::make_unique<Spill>();
        bytes.clear();
        encode(input.Source(), reading, refuseAmbiguous, *into);
      });
      spill = std::move(chosen == AsnJsonForm::kJer ? jer : readable);
    }
  } catch (CSM_Exception* exception) {
    ThrowJsonRefusal(exception);
  }
  if (!all) {
    const std::string header = AsnEncodedListHeader(spill->Size(), *listTag);
    out << (hex ? EncodeHex(header) : header);
  }
  spill->CopyTo(out, hex);
  if (hex) out << '\n';
}

}  // namespace velkor

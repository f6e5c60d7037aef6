#include "tools/velkor/record_commands.h"

#include <iostream>
#include <memory>
#include <optional>

#include "tn_platform/asn/ber.h"
#include "tn_platform/asn/csm_exception.h"
#include "tools/velkor/ber_dump.h"
#include "tools/velkor/io.h"
#include "tools/velkor/json.h"
#include "tools/velkor/record_json.h"
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

// Writes decoded records one by one: value notation, a JSON array (written
// element by element) or JSON Lines.
class RecordWriter {
 public:
  RecordWriter(const DecodeOptions& options, std::ostream& out)
      : m_options(options), m_json(options.json || options.compact), m_out(out) {}

  void Write(const AsnType& value) {
    if (!m_json) {
      PrintValue(m_out, value);
      m_out << '\n';
    } else if (m_options.compact) {
      m_out << JsonText(ValueToJson(value), JsonLayout::kOneLine);
    } else if (!m_options.all) {
      m_out << JsonText(ValueToJson(value));
    } else {
      // An element of the array, indented one level further.
      std::string text = JsonText(ValueToJson(value));
      text.pop_back();
      std::string indented;
      indented.reserve(text.size() + text.size() / 8);
      for (const char c : text) {
        indented.push_back(c);
        if (c == '\n') indented += "  ";
      }
      m_out << (m_written == 0 ? "[\n  " : ",\n  ") << indented;
    }
    ++m_written;
  }

  void Finish() {
    if (m_json && m_options.all && !m_options.compact) m_out << (m_written == 0 ? "[]\n" : "\n]\n");
  }

 private:
  const DecodeOptions& m_options;
  const bool m_json;
  std::ostream& m_out;
  std::size_t m_written = 0;
};

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

void RunTemplate(const std::string& type, bool compact, std::ostream& out) {
  const std::unique_ptr<AsnType> value = CreateCatalogued(type);
  out << JsonText(TemplateJson(*value), compact ? JsonLayout::kOneLine : JsonLayout::kIndented);
}

void RunDump(const InputOutput& io, std::ostream& out) {
  const std::string bytes = ReadBytes(io.input, io.hex, io.base64);
  Progress progress("dump", bytes.size());
  std::size_t values = 0;
  const BerWalkResult result = WalkBer(bytes, [&](const BerItem& item) {
    WriteBerItem(out, item);
    if (item.depth == 0) progress.Update(++values, item.offset);
  });
  if (!result.complete) ThrowBadInput("bytes break: " + result.error + RawInputHint(io, bytes));
}

void RunDecode(const DecodeOptions& options, std::ostream& out) {
  const std::string bytes = ReadBytes(options.io.input, options.io.hex, options.io.base64);
  RecordWriter writer(options, out);
  std::size_t offset = 0;
  std::size_t count = 0;
  std::size_t broken = 0;
  Progress progress("decode", bytes.size());
  do {
    const std::unique_ptr<AsnType> value = CreateCatalogued(options.type);
    const std::string_view rest = std::string_view(bytes).substr(offset);
    ++count;
    try {
      if (options.all) {
        offset += DecodeFrontBytes(*value, rest, offset);
      } else {
        DecodeBytes(*value, rest);
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
      out.flush();
      std::cerr << "velkor: decode: " << what << std::endl;
      ++broken;
      offset += *size;
      continue;
    }
    writer.Write(*value);
    progress.Update(count, offset);
  } while (options.all && offset < bytes.size());
  writer.Finish();
  if (broken > 0) {
    ThrowBadInput(std::to_string(broken) + " of " + std::to_string(count) + " records could not be decoded");
  }
}

void RunEncode(const std::string& type, const InputOutput& io, bool all, std::ostream& out) {
  const std::string text = ReadInput(io.input);
  const auto encode = [&](const Json& json, const std::string& path) {
    const std::unique_ptr<AsnType> value = CreateCatalogued(type);
    JsonToValue(json, *value, path);
    return EncodeBytes(*value);
  };
  if (!all) {
    out << FormatBytes(encode(ParseJson(text), type), io.hex, io.output);
    return;
  }
  std::string bytes;
  ForEachJsonRecord(text, [&](const Json& json, std::size_t index) {
    bytes += encode(json, type + "[" + std::to_string(index) + "]");
  });
  out << FormatBytes(bytes, io.hex, io.output);
}

}  // namespace velkor

// CSM_Exception: the error the ASN.1 runtime throws, always by pointer to a
// heap object (`throw new CSM_Exception(...)`); the catcher owns and deletes it
// through a CSM_Exception*, whatever class derived from it was thrown (a
// malformed encoding throws AsnDecodeError, see asn_decode_error.h).
#pragma once
#pragma GCC visibility push(default)

#include <memory>
#include <string>
#include <utility>

// A byte buffer that an exception may carry (the offending input, for example).
class CSM_Buffer {
 public:
  CSM_Buffer() = default;
  CSM_Buffer(const unsigned char* data, std::size_t size) : m_bytes(reinterpret_cast<const char*>(data), size) {}
  const std::string& Bytes() const { return m_bytes; }

 private:
  std::string m_bytes;
};

class CSM_Exception {
 public:
  // errorCode: the runtime's error class (-54: malformed encoding);
  // location: a number that identifies the raising site within its source;
  // context: free text (may be empty); file: the raising source file;
  // message: what is wrong; buffer: optional, ownership passes to the exception.
  CSM_Exception(long errorCode, long location, const char* context, const char* file, const char* message,
                CSM_Buffer* buffer);
  virtual ~CSM_Exception() = default;
  CSM_Exception(const CSM_Exception&) = delete;
  CSM_Exception& operator=(const CSM_Exception&) = delete;

  long ErrorCode() const { return m_errorCode; }
  long Location() const { return m_location; }
  const std::string& Context() const { return m_context; }
  const std::string& File() const { return m_file; }
  const std::string& Message() const { return m_message; }
  const CSM_Buffer* Buffer() const { return m_buffer.get(); }

  // The message, for printing.
  const char* what() const noexcept { return m_message.c_str(); }

 protected:
  // For a derived class whose message changes as it travels (a decoding
  // error gains its path while it unwinds).
  void SetMessage(std::string message) { m_message = std::move(message); }

 private:
  long m_errorCode;
  long m_location;
  std::string m_context;
  std::string m_file;
  std::string m_message;
  std::unique_ptr<CSM_Buffer> m_buffer;
};

// Error code of every decoding failure the runtime reports.
constexpr long kAsnDecodeError = -54;
#pragma GCC visibility pop

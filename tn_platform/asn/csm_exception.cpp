#include "tn_platform/asn/csm_exception.h"

CSM_Exception::CSM_Exception(long errorCode, long location, const char* context, const char* file, const char* message,
                             CSM_Buffer* buffer)
    : m_errorCode(errorCode),
      m_location(location),
      m_context(context ? context : ""),
      m_file(file ? file : ""),
      m_message(message ? message : ""),
      m_buffer(buffer) {}

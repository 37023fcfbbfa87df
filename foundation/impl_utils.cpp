// SPDX-License-Identifier: Apache-2.0
#include "foundation/impl_utils.h"

#include <cxxabi.h>

#include <mutex>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TranscodingException.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "foundation/document_memory.h"
#include "foundation/failure.h"
#include "foundation/utf.h"

namespace quen {

static_assert(sizeof(XMLCh) == sizeof(char16_t) && std::is_same_v<XMLCh, char16_t>,
              "text crosses to the engine without a copy");

namespace {

using internal::Guarded;

// The clauses of the start-up and of the transcoding: an engine failure keeps its code and message;
// anything else is code 0 with a context of its own.
template <class EngineException>
[[noreturn]] void RethrowEngine(const char16_t* inContext, const char16_t* inOtherContext) {
  try {
    throw;
  } catch (abi::__forced_unwind&) {
    throw;
  } catch (const EngineException& failure) {
    ThrowXMLException2w(inContext, static_cast<std::uint32_t>(failure.getCode()),
                        internal::OrEmpty(failure.getMessage()));
  } catch (const CQuenXMLException2w&) {
    throw;
  } catch (...) {
    ThrowXMLException2w(inOtherContext, 0, u"Unknown Error");
  }
}

struct StartClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext) {
    RethrowEngine<xercesc::XMLException>(inContext, u"CQuenXMLDataImpl::CQuenXMLImplUtils2w()");
  }
};
struct ToUtf8Clauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext) {
    RethrowEngine<xercesc::TranscodingException>(inContext, u"CQuenXMLDataImpl::TransCodeToUTF8()");
  }
};
struct FromUtf8Clauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext) {
    RethrowEngine<xercesc::TranscodingException>(inContext,
                                                 u"CQuenXMLDataImpl::TranscodeFromUTF8()");
  }
};

// Xerces-C fills a table of allowed children when the first child is appended, without a lock.
void WarmUpDom() {
  xercesc::DOMImplementation* const dom =
      xercesc::DOMImplementationRegistry::getDOMImplementation(u"Core");
  xercesc::DOMDocument* const document = dom->createDocument();
  document->appendChild(document->createElement(u"a"));
  document->release();
}

// Guards the start of Xerces-C, whose own count of starts is a plain number: in a hundred of a
// hundred runs it crashed when eight threads started it at once.
std::once_flag xercesStarted;

}  // namespace

// Before every other object of the library with static storage, and so before any of its users.
__attribute__((init_priority(101))) CQuenXMLImplUtils2w gImplUtils;

CQuenXMLImplUtils2w::CQuenXMLImplUtils2w() {
  Guarded<StartClauses>(u"CQuenXMLImplUtils2w::CQuenXMLImplUtils2w()", [] {
    std::call_once(xercesStarted, [] {
      xercesc::XMLPlatformUtils::Initialize(internal::kFirstBlock, internal::kHugePage,
                                            internal::kLargestPart,
                                            xercesc::XMLUni::fgXercescDefaultLocale);
      WarmUpDom();
    });
  });
}

CQuenXMLImplUtils2w::~CQuenXMLImplUtils2w() = default;

string CQuenXMLImplUtils2w::TransCodeToUTF8(const wstring& inText) const {
  string bytes;
  TransCodeToUTF8(inText, bytes);
  return bytes;
}

void CQuenXMLImplUtils2w::TransCodeToUTF8(const wstring& inText, string& outBytes) const {
  constexpr const char16_t* kContext = u"CQuenXMLImplUtils2w::TransCodeToUTF8()";
  Guarded<ToUtf8Clauses>(kContext, [&] {
    const std::size_t malformed = internal::AssignUtf8(internal::UpToZero(inText), outBytes);
    if (malformed != internal::kWellFormed) {
      ThrowXMLException2w(kContext, xercesc::XMLExcepts::Trans_Unrepresentable,
                          u"UTF-8 cannot represent the lone surrogate at code unit " +
                              internal::Decimal(static_cast<std::int64_t>(malformed)));
    }
  });
}

wstring CQuenXMLImplUtils2w::TranscodeFromUTF8(const string& inBytes) const {
  wstring text;
  TranscodeFromUTF8(inBytes, text);
  return text;
}

void CQuenXMLImplUtils2w::TranscodeFromUTF8(const string& inBytes, wstring& outText) const {
  constexpr const char16_t* kContext = u"CQuenXMLImplUtils2w::TranscodeFromUTF8()";
  Guarded<FromUtf8Clauses>(kContext, [&] {
    outText.clear();
    const std::size_t malformed = internal::AppendUtf16(inBytes, outText);
    if (malformed != internal::kWellFormed) {
      ThrowXMLException2w(kContext, xercesc::XMLExcepts::Trans_BadSrcSeq,
                          u"The bytes are not well-formed UTF-8 at byte " +
                              internal::Decimal(static_cast<std::int64_t>(malformed)));
    }
    // Only a zero byte becomes a zero unit, and among bytes it is found faster.
    if (inBytes.find('\0') != string::npos) outText.resize(outText.find(u'\0'));
  });
}

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
//
// The one utility object of the library. Its constructor starts Xerces-C when the library is
// loaded; its members carry the transcoding, the text of numbers, the XML writer and the parser of
// subsets.
#ifndef QUENXML2_FOUNDATION_IMPL_UTILS_H_
#define QUENXML2_FOUNDATION_IMPL_UTILS_H_

#include <cstdint>
#include <iosfwd>

#include <quenxml2/types.h>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace quen {

class CQuenXMLImplUtils2w {
 public:
  // Starts Xerces-C and warms up what the engine fills on first use without a lock. A failure
  // leaves the load of the library as a CQuenXMLException2w.
  CQuenXMLImplUtils2w();
  // Terminates no engine: objects of the application may still be alive.
  virtual ~CQuenXMLImplUtils2w();
  CQuenXMLImplUtils2w(const CQuenXMLImplUtils2w&) = delete;
  CQuenXMLImplUtils2w& operator=(const CQuenXMLImplUtils2w&) = delete;

  // UTF-16 to UTF-8. The text ends at its first zero unit. A surrogate without its partner raises
  // the code XMLExcepts::Trans_Unrepresentable. These two keep no state: any thread may call them.
  string TransCodeToUTF8(const wstring& inText) const;
  // In the place of what `outBytes` holds, which stays after a failure.
  void TransCodeToUTF8(const wstring& inText, string& outBytes) const;
  // UTF-8 to UTF-16. All bytes are checked; the result ends at the first zero unit. A malformed
  // sequence raises the code XMLExcepts::Trans_BadSrcSeq.
  wstring TranscodeFromUTF8(const string& inBytes) const;
  // In the place of what `outText` holds, which is lost after a failure.
  void TranscodeFromUTF8(const string& inBytes, wstring& outText) const;

  // Fixed notation with exactly `inPrecision` decimals and no blanks, deaf to the locale. A text
  // that is longer than `inWidth` loses one leading zero. Infinity and NaN become the texts "inf",
  // "-inf", "nan", which do not read back: they are no numbers of this library.
  static void NumberToText(std::int32_t inWidth, std::int32_t inPrecision, const double& inValue,
                           wstring& outText);
  // Reads the number at the head of `inText`: leading XML white space is skipped, and what follows
  // the number is ignored. The number is an optional sign, digits with an optional point, and an
  // optional exponent. It is rounded to `inPrecision` decimals. Returns 0, leaving `outValue`
  // alone, where there is no number, where it overflows a double, and where its text is longer than
  // `inWidth`.
  static std::int32_t TextToNumber(std::int32_t inWidth, std::int32_t inPrecision,
                                   const wstring& inText, double& outValue);

  // Writes the zero-terminated `inText` with &quot; &amp; &lt; &gt; for the four characters.
  static void EscapeText(std::basic_ostream<char16_t>& outStream, const char16_t* inText);
  // Writes `inNode` and all below it as XML text, without a declaration; formatted with line feeds
  // and two blanks a level if `inFormatted` is 1. `ioDepth` is the level to begin with and comes
  // back unchanged. The walk does not recurse. A node that cannot stand in a text (attribute,
  // entity, document type, document fragment) raises 1010; what was written before stays in the
  // stream.
  static void BuildXMLString(std::basic_ostream<char16_t>& outStream,
                             const xercesc::DOMNode* inNode, std::uint32_t& ioDepth,
                             std::int32_t inFormatted);
  // Parses `inText` into a document of its own, which the caller releases; a null `outNode` only
  // checks the text. A failure raises 1009 and stores nothing.
  static void BuildDOMNodeFromXMLString(const wstring& inText, xercesc::DOMNode** outNode);
};

extern CQuenXMLImplUtils2w gImplUtils;

}  // namespace quen

#endif  // QUENXML2_FOUNDATION_IMPL_UTILS_H_

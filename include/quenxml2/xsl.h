// SPDX-License-Identifier: Apache-2.0
//
// XSL transformation: XSLT 1.0 over trees, documents, nodes, files and byte streams.
//
//   quen::CQuenXSL2w xsl;
//   std::uintptr_t toHtml = 0;
//   xsl.RegisterCompiledStyleSheet(quen::wstring(u"/usr/share/orders/html.xsl"), toHtml);
//   xsl.SetStyleSheetParam(u"title", u"'Orders of the day'");  // an expression: text in quotes
//   xsl.Transform(quen::wstring(u"orders.xml"), u"orders.html", toHtml);
//
// Forms. A source, a style sheet and a result of one kind each; docs/xsl.md lists them. The style
// sheet is given, or it is the handle of one that was compiled before, or the source names it in an
// xml-stylesheet instruction. Paths are those of local files, or "file:" URLs; no other URL is
// opened. Streams are of bytes, are read from where they stand to their end, and stay the
// caller's; an encoding is known by byte order mark or declaration, else it is UTF-8. Results in
// files and streams have the encoding of xsl:output, UTF-8 by default. A result document is not
// emptied first: a second root element fails. A result tree is replaced, and only by a transform
// that succeeds.
//
// What is changed beside the result: where documents or data trees are the source, adjacent text
// nodes of the source merge, and those of a style sheet that is given as a document. A node that is
// a source is copied first, with all below it, and stays as it is.
//
// Access. A style sheet may import, include and refer to other local files, and read them with
// document(); what it names is relative to its own place, and to the working directory where it has
// none. A source may name nothing: external entities and an external DTD subset fail the transform.
// Nothing opens a network connection, and the environment of the process can not be read.
//
// Compiled style sheets. A handle is valid from its registration to its unregistration, in the
// object that registered it, in copies made from that object in between, and nowhere else. A copy
// takes over the parameters and the handles; what happens to them in one of the two objects does
// not show in the other. A compiled style sheet lives as long as one object knows it. Assignment
// makes two objects one: they share parameters and handles from then on.
//
// Failures are CQuenXMLException2w, from CQuenXSL2 CQuenXMLException2:
//   1010  what the engine reports, with its text: a source or style sheet that can not be read or
//         parsed, a style sheet that is wrong, xsl:message that terminates, a failure while it
//         runs; also an undefined variable, a document() that can not be read, and templates
//         without end
//   4     "Can not find the style sheet for the input handle"; "Error compiling style sheet" from a
//         registration
//   the DOM's code, "DOM Error: ...": what the DOM refuses outside of the engine
//   1009 "Unknown Error": anything else, memory for instance
// A result file, stream or document holds what was written by then. Messages (xsl:message) and
// warnings are dropped; nothing goes to the standard streams.
//
// One thread at a time may use an object, and the trees it works on. Different objects need no
// lock, also where they share compiled style sheets, and also for the first ones of a process.
#ifndef QUENXML2_XSL_H_
#define QUENXML2_XSL_H_

#include <cstdint>
#include <iosfwd>
#include <memory>

#include <quenxml2/exceptions.h>
#include <quenxml2/export.h>
#include <quenxml2/types.h>

namespace quen {

class CQuenXMLData2w;
class CQuenXMLDocument2w;
class CQuenXMLNode2w;
class CQuenXMLData2;
class CQuenXMLDocument2;
class CQuenXMLNode2;
class CQuenXSLImpl2w;

// Transforms, with parameters and compiled style sheets, in UTF-16.
class QUENXML2_API CQuenXSL2w {
 public:
  // The first object of the process starts the engine. Throws 1010 or 1009 if that fails; the next
  // one tries again.
  CQuenXSL2w();
  CQuenXSL2w(const CQuenXSL2w& inOther);
  // Both share one state afterwards, as the top says.
  CQuenXSL2w& operator=(const CQuenXSL2w& inOther);
  virtual ~CQuenXSL2w();

  // Transforms the source by the style sheet into the result. The top of this file tells of forms,
  // of what else changes, and of failures.
  void Transform(CQuenXMLData2w& inSource, CQuenXMLData2w& inStyleSheet, CQuenXMLData2w& outResult);
  void Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& inStyleSheet,
                 CQuenXMLDocument2w& outResult);
  void Transform(std::basic_istream<char>& inSource, std::basic_istream<char>& inStyleSheet,
                 std::basic_ostream<char>& outResult);
  // The source names the style sheet, a local file.
  void Transform(std::basic_istream<char>& inSource, std::basic_ostream<char>& outResult);
  void Transform(const wstring& inSource, const wstring& inStyleSheet, const wstring& inResult);
  void Transform(const wstring& inSource, const wstring& inResult);
  // Throws 8 for a null handle.
  void Transform(const CQuenXMLNode2w& inSource, const CQuenXMLDocument2w& inStyleSheet,
                 std::basic_ostream<char>& outResult);
  void Transform(const CQuenXMLNode2w& inSource, std::basic_ostream<char>& outResult);

  // By a compiled style sheet. Throws 4 for an unknown handle.
  void Transform(const wstring& inSource, const wstring& inResult, std::uintptr_t inStyleSheet);
  void Transform(const CQuenXMLData2w& inSource, CQuenXMLData2w& outResult,
                 std::uintptr_t inStyleSheet);
  void Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& outResult,
                 std::uintptr_t inStyleSheet);
  // The stream is read all the same.
  void Transform(const std::basic_istream<char>& inSource, std::basic_ostream<char>& outResult,
                 std::uintptr_t inStyleSheet);
  void Transform(const CQuenXMLNode2w& inSource, std::basic_ostream<char>& outResult,
                 std::uintptr_t inStyleSheet);

  // Compiles a style sheet and stores its handle, which is never 0. The same style sheet registered
  // twice has two handles. Throws 4, and has changed nothing then. A stream is read all the same.
  void RegisterCompiledStyleSheet(const wstring& inStyleSheet, std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const std::basic_istream<char>& inStyleSheet,
                                  std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const CQuenXMLData2w& inStyleSheet, std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const CQuenXMLDocument2w& inStyleSheet,
                                  std::uintptr_t& outHandle);
  // Throws 4 for an unknown handle.
  void UnregisterCompiledStyleSheet(std::uintptr_t inHandle);

  // Sets a parameter of the style sheets of all later transforms; one that declares no such
  // parameter does not mind. The key is a name, or a name with a prefix that the style sheet
  // declares; any other key, "{uri}name" too, fails each transform with 1010. The value is an XPath
  // expression: a text needs quotes of its own, and a value from a stranger must not be put between
  // quotes without a look at what it holds. A wrong expression fails the transform.
  void SetStyleSheetParam(const wstring& inKey, const wstring& inValue);

 private:
  std::shared_ptr<CQuenXSLImpl2w> impl_;
};

// The same in UTF-8. Paths, keys and values that are not well-formed UTF-8 throw.
class QUENXML2_API CQuenXSL2 {
 public:
  CQuenXSL2();
  CQuenXSL2(const CQuenXSL2& inOther);
  CQuenXSL2& operator=(const CQuenXSL2& inOther);
  virtual ~CQuenXSL2();

  void Transform(CQuenXMLData2& inSource, CQuenXMLData2& inStyleSheet, CQuenXMLData2& outResult);
  void Transform(CQuenXMLDocument2& inSource, CQuenXMLDocument2& inStyleSheet,
                 CQuenXMLDocument2& outResult);
  void Transform(std::basic_istream<char>& inSource, std::basic_istream<char>& inStyleSheet,
                 std::basic_ostream<char>& outResult);
  void Transform(std::basic_istream<char>& inSource, std::basic_ostream<char>& outResult);
  void Transform(const string& inSource, const string& inStyleSheet, const string& inResult);
  void Transform(const string& inSource, const string& inResult);
  void Transform(const CQuenXMLNode2& inSource, const CQuenXMLDocument2& inStyleSheet,
                 std::basic_ostream<char>& outResult);
  void Transform(const CQuenXMLNode2& inSource, std::basic_ostream<char>& outResult);

  void Transform(const string& inSource, const string& inResult, std::uintptr_t inStyleSheet);
  void Transform(const CQuenXMLData2& inSource, CQuenXMLData2& outResult,
                 std::uintptr_t inStyleSheet);
  void Transform(const CQuenXMLDocument2& inSource, CQuenXMLDocument2& outResult,
                 std::uintptr_t inStyleSheet);
  void Transform(const std::basic_istream<char>& inSource, std::basic_ostream<char>& outResult,
                 std::uintptr_t inStyleSheet);
  void Transform(const CQuenXMLNode2& inSource, std::basic_ostream<char>& outResult,
                 std::uintptr_t inStyleSheet);

  void RegisterCompiledStyleSheet(const string& inStyleSheet, std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const std::basic_istream<char>& inStyleSheet,
                                  std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const CQuenXMLData2& inStyleSheet, std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const CQuenXMLDocument2& inStyleSheet, std::uintptr_t& outHandle);
  void UnregisterCompiledStyleSheet(std::uintptr_t inHandle);

  void SetStyleSheetParam(const string& inKey, const string& inValue);

 private:
  std::shared_ptr<CQuenXSLImpl2w> impl_;
};

}  // namespace quen

#endif  // QUENXML2_XSL_H_

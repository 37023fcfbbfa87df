// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/support/literals.h"
#include "tests/support/small_stack.h"
#include "tests/support/temp_dir.h"

namespace quen::test {
namespace {

using Document = CQuenXMLDocument2w;
using Element = CQuenXMLElement2w;
using Node = CQuenXMLNode2w;

Document Parse(const char* inXml) {
  Document document;
  if (*inXml != 0) document.LoadXML(Wide(inXml));
  return document;
}

std::string FailureOf(const std::function<void()>& inOperation) {
  return FailureAt<WideTypes>(inOperation);
}

TEST(Document, IsAValue) {
  Document first = Parse("<?p?><a><b/></a><!--c-->");
  Document second(first);
  Document third;
  third = first;
  const Element kept = third.GetDocumentElement();
  third = *&third;
  EXPECT_TRUE(third.GetDocumentElement() == kept);
  first.GetDocumentElement().SetValue(u"changed");
  EXPECT_EQ(Utf8(second.GetSubset()), "<?p ?><a><b/></a><!--c-->");
  EXPECT_EQ(Utf8(third.GetSubset()), "<?p ?><a><b/></a><!--c-->");
  EXPECT_TRUE(first.GetDocumentElement() != second.GetDocumentElement());
  second = Document();
  EXPECT_FALSE(second.HasChildNodes());
}

TEST(Document, FromANode) {
  Document source = Parse("<!--x--><a b='1'><c>t</c></a>");
  source.SetDoNamespaceOnParse(0);
  const struct {
    const char* path;
    const char* outcome;
  } kRows[] = {
      {"/", "<!--x--><a b=\"1\"><c>t</c></a>"},
      {"/a/c", "<c>t</c>"},
      {"/comment()", "<!--x-->"},
      {"/a/c/text()", "3 DOM Error: "},
      {"/a/@b", "3 DOM Error: "},
  };
  for (const auto& row : kRows) {
    std::string outcome;
    const std::string failure = FailureOf([&] {
      const Document made(source.SelectSingleNode(Wide(row.path)));
      outcome = Utf8(made.GetSubset());
      EXPECT_EQ(made.GetDoNamespaceOnParse(), 1);
    });
    EXPECT_EQ(failure.empty() ? outcome : failure.substr(0, 13), row.outcome) << row.path;
  }
  EXPECT_EQ(Utf8(source.GetSubset()), "<!--x--><a b=\"1\"><c>t</c></a>");
}

TEST(Document, SettingsBelongToTheObject) {
  Document document;
  EXPECT_EQ(document.GetDoValidationOnParse(), 0);
  EXPECT_EQ(document.GetDoNamespaceOnParse(), 1);
  document.SetDoValidationOnParse(-7);
  document.SetDoNamespaceOnParse(0);
  Document copy(document);
  Document assigned;
  assigned = copy;
  EXPECT_EQ(assigned.GetDoValidationOnParse(), -7);
  EXPECT_EQ(assigned.GetDoNamespaceOnParse(), 0);
  assigned.SetDoValidationOnParse(0);
  assigned.LoadXML(u"<p:a/>");  // without namespaces this is a name like any other
  EXPECT_EQ(assigned.GetDoNamespaceOnParse(), 0);
  EXPECT_EQ(assigned.GetDocumentElement().GetNamespaceURI(), u"");
  EXPECT_EQ(assigned.GetDocumentElement().GetOwnerDocument().GetDoNamespaceOnParse(), 1);
  Document strict;
  EXPECT_EQ(FailureOf([&] { strict.LoadXML(u"<p:a/>"); }).substr(0, 18), "1009 Parse error: ");
}

TEST(Document, TheOwnerIsACopy) {
  Document document = Parse("<a><b/></a>");
  Document owner = document.GetDocumentElement().GetFirstChild().GetOwnerDocument();
  owner.GetDocumentElement().SetValue(u"changed");
  EXPECT_EQ(Utf8(document.GetSubset()), "<a><b/></a>");
  EXPECT_EQ(Utf8(owner.GetSubset()), "<a><b/>changed</a>");
  EXPECT_EQ(FailureOf([&] { document.GetOwnerDocument(); }),
            "1000 Unknown Exception @ CQuenXMLNodeImpl2w::GetOwnerDocument()");
}

TEST(Document, Factories) {
  Document document;
  EXPECT_EQ(Utf8(document.CreateElementNS(u"p:a", u"u").GetNamespaceURI()), "u");
  EXPECT_EQ(Utf8(document.CreateElementNS(u"p:a", u"u").GetPrefix()), "p");
  EXPECT_EQ(document.CreateElementNS(u"a", u"").GetNamespaceURI(), u"");
  EXPECT_EQ(document.CreateElement(u"p:a").GetNamespaceURI(), u"");
  EXPECT_EQ(document.CreateComment(u"--").GetSubset(), u"<!------>");
  EXPECT_EQ(document.CreateCDATA(u"<").GetSubset(), u"<![CDATA[<]]>");
  const CQuenXMLPI2w pi = document.CreatePI(u"t", u"d");
  EXPECT_EQ(pi.GetName() + u"|" + pi.GetValue(), u"t|d");
  EXPECT_FALSE(document.HasChildNodes());
  const std::string kInvalid = "5 DOM Error: invalid or illegal XML character @ ";
  EXPECT_EQ(FailureOf([&] { document.CreateElement(u"1"); }),
            kInvalid + "CQuenXMLDocumentImpl2w::CreateElement(const STD(wstring) inElementName)");
  EXPECT_EQ(FailureOf([&] { document.CreateElementNS(u"1", u""); }),
            kInvalid + "CQuenXMLDocumentImpl2w::CreateElement(const STD(wstring) inElementName)");
  EXPECT_EQ(FailureOf([&] { document.CreateElementNS(u"p:a", u""); }).substr(0, 13),
            "14 DOM Error:");
  EXPECT_EQ(FailureOf([&] { document.CreatePI(u"", u""); }),
            kInvalid + "CQuenXMLDocumentImpl2w::CreatePI(const STD(wstring) inElementName)");
}

TEST(Document, SetDocumentElement) {
  Document other = Parse("<o><p/></o>");
  const struct {
    const char* what;
    const char* xml;
    std::function<Element(Document&)> element;
    const char* outcome;
  } kRows[] = {
      {"into an empty document", "", [](Document& d) { return d.CreateElement(u"n"); }, "<n/>"},
      {"in place of another", "<!--x--><a/><?y?>",
       [](Document& d) { return d.CreateElement(u"n"); }, "<!--x--><n/><?y ?>"},
      {"a child of the present one", "<a><b/><c/></a>",
       [](Document& d) { return *d.GetDocumentElement().find(u"b"); }, "<b/>"},
      {"the present one", "<!--x--><a/>", [](Document& d) { return d.GetDocumentElement(); },
       "<!--x--><a/>"},
      {"a foreign one", "<a/>", [&](Document&) { return other.GetDocumentElement(); },
       "<o><p/></o>"},
      {"none", "<!--x--><a/>", [](Document&) { return Document().GetDocumentElement(); },
       "<!--x-->"},
      {"none into none", "", [](Document&) { return Document().GetDocumentElement(); }, ""},
  };
  for (const auto& row : kRows) {
    Document document = Parse(row.xml);
    document.SetDocumentElement(row.element(document));
    EXPECT_EQ(Utf8(document.GetSubset()), row.outcome) << row.what;
  }
  EXPECT_EQ(Utf8(other.GetSubset()), "<o><p/></o>");
}

TEST(Document, Normalize) {
  const struct {
    const char* what;
    const char* xml;
    const char* outcome;
  } kRows[] = {
      {"white space between elements", "<a>\n <b> <c/>\t</b>\r\n</a>", "<a><b><c/></b></a>"},
      {"white space alone in an element", "<a><b>  </b></a>", "<a><b/></a>"},
      {"white space around text stays", "<a> x <b/> y\n</a>", "<a> x <b/> y\n</a>"},
      {"sections and comments stay", "<a> <![CDATA[ ]]> <!-- --> </a>",
       "<a><![CDATA[ ]]><!-- --></a>"},
      {"a no-break space is no white space", "<a>\u00a0</a>", "<a>\u00a0</a>"},
      {"nothing at all", "", ""},
  };
  for (const auto& row : kRows) {
    Document document = Parse(row.xml);
    document.Normalize();
    EXPECT_EQ(Utf8(document.GetSubset()), row.outcome) << row.what;
  }
  // Neighbours merge before they are looked at.
  Document document = Parse("<a>1<b/> <c/>3</a>");
  Element a = document.GetDocumentElement();
  a.RemoveChild(*a.find(u"b"));
  a.RemoveChild(*a.find(u"c"));
  document.Normalize();
  EXPECT_EQ(document.SelectNodes(u"/a/text()").size(), 1u);
  EXPECT_EQ(a.GetValue(), u"1 3");
}

// Deeper than the engine's own recursions stand.
TEST(Document, AnyDepthThatCanBeBuiltCanBeUsed) {
  OnSmallStack([] {
    constexpr int kLevels = 20000;
    Document document = Parse("<!--x--><a/><?y?>");
    Element element = document.GetDocumentElement();
    // From the inside out: the engine looks through all ancestors of the place.
    Element chain = document.CreateElement(u"a");
    chain.SetValue(u"deep");
    for (int i = 2; i < kLevels; ++i) {
      Element outer = document.CreateElement(u"a");
      outer.SetAttribute(u"n", u"1");
      outer.AddChildNode(chain, true);
      chain = outer;
    }
    element.AddChildNode(chain, true);
    const wstring text = document.GetSubset();
    EXPECT_EQ(text.size(), 4u + 4 + 6 + 4 + 7 * kLevels + 6u * (kLevels - 2));

    Document copy(document);
    EXPECT_TRUE(copy.GetSubset() == text);
    EXPECT_TRUE(document.GetSubset() == text);
    copy.Normalize();
    EXPECT_TRUE(copy.GetSubset() == text);
    EXPECT_TRUE(element.GetOwnerDocument().GetSubset() == text);
    EXPECT_TRUE(Document(element).GetSubset() == element.GetSubset());
    EXPECT_TRUE(element.Clone(true).GetSubset() == element.GetSubset());
    Document other = Parse("<o/>");
    other.GetDocumentElement().AppendChild(element);
    EXPECT_TRUE(other.GetDocumentElement().GetFirstChild().GetSubset() == element.GetSubset());
    other.SetDocumentElement(element);
    EXPECT_TRUE(other.GetSubset() == element.GetSubset());
    // The engine copies what goes into a document with a document type, if it is not so deep.
    Document typed = Parse("<!DOCTYPE o [<!ELEMENT o ANY>]><o/>");
    typed.GetDocumentElement().AppendChild(element);
    EXPECT_TRUE(typed.GetDocumentElement().GetFirstChild().GetSubset() == element.GetSubset());
    element.RemoveChild(element.GetFirstChild());
    EXPECT_EQ(Utf8(document.GetSubset()), "<!--x--><a/><?y ?>");
    EXPECT_EQ(FailureOf([&] { copy.LoadXML(text); }).substr(0, 18), "1009 Parse error: ");
    EXPECT_TRUE(copy.GetSubset() == text);
  });
}

TEST(Document, EntityReferencesKeepTheirExpansionInCopies) {
  std::string subset = "<!ELEMENT a ANY><!ENTITY e0 'x<!--c-->'>";
  for (int i = 1; i < 32; ++i) {
    subset += "<!ENTITY e" + std::to_string(i) + " '<a>&e" + std::to_string(i - 1) + ";</a>'>";
  }
  OnSmallStack([&] {
    Document document;
    document.LoadXML(Wide("<!DOCTYPE a [" + subset + "]><a>1&e31;<a/>&e0;2</a><?p?>"));
    const Element root = document.GetDocumentElement();
    const wstring text = root.GetSubset();
    EXPECT_EQ(text.size(), 4u + 31 * 7 + 9 + 4 + 9 + 1 + 4);
    const Document copy(document);
    EXPECT_TRUE(copy.GetDocumentElement().GetSubset() == text);
    EXPECT_EQ(copy.GetLastChild().GetName(), u"p");
    EXPECT_EQ(copy.GetDocumentElement().GetValue(), u"1");
    EXPECT_TRUE(root.Clone(true).GetSubset() == text);
    Document other = Parse("<o/>");
    other.GetDocumentElement().AppendChild(root);
    EXPECT_TRUE(other.GetDocumentElement().GetFirstChild().GetSubset() == text);
    // The other document's own declaration is the one that counts there.
    Document declares = Parse("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e0 'own'>]><a>&e0;</a>");
    Document declared(declares);
    EXPECT_EQ(declared.GetDocumentElement().GetSubset(), u"<a>own</a>");
  });
}

TEST(Document, LoadingReplacesOnlyWhatItCanReplace) {
  Document document = Parse("<a/>");
  const Element kept = document.GetDocumentElement();
  EXPECT_EQ(FailureOf([&] { document.LoadXML(u""); }),
            "1009 Parse error: [invalid document structure] at line: 1, Column: 1 @ "
            "CQuenXMLDocumentImpl2w::LoadXML()");
  EXPECT_EQ(FailureOf([&] { document.Load(u"/nonexistent/file"); }),
            "1009 Parse error: [unable to open primary document entity '/nonexistent/file': No "
            "such file or directory] at line: 0, Column: 0 @ "
            "CQuenXMLDocumentImpl2w::Load(const STD(wstring) inLocation) ");
  EXPECT_EQ(FailureOf([&] { document.Load(u"http://127.0.0.1:1/x"); }),
            "1009 Parse error: [unable to connect socket for URL 'http://127.0.0.1:1/x'] at line: "
            "0, Column: 0 @ CQuenXMLDocumentImpl2w::Load(const STD(wstring) inLocation) ");
  EXPECT_TRUE(document.GetDocumentElement() == kept);
  document.LoadXML(u"<?xml version='1.0' encoding='UTF-8'?><b>\u20ac</b>");
  EXPECT_EQ(Utf8(document.GetSubset()), "<b>\u20ac</b>");
}

constexpr char kSchema[] =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
    "<xs:element name='a'><xs:complexType><xs:sequence>"
    "<xs:element name='n' type='xs:int' maxOccurs='3'/></xs:sequence>"
    "<xs:attribute name='d' default='dflt'/></xs:complexType></xs:element></xs:schema>";

TEST(Validation, AgainstASchema) {
  const TempDir dir;
  const std::string schema = dir.File("s.xsd", kSchema);
  const std::string hinted =
      dir.File("any.xsd",
               "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='z'/>"
               "</xs:schema>");
  const std::string doctype = dir.File(
      "doctype.xsd", "<!DOCTYPE xs:schema [<!ENTITY e SYSTEM '" + dir.File("e", "int") + "'>]>" +
                         std::string(kSchema).replace(std::string(kSchema).find("int"), 3, "&e;"));
  const std::string including =
      dir.File("including.xsd",
               "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:include "
               "schemaLocation='s.xsd'/></xs:schema>");
  const std::string spaced =
      dir.File("ns.xsd", std::string(kSchema).replace(10, 0, " targetNamespace='u' "));
  const struct {
    const char* what;
    std::string schema;
    std::string spacedSchema;
    std::string xml;
    bool valid;
  } kRows[] = {
      {"valid", schema, "", "<a><n>1</n></a>", true},
      {"not valid", schema, "", "<a><n>x</n></a>", false},
      {"too many", schema, "", "<a><n>1</n><n>1</n><n>1</n><n>1</n></a>", false},
      {"unknown root", schema, "", "<b/>", false},
      {"no schema", "", "", "<a><n>1</n></a>", false},
      {"a missing schema", dir / "none.xsd", "", "<a><n>1</n></a>", false},
      {"a hint in the document is not followed", "", "",
       "<z xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
       "xsi:noNamespaceSchemaLocation='" +
           hinted + "'/>",
       false},
      {"nor beside a schema", schema, "",
       "<z xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='q " + hinted +
           "' xmlns='q'/>",
       false},
      {"an entity of the schema is not read", doctype, "", "<a><n>1</n></a>", false},
      {"a schema that includes another", including, "", "<a><n>1</n></a>", true},
      {"by namespace", "", "u " + spaced, "<p:a xmlns:p='u'><n>1</n></p:a>", true},
      {"the wrong namespace", "", "u " + spaced, "<p:a xmlns:p='v'><n>1</n></p:a>", false},
  };
  for (const auto& row : kRows) {
    Document document = Parse(row.xml.c_str());
    document.SetExternalNoNamespaceSchemaLocation(Wide(row.schema));
    document.SetExternalSchemaLocation(Wide(row.spacedSchema));
    const wstring before = document.GetSubset();
    const std::string failure = FailureOf([&] { document.Validate(); });
    EXPECT_EQ(failure.empty(), row.valid) << row.what << ": " << failure;
    if (!row.valid) {
      EXPECT_EQ(failure.substr(0, 18), "1009 Parse error: ") << row.what;
      EXPECT_EQ(failure.substr(failure.rfind('@')), "@ CQuenXMLDocumentImpl2w::Validate() ");
    }
    EXPECT_TRUE(document.GetSubset() == before) << row.what;

    // The same when it is loaded.
    Document loaded = Parse("<old/>");
    loaded.SetExternalNoNamespaceSchemaLocation(Wide(row.schema));
    loaded.SetExternalSchemaLocation(Wide(row.spacedSchema));
    loaded.SetDoValidationOnParse(1);
    loaded.SetDoNamespaceOnParse(0);
    EXPECT_EQ(FailureOf([&] { loaded.LoadXML(Wide(row.xml)); }).empty(), row.valid) << row.what;
    EXPECT_EQ(loaded.GetDocumentElement().GetName() == u"old", !row.valid) << row.what;
  }
}

TEST(Validation, IdentifiersGoAlongWithACopy) {
  const TempDir dir;
  Document document;
  document.SetExternalNoNamespaceSchemaLocation(
      Wide(dir.File("id.xsd",
                    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'>"
                    "<xs:complexType><xs:attribute name='i' type='xs:ID'/></xs:complexType>"
                    "</xs:element></xs:schema>")));
  document.SetDoValidationOnParse(1);
  document.LoadXML(u"<a i='x'/>");
  const auto found = [](const Document& in) { return in.SelectNodes(u"id('x')").size(); };
  EXPECT_EQ(found(document), 1u);
  EXPECT_EQ(found(Document(document)), 1u);
  EXPECT_EQ(found(document.GetDocumentElement().GetOwnerDocument()), 1u);
  Document other = Parse("<b/>");
  other.GetDocumentElement().AppendChild(document.GetDocumentElement());
  EXPECT_EQ(found(other), 1u);
  Element element(other.GetDocumentElement().GetFirstChild());
  element.SetAttribute(u"i", u"y");
  EXPECT_EQ(found(other), 0u);
  element.SetAttribute(u"i", u"x");
  EXPECT_EQ(found(other), 1u);
  element.RemoveAttribute(u"i");
  EXPECT_EQ(found(other), 0u);
}

TEST(Validation, TheFlagForParsingDoesNotMatterAndAnEmptyDocumentIsNotValid) {
  const TempDir dir;
  Document document = Parse("<a><n>x</n></a>");
  document.SetExternalNoNamespaceSchemaLocation(Wide(dir.File("s.xsd", kSchema)));
  document.SetDoValidationOnParse(0);
  EXPECT_NE(FailureOf([&] { document.Validate(); }), "");
  EXPECT_EQ(FailureOf([] { Document().Validate(); }),
            "1009 Parse error: [invalid document structure] at line: 1, Column: 1 @ "
            "CQuenXMLDocumentImpl2w::Validate() ");
  document.LoadXML(u"<!DOCTYPE a [<!ELEMENT a EMPTY>]><a/>");
  EXPECT_EQ(FailureOf([&] { document.Validate(); }),
            "1010 Invalid DOM Node Type @ CQuenXMLDataImpl::BuildXMLString()");
  // A default of the schema arrives with a load.
  document.SetDoValidationOnParse(1);
  document.LoadXML(u"<a><n>1</n></a>");
  EXPECT_EQ(Utf8(document.GetSubset()), "<a d=\"dflt\"><n>1</n></a>");
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
#include "tests/hostile/attacks.h"

namespace quen::test {
namespace {

using std::string;

string Repeated(const string& inPiece, int inCount) {
  string text;
  text.reserve(inPiece.size() * static_cast<std::size_t>(inCount));
  for (int i = 0; i < inCount; ++i) text += inPiece;
  return text;
}

string Filled(int inLength) { return string(static_cast<std::size_t>(inLength), 'x'); }

// A document with a subset.
string With(const string& inSubset, const string& inContent) {
  return "<!DOCTYPE a [<!ELEMENT a ANY>" + inSubset + "]>" + inContent;
}

// Entities e0 to e<levels>, of which each is ten of the one before; `inMark` is "&" or "%".
string Bomb(int inLevels, const string& inFirst = "lolololol") {
  string text = "<!ENTITY e0 '" + inFirst + "'>";
  for (int i = 1; i <= inLevels; ++i) {
    text += "<!ENTITY e" + std::to_string(i) + " '" +
            Repeated("&e" + std::to_string(i - 1) + ";", 10) + "'>";
  }
  return text;
}

string ParameterBomb(int inLevels) {
  string text = "<!ENTITY % e0 '<!-- lololololol -->'>";
  for (int i = 1; i <= inLevels; ++i) {
    // The reference is spelled out, so that it counts at its use.
    text += "<!ENTITY % e" + std::to_string(i) + " '" +
            Repeated("&#37;e" + std::to_string(i - 1) + ";", 10) + "'>";
  }
  return text + "%e" + std::to_string(inLevels) + ";";
}

// Declares attributes for a, none of which has a default.
string Attributes(int inCount, const string& inKind) {
  string text = "<!ATTLIST a ";
  for (int i = 0; i < inCount; ++i) text += "b" + std::to_string(i) + " CDATA #" + inKind + " ";
  return text + ">";
}

string Nested(int inLevels, const string& inInside, const string& inOpen = "<a>") {
  return Repeated(inOpen, inLevels) + inInside + Repeated("</a>", inLevels);
}

constexpr char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' ";

}  // namespace

string Numbered(const string& inPiece, int inCount) {
  string text;
  for (int i = 0; i < inCount; ++i) {
    const string number = std::to_string(i);
    for (const char unit : inPiece) {
      if (unit == '#') {
        text += number;
      } else {
        text += unit;
      }
    }
  }
  return text;
}

std::vector<Attack> ReadingAttacks() {
  const auto row = [](const char* name, Outcome outcome, const string& text,
                      const char* message = "' is not read") {
    return Attack{name, outcome, [text] { return text; }, message};
  };
  const string xsi = kXsi;
  return {
      row("general entity", Outcome::kRefused, With("<!ENTITY e SYSTEM 'FILE'>", "<a>&e;</a>")),
      row("general entity by URL", Outcome::kRefused,
          With("<!ENTITY e SYSTEM 'file://FILE'>", "<a>&e;</a>")),
      row("general entity with a public name", Outcome::kRefused,
          With("<!ENTITY e PUBLIC 'p' 'FILE'>", "<a>&e;</a>")),
      row("general entity from the network", Outcome::kRefused,
          With("<!ENTITY e SYSTEM 'http://HOST/x'>", "<a>&e;</a>")),
      row("general entity by FTP", Outcome::kRefused,
          With("<!ENTITY e SYSTEM 'ftp://HOST/x'>", "<a>&e;</a>")),
      row("external entity in an entity", Outcome::kRefused,
          With("<!ENTITY e SYSTEM 'FILE'><!ENTITY f 'x&e;'>", "<a>&f;</a>")),
      row("external entity in an attribute", Outcome::kRefused,
          With("<!ATTLIST a b CDATA #IMPLIED><!ENTITY e SYSTEM 'FILE'>", "<a b='&e;'/>"), ""),
      row("external entity in an attribute default", Outcome::kRefused,
          With("<!ENTITY e SYSTEM 'FILE'><!ATTLIST a b CDATA '&e;'>", "<a/>"), ""),
      row("parameter entity", Outcome::kRefused,
          With("<!ENTITY % e SYSTEM 'FILE'>%e;", "<a>&leak;</a>")),
      row("parameter entity from the network", Outcome::kRefused,
          With("<!ENTITY % e SYSTEM 'http://HOST/x'>%e;", "<a/>")),
      row("parameter entity in a declaration", Outcome::kRefused,
          With("<!ENTITY % e SYSTEM 'FILE'><!ENTITY f '%e;'>", "<a>&f;</a>"), ""),
      row("parameter entity out of another", Outcome::kRefused,
          With("<!ENTITY % p '<!ENTITY &#37; e SYSTEM \"FILE\">&#37;e;'>%p;", "<a/>"), ""),
      row("external subset", Outcome::kRefused, "<!DOCTYPE a SYSTEM 'FILE'><a>&leak;</a>"),
      row("external subset from the network", Outcome::kRefused,
          "<!DOCTYPE a SYSTEM 'http://HOST/x'><a/>"),
      row("external subset with a public name", Outcome::kRefused,
          "<!DOCTYPE a PUBLIC 'p' 'FILE' [<!ELEMENT a ANY>]><a>&leak;</a>"),
      row("external subset beside an internal one", Outcome::kRefused,
          "<!DOCTYPE a SYSTEM 'http://HOST/x' [<!ELEMENT a ANY>]><a/>"),
      row("unparsed entity", Outcome::kEither,
          With("<!NOTATION n SYSTEM 'http://HOST/n'><!ENTITY e SYSTEM 'FILE' NDATA n>"
               "<!ATTLIST a b ENTITY #IMPLIED>",
               "<a b='e'/>"),
          ""),
      row("entity that is declared and not used", Outcome::kEither,
          With("<!ENTITY e SYSTEM 'FILE'><!ENTITY f SYSTEM 'http://HOST/x'>", "<a/>"), ""),
      row("schema hint without a namespace", Outcome::kEither,
          "<a " + xsi + "xsi:noNamespaceSchemaLocation='FILE'/>", ""),
      row("the same to the network", Outcome::kEither,
          "<a " + xsi + "xsi:noNamespaceSchemaLocation='http://HOST/x.xsd'/>", ""),
      row("schema hint with a namespace", Outcome::kEither,
          "<a " + xsi + "xsi:schemaLocation='q FILE'><b xmlns='q'/></a>", ""),
      row("the same to the network", Outcome::kEither,
          "<a " + xsi + "xsi:schemaLocation='q http://HOST/x.xsd'><b xmlns='q'/></a>", ""),
      row("schema hint on an inner element", Outcome::kEither,
          "<a><b xmlns='q' " + xsi + "xsi:schemaLocation='q http://HOST/x.xsd'/></a>", ""),
      row("XInclude of a file", Outcome::kTaken,
          "<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='FILE'/>"
          "<xi:include parse='text' href='file://FILE'/></a>"),
      row("XInclude from the network", Outcome::kTaken,
          "<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='http://HOST/x'/></a>"),
      row("style sheet that the text names", Outcome::kTaken,
          "<?xml-stylesheet type='text/xsl' href='FILE'?><a/>"),
      row("style sheet on the network", Outcome::kTaken,
          "<?xml-stylesheet type='text/xsl' href='http://HOST/x'?><a/>"),
      row("base of another place", Outcome::kTaken, "<a xml:base='http://HOST/'><b/></a>"),
      row("namespace with a place", Outcome::kTaken, "<a xmlns:n='http://HOST/n'><n:b/></a>"),
      row("declaration of a document elsewhere", Outcome::kRefused,
          "<?xml version='1.0' standalone='no'?><!DOCTYPE a PUBLIC "
          "'-//W3C//DTD XHTML 1.0 Strict//EN' 'http://HOST/xhtml1-strict.dtd'><a/>"),
  };
}

std::vector<Attack> CostlyAttacks() {
  static constexpr char kExpand[] = "expand beyond the limit";
  static constexpr char kNames[] = "more different names than the limit";
  static constexpr char kModel[] = "content model is larger than the limit";
  static constexpr char kDeclared[] = "declares more for the elements than the limit";
  constexpr auto kNo = Outcome::kRefused;
  constexpr auto kYes = Outcome::kTaken;
  constexpr auto kMaybe = Outcome::kEither;
  const auto subset = [](string declarations, string content = "<a/>") {
    return [=] { return With(declarations, content); };
  };
  const auto chain = [](int levels) {
    return [=] {
      string text = "<!ENTITY e0 'x'>";
      for (int i = 1; i < levels; ++i)
        text += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
      return With(text, "<a>&e" + std::to_string(levels - 1) + ";</a>");
    };
  };
  const auto defaults = [](int attributes, int elements) {
    return [=] {
      return With("<!ATTLIST a " + Numbered("b# CDATA 'x' ", attributes) + ">",
                  "<a>" + Repeated("<a/>", elements) + "</a>");
    };
  };
  const auto entity = [](string value, int times) {
    return [=] {
      return With(Attributes(100, "IMPLIED") + "<!ENTITY e '" + value + "'>",
                  "<a>" + Repeated("&e;", times) + "</a>");
    };
  };
  return {
      // Entities.
      {"entities of entities", kNo, subset(Bomb(9), "<a>&e9;</a>"), kExpand},
      {"the same in an attribute", kNo,
       subset("<!ATTLIST a b CDATA #IMPLIED>" + Bomb(9), "<a b='&e9;'/>"), kExpand},
      {"the same in an attribute default", kNo, subset(Bomb(9) + "<!ATTLIST a b CDATA '&e9;'>"),
       kExpand},
      {"the same of nothing", kNo, subset(Bomb(9, ""), "<a>&e9;</a>"), kExpand},
      {"less of nothing", kNo, subset(Bomb(5, ""), "<a>&e5;</a>"), kExpand},
      {"the same of elements", kNo, subset(Bomb(9, "<a/>"), "<a>&e9;</a>"), kExpand},
      {"parameter entities of such", kNo, subset(ParameterBomb(9)), kExpand},
      {"a large entity, often", kNo,
       [] {
         return With("<!ENTITY e '" + Filled(100000) + "'>",
                     "<a>" + Repeated("&e;", 5000) + "</a>");
       },
       kExpand},
      {"a large attribute default, often", kNo,
       [] {
         return With("<!ATTLIST a b CDATA '" + Filled(100000) + "'>",
                     "<a>" + Repeated("<a/>", 5000) + "</a>");
       },
       kExpand},
      {"many attribute defaults on many elements", kNo, defaults(400, 5000), kExpand},
      {"some more than fit", kNo, defaults(400, 250), kExpand},
      {"as many as fit", kYes, defaults(400, 150)},
      {"an entity of elements, often", kNo, entity(Repeated("<a/>x", 1000), 800), kExpand},
      {"as often as it may", kYes, entity(Repeated("<a/>x", 1000), 60)},
      {"an entity of attributes, often", kNo, entity("<a" + Numbered(" b#=\"\"", 100) + "/>", 2000),
       kExpand},
      {"an entity within itself", kNo, subset("<!ENTITY e '&f;'><!ENTITY f '&e;'>", "<a>&e;</a>"),
       kExpand},
      {"a parameter entity within itself", kNo,
       subset("<!ENTITY % e '&#37;f;'><!ENTITY % f '&#37;e;'>%e;"), kExpand},
      {"entities 5,000 deep", kNo, chain(5000), kExpand},
      {"entities 33 deep", kNo, chain(33), kExpand},
      {"entities in a place the scan may miss", kNo,
       [] {
         return "<!-- ' --><?p \"?><!DOCTYPE a [<!-- ' --><!ELEMENT a ANY>" + Bomb(9) +
                "]><a>&e9;</a>";
       },
       kExpand},
      {"entities declared by an entity", kNo,
       subset("<!ENTITY % p '<!ENTITY e \"x\">'>%p;", "<a>&e;</a>"),
       "declared through a parameter entity"},
      {"an entity that is declared by an entity first", kNo,
       subset("<!ENTITY % p '<!ENTITY e \"y\">'>%p;<!ENTITY e 'x'>", "<a>&e;</a>"),
       "declared through a parameter entity"},

      // Declarations.
      {"a long subset", kNo, subset("<!--" + Filled(300000) + "-->"), "subset is longer"},
      {"20,000 entities", kNo, [] { return With(Numbered("<!ENTITY e# 'x'>", 20000), "<a/>"); },
       "subset is longer"},
      {"8,000 declared elements", kYes,
       [] { return With(Numbered("<!ELEMENT b# ANY>", 8000), "<a/>"); }},
      {"1,000 attribute defaults", kNo,
       [] { return With("<!ATTLIST a " + Numbered("b# CDATA 'x' ", 1000) + ">", "<a/>"); },
       "more attribute defaults"},
      {"a content model of 1,500 places", kNo,
       [] { return With("<!ELEMENT b (x" + Numbered(",x#", 1500) + ")>", "<a/>"); }, kModel},
      {"models of 900 places each", kNo,
       [] {
         string text;
         for (int i = 0; i < 30; ++i)
           text += "<!ELEMENT c" + std::to_string(i) + " (x" + Numbered(",x#", 900) + ")>";
         return With(text, "<a/>");
       },
       kModel},
      {"a model with a state for every set of places", kNo,
       subset("<!ELEMENT b ((x|y)*,x" + Repeated(",(x|y)", 24) + ")>",
              "<a><b>" + Repeated("<x/>", 30) + "</b></a>"),
       kModel},
      {"such a model through an entity", kNo,
       subset("<!ENTITY % m '(x|y)'><!ENTITY % b '<!ELEMENT b ((x|y)*,x" + Repeated(",(x|y)", 24) +
                  ")>'>%b;",
              "<a><b/></a>"),
       kModel},
      {"a model nested 20,000 deep", kMaybe,
       subset("<!ELEMENT b " + Repeated("(", 20000) + "x" + Repeated(")", 20000) + ">"), ""},
      {"a model nested 20,000 deep with choices", kNo,
       subset("<!ELEMENT b " + Repeated("(x|", 20000) + "x" + Repeated(")", 20000) + ">"), ""},
      {"mixed content of 20,000 names", kMaybe,
       [] { return With("<!ELEMENT b (#PCDATA" + Numbered("|x#", 20000) + ")*>", "<a/>"); }},
      {"elements with 10,000 declared attributes", kNo,
       [] { return With(Attributes(10000, "IMPLIED"), "<a>" + Repeated("<a/>", 100000) + "</a>"); },
       kDeclared},
      {"elements without their 5,000 required attributes", kNo,
       [] { return With(Attributes(5000, "REQUIRED"), "<a>" + Repeated("<a/>", 2000) + "</a>"); },
       kDeclared},
      {"elements in mixed content of 30,000 names", kNo,
       [] {
         return "<!DOCTYPE r [<!ELEMENT r (#PCDATA" + Numbered("|x#", 30000) +
                "|a)*><!ELEMENT a ANY>]><r>" + Repeated("<a/>", 100000) + "</r>";
       },
       kDeclared},
      {"elements in content of 900 names", kNo,
       [] {
         return "<!DOCTYPE r [<!ELEMENT r (x" + Numbered("|x#", 900) +
                "|a)*><!ELEMENT a ANY>]><r>" + Repeated("<a/>", 100000) + "</r>";
       },
       kDeclared},
      {"a list of 30,000 values", kNo,
       [] { return With("<!ATTLIST a b (x" + Numbered("|x#", 30000) + ") #IMPLIED>", "<a/>"); },
       kDeclared},
      {"the last of 4,000 values, often", kNo,
       [] {
         return With("<!ATTLIST a b (x" + Numbered("|x#", 4000) + ") #IMPLIED>",
                     "<a>" + Repeated("<a b='x3999'/>", 50000) + "</a>");
       },
       kDeclared},
      {"the same as a default", kNo,
       [] {
         return With("<!ATTLIST a b (x" + Numbered("|x#", 4000) + ") 'x3999'>",
                     "<a>" + Repeated("<a/>", 50000) + "</a>");
       },
       kDeclared},
      {"elements with a DTD as large as DocBook's", kYes,
       [] {
         return "<!DOCTYPE a [<!ELEMENT a (#PCDATA|a" + Numbered("|x#", 178) + ")*>" +
                Attributes(50, "IMPLIED") + "]><a>" + Repeated("<a/>", 200000) + "</a>";
       }},

      // Depth and width.
      {"elements 1,001 deep", kNo, [] { return Nested(1001, ""); }, "nest deeper"},
      {"elements a million deep, left open", kNo, [] { return Repeated("<a>", 1000000); },
       "nest deeper"},
      {"the same with a namespace each", kNo,
       [] { return Repeated("<a xmlns='u' xmlns:p='v'>", 100000); }, "nest deeper"},
      {"elements 900 deep, each with a hundred declarations", kYes,
       [] { return Nested(900, "", "<a " + Numbered(" xmlns:p#='u'", 100) + ">"); }, ""},
      {"400 within 900 levels", kYes, [] { return Nested(900, Repeated("<b/>", 400)); }},
      {"an entity that opens elements", kNo,
       subset("<!ENTITY e '" + Repeated("<a>", 900) + Repeated("</a>", 900) + "'>",
              Nested(200, "&e;")),
       ""},
      {"64,000 attributes", kNo, [] { return "<a" + Numbered(" b#=''", 64000) + "/>"; },
       "more attributes"},
      {"the same attribute 64,000 times", kNo,
       [] { return "<a" + Repeated(" b=''", 64000) + "/>"; }, ""},
      {"64,000 declarations of namespaces", kNo,
       [] { return "<a" + Numbered(" xmlns:b#='u#'", 64000) + "/>"; }, "more attributes"},
      {"8,000 attributes on many elements", kNo,
       [] { return "<a>" + Repeated("<b" + Numbered(" c#=''", 8000) + "/>", 40) + "</a>"; },
       "more attributes"},
      {"160,000 names of elements", kNo, [] { return "<a>" + Numbered("<b#/>", 160000) + "</a>"; },
       kNames},
      {"160,000 names of attributes", kNo,
       [] { return "<a>" + Numbered("<b c#=''/>", 160000) + "</a>"; }, kNames},
      {"160,000 namespaces", kNo,
       [] { return "<a>" + Numbered("<b xmlns='u#'/>", 160000) + "</a>"; }, kNames},
      {"160,000 namespaces that no name is in", kNo,
       [] { return "<a>" + Numbered("<b xmlns:p='u#'/>", 160000) + "</a>"; }, kNames},
      {"160,000 prefixes", kNo,
       [] { return "<a>" + Numbered("<p#:b xmlns:p#='u'/>", 160000) + "</a>"; }, kNames},
      {"160,000 names of instructions", kMaybe,
       [] { return "<a>" + Numbered("<?b#?>", 160000) + "</a>"; }},

      // Large and plain: taken, at a cost that grows with the text.
      {"an attribute of 2 MB", kYes, [] { return "<a b='" + Filled(2000000) + "'/>"; }},
      {"a text of 2 MB", kYes, [] { return "<a>" + Filled(2000000) + "</a>"; }},
      {"a comment of 2 MB", kYes, [] { return "<a><!--" + Filled(2000000) + "--></a>"; }},
      {"an instruction of 2 MB", kYes, [] { return "<a><?p " + Filled(2000000) + "?></a>"; }},
      {"a section of 2 MB", kYes, [] { return "<a><![CDATA[" + Filled(2000000) + "]]></a>"; }},
      {"a name of a million units", kYes, [] { return "<" + Filled(200000) + "/>"; }},
      {"a namespace of a million units", kYes,
       [] { return "<a xmlns='" + Filled(200000) + "'/>"; }},
      {"200,000 character references", kYes,
       [] { return "<a>" + Repeated("&#65;", 200000) + "</a>"; }},
      {"the same in an attribute", kYes,
       [] { return "<a b='" + Repeated("&#65;", 200000) + "'/>"; }},
      {"200,000 entity references", kYes, [] { return "<a>" + Repeated("&lt;", 200000) + "</a>"; }},
      {"150,000 elements", kYes, [] { return "<a>" + Repeated("<b/>", 150000) + "</a>"; }},
      {"100,000 instructions and comments", kYes,
       [] { return "<a>" + Repeated("<?p?><!---->", 100000) + "</a>"; }},
      {"100,000 sections", kYes, [] { return "<a>" + Repeated("<![CDATA[x]]>", 100000) + "</a>"; }},
      {"instructions in front of the root", kMaybe,
       [] { return Repeated("<?p?>", 100000) + "<a/>"; }},
      {"comments behind the root", kMaybe, [] { return "<a/>" + Repeated("<!---->", 100000); }},
      {"2 MB of '<'", kNo, [] { return Repeated("<", 2000000); }, ""},
      {"2 MB of '&'", kNo, [] { return "<a>" + Repeated("&", 2000000); }, ""},
      {"2 MB of ']]>'", kNo, [] { return "<a>" + Repeated("]]>", 700000) + "</a>"; }, ""},
      {"2 MB of blanks", kNo, [] { return Repeated(" ", 2000000); }, ""},
      {"2 MB within a tag", kNo, [] { return "<a " + Repeated(" ", 2000000); }, ""},
      {"a subset without an end", kNo, [] { return "<!DOCTYPE a [" + Repeated(" ", 2000000); }, ""},
      {"'&#' without an end", kNo,
       [] { return With("<!ENTITY e '" + Repeated("&#", 60000) + "'>", "<a/>"); }, ""},
      {"references that no one declared", kNo,
       [] { return With("<!ENTITY e 'x'>", "<a>" + Numbered("&f#;", 100000) + "</a>"); }, ""},
  };
}

}  // namespace quen::test

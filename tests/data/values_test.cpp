// SPDX-License-Identifier: Apache-2.0
//
// Values, attributes and binary data by path.
#include <limits>

#include "tests/data/rows.h"

namespace quen::test {
namespace {

template <class W>
class Values : public DataTest<W> {};
TYPED_TEST_SUITE(Values, Widths, WidthNames);

TYPED_TEST(Values, AreWritten) {
  using D = typename TypeParam::Data;
  const std::string zeros(49, '0');
  this->Run({
      {"SetData makes the text", "<a/>", [](D& t) { t.SetData("v"_t, "/a"_t); }, "<a>v</a>"},
      {"the first text alone changes", "<a>x<c/>y</a>", [](D& t) { t.SetData("9"_t, "/a"_t); },
       "<a>9<c/>y</a>"},
      {"without one it is appended", "<a><c/></a>", [](D& t) { t.SetData(""_t, ""_t); },
       "<a><c/></a>"},
      {"empty text is a text child", "<a><b/></a>",
       [](D& t) {
         t.SetData(""_t, "/a/b"_t);
         return t.HasChildren("/a/b"_t);
       },
       "1"},
      {"several elements: the first", "<a><b/><b/></a>", [](D& t) { t.SetData("v"_t, "//b"_t); },
       "<a><b>v</b><b/></a>"},
      {"at the cursor", "<a><b/></a>",
       [](D& t) {
         t.CursorTo("b"_t);
         t.SetData(-5, ""_t);
       },
       "<a><b>-5</b></a>"},
      {"unsigned", "<a/>", [](D& t) { t.SetData(4294967295u, "/a"_t); }, "<a>4294967295</a>"},
      {"a double", "<a/>", [](D& t) { t.SetData(2.5, "/a"_t); }, "<a>2.5" + zeros + "</a>"},
      {"a float", "<a/>", [](D& t) { t.SetData(-0.25f, "/a"_t); },
       "<a>-0.25" + zeros.substr(1) + "</a>"},
      {"an attribute is no element", "<a id='1'/>", [](D& t) { t.SetData("v"_t, "/a/@id"_t); },
       kNoElement},
      {"nothing is made", "<a/>", [](D& t) { t.SetData("v"_t, "/a/b"_t); }, kNoPathForElement},
      {"on the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.SetData("v"_t, ""_t);
       },
       kNotInitialized + "CQuenXMLElementImpl2w::SetValue()"},

      {"AddData makes a child", "<a>t</a>", [](D& t) { t.AddData("v"_t, "/a/b"_t); },
       "<a>t<b>v</b></a>"},
      {"and another", "<a/>",
       [](D& t) {
         t.AddData(1, "/a/b"_t);
         t.AddData(2u, "/a/b"_t);
       },
       "<a><b>1</b><b>2</b></a>"},
      {"below the cursor", "<a><b/></a>",
       [](D& t) {
         t.CursorTo("b"_t);
         t.AddData("v"_t, "c"_t);
       },
       "<a><b><c>v</c></b></a>"},
      {"one segment with a slash is the element itself", "<a>x</a>",
       [](D& t) { t.AddData("v"_t, "/a"_t); }, "<a>v</a>"},
      {"a slash at the end too", "<a><b/></a>", [](D& t) { t.AddData("v"_t, "b/"_t); },
       "<a><b>v</b></a>"},
      {"a parent that is missing", "<a/>", [](D& t) { t.AddData("v"_t, "z/b"_t); }, "<a/>"},
      {"a parent that is no element", "<a x='1'/>", [](D& t) { t.AddData("v"_t, "@x/b"_t); },
       "<a x=\"1\"/>"},
      {"the document alone", "<a/>", [](D& t) { t.AddData("v"_t, "/"_t); }, "<a/>"},
      {"a cursor on the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.AddData("v"_t, "b"_t);
       },
       "<a/>"},
      {"a predicate is part of the name", "<a/>", [](D& t) { t.AddData("v"_t, "/a/b[1]"_t); },
       "5 DOM Error: invalid or illegal XML character @ "
       "CQuenXMLDocumentImpl2w::CreateElement(const STD(wstring) inElementName)"},
      {"an empty path", "<a/>", [](D& t) { t.AddData(1.5, ""_t); },
       "1013 Empty Path not allowed in AddData() @ CQuenXMLDataImpl2::AddData"},

      {"RemoveData", "<a><b>t</b><b/></a>", [](D& t) { t.RemoveData("/a/b"_t); }, "<a><b/></a>"},
      {"moves the cursor up if it goes itself", "<a><b/></a>",
       [](D& t) {
         t.CursorTo("b"_t);
         t.RemoveData(""_t);
         return t.GetPath();
       },
       "/a"},
      {"but not by path", "<a><b><c/></b></a>",
       [](D& t) {
         t.CursorTo("b/c"_t);
         t.RemoveData("/a/b"_t);
         return t.GetPath();
       },
       "/b/c"},
      {"of what is missing", "<a/>", [](D& t) { t.RemoveData("b"_t); }, kNoPath + "RemoveData"},
      {"of an attribute", "<a b='1'/>", [](D& t) { t.RemoveData("@b"_t); }, kNoPath + "RemoveData"},
      {"of the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.RemoveData(""_t);
       },
       kNotInitialized + "CQuenXMLNodeImpl2w::RemoveChild()"},
      {"of the root", "<a/>",
       [](D& t) {
         t.RemoveData("/a"_t);
         const auto had = t.HasRoot();
         t.AddRootNode("b"_t);
         return std::to_string(had) + TestFixture::All(t);
       },
       "0<b/>"},
      {"of the root behind a comment leaves the flag", "<!--x--><a/>",
       [](D& t) {
         t.RemoveData(""_t);
         return std::to_string(t.HasRoot()) + TestFixture::All(t);
       },
       "1<!--x-->"},
  });
}

TYPED_TEST(Values, AreRead) {
  using D = typename TypeParam::Data;
  using S = typename TypeParam::String;
  const auto text = [](const char* path) {
    return [path](D& t) { return TestFixture::Out([&](S& s) { t.GetData(s, RowText{path}); }); };
  };
  this->Run({
      {"text", "<a>x<c/>y</a>", text("/a"), "x"},
      {"none", "<a><c/></a>", text("/a"), ""},
      {"a CDATA section is none", "<a><![CDATA[x]]></a>", text(""), ""},
      {"of several elements the first", "<a><b>1</b><b>2</b></a>", text("b"), "1"},
      {"the second", "<a><b>1</b><b>2</b></a>", text("/a/b[2]"), "2"},
      {"an attribute is none", "<a id='1'/>", text("/a/@id"), kNoPath + "GetData"},
      {"text itself is none", "<a>x</a>", text("text()"), kNoPath + "GetData"},
      {"a wrong path", "<a/>",
       [](D& t) {
         S s;
         try {
           t.GetData(s, "a["_t);
         } catch (const typename TypeParam::Exception& e) {
           return e.GetErrorCode();
         }
         return 0u;
       },
       "1010"},
      {"at a cursor on text", "<a>x</a>",
       [text](D& t) {
         t.SetCursor(t.GetCursor().GetFirstChild());
         return text("")(t);
       },
       "x"},
      {"a failure leaves the variable", "<a/>",
       [](D& t) {
         return TestFixture::Out([&](S& s) { FailureAt<TypeParam>([&] { t.GetData(s, "b"_t); }); });
       },
       "kept"},
  });
}

// Reads `inText` as a value and as an attribute; "kept" for the 77 that stood there before.
template <class W, class Number>
std::string ReadAs(const std::string& inText) {
  typename W::Data tree(typename W::String(RowText{"<a n='" + inText + "'>" + inText + "</a>"}));
  const auto show = [](Number number) {
    return number == Number{77} ? "kept" : std::to_string(number);
  };
  Number value = 77;
  Number attribute = 77;
  const std::string failure = Failure<W>([&] { tree.GetData(value, "/a"_t); });
  tree.GetAttr("n"_t, attribute, "/a"_t);
  const std::string shown = show(value);
  EXPECT_EQ(show(attribute), shown) << inText;
  if (failure.empty()) return shown;
  EXPECT_EQ(shown, "kept");
  return failure;
}

TYPED_TEST(Values, NumbersHaveTheirRanges) {
  using W = TypeParam;
  const std::string none = "1011 Data conversion error";
  const struct {
    const char* text;
    std::string asLong;
    std::string asUnsigned;
  } kIntegers[] = {
      {"5", "5", "5"},
      {"-1", "-1", "kept"},
      {"2147483647", "2147483647", "2147483647"},
      {"2147483648", "kept", "2147483648"},
      {"2147483647.4", "2147483647", "2147483647"},
      {"2147483647.5", "kept", "2147483648"},
      {"-2147483648", "-2147483648", "kept"},
      {"-2147483648.5", "-2147483648", "kept"},
      {"-2147483648.6", "kept", "kept"},
      {"4294967295", "kept", "4294967295"},
      {"4294967295.5", "kept", "kept"},
      {"-0.5", "0", "0"},
      {"12abc", "12", "12"},
      {"123.7", "124", "124"},
      {"2.5", "2", "2"},
      {"1e3", "1000", "1000"},
      {"  8", "8", "8"},
      {"", none, none},
      {"abc", none, none},
      {"1e30", none, none},  // more than twenty characters
  };
  for (const auto& row : kIntegers) {
    EXPECT_EQ((ReadAs<W, std::int32_t>(row.text)), row.asLong) << row.text;
    EXPECT_EQ((ReadAs<W, std::uint32_t>(row.text)), row.asUnsigned) << row.text;
  }
  const struct {
    const char* text;
    std::string asFloat;
    std::string asDouble;
  } kReals[] = {
      {"2.5", "2.500000", "2.500000"},
      {"-1e-60", "-0.000000", "-0.000000"},
      {"1e38", "99999996802856924650656260769173209088.000000",
       "99999999999999997748809823456034029568.000000"},
      {"4e38", "kept", "399999999999999990995239293824136118272.000000"},
      {"-4e38", "kept", "-399999999999999990995239293824136118272.000000"},
      {"1e309", none, none},
      {".", none, none},
  };
  for (const auto& row : kReals) {
    EXPECT_EQ((ReadAs<W, float>(row.text)), row.asFloat) << row.text;
    EXPECT_EQ((ReadAs<W, double>(row.text)), row.asDouble) << row.text;
  }
}

TYPED_TEST(Values, NumbersComeBackAsTheyWere) {
  typename TypeParam::Data tree = this->Tree("<a/>");
  const auto both = [&](auto value) {
    auto read = value;
    read = 77;
    tree.SetData(value, "/a"_t);
    tree.GetData(read, "/a"_t);
    EXPECT_EQ(read, value);
    read = 77;
    tree.SetAttr("n"_t, value, "/a"_t);
    tree.GetAttr("n"_t, read, "/a"_t);
    EXPECT_EQ(read, value);
  };
  both(std::numeric_limits<double>::max());
  both(std::numeric_limits<double>::lowest());
  both(0.1);
  both(1e-30);
  both(std::numeric_limits<float>::max());
  both(0.1f);
  both(std::numeric_limits<std::int32_t>::min());
  both(std::numeric_limits<std::int32_t>::max());
  both(std::numeric_limits<std::uint32_t>::max());
}

TYPED_TEST(Values, Attributes) {
  using D = typename TypeParam::Data;
  using S = typename TypeParam::String;
  const auto attribute = [](const char* name, const char* path) {
    return [name, path](D& t) {
      return TestFixture::Out([&](S& s) { t.GetAttr(RowText{name}, s, RowText{path}); });
    };
  };
  this->Run({
      {"SetAttr", "<a/>", [](D& t) { t.SetAttr("n"_t, "<\u20ac"_t, "/a"_t); },
       "<a n=\"&lt;\u20ac\"/>"},
      {"overwrites", "<a n='1'/>", [](D& t) { t.SetAttr("n"_t, 5u, ""_t); }, "<a n=\"5\"/>"},
      {"a missing element", "<a/>", [](D& t) { t.SetAttr("n"_t, "v"_t, "b"_t); },
       kNoPathForElement},
      {"an attribute's attribute", "<a b='1'/>", [](D& t) { t.SetAttr("n"_t, "v"_t, "@b"_t); },
       kNoElement},
      {"no name", "<a/>", [](D& t) { t.SetAttr("@n"_t, "v"_t, "/a"_t); },
       "5 DOM Error: invalid or illegal XML character @ CQuenXMLElementImpl2w::SetAttribute()"},
      {"on the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.SetAttr("n"_t, "v"_t, ""_t);
       },
       kNotInitialized + "CQuenXMLElementImpl2w::SetAttribute()"},
      {"GetAttr", "<a><b n='v'/></a>", attribute("n", "b"), "v"},
      {"absent", "<a/>", attribute("n", ""), ""},
      {"of a missing element", "<a/>", attribute("n", "b"), kNoPath + "GetAttr"},
      {"of another node", "<a>x</a>", attribute("n", "text()"), kNoPath + "GetAttr"},
      {"on the document", "<a/>",
       [attribute](D& t) {
         t.CursorToParent();
         return attribute("n", "")(t);
       },
       kNotInitialized + "CQuenXMLElementImpl2w::GetAttribute()"},
      {"no number raises nothing", "<a n='x'/>",
       [](D& t) {
         std::int32_t l = 77;
         t.GetAttr("n"_t, l, ""_t);
         t.GetAttr("z"_t, l, ""_t);
         return l;
       },
       "77"},
      {"HasAttr", "<a p:n='' xmlns:p='u'/>",
       [](D& t) {
         return std::to_string(t.HasAttr("p:n"_t, "/a"_t)) +
                std::to_string(t.HasAttr("n"_t, "/a"_t)) +
                std::to_string(t.HasAttr("p:n"_t, ""_t)) +
                std::to_string(t.HasAttr("xmlns:p"_t, ""_t)) +
                std::to_string(t.HasAttr("p:n"_t, "/z"_t)) +
                std::to_string(t.HasAttr("p:n"_t, "/["_t));
       },
       "101100"},
      {"HasAttr on the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         // In both widths it is the wide failure that leaves this operation.
         return FailureAt<WideTypes>([&] { t.HasAttr("n"_t, ""_t); });
       },
       kNotInitialized + "CQuenXMLElementImpl2w::attr_begin()"},
      {"RemoveAttr", "<a n='1' m='2'/>",
       [](D& t) {
         t.RemoveAttr("n"_t, "/a"_t);
         t.RemoveAttr("z"_t, ""_t);
       },
       "<a m=\"2\"/>"},
      {"of a missing element", "<a/>", [](D& t) { t.RemoveAttr("n"_t, "/z"_t); },
       kNoPathForElement},
      {"on the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.RemoveAttr("n"_t, ""_t);
       },
       kNotInitialized + "CQuenXMLElementImpl2w::RemoveAttribute()"},
  });
}

TYPED_TEST(Values, BinaryData) {
  using D = typename TypeParam::Data;
  using S = typename TypeParam::String;
  static const unsigned char kBytes[] = {0, 0xFF, 'a', 0, 0x80};
  const auto read = [](D& t) {
    return TestFixture::Out([&](S& s) { t.GetBinaryData(s, "/a"_t); });
  };
  const std::string invalid = "1002 Invalid Binary Data @ CQuenXMLDataImpl::GetBinaryData()";
  this->Run({
      {"text", "<a/>", [](D& t) { t.SetBinaryData("abc"_t, "/a"_t); }, "<a>0x616263</a>"},
      {"not its units but its UTF-8", "<a/>", [](D& t) { t.SetBinaryData("\u20ac"_t, ""_t); },
       "<a>0xe282ac</a>"},
      {"nothing", "<a/>", [](D& t) { t.SetBinaryData(""_t, "/a"_t); }, "<a>0x</a>"},
      {"added twice", "<a/>",
       [](D& t) {
         t.AddBinaryData("a"_t, "/a/b"_t);
         t.AddBinaryData(kBytes, 2, "b"_t);
       },
       "<a><b>0x61</b><b>0x00ff</b></a>"},
      {"bytes", "<a/>", [](D& t) { t.SetBinaryData(kBytes, 5, "/a"_t); }, "<a>0x00ff610080</a>"},
      {"no bytes", "<a/>", [](D& t) { t.SetBinaryData(nullptr, 0, "/a"_t); }, "<a>0x</a>"},
      {"a path that is missing", "<a/>", [](D& t) { t.SetBinaryData("a"_t, "b"_t); },
       kNoPathForElement},
      {"read back", "<a>0x616263</a>", read, "abc"},
      {"capitals", "<a>0xE282AC</a>", read, "\u20ac"},
      {"nothing read back", "<a>0x</a>", read, ""},
      {"an odd digit is lost", "<a>0x616</a>", read, "a"},
      {"up to a zero byte", "<a>0x610062</a>", read, "a"},
      {"plain text", "<a>abc</a>", read, invalid},
      {"a capital prefix", "<a>0X61</a>", read, invalid},
      {"no text", "<a/>", read, invalid},
      {"no UTF-8", "<a>0xff</a>", read,
       "78 The bytes are not well-formed UTF-8 at byte 0 @ "
       "CQuenXMLImplUtils2w::TranscodeFromUTF8()"},
      {"a failure leaves the variable", "<a>0xff</a>",
       [](D& t) {
         return TestFixture::Out(
             [&](S& s) { FailureAt<TypeParam>([&] { t.GetBinaryData(s, "/a"_t); }); });
       },
       "kept"},
  });
}

// `length` is the capacity on entry, the number of bytes on return if all of them fit, and stays
// as it was if they did not.
TYPED_TEST(Values, TheCapacityOfABuffer) {
  typename TypeParam::Data tree = this->Tree("<a/>");
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  tree.SetBinaryData(reinterpret_cast<const unsigned char*>(all.data()), 256, "/a"_t);
  for (const std::uint32_t capacity : {0u, 1u, 255u, 256u, 257u, 400u}) {
    std::string buffer(400, '#');
    std::uint32_t length = capacity;
    tree.GetBinaryData(reinterpret_cast<unsigned char*>(buffer.data()), length, "/a"_t);
    const std::uint32_t copied = std::min(capacity, 256u);
    EXPECT_EQ(length, capacity < 256 ? capacity : 256u);
    EXPECT_EQ(buffer, all.substr(0, copied) + std::string(400 - copied, '#'));
  }
  std::uint32_t length = 0;
  tree.GetBinaryData(nullptr, length, "/a"_t);
  EXPECT_EQ(length, 0u);
}

TEST(HasAttr, ComparesAllOfAWideName) {
  CQuenXMLData2w tree(u"<a n='1'/>");
  EXPECT_EQ(tree.HasAttr(wstring(u"n\0x", 3), u"/a"), 0);
}

}  // namespace
}  // namespace quen::test

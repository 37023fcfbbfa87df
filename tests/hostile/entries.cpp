// SPDX-License-Identifier: Apache-2.0
#include "tests/hostile/entries.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include <quenxml2/cipher.h>
#include <quenxml2/xsl.h>

#include "tests/components/cipher_support.h"
#include "tests/support/widths.h"
#include "tests/xsl/xsl_support.h"

namespace quen::test {
namespace {

constexpr char kHeld[] = "<held>1</held>";

std::string WriteFile(const std::string& inPath, const std::string& inBytes) {
  std::ofstream(inPath, std::ios::binary) << inBytes;
  return inPath;
}

std::string Enciphered(const std::string& inText) {
  CQuenAESW cipher;
  cipher.SetKey(testing::kRawKey);
  return cipher.EncryptString(WideTypes::Text(inText));
}

// Narrow operations that decipher let wide failures through.
template <class Operation>
std::uint32_t CodeOf(std::string& outMessage, Operation&& inOperation) {
  try {
    inOperation();
    return 0;
  } catch (const CQuenXMLException2& failure) {
    outMessage = failure.GetErrorMessage();
    return failure.GetErrorCode();
  } catch (const CQuenXMLException2w& failure) {
    outMessage = WideTypes::Utf8(failure.GetErrorMessage());
    return failure.GetErrorCode();
  }
}

template <class Width>
class Entries {
 public:
  Entries(const std::string& inFolder, std::vector<Entry>& outEntries)
      : folder_(inFolder), entries_(outEntries) {
    const std::string schema = WriteFile(
        folder_ + "/any.xsd",
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'>"
        "<xs:complexType mixed='true'><xs:sequence><xs:any minOccurs='0' maxOccurs='unbounded' "
        "processContents='lax'/></xs:sequence><xs:anyAttribute processContents='lax'/>"
        "</xs:complexType></xs:element></xs:schema>");
    const String key = Width::Text(Narrow(testing::kRawKey));

    Document("LoadXML", Enters::kText,
             [](auto& document, const std::string& text) { document.LoadXML(Width::Text(text)); });
    entries_.back().isPlain = entries_.back().isWide;
    Document("LoadXML without namespaces", Enters::kText, [](auto& document, const auto& text) {
      document.SetDoNamespaceOnParse(0);
      document.LoadXML(Width::Text(text));
    });
    Document("LoadXML against a schema", Enters::kChecked,
             [schema](auto& document, const std::string& text) {
               document.SetDoValidationOnParse(1);
               document.SetExternalNoNamespaceSchemaLocation(Width::Text(schema));
               try {
                 document.LoadXML(Width::Text(text));
               } catch (...) {
                 document.SetDoValidationOnParse(0);
                 throw;
               }
               document.SetDoValidationOnParse(0);
             });
    Document("Load of a file", Enters::kText, [folder = folder_](auto& document, auto& text) {
      document.Load(Width::Text(WriteFile(folder + "/document.xml", text)));
    });
    entries_.back().isPlain = entries_.back().isWide;
    Document("LoadXMLEncrypted", Enters::kText, [key](auto& document, const std::string& text) {
      document.LoadXMLEncrypted(Enciphered(text), key);
    });
    Document("LoadEncrypted", Enters::kText, [key, folder = folder_](auto& document, auto& text) {
      document.LoadEncrypted(Width::Text(WriteFile(folder + "/document.bin", Enciphered(text))),
                             key);
    });
    Grafted("AppendSubset of an element", [](auto& document, const std::string& text) {
      document.GetDocumentElement().AppendSubset(Width::Text(text));
    });

    Tree("AppendSubset", [](auto& tree, const std::string& text) {
      tree.AppendSubset(Width::Text(text), Width::Text("/held"));
    });
    Tree("AppendUTF8Subset",
         [](auto& tree, const std::string& text) { Width::Impl(tree).AppendUTF8Subset(text); });
    Tree("AppendEncryptedSubset", [key](auto& tree, const std::string& text) {
      tree.AppendEncryptedSubset(Enciphered(text), key, Width::Text("/held"));
    });
    Tree("ReadFromFile", [folder = folder_](auto& tree, const std::string& text) {
      tree.ReadFromFile(Width::Text(WriteFile(folder + "/tree.xml", text)));
    });
    Tree("ReadFromEncryptedFile", [key, folder = folder_](auto& tree, const std::string& text) {
      tree.ReadFromEncryptedFile(Width::Text(WriteFile(folder + "/tree.bin", Enciphered(text))),
                                 key);
    });
    Add("construction of a tree", Enters::kText, [](const std::string& text, std::string& message) {
      return CodeOf(message, [&] { typename Width::Data tree(Width::Text(text)); });
    });
    // A failed assignment leaves an empty tree.
    Add("assignment to a tree", Enters::kText, [](const std::string& text, std::string& message) {
      typename Width::Data tree(Width::Text(kHeld));
      const std::uint32_t code = CodeOf(message, [&] { tree = Width::Text(text); });
      if (code != 0) {
        EXPECT_EQ(Whole<Width>(tree), "");
      }
      tree = Width::Text("<next/>");
      EXPECT_EQ(Whole<Width>(tree), "<next/>");
      return code;
    });

    Message("SetMessageContents",
            [](auto& message, const std::string& text) { message.SetMessageContents(text); });
    Message("SetEncryptedMessageContents", [key](auto& message, const std::string& text) {
      message.SetEncryptedMessageContents(Enciphered(text), key);
    });

    Add("SetError with a detail", Enters::kText, [](const std::string& text, std::string& message) {
      typename Width::Msg held(Width::Text(kHeld));
      const std::uint32_t code = CodeOf(message, [&] {
        held.SetError(Width::Text("c"), 7, Width::Text("m"), Width::Text(text));
      });
      String context, what, detail;
      std::uint32_t number = 0;
      held.GetError(context, number, what, detail);
      EXPECT_EQ(number, 7U);
      if (code != 0) {
        EXPECT_EQ(Width::Utf8(detail), "");
      }
      held.ClearError();
      EXPECT_FALSE(held.HasError());
      return code;
    });

    Source("source in a stream", [](auto& xsl, auto handle, const auto& text, auto& out) {
      xsl.Transform(std::istringstream(text), out, handle);
    });
    entries_.back().isPlain = entries_.back().isWide;
    Source("source in a file",
           [folder = folder_](auto& xsl, auto handle, const auto& text, auto& out) {
             const std::string result = folder + "/result.xml";
             xsl.Transform(Width::Text(WriteFile(folder + "/source.xml", text)),
                           Width::Text(result), handle);
             out << std::ifstream(result, std::ios::binary).rdbuf();
           });
    Add("style sheet in a stream", Enters::kStyle,
        [](const std::string& text, std::string& message) {
          Xsl xsl;
          std::ostringstream out;
          std::istringstream source("<a/>"), sheet(text);
          const std::uint32_t code = CodeOf(message, [&] { xsl.Transform(source, sheet, out); });
          ExpectWorks(xsl);
          return code;
        });
    Add("registration of a style sheet", Enters::kStyle,
        [](const std::string& text, std::string& message) {
          Xsl xsl;
          std::uintptr_t handle = 7;
          const std::uint32_t code = CodeOf(
              message, [&] { xsl.RegisterCompiledStyleSheet(std::istringstream(text), handle); });
          if (code != 0) {
            EXPECT_EQ(handle, 7U);
          }
          ExpectWorks(xsl);
          return code;
        });
  }

 private:
  using String = typename Width::String;
  using Xsl = std::conditional_t<std::is_same_v<Width, WideTypes>, CQuenXSL2w, CQuenXSL2>;

  static std::string Narrow(const std::u16string& inText) { return WideTypes::Utf8(inText); }

  template <class Run>
  void Add(const std::string& inName, Enters inAs, Run&& inRun) {
    const bool isWide = std::is_same_v<Width, WideTypes>;
    entries_.push_back({(isWide ? "wide " : "narrow ") + inName, inAs, isWide, false, inRun});
  }

  static void ExpectHeld(const typename Width::Document& inDocument) {
    EXPECT_EQ(Width::Utf8(inDocument.GetSubset()), kHeld);
  }

  // What enters becomes the document, or a child of its root.
  template <class Enter>
  void Document(const std::string& inName, Enters inAs, Enter&& inEnter) {
    Add(inName, inAs, [inEnter](const std::string& text, std::string& message) {
      typename Width::Document document;
      document.LoadXML(Width::Text(kHeld));
      const std::uint32_t code = CodeOf(message, [&] { inEnter(document, text); });
      if (code != 0) ExpectHeld(document);
      document.LoadXML(Width::Text("<next/>"));
      EXPECT_EQ(Width::Utf8(document.GetSubset()), "<next/>");
      return code;
    });
  }
  template <class Enter>
  void Grafted(const std::string& inName, Enter&& inEnter) {
    Document(inName, Enters::kText, inEnter);
  }

  template <class Enter>
  void Tree(const std::string& inName, Enter&& inEnter) {
    Add(inName, Enters::kText, [inEnter](const std::string& text, std::string& message) {
      typename Width::Data tree(Width::Text(kHeld));
      const std::uint32_t code = CodeOf(message, [&] { inEnter(tree, text); });
      if (code != 0) {
        EXPECT_EQ(Whole<Width>(tree), kHeld);
      }
      if (code != 0) tree.SetData(Width::Text("2"), Width::Text("/held"));
      tree.CursorToRoot();
      tree.AddChildNode(Width::Text("next"), Width::Text(""));
      EXPECT_EQ(tree.CursorToLastChild(), 1);
      return code;
    });
  }

  template <class Enter>
  void Message(const std::string& inName, Enter&& inEnter) {
    Add(inName, Enters::kText, [inEnter](const std::string& text, std::string& message) {
      typename Width::Msg held(Width::Text(kHeld));
      const std::string before = held.GetMessageContents();
      const std::uint32_t code = CodeOf(message, [&] { inEnter(held, text); });
      if (code != 0) {
        EXPECT_EQ(held.GetMessageContents(), before);
      }
      held.SetMessageContents("<next/>");
      EXPECT_EQ(Width::Utf8(held.GetMessageName()), "next");
      return code;
    });
  }

  static void ExpectWorks(Xsl& ioXsl) {
    std::istringstream source("<a>1</a>"), sheet(RootSheet("<r><xsl:value-of select='a'/></r>"));
    std::ostringstream out;
    ioXsl.Transform(source, sheet, out);
    EXPECT_EQ(out.str(), "<r>1</r>");
  }

  template <class Enter>
  void Source(const std::string& inName, Enter&& inEnter) {
    Add(inName, Enters::kSource, [inEnter](const std::string& text, std::string& message) {
      Xsl xsl;
      std::uintptr_t handle = 0;
      xsl.RegisterCompiledStyleSheet(
          std::istringstream(RootSheet("<r><xsl:value-of select='string-length(.)'/></r>")),
          handle);
      std::ostringstream out;
      const std::uint32_t code = CodeOf(message, [&] { inEnter(xsl, handle, text, out); });
      if (code == 0) {
        EXPECT_EQ(out.str().substr(0, 3), "<r>");
      }
      ExpectWorks(xsl);
      return code;
    });
  }

  const std::string folder_;
  std::vector<Entry>& entries_;
};

}  // namespace

std::vector<Entry> AllEntries(const std::string& inFolder) {
  std::vector<Entry> entries;
  Entries<WideTypes>(inFolder, entries);
  Entries<NarrowTypes>(inFolder, entries);
  return entries;
}

}  // namespace quen::test

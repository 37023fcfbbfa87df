// SPDX-License-Identifier: Apache-2.0
// Bytes as operations on a tree, a second tree and handles into both, in both widths side by side:
// the same outcome after each, and every object stays usable.
#include <fuzzer/FuzzedDataProvider.h>

#include <vector>

#include "fuzz/support.h"

namespace quen::fuzz {
namespace {

constexpr const QuenXMLDOMNode2w_NullPtr* kNull = nullptr;
constexpr std::size_t kSteps = 60;
constexpr std::size_t kMaxText = 20000;  // trees that are appended to each other double each time

template <class W>
class Driver {
 public:
  using Node = typename W::Node;
  using Data = typename W::Data;
  using String = typename W::String;
  using Failure = typename W::Exception;

  Driver(const std::uint8_t* inBytes, std::size_t inSize) : choices_(inBytes, inSize) {}

  std::string Run() {
    for (std::size_t i = 0; i < kSteps && choices_.remaining_bytes() != 0; ++i) {
      const unsigned operation = choices_.ConsumeIntegralInRange<unsigned>(0, 40);
      out_ += std::to_string(operation) + " ";
      out_ += FailureOf<Failure>([&] { Step(operation); }) + "\n";
      Check(tree_);
      Check(other_);
      for (const Node& node : handles_) Ask(node);
      if (Whole(tree_).size() + Whole(other_).size() > kMaxText) break;
    }
    return out_;
  }

 private:
  String Text(const char* const* inPool, std::size_t inCount) {
    const unsigned pick = choices_.ConsumeIntegralInRange<unsigned>(0, 3);
    if (pick == 0) {
      // Its own bytes: ASCII, of which every unit is one byte in both widths. A zero byte ends a
      // narrow text before the operation sees it, a zero unit does not.
      std::string text = choices_.ConsumeRandomLengthString(12);
      for (char& unit : text) unit = (unit & 0x7F) == 0 ? 'z' : static_cast<char>(unit & 0x7F);
      return W::Text(text);
    }
    return W::Text(inPool[choices_.ConsumeIntegralInRange<std::size_t>(0, inCount - 1)]);
  }
  String Path() {
    static constexpr const char* kPaths[] = {"",
                                             "/",
                                             "a",
                                             "b",
                                             "/a",
                                             "/a/b",
                                             "b[2]",
                                             "..",
                                             "../..",
                                             ".",
                                             "//b",
                                             "//*",
                                             "@x",
                                             "//@x",
                                             "*",
                                             "*[last()]",
                                             "text()",
                                             "comment()",
                                             "/a/",
                                             "b/c",
                                             "//text()",
                                             "/a/b[@x='1']",
                                             "/none",
                                             "a[",
                                             "count(*)",
                                             "//node()",
                                             "processing-instruction()"};
    return Text(kPaths, std::size(kPaths));
  }
  String Name() {
    static constexpr const char* kNames[] = {"a", "b",   "c",     "x",     "\u00e9", "1",
                                             "",  "p:b", "xmlns", "xml:a", "a b",    "xmlns:p"};
    return Text(kNames, std::size(kNames));
  }
  String Value() {
    static constexpr const char* kValues[] = {"",       "1",   "-2.5", "x",    "\u20ac\U0001F600",
                                              "<&>\"'", "]]>", "--",   "0x41", "0xg",
                                              "1e40",   "nan", " 7",   "?>",   "\x01",
                                              "\r\n"};
    return Text(kValues, std::size(kValues));
  }
  String Xml() {
    static constexpr const char* kTexts[] = {
        "",
        "<a/>",
        "<a><b x='1'/><b>t<!--c--><c/></b></a>",
        "<b xmlns='u'>1</b>",
        "<a",
        "<!--c--><a/><?p d?>",
        "<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '<a/>'>]><a>&e;x</a>",
        "<p:b xmlns:p='urn:1' p:x='2'/>",
        "<a>1<![CDATA[<2>]]>3</a>"};
    return Text(kTexts, std::size(kTexts));
  }

  std::string Whole(const Data& inTree) const {
    String text;
    const std::string failure = FailureOf<Failure>([&] { inTree.GetSubset(text, W::Text("/")); });
    return failure.empty() ? Shown(text) : failure;
  }
  static std::string Document(const Data& inTree) {
    string text;
    const std::string failure =
        FailureOf<CQuenXMLException2w>([&] { W::Impl(inTree).GetUTF8Subset(text); });
    return failure.empty() ? text : failure;
  }
  // A handle answers, wherever its node has gone.
  void Ask(const Node& inNode) {
    out_ += Shown(inNode.GetName()) + "|" + Shown(inNode.GetValue()) + "|" +
            std::to_string(inNode.GetNodeType()) + (inNode.GetParent() == kNull ? "." : "^");
    out_ += FailureOf<Failure>([&] { out_ += Shown(inNode.GetSubset()); }) + "\n";
  }
  void Check(const Data& inTree) {
    out_ += std::to_string(inTree.HasRoot()) + Whole(inTree) + "\n";
    out_ += FailureOf<Failure>([&] { out_ += Shown(inTree.GetPath()); });
    out_ += FailureOf<Failure>([&] { out_ += Shown(inTree.GetNodeAtCursor()); });
    // Through the implementation, which looks at the document and not from where the cursor stands.
    Data copy(inTree);
    RequireSame(Document(copy), Document(inTree), "a copy is another tree");
    // A document without a root, put in as one, leaves the cursor nowhere.
    if (copy.CursorToRoot() == 1 && copy.GetCursor() != kNull) {
      copy.AddChildNode(W::Text("usable"), W::Text(""));
      Require(copy.PathExists(W::Text("usable")) == 1, "a copy is not usable");
    }
  }
  // Handles into a tree die with its document; they are not told apart here.
  void Forget() { handles_.clear(); }
  bool Pick(Node*& outNode) {
    if (handles_.empty()) return false;
    outNode = &handles_[choices_.ConsumeIntegralInRange<std::size_t>(0, handles_.size() - 1)];
    return true;
  }
  void Keep(const Node& inNode) {
    if (inNode != kNull && handles_.size() < 8) handles_.push_back(inNode);
  }
  template <class Number>
  void Numbers(Data& ioTree) {
    const String path = Path();
    const String name = Name();
    Number number = 5;
    out_ += FailureOf<Failure>([&] { ioTree.GetData(number, path); });
    out_ += FailureOf<Failure>([&] { ioTree.GetAttr(name, number, path); });
    out_ += std::to_string(number);
    ioTree.SetAttr(name, number, path);
    ioTree.AddData(number, path);
  }

  void Step(unsigned inOperation) {
    Data& tree = choices_.ConsumeBool() ? tree_ : other_;
    Data& second = &tree == &tree_ ? other_ : tree_;
    String text = W::Text("kept");
    Node* node = nullptr;
    Node* third = nullptr;
    const auto moved = [&](std::int32_t result) { out_ += std::to_string(result); };
    // Arguments are read in an order that the language leaves open only inside one call.
    const String path = inOperation < 24 ? Path() : String();
    switch (inOperation) {
      case 0: {
        Forget();
        tree = Xml();
        return;
      }
      case 1:
        if (tree.HasRoot() == 0) Forget();
        return tree.AppendSubset(Xml(), path);
      case 2:
        if (tree.HasRoot() == 0) Forget();
        return tree.AppendSubset(second, path);
      case 3:
        if (second.HasRoot() == 0) Forget();
        return tree.GetSubset(second, path);
      case 4:
        return tree.AddData(Value(), path);
      case 5:
        return tree.SetData(Value(), path);
      case 6:
        tree.GetData(text, path);
        break;
      case 7: {
        const String name = Name();
        return tree.SetAttr(name, Value(), path);
      }
      case 8:
        tree.GetAttr(Name(), text, path);
        break;
      case 9:
        return tree.RemoveAttr(Name(), path);
      case 10:
        return tree.RemoveData(path);
      case 11:
        return tree.AddChildNode(Name(), path);
      case 12:
        return tree.AddSiblingNode(Name(), path);
      case 13: {
        const String name = Name();
        return tree.AddChildNodeNS(name, Value(), path);
      }
      case 14:
        return moved(tree.CursorTo(path));
      case 15:
        return tree.AddComment(Value(), path);
      case 16:
        return tree.AddCDATA(Value(), path);
      case 17: {
        const String target = Name();
        return tree.AddProcessingInstruction(target, Value(), path);
      }
      case 18:
        tree.GetComment(text, path);
        out_ += Shown(text);
        tree.GetCDATA(text, path);
        break;
      case 19:
        tree.RemoveComment(path);
        tree.RemoveCDATA(path);
        return tree.RemoveProcessingInstruction(W::Text("a"), path);
      case 20:
        tree.AddBinaryData(Value(), path);
        tree.GetBinaryData(text, path);
        break;
      case 21: {
        std::uint32_t count = 0;
        moved(tree.HasChildren(path) * 10 + tree.PathExists(path));
        moved(tree.HasChildElement(path));
        tree.GetNumChildren(count, path);
        return moved(static_cast<std::int32_t>(count));
      }
      case 22:
        tree.GetFormattedSubset(text, path);
        break;
      case 23: {
        unsigned char bytes[5] = {};
        std::uint32_t length = sizeof bytes;
        tree.GetBinaryData(bytes, length, path);
        return moved(static_cast<std::int32_t>(length) + bytes[0]);
      }
      case 24: {
        static constexpr const char* kCreated[] = {"a", "/a/b", "b[x='1']/c", "/a/b[x='2'][y='']",
                                                   "/", "a//b", "[x='1']"};
        return static_cast<void>(tree.CreateNodes(Text(kCreated, std::size(kCreated))));
      }
      case 25:
        moved(tree.CursorToParent());
        return moved(tree.CursorToFirstChild());
      case 26:
        moved(tree.CursorToLastChild());
        return moved(tree.CursorToPreviousSibling());
      case 27:
        return moved(tree.CursorToNextSibling());
      case 28:
        return moved(tree.CursorToParent());
      case 29:
        return moved(tree.CursorToRoot());
      case 30:
        return tree.AddRootNode(Name());
      case 31:
        return Keep(tree.GetCursor());
      case 32:
        if (!Pick(node)) return;
        return tree.SetCursor(*node);
      case 33: {
        if (!Pick(node)) return;
        const Node start = *node;
        Keep(start.GetFirstChild());
        Keep(start.GetNextSibling());
        return Keep(start.GetParent());
      }
      case 34: {
        if (!Pick(node)) return;
        const Node start = *node;
        for (const auto& selected : start.SelectNodes(Path())) Keep(selected);
        return;
      }
      case 35:
        if (!Pick(node) || !Pick(third)) return;
        return Keep(node->AppendChild(*third));
      case 36:
        if (!Pick(node) || !Pick(third)) return;
        return Keep(node->RemoveChild(*third));
      case 37:
        if (!Pick(node)) return;
        return node->SetValue(Value());
      case 38: {
        Forget();
        tree = Data(second);
        return;
      }
      case 39: {
        Forget();
        typename W::Document document;
        const String xml = Xml();
        if (!xml.empty()) document.LoadXML(xml);
        return moved(tree.SetDocument(document));
      }
      default:
        switch (choices_.ConsumeIntegralInRange<unsigned>(0, 3)) {
          case 0:
            return Numbers<double>(tree);
          case 1:
            return Numbers<float>(tree);
          case 2:
            return Numbers<std::int32_t>(tree);
          default:
            return Numbers<std::uint32_t>(tree);
        }
    }
    out_ += Shown(text);
  }

  FuzzedDataProvider choices_;
  Data tree_;
  Data other_;
  std::vector<Node> handles_;
  std::string out_;
};

}  // namespace
}  // namespace quen::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* inBytes, std::size_t inSize) {
  using namespace quen::fuzz;
  RequireSame(Driver<WideTypes>(inBytes, inSize).Run(), Driver<NarrowTypes>(inBytes, inSize).Run(),
              "the widths differ");
  return 0;
}

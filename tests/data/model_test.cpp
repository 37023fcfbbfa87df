// SPDX-License-Identifier: Apache-2.0
//
// Random operations on a tree beside a plain model of it: the same outcome and the same text after
// each. The model knows names, texts and children, and nothing of the library.
#include <algorithm>
#include <list>
#include <map>
#include <memory>
#include <random>

#include "tests/data/rows.h"

namespace quen::test {
namespace {

struct ModelNode {
  char kind = 'e';   // element, text, comment, section, instruction
  std::string name;  // of an element, or the target
  std::string text;
  std::map<std::string, std::string> attributes;
  std::vector<std::unique_ptr<ModelNode>> children;
  ModelNode* parent = nullptr;

  ModelNode* Add(std::unique_ptr<ModelNode> inChild) {
    inChild->parent = this;
    children.push_back(std::move(inChild));
    return children.back().get();
  }
  ModelNode* Add(char inKind, const std::string& inName, const std::string& inText) {
    auto child = std::make_unique<ModelNode>();
    child->kind = inKind;
    child->name = inName;
    child->text = inText;
    return Add(std::move(child));
  }
  std::size_t Index() const {
    return static_cast<std::size_t>(
        std::find_if(parent->children.begin(), parent->children.end(),
                     [&](const auto& child) { return child.get() == this; }) -
        parent->children.begin());
  }
  ModelNode* First(char inKind) const {
    for (const auto& child : children)
      if (child->kind == inKind) return child.get();
    return nullptr;
  }
  std::vector<ModelNode*> Elements() const {
    std::vector<ModelNode*> elements;
    for (const auto& child : children)
      if (child->kind == 'e') elements.push_back(child.get());
    return elements;
  }
  // The n-th child element of that name, from 1.
  ModelNode* Named(const std::string& inName, int inPosition) const {
    for (ModelNode* const element : Elements())
      if (element->name == inName && --inPosition == 0) return element;
    return nullptr;
  }
};

std::string Escaped(const std::string& inText) {
  std::string text;
  for (const char unit : inText) {
    if (unit == '"')
      text += "&quot;";
    else if (unit == '&')
      text += "&amp;";
    else if (unit == '<')
      text += "&lt;";
    else if (unit == '>')
      text += "&gt;";
    else
      text += unit;
  }
  return text;
}

std::string Written(const ModelNode& inNode) {
  switch (inNode.kind) {
    case 't':
      return Escaped(inNode.text);
    case 'c':
      return "<!--" + inNode.text + "-->";
    case 's':
      return "<![CDATA[" + inNode.text + "]]>";
    case 'p':
      return "<?" + inNode.name + " " + inNode.text + "?>";
    default:
      break;
  }
  std::string text = "<" + inNode.name;
  for (const auto& [name, value] : inNode.attributes)
    text += " " + name + "=\"" + Escaped(value) + "\"";
  if (inNode.children.empty()) return text + "/>";
  text += ">";
  for (const auto& child : inNode.children) text += Written(*child);
  return text + "</" + inNode.name + ">";
}

std::unique_ptr<ModelNode> Copied(const ModelNode& inNode) {
  auto copy = std::make_unique<ModelNode>();
  copy->kind = inNode.kind;
  copy->name = inNode.name;
  copy->text = inNode.text;
  copy->attributes = inNode.attributes;
  for (const auto& child : inNode.children) copy->Add(Copied(*child));
  return copy;
}

// A document, its root flag, and a cursor on an element.
class Model {
 public:
  Model() { document_.kind = 'd'; }

  ModelNode* Root() const { return root_; }
  ModelNode* cursor = nullptr;

  void MakeRoot(const std::string& inName) { cursor = root_ = document_.Add('e', inName, ""); }
  // The removed branch stays alive: the cursor may stand in it.
  void Remove(ModelNode* inNode) {
    ModelNode* const parent = inNode->parent;
    const std::size_t at = inNode->Index();
    removed_.push_back(std::move(parent->children[at]));
    parent->children.erase(parent->children.begin() + static_cast<std::ptrdiff_t>(at));
    inNode->parent = nullptr;
    if (inNode == root_) root_ = nullptr;
  }
  std::string Text() const {
    std::string text;
    for (const auto& child : document_.children) text += Written(*child);
    return text;
  }

 private:
  ModelNode document_;
  ModelNode* root_ = nullptr;
  std::list<std::unique_ptr<ModelNode>> removed_;
};

void SetText(ModelNode& ioElement, const std::string& inText) {
  if (ModelNode* const text = ioElement.First('t'))
    text->text = inText;
  else
    ioElement.Add('t', "", inText);
}

std::string TextOf(const ModelNode& inElement) {
  const ModelNode* const text = inElement.First('t');
  return text != nullptr ? text->text : "";
}

template <class W>
class Driver {
  using Data = typename W::Data;
  using String = typename W::String;

 public:
  explicit Driver(unsigned inSeed) : random_(inSeed) {}

  // One step; false with a log line where the two differ.
  void Step() {
    if (model_.Root() == nullptr || Chance(1, 400)) {
      Restart();
      return;
    }
    switch (Pick(22)) {
      case 0:
      case 1:
        return AddData();
      case 2:
        return SetData();
      case 3:
        return GetData();
      case 4:
        return SetAttr();
      case 5:
        return GetAttr();
      case 6:
        return RemoveAttr();
      case 7:
      case 8:
        return AddChild();
      case 9:
        return AddSibling();
      case 10:
        return AddLeaf();
      case 11:
        return RemoveLeaf();
      case 12:
        return GetLeaf();
      case 13:
        return CreateNodes();
      case 14:
        return Chance(1, 3) ? RemoveData() : Questions();
      case 15:
        return Subset();
      case 16:
        return CursorTo();
      case 17:
      case 18:
        return CursorStep();
      case 19:
        return Questions();
      case 20:
        return Binary();
      default:
        return CopyOrReload();
    }
  }
  std::string Tree() const {
    std::string text;
    W::Impl(tree_).GetUTF8Subset(text);
    return text;
  }
  const Model& TheModel() const { return model_; }
  const std::string& Last() const { return last_; }

 private:
  unsigned Pick(std::size_t inCount) { return static_cast<unsigned>(random_() % inCount); }
  bool Chance(unsigned inOf, unsigned inIn) { return Pick(inIn) < inOf; }
  std::string Name() { return std::string(1, "abc"[Pick(3)]); }
  std::string Value() {
    static const char* const kValues[] = {"",   "1",   "2.5", "x<y&\"z\">", "\u20ac\U0001F600",
                                          "-7", " 8b", "v",   "0x41",       "  "};
    return kValues[Pick(std::size(kValues))];
  }
  RowText T(const std::string& inText) { return RowText{inText}; }

  // A path that leads somewhere or nowhere, and where to; "" is the cursor.
  std::string Path(ModelNode*& outElement) {
    if (Chance(1, 4)) {
      outElement = model_.cursor;
      return "";
    }
    std::string path;
    ModelNode* at = model_.cursor;
    if (Chance(2, 3)) {
      at = model_.Root();
      path = "/" + at->name;
      if (Chance(1, 12)) {
        path = "/z";
        at = nullptr;
      }
    } else {
      path = ".";
    }
    for (unsigned steps = Pick(4); steps > 0; --steps) {
      if (path[0] != '/' && Chance(1, 5)) {
        path += "/..";
        if (at != nullptr) at = at->parent;
        continue;
      }
      std::string name = Name();
      const std::vector<ModelNode*> there =
          at != nullptr ? at->Elements() : std::vector<ModelNode*>();
      if (!there.empty() && !Chance(1, 6)) name = there[Pick(there.size())]->name;
      // With a position, so that the path means one element whatever stands below its siblings.
      const int position = 1 + static_cast<int>(Pick(2));
      path += "/" + name + "[" + std::to_string(position) + "]";
      at = at != nullptr ? at->Named(name, position) : nullptr;
    }
    if (at != nullptr && at->kind == 'd') {
      path += "/" + model_.Root()->name;
      at = model_.Root();
    }
    outElement = at;
    return path;
  }

  // Runs both and compares. The model's side gives the outcome; a failure is its code.
  template <class TreeSide, class ModelSide>
  void Compare(const std::string& inWhat, TreeSide inTree, ModelSide inModel) {
    last_ = inWhat;
    std::string outcome;
    const std::string failure = Failure<W>([&] { outcome = inTree(); });
    if (!failure.empty()) outcome = "! " + failure.substr(0, failure.find(' '));
    ASSERT_EQ(outcome, inModel()) << inWhat;
  }

  void Restart() {
    last_ = "restart";
    tree_ = String();
    model_ = Model();
    const std::string name = Name();
    if (Chance(1, 2))
      tree_.AddRootNode(T(name));
    else
      tree_ = String(T("<" + name + "/>"));
    model_.MakeRoot(name);
  }

  void AddData() {
    ModelNode* parent = nullptr;
    std::string path = Path(parent);
    const std::string name = Name();
    const std::string value = Value();
    const bool isOwn = !path.empty() && Chance(1, 6);
    if (path.empty())
      path = name;
    else
      path += isOwn ? "/" : "/" + name;
    Compare(
        "AddData " + path,
        [&] {
          tree_.AddData(String(T(value)), T(path));
          return "";
        },
        [&] {
          if (parent != nullptr && isOwn)
            SetText(*parent, value);
          else if (parent != nullptr)
            parent->Add('e', name, "")->Add('t', "", value);
          return "";
        });
  }
  void SetData() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const std::string value = Value();
    Compare(
        "SetData " + path,
        [&] {
          tree_.SetData(String(T(value)), T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          SetText(*element, value);
          return "";
        });
  }
  void GetData() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    Compare(
        "GetData " + path,
        [&] {
          String value;
          tree_.GetData(value, T(path));
          return W::Utf8(value);
        },
        [&] { return element != nullptr ? TextOf(*element) : std::string("! 1013"); });
  }
  void Binary() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const unsigned char bytes[] = {0, 0x41, 0xFF};
    const std::uint32_t length = Pick(4);
    Compare(
        "SetBinaryData " + path,
        [&] {
          tree_.SetBinaryData(bytes, length, T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          SetText(*element, std::string("0x0041ff").substr(0, 2 + 2 * length));
          return "";
        });
  }
  void SetAttr() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const std::string name = Name();
    const std::string value = Value();
    Compare(
        "SetAttr " + path,
        [&] {
          tree_.SetAttr(T(name), String(T(value)), T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          element->attributes[name] = value;
          return "";
        });
  }
  void GetAttr() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const std::string name = Name();
    Compare(
        "GetAttr " + path,
        [&] {
          String value;
          const std::string has = std::to_string(tree_.HasAttr(T(name), T(path)));
          tree_.GetAttr(T(name), value, T(path));
          return has + W::Utf8(value);
        },
        [&]() -> std::string {
          if (element == nullptr) return "! 1013";
          const auto found = element->attributes.find(name);
          return found == element->attributes.end() ? "0" : "1" + found->second;
        });
  }
  void RemoveAttr() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const std::string name = Name();
    Compare(
        "RemoveAttr " + path,
        [&] {
          tree_.RemoveAttr(T(name), T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          element->attributes.erase(name);
          return "";
        });
  }
  void AddChild() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const std::string name = Name();
    Compare(
        "AddChildNode " + path,
        [&] {
          tree_.AddChildNode(T(name), T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          element->Add('e', name, "");
          return "";
        });
  }
  void AddSibling() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const std::string name = Name();
    Compare(
        "AddSiblingNode " + path,
        [&] {
          tree_.AddSiblingNode(T(name), T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          if (element->parent == nullptr) return "! 8";
          if (element->parent->kind == 'd') return "! 3";
          element->parent->Add('e', name, "");
          return "";
        });
  }
  void AddLeaf() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const char kind = "csp"[Pick(3)];
    Compare(
        "Add leaf " + path,
        [&] {
          if (kind == 'c')
            tree_.AddComment("x<"_t, T(path));
          else if (kind == 's')
            tree_.AddCDATA("x<"_t, T(path));
          else
            tree_.AddProcessingInstruction("t"_t, "x<"_t, T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          element->Add(kind, "t", "x<");
          return "";
        });
  }
  void RemoveLeaf() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const char kind = "csp"[Pick(3)];
    Compare(
        "Remove leaf " + path,
        [&] {
          if (kind == 'c')
            tree_.RemoveComment(T(path));
          else if (kind == 's')
            tree_.RemoveCDATA(T(path));
          else
            tree_.RemoveProcessingInstruction(""_t, T(path));
          return "";
        },
        [&] {
          if (element == nullptr) return "! 1013";
          if (ModelNode* const leaf = element->First(kind)) model_.Remove(leaf);
          return "";
        });
  }
  void GetLeaf() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    const char kind = "csp"[Pick(3)];
    Compare(
        "Get leaf " + path,
        [&] {
          String value = "kept"_t;
          String target;
          if (kind == 'c')
            tree_.GetComment(value, T(path));
          else if (kind == 's')
            tree_.GetCDATA(value, T(path));
          else
            tree_.GetProcessingInstruction(target, value, T(path));
          return W::Utf8(value);
        },
        [&]() -> std::string {
          if (element == nullptr) return "! 1013";
          const ModelNode* const leaf = element->First(kind);
          return leaf != nullptr ? leaf->text : "kept";
        });
  }
  void CreateNodes() {
    struct Segment {
      std::string name;
      std::vector<std::pair<std::string, std::string>> attributes;
    };
    const bool absolute = Chance(1, 2);
    std::vector<Segment> segments;
    std::string path;
    for (unsigned count = 1 + Pick(3); count > 0; --count) {
      Segment segment{Name(), {}};
      std::string text = segment.name;
      for (unsigned predicates = Pick(3); predicates > 0; --predicates) {
        const std::string name = Name();
        const std::string value(Pick(2), '1');
        segment.attributes.emplace_back(name, value);
        text += "[" + name + "='" + value + "']";
      }
      path += (path.empty() ? "" : "/") + text;
      segments.push_back(segment);
    }
    if (absolute) path = "/" + model_.Root()->name + "/" + path;
    Compare(
        "CreateNodes " + path,
        [&] {
          tree_.CreateNodes(T(path));
          return "";
        },
        [&] {
          ModelNode* at = absolute ? model_.Root() : model_.cursor;
          for (const Segment& segment : segments) {
            const std::vector<ModelNode*> there = at->Elements();
            const auto match = std::find_if(there.begin(), there.end(), [&](ModelNode* child) {
              return child->name == segment.name &&
                     std::all_of(segment.attributes.begin(), segment.attributes.end(),
                                 [&](const auto& attribute) {
                                   const auto found = child->attributes.find(attribute.first);
                                   return found != child->attributes.end() &&
                                          found->second == attribute.second;
                                 });
            });
            if (match != there.end()) {
              at = *match;
              continue;
            }
            at = at->Add('e', segment.name, "");
            for (const auto& [name, value] : segment.attributes) at->attributes[name] = value;
          }
          return "";
        });
  }
  void RemoveData() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    Compare(
        "RemoveData " + path,
        [&] {
          tree_.RemoveData(T(path));
          return std::to_string(tree_.HasRoot());
        },
        [&]() -> std::string {
          if (element == nullptr) return "! 1013";
          if (element->parent == nullptr) return "! 8";
          ModelNode* const parent = element->parent;
          model_.Remove(element);
          if (path.empty()) model_.cursor = parent;
          return model_.Root() == nullptr ? "0" : "1";
        });
  }
  void Subset() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    if (Chance(1, 3) && model_.Text().size() < 2000) {
      Compare(
          "append a subset of itself " + path,
          [&] {
            String text;
            tree_.GetSubset(text, T(path));
            tree_.AppendSubset(text, ""_t);
            return "";
          },
          [&] {
            if (element == nullptr) return "! 1013";
            // Text comes back in one piece.
            model_.cursor->Add(Merged(Copied(*element)));
            return "";
          });
    } else {
      Compare(
          "GetSubset " + path,
          [&] {
            String text;
            tree_.GetSubset(text, T(path));
            return W::Utf8(text);
          },
          [&] { return element != nullptr ? Written(*element) : std::string("! 1013"); });
    }
  }
  // What a parser makes of the text of a branch: no empty text, and neighbours in one.
  static std::unique_ptr<ModelNode> Merged(std::unique_ptr<ModelNode> ioNode) {
    std::vector<std::unique_ptr<ModelNode>> children = std::move(ioNode->children);
    ioNode->children.clear();
    for (auto& child : children) {
      if (child->kind == 't' && child->text.empty()) continue;
      if (child->kind == 't' && !ioNode->children.empty() && ioNode->children.back()->kind == 't') {
        ioNode->children.back()->text += child->text;
      } else {
        ioNode->Add(Merged(std::move(child)));
      }
    }
    return ioNode;
  }
  void CursorTo() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    Compare(
        "CursorTo " + path, [&] { return std::to_string(tree_.CursorTo(T(path))); },
        [&] {
          if (element == nullptr || path.empty()) return "0";
          model_.cursor = element;
          return "1";
        });
  }
  void CursorStep() {
    const unsigned step = Pick(6);
    Compare(
        "cursor step " + std::to_string(step),
        [&] {
          switch (step) {
            case 0:
              return std::to_string(tree_.CursorToFirstChild());
            case 1:
              return std::to_string(tree_.CursorToLastChild());
            case 2:
              return std::to_string(tree_.CursorToNextSibling());
            case 3:
              return std::to_string(tree_.CursorToPreviousSibling());
            case 4:
              return std::to_string(tree_.CursorToRoot());
            // Not above the elements: the model's cursor stands on one.
            default:
              return std::to_string(tree_.CursorTo(".."_t));
          }
        },
        [&] {
          ModelNode* const to = Stepped(step);
          if (to == nullptr) return "0";
          model_.cursor = to;
          return "1";
        });
  }
  ModelNode* Stepped(unsigned inStep) const {
    ModelNode* const at = model_.cursor;
    if (inStep == 4) return model_.Root();
    if (inStep < 2) {
      const std::vector<ModelNode*> elements = at->Elements();
      return elements.empty() ? nullptr : inStep == 0 ? elements.front() : elements.back();
    }
    if (at->parent == nullptr) return nullptr;
    if (inStep == 5) return at->parent->kind == 'e' ? at->parent : nullptr;
    const std::vector<ModelNode*> siblings = at->parent->Elements();
    const auto own = std::find(siblings.begin(), siblings.end(), at);
    if (inStep == 2) return own + 1 == siblings.end() ? nullptr : *(own + 1);
    return own == siblings.begin() ? nullptr : *(own - 1);
  }
  void Questions() {
    ModelNode* element = nullptr;
    const std::string path = Path(element);
    Compare(
        "questions " + path,
        [&] {
          std::uint32_t count = 0;
          std::string answer = std::to_string(tree_.PathExists(T(path))) +
                               std::to_string(tree_.HasChildren(T(path))) +
                               std::to_string(tree_.HasChildElement(T(path))) + " " +
                               W::Utf8(tree_.GetNodeAtCursor()) + " " + W::Utf8(tree_.GetPath()) +
                               " ";
          tree_.GetNumChildren(count, T(path));
          return answer + std::to_string(count);
        },
        [&]() -> std::string {
          if (element == nullptr) return "! 1013";
          std::string shown;
          for (ModelNode* at = model_.cursor; at != nullptr && at->kind == 'e'; at = at->parent)
            shown = "/" + at->name + shown;
          return std::string(path.empty() ? "0" : "1") + (element->children.empty() ? "0" : "1") +
                 (element->Elements().empty() ? "0" : "1") + " " + model_.cursor->name + " " +
                 shown + " " +
                 std::to_string(path.empty() ? element->Elements().size()
                                             : element->children.size());
        });
  }
  void CopyOrReload() {
    last_ = "copy";
    Data copy(tree_);
    tree_.AddChildNode("gone"_t, "/*"_t);
    tree_ = copy;
    model_.cursor = model_.Root();
  }

  std::mt19937 random_;
  Data tree_;
  Model model_;
  std::string last_;
};

template <class W>
class DataModel : public testing::Test {};
TYPED_TEST_SUITE(DataModel, Widths, WidthNames);

TYPED_TEST(DataModel, RandomOperationsAgree) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Driver<TypeParam> driver(seed);
    for (int step = 0; step < 1000; ++step) {
      driver.Step();
      ASSERT_EQ(driver.Tree(), driver.TheModel().Text())
          << "seed " << seed << ", step " << step << ": " << driver.Last();
      if (this->HasFatalFailure()) FAIL() << "seed " << seed << ", step " << step;
    }
  }
}

}  // namespace
}  // namespace quen::test

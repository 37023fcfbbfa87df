// SPDX-License-Identifier: Apache-2.0
#include "foundation/entity_budget.h"

#include <algorithm>
#include <cstdint>

#include "foundation/limits.h"

namespace quen::internal {
namespace {

constexpr std::size_t kTooLarge = kMaxExpansion + 1;

std::size_t Add(std::size_t inLeft, std::size_t inRight) {
  return std::min(kTooLarge, inLeft + inRight);
}

// At most so many elements, attributes and the like stand in the text.
std::size_t NodesOf(std::u16string_view inText) {
  return static_cast<std::size_t>(std::count_if(
      inText.begin(), inText.end(), [](char16_t unit) { return unit == u'<' || unit == u'='; }));
}

constexpr bool IsSpace(char16_t inUnit) {
  return inUnit == u' ' || inUnit == u'\t' || inUnit == u'\r' || inUnit == u'\n';
}

// What ends a name in every place where one stands in a declaration or a reference.
constexpr bool EndsName(char16_t inUnit) {
  return inUnit <= u' ' ||
         std::u16string_view(u"\"'<>[]()|,;%&=!?*+").find(inUnit) != std::u16string_view::npos;
}

// Line ends as the parser reads them (XML 1.0, 2.11).
std::u16string NormalizeLineEnds(std::u16string_view inLiteral) {
  std::u16string text(inLiteral);
  std::size_t to = 0;
  for (std::size_t i = 0; i < inLiteral.size(); ++i) {
    if (inLiteral[i] == u'\r' && i + 1 < inLiteral.size() && inLiteral[i + 1] == u'\n') continue;
    text[to++] = inLiteral[i] == u'\r' ? u'\n' : inLiteral[i];
  }
  text.resize(to);
  return text;
}

// The value of the character reference that `inText` begins with, behind its "&#"; `outLength` is
// how far it goes, its semicolon included. 0x110000 for one that is no character. Looks no further
// than the digits go, so that many references without an end cost no more than they are long.
std::uint32_t CharacterOf(std::u16string_view inText, std::size_t& outLength) {
  const bool isHexadecimal = !inText.empty() && inText.front() == u'x';
  const unsigned base = isHexadecimal ? 16 : 10;
  std::size_t i = isHexadecimal ? 1 : 0;
  std::uint32_t code = 0;
  const std::size_t begin = i;
  for (; i < inText.size() && code < 0x110000; ++i) {
    const unsigned lower = inText[i] | 0x20U;
    const unsigned digit = inText[i] >= u'0' && inText[i] <= u'9' ? inText[i] - u'0'
                           : lower >= 'a' && lower <= 'f'         ? lower - 'a' + 10U
                                                                  : 99U;
    if (digit >= base) break;
    code = code * base + digit;
  }
  if (i == begin || i == inText.size() || inText[i] != u';') return 0x110000;
  outLength = i + 1;
  return code;
}

// Resolves the character references of an entity's literal (XML 1.0, 4.4.5). One that is no
// character stays as it is: the parser refuses it.
std::u16string ResolveCharacters(std::u16string_view inLiteral) {
  std::u16string text;
  std::size_t i = 0;
  for (;;) {
    const std::size_t mark = inLiteral.find(u"&#", i);
    text += inLiteral.substr(i, mark - i);
    if (mark == std::u16string_view::npos) return text;
    i = mark + 2;
    std::size_t length = 0;
    const std::uint32_t code = CharacterOf(inLiteral.substr(i), length);
    if (code < 0x10000) {
      text += static_cast<char16_t>(code);
    } else if (code < 0x110000) {
      text += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
      text += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
      text += u"&#";
    }
    i += length;
  }
}

}  // namespace

// Reads a prolog. Where it meets what it does not understand it stops and says so: what it cannot
// read it cannot count.
class EntityBudget::Scanner {
 public:
  explicit Scanner(std::u16string_view inText) : text_(inText) {}

  std::size_t Position() const { return position_; }
  bool AtEnd() const { return position_ >= text_.size(); }
  bool LooksAt(std::u16string_view inToken) const {
    return text_.substr(std::min(position_, text_.size()), inToken.size()) == inToken;
  }
  bool Take(std::u16string_view inToken) {
    if (!LooksAt(inToken)) return false;
    position_ += inToken.size();
    return true;
  }
  void SkipSpace() {
    while (!AtEnd() && IsSpace(text_[position_])) ++position_;
  }
  bool SkipPast(std::u16string_view inToken) {
    const std::size_t at = text_.find(inToken, position_);
    position_ = at == std::u16string_view::npos ? text_.size() : at + inToken.size();
    return at != std::u16string_view::npos;
  }
  // A comment or a processing instruction, the XML declaration among them.
  bool SkipMisc(bool& outClosed) {
    outClosed = true;
    if (Take(u"<!--")) {
      outClosed = SkipPast(u"-->");
    } else if (Take(u"<?")) {
      outClosed = SkipPast(u"?>");
    } else {
      return false;
    }
    return true;
  }
  std::u16string Name() {
    const std::size_t begin = position_;
    while (!AtEnd() && !EndsName(text_[position_])) ++position_;
    return std::u16string(text_.substr(begin, position_ - begin));
  }
  bool Literal(std::u16string_view& outLiteral) {
    if (AtEnd() || (text_[position_] != u'"' && text_[position_] != u'\'')) return false;
    const std::size_t end = text_.find(text_[position_], position_ + 1);
    if (end == std::u16string_view::npos) return false;
    outLiteral = text_.substr(position_ + 1, end - position_ - 1);
    position_ = end + 1;
    return true;
  }
  // To behind the next of `inStops` outside of literals; which one it was, 0 for the end of the
  // text.
  char16_t SkipMarkup(std::u16string_view inStops) {
    while (!AtEnd()) {
      std::u16string_view literal;
      if (text_[position_] == u'"' || text_[position_] == u'\'') {
        if (!Literal(literal)) break;
        continue;
      }
      const char16_t unit = text_[position_++];
      if (inStops.find(unit) != std::u16string_view::npos) return unit;
    }
    position_ = text_.size();
    return 0;
  }

 private:
  std::u16string_view text_;
  std::size_t position_ = 0;
};

bool EntityBudget::MayHaveDoctype(std::u16string_view inHead) {
  Scanner scanner(inHead);
  scanner.Take(u"\uFEFF");
  bool closed = true;
  do {
    scanner.SkipSpace();
  } while (scanner.SkipMisc(closed) && closed);
  return !closed || scanner.Position() + 1 >= inHead.size() || scanner.LooksAt(u"<!");
}

std::optional<Refusal> EntityBudget::Examine(std::u16string_view inText) {
  Scanner scanner(inText);
  scanner.Take(u"\uFEFF");
  bool closed = true;
  do {
    scanner.SkipSpace();
  } while (scanner.SkipMisc(closed) && closed);
  if (!scanner.Take(u"<!DOCTYPE")) return std::nullopt;
  if (scanner.SkipMarkup(u"[>") != u'[') return std::nullopt;

  const std::size_t subsetBegin = scanner.Position();
  std::vector<std::u16string> parameterReferences;
  for (;;) {
    scanner.SkipSpace();
    const std::size_t begin = scanner.Position();
    if (begin - subsetBegin > kMaxInternalSubset) {
      return Refusal{u"The internal DTD subset is longer than the limit of this library", begin};
    }
    if (scanner.Take(u"]")) break;
    if (scanner.SkipMisc(closed)) {
      if (!closed) return std::nullopt;  // ill-formed: the parser says so
      continue;
    }
    if (scanner.Take(u"%")) {
      parameterReferences.push_back(scanner.Name());
      if (!scanner.Take(u";"))
        return Refusal{u"The internal DTD subset cannot be read here", begin};
      continue;
    }
    if (scanner.Take(u"<!ENTITY")) {
      scanner.SkipSpace();
      const bool isParameter = scanner.Take(u"%");
      scanner.SkipSpace();
      std::u16string name = scanner.Name();
      scanner.SkipSpace();
      std::u16string_view literal;
      if (scanner.Literal(literal)) {
        // The first declaration of a name binds (XML 1.0, 4.2).
        (isParameter ? parameter_ : general_)
            .try_emplace(std::move(name), Entity{ResolveCharacters(NormalizeLineEnds(literal))});
      }
    } else if (!scanner.Take(u"<!")) {
      return Refusal{u"The internal DTD subset cannot be read here", begin};
    }
    if (scanner.SkipMarkup(u">") == 0) return std::nullopt;
  }
  if (scanner.Position() - subsetBegin > kMaxInternalSubset) {
    return Refusal{u"The internal DTD subset is longer than the limit of this library",
                   scanner.Position()};
  }

  std::size_t total = 0;
  unsigned levels = 0;
  for (const std::u16string& name : parameterReferences)
    total = Add(total, SizeOf(parameter_, name, u'%', 0, levels));
  if (!general_.empty()) {
    // Entity values count where they are referred to; everything else counts where it stands. The
    // values themselves lie inside the subset, so their own references count once too often.
    total = Add(total, SizeOfReferences(general_, inText.substr(subsetBegin), u'&', 0, levels));
  }
  if (total > kMaxExpansion) {
    return Refusal{u"The entities of the document expand beyond the limit of this library",
                   subsetBegin};
  }
  return std::nullopt;
}

std::size_t EntityBudget::SizeOf(Table& ioTable, const std::u16string& inName, char16_t inMark,
                                 unsigned inDepth, unsigned& ioLevels) {
  const auto found = ioTable.find(inName);
  if (found == ioTable.end()) return 0;
  Entity& entity = found->second;
  if (entity.state == Entity::kKnown) {
    ioLevels = std::max(ioLevels, entity.levels);
    return entity.size;
  }
  // A recursive entity has no size; one nested too deep has one that nobody wants to know.
  if (entity.state == Entity::kInProgress || inDepth >= kMaxEntityDepth) return kTooLarge;
  entity.state = Entity::kInProgress;
  unsigned nestedLevels = 0;
  const std::size_t nested =
      SizeOfReferences(ioTable, entity.replacement, inMark, inDepth + 1, nestedLevels);
  entity.levels = nestedLevels + 1;
  // Those below may have been known already, so that the walk did not go down to them.
  const std::size_t own = entity.replacement.size() + kNodeCost * NodesOf(entity.replacement);
  entity.size = entity.levels > kMaxEntityDepth ? kTooLarge : Add(own, nested);
  entity.state = Entity::kKnown;
  ioLevels = std::max(ioLevels, entity.levels);
  return entity.size;
}

std::size_t EntityBudget::SizeOfReferences(Table& ioTable, std::u16string_view inText,
                                           char16_t inMark, unsigned inDepth, unsigned& ioLevels) {
  std::size_t total = 0;
  std::size_t mark = inText.find(inMark);
  while (mark != std::u16string_view::npos && total <= kMaxExpansion) {
    std::size_t end = mark + 1;
    while (end < inText.size() && !EndsName(inText[end])) ++end;
    if (end < inText.size() && inText[end] == u';') {
      const std::u16string name(inText.substr(mark + 1, end - mark - 1));
      // A reference in the document is text of the document; one in an entity multiplies.
      if (inDepth > 0) total = Add(total, kNodeCost);
      total = Add(total, SizeOf(ioTable, name, inMark, inDepth, ioLevels));
    }
    mark = inText.find(inMark, end);
  }
  return total;
}

bool EntityBudget::Knows(bool inParameter, const std::u16string& inName,
                         std::u16string_view inValue) const {
  const Table& table = inParameter ? parameter_ : general_;
  const auto found = table.find(inName);
  return found != table.end() && found->second.replacement == inValue;
}

}  // namespace quen::internal

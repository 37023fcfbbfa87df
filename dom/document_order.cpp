// SPDX-License-Identifier: Apache-2.0
#include "dom/document_order.h"

#include <unordered_map>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

namespace quen::internal {

using xercesc::DOMNode;

DOMNode* ParentOf(const DOMNode& node) {
  if (node.getNodeType() == DOMNode::ATTRIBUTE_NODE) {
    return static_cast<const xercesc::DOMAttr&>(node).getOwnerElement();
  }
  return node.getParentNode();
}

std::size_t NodeAddresses::Slot(const DOMNode* node) const {
  // Nodes are aligned and lie close together; the multiplication spreads the bits that differ.
  const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(node));
  std::size_t slot =
      static_cast<std::size_t>((address >> 4) * 0x9e3779b97f4a7c15u >> 32) & (slots_.size() - 1);
  while (slots_[slot] != nullptr && slots_[slot] != node) slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

bool NodeAddresses::Insert(const DOMNode* node) {
  if (size_ * 2 >= slots_.size()) Grow();
  const std::size_t slot = Slot(node);
  if (slots_[slot] == node) return false;
  slots_[slot] = node;
  ++size_;
  return true;
}

bool NodeAddresses::Contains(const DOMNode* node) const {
  return !slots_.empty() && slots_[Slot(node)] == node;
}

void NodeAddresses::Grow() {
  constexpr std::size_t kFirstSlots = 64;
  std::vector<const DOMNode*> old(slots_.empty() ? kFirstSlots : slots_.size() * 2);
  old.swap(slots_);
  for (const DOMNode* node : old) {
    if (node != nullptr) slots_[Slot(node)] = node;
  }
}

namespace {

constexpr std::size_t kNobody = static_cast<std::size_t>(-1);

// The selected nodes and their ancestors, as a tree of its own.
struct Member {
  DOMNode* node;
  bool selected;
  std::size_t firstChild;  // attributes and children that are members
  std::size_t lastChild;
  std::size_t next;
};

class OrderTree {
 public:
  void Add(DOMNode* node);
  void AppendTo(std::vector<DOMNode*>& nodes);

 private:
  void Link(std::size_t parent, std::size_t child);
  void OrderChildren(Member& parent);

  std::vector<Member> members_;
  std::unordered_map<const DOMNode*, std::size_t> places_;
  Member roots_{nullptr, false, kNobody, kNobody, kNobody};
};

void OrderTree::Add(DOMNode* node) {
  std::size_t child = kNobody;
  for (DOMNode* at = node; at != nullptr; at = ParentOf(*at)) {
    const auto [place, isNew] = places_.try_emplace(at, members_.size());
    const std::size_t member = place->second;
    if (isNew) members_.push_back({at, false, kNobody, kNobody, kNobody});
    if (child == kNobody) {
      members_[member].selected = true;
    } else {
      Link(member, child);
    }
    if (!isNew) return;
    child = member;
  }
  Link(kNobody, child);
}

void OrderTree::Link(std::size_t parentPlace, std::size_t child) {
  Member& parent = parentPlace == kNobody ? roots_ : members_[parentPlace];
  if (parent.firstChild == kNobody) {
    parent.firstChild = child;
  } else {
    members_[parent.lastChild].next = child;
  }
  parent.lastChild = child;
}

void OrderTree::OrderChildren(Member& parent) {
  if (parent.firstChild == parent.lastChild) return;
  std::size_t missing = 0;
  std::size_t missingAttributes = 0;
  for (std::size_t child = parent.firstChild; child != kNobody; child = members_[child].next) {
    ++missing;
    if (members_[child].node->getNodeType() == DOMNode::ATTRIBUTE_NODE) ++missingAttributes;
  }
  missing -= missingAttributes;
  parent.firstChild = parent.lastChild = kNobody;
  DOMNode* const node = parent.node;
  const auto append = [&](const DOMNode* each) {
    const auto place = places_.find(each);
    if (place == places_.end()) return false;
    const std::size_t child = place->second;
    members_[child].next = kNobody;
    if (parent.firstChild == kNobody) {
      parent.firstChild = child;
    } else {
      members_[parent.lastChild].next = child;
    }
    parent.lastChild = child;
    return true;
  };
  if (missingAttributes != 0) {
    const xercesc::DOMNamedNodeMap* const attributes = node->getAttributes();
    for (XMLSize_t at = 0; missingAttributes != 0 && at < attributes->getLength(); ++at) {
      if (append(attributes->item(at))) --missingAttributes;
    }
  }
  for (DOMNode* each = node->getFirstChild(); missing != 0; each = each->getNextSibling()) {
    if (append(each)) --missing;
  }
}

void OrderTree::AppendTo(std::vector<DOMNode*>& nodes) {
  std::vector<std::size_t> pending;
  for (std::size_t root = roots_.firstChild; root != kNobody; root = members_[root].next) {
    pending.push_back(root);
    while (!pending.empty()) {
      Member& member = members_[pending.back()];
      const bool isRoot = pending.back() == root;
      pending.pop_back();
      if (!isRoot && member.next != kNobody) pending.push_back(member.next);
      if (member.selected) nodes.push_back(member.node);
      OrderChildren(member);
      if (member.firstChild != kNobody) pending.push_back(member.firstChild);
    }
  }
}

}  // namespace

void SortInDocumentOrder(std::vector<DOMNode*>& nodes, std::size_t first) {
  if (nodes.size() - first < 2) return;
  OrderTree tree;
  for (std::size_t at = first; at != nodes.size(); ++at) tree.Add(nodes[at]);
  nodes.resize(first);
  tree.AppendTo(nodes);
}

}  // namespace quen::internal

// SPDX-License-Identifier: Apache-2.0
// A tree and an expression from bytes: the direct evaluator and Xalan-C select the same nodes. An
// odd first byte takes the rest of the input as the text of the expression instead.
#include <cstdlib>

#include "tests/dom/random_tree.h"
#include "tests/dom/xml_fixture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace quen;
  tests::StartEngine();
  tests::Choices choices(bytes, size);
  const bool isText = choices.Below(2) == 1;
  const tests::Document document(tests::RandomTree(choices).Make());
  std::u16string expression = tests::RandomExpression(choices).Make();
  if (isText)
    expression = tests::Wide({reinterpret_cast<const char*>(bytes), size}).substr(size / 2);
  expression = expression.c_str();  // a path ends at its first zero unit
  tests::Nodes direct;
  tests::Nodes engine;
  if (internal::SelectDirectly(*document->getDocumentElement(), expression, false, direct) ==
      internal::Direct::kDeclined) {
    tests::ShowXalan(*document->getDocumentElement(), expression);
    return 0;
  }
  internal::SelectWithXalan(*document->getDocumentElement(), expression, false, engine);
  if (direct != engine) std::abort();
  return 0;
}

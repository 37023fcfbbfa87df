// SPDX-License-Identifier: Apache-2.0
//
// Memory that runs out, at every allocation of every kind of operation: the n-th fails, or the n-th
// and all behind it. Each time there is an exception of the library, or the operation succeeds, the
// objects are usable and go, and what was allocated is given back but for what the engines are
// known to lose.
//
// Of operations with many allocations some are tried; QUENXML2_FULL_TESTS in the environment tries
// all.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <quenxml2/cipher.h>
#include <quenxml2/quenxml2.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>

#include "foundation/parser.h"
#include "tests/components/cipher_support.h"
#include "tests/support/allocations.h"
#include "tests/support/literals.h"
#include "tests/support/temp_dir.h"
#include "tests/xsl/xsl_support.h"

namespace quen::test {
namespace {

constexpr char16_t kText[] =
    u"<a xmlns:n='urn:n'><b i='1'>one</b><!--c--><n:b i='2'><![CDATA[two]]></n:b><?p q?></a>";

struct Objects {
  CQuenXMLData2w tree{wstring(kText)};
  CQuenXMLData2 narrow{std::string("<a><b>1</b></a>")};
  CQuenXMLDocument2w document;
  CQuenXMLMsg2w message{wstring(u"<Order><Item>1</Item></Order>")};
  CQuenXSL2 xsl;
  std::uintptr_t sheet = 0;
  CQuenAESW cipher;
  std::string sealed;

  Objects() {
    document.LoadXML(kText);
    xsl.RegisterCompiledStyleSheet(
        std::istringstream(RootSheet("<r><xsl:for-each select='//b'><xsl:sort select='.'/>"
                                     "<xsl:value-of select='.'/></xsl:for-each></r>")),
        sheet);
    cipher.SetKey(testing::kRawKey);
    sealed = cipher.EncryptString(kText);
  }

  // Each is used in a way that would show damage.
  void ExpectUsable() {
    if (tree.HasRoot() == 0) tree.AddRootNode(u"a");  // a failed assignment leaves an empty tree
    tree.CursorToRoot();  // its failure is a result, so that the cursor may be nowhere
    tree.CreateNodes(u"/a/last");
    EXPECT_EQ(tree.PathExists(u"/a/last"), 1);
    narrow.SetData("2", "/a/b");
    document.LoadXML(kText);
    EXPECT_EQ(document.SelectNodes(u"//b").size(), 1U);
    message.SetMessageContentsw(u"<Order/>");
    EXPECT_EQ(message.GetMessageName(), u"Order");
    std::ostringstream out;
    xsl.Transform(std::istringstream("<a><b>1</b></a>"), out, sheet);
    EXPECT_EQ(out.str(), "<r>1</r>");
    EXPECT_EQ(cipher.DecryptString(sealed), kText);
  }
};

struct Row {
  const char* name;
  std::function<void(Objects&)> operation;
  // Whether the engine keeps some blocks when this fails; docs/security.md says where.
  bool engineLoses = false;
};

enum Outcome { kSucceeded, kFailed, kForeign, kUnusable, kAborted };

Outcome OutcomeOf(const std::function<void()>& inOperation) {
  try {
    inOperation();
    return kSucceeded;
  } catch (const CQuenXMLException2w&) {
  } catch (const CQuenXMLException2&) {
  } catch (const CQuenCryptoExceptionw&) {
  } catch (const std::bad_alloc&) {
  } catch (...) {
    return kForeign;
  }
  return kFailed;
}

// In a process of its own, since an engine may end it.
Outcome Attempt(const Row& inRow, std::uint64_t inNth, bool inPersistent, std::size_t& ioLost) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child == 0) {
    const int silent = open("/dev/null", O_WRONLY);  // of std::terminate
    dup2(silent, STDERR_FILENO);
    Outcome outcome = kSucceeded;
    internal::ForgetSpareParser();
    const std::size_t before = AllocatedBlocks();
    {
      Objects objects;
      internal::ForgetSpareParser();  // so that making one is tried, too
      {
        const FailingAllocation failing(inNth, inPersistent);
        outcome = OutcomeOf([&] { inRow.operation(objects); });
      }
      if (OutcomeOf([&] { objects.ExpectUsable(); }) != kSucceeded) outcome = kUnusable;
    }
    if (::testing::Test::HasFailure()) outcome = kUnusable;
    internal::ForgetSpareParser();
    const std::size_t lost = AllocatedBlocks() - before;
    if (write(ends[1], &lost, sizeof lost) != sizeof lost) outcome = kUnusable;
    _exit(outcome);
  }
  close(ends[1]);
  std::size_t lost = 0;
  if (read(ends[0], &lost, sizeof lost) == sizeof lost) ioLost += lost;
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? static_cast<Outcome>(WEXITSTATUS(status)) : kAborted;
}

class AllocationFailure : public ::testing::TestWithParam<bool> {};

TEST_P(AllocationFailure, LeavesObjectsUsableAndNothingBehind) {
  const bool persistent = GetParam();
  const bool all = std::getenv("QUENXML2_FULL_TESTS") != nullptr;
  const TempDir dir;
  const wstring file = Wide(dir.File("a.xml", "<a><b>1</b></a>"));
  const wstring written = Wide(dir / "written.xml");
  const std::string sheetText = RootSheet("<r><xsl:value-of select='a'/></r>");
  const Row kRows[] = {
      {"load a text", [](Objects& o) { o.document.LoadXML(kText); }, true},
      {"load a wrong text", [](Objects& o) { o.document.LoadXML(u"<a><b></a>"); }, true},
      {"load a subset with entities",
       [](Objects& o) {
         o.document.LoadXML(u"<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '1'>]><a>&e;</a>");
       },
       true},
      {"load a file", [&](Objects& o) { o.document.Load(file); }, true},
      {"construct and copy a tree",
       [](Objects& o) {
         CQuenXMLData2w tree{wstring(kText)};
         CQuenXMLData2w copy(o.tree);
       },
       true},
      {"copy a document with schemas",
       [](Objects& o) {
         o.document.SetExternalSchemaLocation(u"urn:of-some-length /and/a/longer/place.xsd");
         CQuenXMLDocument2w copy(o.document);
       },
       true},
      {"assign a tree", [](Objects& o) { o.tree = CQuenXMLData2w(o.tree); }, true},
      {"read by path",
       [](Objects& o) {
         wstring text;
         o.tree.GetData(text, u"/a/b[@i='1']");
         o.tree.GetAttr(u"i", text, u"/a/b[1]");
         o.tree.GetSubset(text, u"/a");
       }},
      {"read by an expression of the engine",
       [](Objects& o) { o.document.SelectNodes(u"//b[contains(translate(., 'o', 'x'), 'x')]"); },
       true},
      {"write by path",
       [](Objects& o) {
         o.tree.SetData(u"some longer text that does not fit into a string", u"/a/b[1]");
         o.tree.SetAttr(u"i", std::int32_t{7}, u"/a/b[1]");
         o.narrow.SetData("another longer text that needs memory", "/a/b");
       }},
      {"create", [](Objects& o) { o.tree.CreateNodes(u"/a/x[y='2']/z[@k='3']"); }},
      {"append a subset", [](Objects& o) { o.tree.AppendSubset(u"<s><t>1</t></s>", u"/a"); }, true},
      {"append in UTF-8",
       [](Objects& o) { o.tree.GetCQuenXMLData2wImpl()->AppendUTF8Subset("<s/>"); }, true},
      {"write a file", [&](Objects& o) { o.tree.WriteToFile(written, 1); }},
      {"open a message",
       [](Objects& o) { o.message.SetMessageContentsw(u"<Order><Item>2</Item></Order>"); }, true},
      {"answer a message",
       [](Objects& o) {
         CQuenXMLMsg2w reply;
         o.message.ConstructReplyMessage(reply);
         reply.SetError(u"context", 7, u"message", u"<detail/>");
         reply.GetMessageContents();
       },
       true},
      {"encipher", [](Objects& o) { o.cipher.EncryptString(kText); }},
      {"decipher into a tree",
       [](Objects& o) { o.tree.AppendEncryptedSubset(o.sealed, testing::kRawKey, u"/a"); }, true},
      {"transform a stream",
       [](Objects& o) {
         std::ostringstream out;
         o.xsl.Transform(std::istringstream("<a><b>2</b><b>1</b></a>"), out, o.sheet);
       },
       true},
      {"transform a tree",
       [](Objects& o) {
         CQuenXMLData2 result;
         o.xsl.Transform(static_cast<const CQuenXMLData2&>(o.narrow), result, o.sheet);
       },
       true},
      {"transform with another document",
       [&](Objects& o) {
         std::istringstream source("<a/>");
         std::istringstream sheet(
             RootSheet("<r><xsl:value-of select=\"document('" + Utf8(file) + "')/a/b\"/></r>"));
         std::ostringstream out;
         o.xsl.Transform(source, sheet, out);
         EXPECT_EQ(out.str(), "<r>1</r>");
       },
       true},
      {"compile a style sheet",
       [&](Objects& o) {
         std::uintptr_t handle = 0;
         o.xsl.RegisterCompiledStyleSheet(std::istringstream(sheetText), handle);
         o.xsl.UnregisterCompiledStyleSheet(handle);
       },
       true},
  };
  const char* const only = std::getenv("QUENXML2_ONLY_ROW");
  for (const Row& row : kRows) {
    if (only != nullptr && std::string(only) != row.name) continue;
    SCOPED_TRACE(row.name);
    std::uint64_t count = 0;
    for (int time = 0; time < 2; ++time) {  // what is made once in a process is made the first time
      Objects objects;
      const FailingAllocation none(~std::uint64_t{0}, false);
      OutcomeOf([&] { row.operation(objects); });
      count = FailingAllocation::Count();
    }
    const std::uint64_t stride = all ? 1 : 1 + count / 40;
    std::size_t lost = 0;
    std::uint64_t outcomes[5] = {};
    for (std::uint64_t nth = 0; nth < count; nth += stride) {
      const Outcome outcome = Attempt(row, nth, persistent, lost);
      ++outcomes[outcome];
      if (outcome == kForeign || outcome == kUnusable) {
        ADD_FAILURE() << "at allocation " << nth
                      << (outcome == kForeign ? ": a foreign exception" : ": objects are damaged");
      }
    }
    std::cout << row.name << ": " << count << " allocations, " << outcomes[kSucceeded]
              << " succeeded, " << outcomes[kFailed] << " failed, " << outcomes[kAborted]
              << " aborted, " << lost << " blocks lost\n";
    EXPECT_GT(outcomes[kFailed] + outcomes[kAborted], 0U);
    if (!row.engineLoses) {
      EXPECT_EQ(lost, 0U);
      EXPECT_EQ(outcomes[kAborted], 0U);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Once, AllocationFailure, ::testing::Values(false));
INSTANTIATE_TEST_SUITE_P(FromThenOn, AllocationFailure, ::testing::Values(true));

}  // namespace
}  // namespace quen::test

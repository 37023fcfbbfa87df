// SPDX-License-Identifier: Apache-2.0
//
// soak [MINUTES]: everything that the library does, good and bad input mixed, for ten minutes
// unless told otherwise. Prints the rounds, the resident memory and the open descriptors twenty
// times, and ends with 1 if after the first quarter the memory grows by more than a tenth, or a
// descriptor stays open.
#include <quenxml2/cipher.h>
#include <quenxml2/quenxml2.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>

#include "bench/resident.h"

namespace {

constexpr char kSheet[] =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:template match='/'><r><xsl:for-each select='//item'><xsl:sort select='.'/>"
    "<xsl:value-of select='.'/></xsl:for-each></r></xsl:template></xsl:stylesheet>";
constexpr char kSchema[] =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='order'>"
    "<xs:complexType><xs:sequence><xs:element name='item' type='xs:string' "
    "maxOccurs='unbounded'/></xs:sequence></xs:complexType></xs:element></xs:schema>";
constexpr char16_t kKey[] =
    u"quen-raw-key:000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";

class Work {
 public:
  explicit Work(const std::string& inFolder) : folder_(inFolder) {
    std::FILE* const file = std::fopen((folder_ + "/order.xsd").c_str(), "w");
    if (file == nullptr || std::fputs(kSchema, file) < 0 || std::fclose(file) != 0) std::abort();
    transform_.RegisterCompiledStyleSheet(std::istringstream(kSheet), sheet_);
  }

  // What fails is caught; every third text is one that has to.
  void Round(unsigned long inRound) {
    const std::string number = std::to_string(inRound);
    std::string text = "<order><item>bolt " + number + "</item><item>" +
                       std::string(inRound % 500, 'x') + "</item></order>";
    if (inRound % 3 == 1) text = "<!DOCTYPE order SYSTEM '/none'>" + text;
    if (inRound % 9 == 2) text.resize(text.size() - 3);
    Try([&] { Tree(text, number); });
    Try([&] { Message(text); });
    Try([&] { Transform(text); });
    Try([&] { Files(text); });
    if (inRound % 8 == 0) Try([&] { Validate(text); });
  }

  unsigned long Failures() const { return failures_; }

 private:
  template <class Operation>
  void Try(Operation&& inOperation) {
    try {
      inOperation();
    } catch (const quen::CQuenXMLException2&) {
      ++failures_;
    } catch (const quen::CQuenXMLException2w&) {
      ++failures_;
    }
  }

  static void Tree(const std::string& inText, const std::string& inNumber) {
    quen::CQuenXMLData2 tree(inText);
    tree.CreateNodes("/order/note[@id='" + inNumber + "']");
    tree.SetData("n", "/order/note");
    tree.AppendSubset(inText, "/order/note");
    tree.GetCursor().SelectNodes("//item[string-length(.) > 3]");
    quen::CQuenXMLData2 copy(tree);
    copy.RemoveData("/order/item");
    std::int32_t value = 0;
    copy.GetData(value, "/order/none");
  }

  static void Message(const std::string& inText) {
    const quen::CQuenXMLMsg2 request(inText);
    quen::CQuenXMLMsg2 reply;
    request.ConstructReplyMessage(reply);
    reply.SetError("soak", 7, "m", inText);
    quen::CQuenXMLMsg2w wide;
    wide.SetMessageContents(reply.GetMessageContents());
    const std::string sealed = wide.GetEncryptedMessageContents(kKey);
    wide.SetEncryptedMessageContents(sealed, kKey);
    wide.SetEncryptedMessageContents(sealed.substr(1), kKey);
  }

  void Transform(const std::string& inText) {
    std::ostringstream out;
    transform_.Transform(std::istringstream(inText), out, sheet_);
    quen::CQuenXMLData2 source(inText), result;
    quen::CQuenXSL2 other(transform_);
    other.Transform(static_cast<const quen::CQuenXMLData2&>(source), result, sheet_);
    std::uintptr_t handle = 0;
    other.RegisterCompiledStyleSheet(std::istringstream(kSheet), handle);
    other.RegisterCompiledStyleSheet(std::istringstream(inText), handle);
  }

  void Files(const std::string& inText) const {
    const std::string path = folder_ + "/order.xml";
    quen::CQuenXMLData2 tree(inText);
    tree.WriteToFile(path, 1);
    tree.ReadFromFile(path);
    tree.ReadFromFile(folder_ + "/order.xsd");
    tree.ReadFromFile(folder_ + "/none");
  }

  void Validate(const std::string& inText) const {
    quen::CQuenXMLDocument2 document;
    document.SetExternalNoNamespaceSchemaLocation(folder_ + "/order.xsd");
    document.LoadXML(inText);
    document.Validate();
    document.LoadXML("<order/>");
    document.Validate();
  }

  const std::string folder_;
  quen::CQuenXSL2 transform_;
  std::uintptr_t sheet_ = 0;
  unsigned long failures_ = 0;
};

long OpenDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

}  // namespace

int main(int argc, char** argv) {
  using Clock = std::chrono::steady_clock;
  constexpr int kReports = 20;
  const double minutes = argc > 1 ? std::atof(argv[1]) : 10;
  std::string folder = (std::filesystem::temp_directory_path() / "quenxml2-soak-XXXXXX").string();
  if (::mkdtemp(folder.data()) == nullptr) return 1;

  long memory = 0;
  long descriptors = 0;
  bool grows = false;
  unsigned long round = 0;
  {
    Work work(folder);
    const auto begin = Clock::now();
    const std::chrono::duration<double> step(minutes * 60 / kReports);
    for (int report = 1; report <= kReports; ++report) {
      while (Clock::now() - begin < step * report) work.Round(round++);
      const long memoryNow = ResidentKibibytes();
      const long descriptorsNow = OpenDescriptors();
      std::printf("%lu rounds, %lu failures, %ld KiB resident, %ld descriptors\n", round,
                  work.Failures(), memoryNow, descriptorsNow);
      std::fflush(stdout);
      if (report == kReports / 4) {
        memory = memoryNow;
        descriptors = descriptorsNow;
      } else if (report > kReports / 4) {
        grows = grows || memoryNow > memory + memory / 10 || descriptorsNow > descriptors;
      }
    }
  }
  std::filesystem::remove_all(folder);
  std::puts(grows ? "grows" : "steady");
  return grows ? 1 : 0;
}

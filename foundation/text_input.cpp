// SPDX-License-Identifier: Apache-2.0
#include "foundation/text_input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>

#include "foundation/entity_budget.h"
#include "foundation/utf.h"

namespace quen::internal {
namespace {

constexpr std::size_t kChunk = 16 * 1024;

wstring FromLossyUtf8(const std::string& inBytes) {
  wstring text;
  std::string_view rest = inBytes;
  for (;;) {
    const std::size_t malformed = AppendUtf16(rest, text);
    if (malformed == kWellFormed) return text;
    text += u'\uFFFD';
    rest.remove_prefix(malformed + 1);
  }
}

[[noreturn]] void ThrowNotOpened(const wstring& inShownPath, const std::string& inReason) {
  throw InputFailure{u"unable to open primary document entity '" + inShownPath + u"': " +
                     FromLossyUtf8(inReason)};
}

class FileReader : public ByteReader {
 public:
  FileReader(const string& inPath, const wstring& inShownPath) : shownPath_(inShownPath) {
    // O_NONBLOCK: opening a pipe that nobody writes to would wait for ever.
    descriptor_ = ::open(inPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor_ < 0) ThrowNotOpened(shownPath_, std::strerror(errno));
    struct stat status;
    const bool known = ::fstat(descriptor_, &status) == 0;
    if (!known || !S_ISREG(status.st_mode)) {
      const int error = errno;
      ::close(descriptor_);
      ThrowNotOpened(shownPath_, known ? "Not a regular file" : std::strerror(error));
    }
  }
  ~FileReader() override { ::close(descriptor_); }
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;

  std::size_t Read(char* outBytes, std::size_t inCapacity) override {
    for (;;) {
      const ssize_t count = ::read(descriptor_, outBytes, inCapacity);
      if (count >= 0) return static_cast<std::size_t>(count);
      if (errno != EINTR) {
        throw InputFailure{u"unable to read '" + shownPath_ + u"': " +
                           FromLossyUtf8(std::strerror(errno))};
      }
    }
  }

 private:
  wstring shownPath_;
  int descriptor_;
};

// Turns the bytes of one encoding into units, a chunk at a time.
class Decoder {
 public:
  virtual ~Decoder() = default;
  // Appends what `inBytes` hold and returns how many of them were used. The rest, a cut sequence,
  // comes again with the next bytes. Anything malformed stops in front of it.
  virtual std::size_t Decode(std::string_view inBytes, std::u16string& outText) = 0;
};

class Utf8Decoder : public Decoder {
 public:
  std::size_t Decode(std::string_view inBytes, std::u16string& outText) override {
    const std::size_t malformed = AppendUtf16(inBytes, outText);
    return malformed == kWellFormed ? inBytes.size() : malformed;
  }
};

class Utf16Decoder : public Decoder {
 public:
  explicit Utf16Decoder(bool inBigEndian) : bigEndian_(inBigEndian) {}
  std::size_t Decode(std::string_view inBytes, std::u16string& outText) override {
    const std::size_t units = inBytes.size() / 2;
    for (std::size_t i = 0; i < units; ++i) {
      const unsigned first = static_cast<unsigned char>(inBytes[2 * i]);
      const unsigned second = static_cast<unsigned char>(inBytes[2 * i + 1]);
      outText += static_cast<char16_t>(bigEndian_ ? first << 8 | second : second << 8 | first);
    }
    return 2 * units;
  }

 private:
  const bool bigEndian_;
};

// An encoding that the engine knows.
class EngineDecoder : public Decoder {
 public:
  explicit EngineDecoder(std::unique_ptr<xercesc::XMLTranscoder> inTranscoder)
      : transcoder_(std::move(inTranscoder)) {}

  std::size_t Decode(std::string_view inBytes, std::u16string& outText) override {
    std::size_t used = 0;
    std::array<char16_t, 1024> units;
    std::array<unsigned char, 1024> sizes;
    while (used < inBytes.size()) {
      XMLSize_t eaten = 0;
      XMLSize_t count = 0;
      try {
        count = transcoder_->transcodeFrom(reinterpret_cast<const XMLByte*>(inBytes.data()) + used,
                                           inBytes.size() - used, units.data(), units.size(), eaten,
                                           sizes.data());
      } catch (const xercesc::XMLException&) {
        break;
      }
      outText.append(units.data(), count);
      used += eaten;
      if (eaten == 0) break;
    }
    return used;
  }

 private:
  std::unique_ptr<xercesc::XMLTranscoder> transcoder_;
};

// The name in upper case that the XML declaration gives, empty if there is none (XML 1.0, 4.3.3).
std::string DeclaredEncoding(std::string_view inHead) {
  if (inHead.substr(0, 5) != "<?xml") return {};
  const std::string_view declaration = inHead.substr(0, inHead.find("?>"));
  std::size_t at = declaration.find("encoding");
  if (at == std::string_view::npos) return {};
  at = declaration.find_first_of("'\"", at);
  if (at == std::string_view::npos) return {};
  const std::size_t end = declaration.find(declaration[at], at + 1);
  std::string name(declaration.substr(at + 1, end == std::string_view::npos ? 0 : end - at - 1));
  for (char& unit : name)
    if (unit >= 'a' && unit <= 'z') unit = static_cast<char>(unit - 'a' + 'A');
  return name;
}

// Encodings beside the Unicode ones in which the bytes of ASCII mean ASCII. Others, UTF-7 and
// ISO-2022 among them, let a text look harmless to whoever reads it before the parser does.
bool IsSupported(const std::string& inName) {
  static constexpr std::string_view kPrefixes[] = {
      "ISO-8859-", "ISO_8859-", "LATIN1", "WINDOWS-125", "CP125",   "KOI8-",  "EUC-JP",
      "EUC-KR",    "SHIFT_JIS", "BIG5",   "GBK",         "GB18030", "GB2312", "TIS-620"};
  // ICU 72 turns a name of up to 60 units into bytes in a buffer of 60: one that is not ASCII
  // overwrites the stack. A name of an encoding has only these (XML 1.0, production 81).
  constexpr std::size_t kMaxName = 40;
  if (inName.size() > kMaxName ||
      inName.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-") != std::string::npos)
    return false;
  return std::any_of(std::begin(kPrefixes), std::end(kPrefixes), [&](std::string_view prefix) {
    return std::string_view(inName).substr(0, prefix.size()) == prefix;
  });
}

std::unique_ptr<Decoder> DecoderFor(std::string_view inHead) {
  const auto begins = [&](std::string_view bytes) {
    return inHead.substr(0, bytes.size()) == bytes;
  };
  using namespace std::string_view_literals;
  if (begins("\xFF\xFE"sv) || begins("<\0"sv)) return std::make_unique<Utf16Decoder>(false);
  if (begins("\xFE\xFF"sv) || begins("\0<"sv)) return std::make_unique<Utf16Decoder>(true);
  const std::string name = DeclaredEncoding(inHead);
  if (begins("\xEF\xBB\xBF"sv) || name.empty() || name == "UTF-8" || name == "UTF8" ||
      name == "US-ASCII" || name == "ASCII") {
    return std::make_unique<Utf8Decoder>();
  }
  if (IsSupported(name)) {
    xercesc::XMLTransService::Codes result = xercesc::XMLTransService::Ok;
    std::unique_ptr<xercesc::XMLTranscoder> transcoder(
        xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(FromLossyUtf8(name).c_str(),
                                                                        result, kChunk));
    if (transcoder != nullptr) return std::make_unique<EngineDecoder>(std::move(transcoder));
  }
  throw InputFailure{u"The encoding '" + FromLossyUtf8(name) + u"' is not supported", 1, 1};
}

class WideSource : public UnitSource {
 public:
  explicit WideSource(std::u16string_view inText) : rest_(inText) {}
  std::u16string_view Next() override {
    const std::u16string_view run = rest_.substr(0, kChunk);
    rest_.remove_prefix(run.size());
    return run;
  }

 private:
  std::u16string_view rest_;
};

class DecodingSource : public UnitSource {
 public:
  explicit DecodingSource(std::unique_ptr<ByteReader> inBytes) : bytes_(std::move(inBytes)) {
    Fill();
    decoder_ = DecoderFor(pending_);
  }

  std::u16string_view Next() override {
    units_.clear();
    while (units_.empty()) {
      const std::size_t used = decoder_->Decode(pending_, units_);
      pending_.erase(0, used);
      // At most 8 bytes of a sequence can wait for more; so many are not of the encoding.
      const bool stuck = pending_.size() > 8 || (!pending_.empty() && units_.empty() && atEnd_);
      if (stuck) failing_ = true;
      if (!units_.empty()) break;
      if (failing_) throw InputFailure{u"The bytes are not of the document's encoding"};
      if (atEnd_) break;
      Fill();
    }
    if (!failing_ && !atEnd_) Fill();
    return units_;
  }

 private:
  void Fill() {
    // Neither zeroed nor on the heap: a small text would pay for it.
    char chunk[kChunk];
    std::size_t count = 0;
    // A short read is no end: the head has to be long enough to tell the encoding.
    while (count < kChunk && !atEnd_) {
      const std::size_t got = bytes_->Read(chunk + count, kChunk - count);
      atEnd_ = got == 0;
      count += got;
    }
    pending_.append(chunk, count);
  }

  std::unique_ptr<ByteReader> bytes_;
  std::unique_ptr<Decoder> decoder_;
  std::string pending_;
  std::u16string units_;
  bool atEnd_ = false;
  bool failing_ = false;
};

// Follows the text to say where something stands in it.
class PlaceCounter {
 public:
  void Pass(std::u16string_view inText) {
    // Counting, other than searching, is one pass that the compiler can vectorise.
    const auto feeds = std::count(inText.begin(), inText.end(), u'\n');
    if (feeds == 0) {
      column_ += inText.size();
      return;
    }
    line_ += static_cast<std::size_t>(feeds);
    column_ = inText.size() - inText.rfind(u'\n');
  }
  InputFailure Failure(wstring inMessage) const {
    return InputFailure{std::move(inMessage), line_, column_};
  }

 private:
  std::size_t line_ = 1;
  std::size_t column_ = 1;
};

wstring Hexadecimal(char16_t inUnit) {
  wstring text = u"0x";
  for (int shift = 12; shift >= 0; shift -= 4) text += u"0123456789abcdef"[(inUnit >> shift) & 0xF];
  return text;
}

// 1 for U+0000, surrogates, U+FFFE and U+FFFF. Sixteen bits and comparisons for equality alone,
// which is what vector instructions are good at.
constexpr std::uint16_t NeedsALook(char16_t inUnit) {
  return static_cast<std::uint16_t>((inUnit == 0) | ((inUnit & 0xF800) == 0xD800) |
                                    ((inUnit | 1) == 0xFFFF));
}

// Finds units that are no text in XML's sense (XML 1.0, 2.2). Surrogate pairs may be cut by the end
// of a run. What else XML forbids the engine finds itself.
class TextChecker {
 public:
  // The index of the first unit that cannot be taken, or npos.
  std::size_t Check(std::u16string_view inText) {
    std::uint16_t look = awaitsLow_ ? 1 : 0;
    // One pass without branches that the compiler can vectorise.
    for (const char16_t unit : inText) look = static_cast<std::uint16_t>(look | NeedsALook(unit));
    if (look == 0) return std::u16string_view::npos;
    for (std::size_t i = 0; i < inText.size(); ++i) {
      const char16_t unit = inText[i];
      if (awaitsLow_ != IsLowSurrogate(unit)) return i;
      awaitsLow_ = IsHighSurrogate(unit);
      if (NeedsALook(unit) != 0 && !IsSurrogate(unit)) return i;
    }
    return std::u16string_view::npos;
  }
  bool AwaitsLow() const { return awaitsLow_; }

 private:
  bool awaitsLow_ = false;
};

}  // namespace

std::unique_ptr<ByteReader> OpenFile(const string& inPath, const wstring& inShownPath) {
  return std::make_unique<FileReader>(inPath, inShownPath);
}

InputFailure FailureAt(std::u16string_view inText, std::size_t inOffset, wstring inMessage) {
  PlaceCounter place;
  place.Pass(inText.substr(0, inOffset));
  return place.Failure(std::move(inMessage));
}

struct TextInput::State {
  std::unique_ptr<UnitSource> source;
  std::u16string_view run;  // what of the present run the engine has not got yet
  TextChecker checker;
  PlaceCounter place;
  std::optional<InputFailure> failure;

  // Brings the next run. A run that cannot be taken ends the text: the engine must not be thrown
  // through here, it would lose what it has allocated.
  void Advance() {
    run = {};
    if (failure.has_value()) return;
    try {
      run = source->Next();
    } catch (InputFailure& failed) {
      if (failed.line == 0) failed = place.Failure(std::move(failed.message));
      failure = std::move(failed);
      return;
    }
    std::size_t bad = checker.Check(run);
    if (run.empty() && checker.AwaitsLow()) bad = 0;
    if (bad != std::u16string_view::npos) {
      place.Pass(run.substr(0, bad));
      failure = place.Failure(bad < run.size()
                                  ? u"Invalid character (Unicode: " + Hexadecimal(run[bad]) + u")"
                                  : u"The text ends in half a surrogate pair");
      run = {};
      return;
    }
    place.Pass(run);
  }
};

class TextInput::Stream : public xercesc::BinInputStream {
 public:
  explicit Stream(State& ioState) : state_(ioState) {}
  XMLFilePos curPos() const override { return position_; }
  const XMLCh* getContentType() const override { return nullptr; }

  XMLSize_t readBytes(XMLByte* const outBytes, const XMLSize_t inCapacity) override {
    XMLSize_t written = 0;
    while (written + sizeof(char16_t) <= inCapacity) {
      if (state_.run.empty()) {
        state_.Advance();
        if (state_.run.empty()) break;
      }
      const std::size_t units =
          std::min(state_.run.size(), (inCapacity - written) / sizeof(char16_t));
      std::memcpy(outBytes + written, state_.run.data(), units * sizeof(char16_t));
      state_.run.remove_prefix(units);
      written += units * sizeof(char16_t);
    }
    position_ += written;
    return written;
  }

 private:
  State& state_;
  XMLFilePos position_ = 0;
};

TextInput::TextInput(std::u16string_view inText, const char16_t* inSystemId)
    : xercesc::InputSource(inSystemId), whole_(inText), state_(std::make_unique<State>()) {
  setEncoding(u"UTF-16");
  state_->source = std::make_unique<WideSource>(whole_);
}

TextInput::TextInput(std::unique_ptr<ByteReader> inBytes, const char16_t* inSystemId)
    : xercesc::InputSource(inSystemId), state_(std::make_unique<State>()) {
  setEncoding(u"UTF-16");
  state_->source = std::make_unique<DecodingSource>(std::move(inBytes));
  state_->Advance();
  if (state_->failure.has_value() || !EntityBudget::MayHaveDoctype(state_->run)) return;
  // Entities may be referred to anywhere in the text, so all of it has to be seen first.
  while (!state_->run.empty()) {
    decoded_ += state_->run;
    state_->Advance();
  }
  if (state_->failure.has_value()) return;
  whole_ = decoded_;
  state_ = std::make_unique<State>();
  state_->source = std::make_unique<WideSource>(whole_);
}

TextInput::~TextInput() = default;

xercesc::BinInputStream* TextInput::makeStream() const { return new Stream(*state_); }

const InputFailure* TextInput::Failure() const {
  return state_->failure.has_value() ? &*state_->failure : nullptr;
}

}  // namespace quen::internal

// SPDX-License-Identifier: Apache-2.0
//
// Where text enters the parser: wide text in memory, or the bytes of a file or URL.
//
// Both reach the engine as UTF-16 through one stream that checks what the engine does not: a U+0000
// (which the engine takes for the end behind the root), a lone surrogate, U+FFFE and U+FFFF, bytes
// that are not of their encoding. Text in memory is not copied.
#ifndef QUENXML2_FOUNDATION_TEXT_INPUT_H_
#define QUENXML2_FOUNDATION_TEXT_INPUT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <xercesc/sax/InputSource.hpp>

#include <quenxml2/types.h>

namespace quen::internal {

// Why the text could not be taken, with the place as a parser would give it: both from 1; 0 when
// nothing could be read at all.
struct InputFailure {
  wstring message;
  std::size_t line = 0;
  std::size_t column = 0;
};

// Bytes to be read once, front to back.
class ByteReader {
 public:
  virtual ~ByteReader() = default;
  // Fills `outBytes` and returns how many bytes came, 0 at the end. Throws InputFailure.
  virtual std::size_t Read(char* outBytes, std::size_t inCapacity) = 0;
};

// Opens a regular file for reading; `inPath` is UTF-8. A pipe, a device or a directory is refused,
// so that nothing blocks. Throws InputFailure.
std::unique_ptr<ByteReader> OpenFile(const string& inPath, const wstring& inShownPath);

// The text of the document that one parse reads, as runs of units.
class UnitSource {
 public:
  virtual ~UnitSource() = default;
  // The next run of units, valid until the next call; empty at the end. Throws InputFailure.
  virtual std::u16string_view Next() = 0;
};

// An input source that can be read once. It outlives the parse; the failure of its text, if there
// was one, is to be asked for behind it, since the engine sees only an early end of its input.
class TextInput : public xercesc::InputSource {
 public:
  // Refers to `inText`, which has to stay alive for the parse.
  TextInput(std::u16string_view inText, const char16_t* inSystemId);
  // Decodes bytes: by byte order mark, by the encoding that the XML declaration names, or as UTF-8.
  // Where a document type declaration stands in it, the whole text is decoded at once.
  // Throws InputFailure.
  TextInput(std::unique_ptr<ByteReader> inBytes, const char16_t* inSystemId);
  ~TextInput() override;

  // The whole text where it lies in memory, empty where it comes in runs. A text with a document
  // type declaration always lies in memory.
  std::u16string_view WholeText() const { return whole_; }

  xercesc::BinInputStream* makeStream() const override;

  // Null if the text was taken without a failure.
  const InputFailure* Failure() const;

 private:
  struct State;
  class Stream;

  std::u16string decoded_;
  std::u16string_view whole_;
  std::unique_ptr<State> state_;
};

// Line and column, from 1, of the unit at `inOffset`.
InputFailure FailureAt(std::u16string_view inText, std::size_t inOffset, wstring inMessage);

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_TEXT_INPUT_H_

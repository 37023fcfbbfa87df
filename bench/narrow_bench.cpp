// SPDX-License-Identifier: Apache-2.0
//
// What a narrow call costs beyond its wide twin: both in the same run, on the same texts. A value
// has 20 characters; "mixed" text has one character in four beyond ASCII, one in twenty beyond the
// basic plane. Both widths must give the same text before anything is measured.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <type_traits>

#include <quenxml2/narrow.h>

namespace {

struct Wide {
  using String = quen::wstring;
  using Data = quen::CQuenXMLData2w;
  using Document = quen::CQuenXMLDocument2w;
};
struct Narrow {
  using String = quen::string;
  using Data = quen::CQuenXMLData2;
  using Document = quen::CQuenXMLDocument2;
};

template <class W>
typename W::String Text(const std::string& utf8) {
  if constexpr (std::is_same_v<W, Narrow>) {
    return utf8;
  } else {
    quen::wstring text;
    for (std::size_t i = 0; i < utf8.size();) {
      const auto byte = [&](std::size_t k) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(utf8[i + k]));
      };
      std::uint32_t point = byte(0);
      std::size_t length = 1;
      if (point >= 0xF0) {
        point = (point & 7) << 18 | (byte(1) & 63) << 12 | (byte(2) & 63) << 6 | (byte(3) & 63);
        length = 4;
      } else if (point >= 0xE0) {
        point = (point & 15) << 12 | (byte(1) & 63) << 6 | (byte(2) & 63);
        length = 3;
      } else if (point >= 0xC0) {
        point = (point & 31) << 6 | (byte(1) & 63);
        length = 2;
      }
      if (point >= 0x10000) {
        text += static_cast<char16_t>(0xD7C0 + (point >> 10));
        text += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
      } else {
        text += static_cast<char16_t>(point);
      }
      i += length;
    }
    return text;
  }
}

enum Script { kAscii, kMixed };

// 20 characters.
const char* Value(Script script) {
  return script == kAscii ? "bolts, M8 x 40, zinc"
                          : "Gr\u00fc\u00dfe \u4e2d\u6587 \u20ac9 \U0001F600 zinc";
}

// About `bytes` bytes of orders.
const std::string& Orders(Script script, std::size_t bytes) {
  static std::string texts[2][2];
  std::string& text = texts[script][bytes > 2'000'000];
  if (!text.empty()) return text;
  text = "<orders>";
  for (int number = 1; text.size() < bytes; ++number) {
    text += "<order id=\"" + std::to_string(number) + "\"><item qty=\"3\">" + Value(script) +
            "</item><note>" + Value(script) + "</note><total>" + std::to_string(number * 7) +
            "</total></order>";
  }
  return text += "</orders>";
}
constexpr std::size_t kMedium = 1'000'000;
constexpr std::size_t kLarge = 10'000'000;

template <class W>
typename W::Data SmallTree(Script script) {
  return typename W::Data(Text<W>("<orders><order id=\"1\"><item qty=\"3\">" +
                                  std::string(Value(script)) +
                                  "</item><total>1234</total></order></orders>"));
}

void Check(bool equal, const char* what) {
  if (equal) return;
  std::cerr << "the widths differ: " << what << "\n";
  std::exit(1);
}

// Both widths give the same text, which is the one that went in.
void CheckAgreement() {
  for (const Script script : {kAscii, kMixed}) {
    quen::wstring wide;
    quen::string narrow;
    SmallTree<Wide>(script).GetData(wide, u"/orders/order/item");
    SmallTree<Narrow>(script).GetData(narrow, "/orders/order/item");
    Check(narrow == Value(script) && wide == Text<Wide>(narrow), "a value");
    const std::string& orders = Orders(script, kMedium);
    quen::CQuenXMLDocument2w wideDocument;
    wideDocument.LoadXML(Text<Wide>(orders));
    quen::CQuenXMLDocument2 narrowDocument;
    narrowDocument.LoadXML(orders);
    Check(narrowDocument.GetSubset() == orders, "a subset");
    Check(wideDocument.GetSubset() == Text<Wide>(orders), "a wide subset");
  }
}

template <class W>
void ReadText(benchmark::State& state, Script script, const char* at) {
  typename W::Data tree = SmallTree<W>(script);
  tree.CursorTo(Text<W>("/orders/order/item"));
  const typename W::String path = Text<W>(at);
  typename W::String value;
  for (auto _ : state) {
    tree.GetData(value, path);
    benchmark::DoNotOptimize(value.data());
  }
}

template <class W>
void WriteText(benchmark::State& state, Script script, const char* at) {
  typename W::Data tree = SmallTree<W>(script);
  tree.CursorTo(Text<W>("/orders/order/item"));
  const typename W::String path = Text<W>(at);
  const typename W::String value = Text<W>(Value(script));
  for (auto _ : state) tree.SetData(value, path);
}

template <class W>
void ReadLong(benchmark::State& state) {
  const typename W::Data tree = SmallTree<W>(kAscii);
  const typename W::String path = Text<W>("/orders/order/total");
  std::int32_t value = 0;
  for (auto _ : state) {
    tree.GetData(value, path);
    benchmark::DoNotOptimize(value);
  }
}

template <class W>
void WriteLong(benchmark::State& state) {
  typename W::Data tree = SmallTree<W>(kAscii);
  const typename W::String path = Text<W>("/orders/order/total");
  for (auto _ : state) tree.SetData(std::int32_t{1234}, path);
}

template <class W>
void WalkChildren(benchmark::State& state) {
  typename W::Document document;
  document.LoadXML(Text<W>(Orders(kAscii, kMedium)));
  auto root = document.GetDocumentElement();
  std::size_t count = 0;
  for (auto _ : state) {
    const auto end = root.end();
    for (auto child = root.begin(); child != end; ++child) count += (*child).HasAttributes();
  }
  benchmark::DoNotOptimize(count);
}

template <class W>
void SelectAll(benchmark::State& state) {
  typename W::Document document;
  document.LoadXML(Text<W>(Orders(kAscii, kMedium)));
  const typename W::String expression = Text<W>("/orders/order/item");
  for (auto _ : state) benchmark::DoNotOptimize(document.SelectNodes(expression).size());
}

template <class W>
void SubsetOut(benchmark::State& state, Script script) {
  const typename W::Data tree(Text<W>(Orders(script, kMedium)));
  const typename W::String path = Text<W>("/");
  typename W::String text;
  for (auto _ : state) {
    tree.GetSubset(text, path);
    benchmark::DoNotOptimize(text.data());
  }
}

// UTF-8 text into a tree. The wide load begins with the text in its own width.
template <class W>
void Load(benchmark::State& state, Script script) {
  const typename W::String text = Text<W>(Orders(script, kLarge));
  for (auto _ : state) {
    typename W::Data tree(text);
    benchmark::DoNotOptimize(tree.HasRoot());
  }
}

template <class Function, class... Arguments>
void Register(const std::string& name, Function wide, Function narrow, Arguments... arguments) {
  benchmark::RegisterBenchmark((name + "/wide").c_str(), wide, arguments...);
  benchmark::RegisterBenchmark((name + "/narrow").c_str(), narrow, arguments...);
}

}  // namespace

int main(int argc, char** argv) {
  CheckAgreement();
  for (const Script script : {kAscii, kMixed}) {
    const std::string kind = script == kAscii ? "/ascii" : "/mixed";
    Register("ReadText/path" + kind, ReadText<Wide>, ReadText<Narrow>, script,
             "/orders/order/item");
    Register("ReadText/cursor" + kind, ReadText<Wide>, ReadText<Narrow>, script, "");
    Register("WriteText/path" + kind, WriteText<Wide>, WriteText<Narrow>, script,
             "/orders/order/item");
    Register("WriteText/cursor" + kind, WriteText<Wide>, WriteText<Narrow>, script, "");
    Register("SubsetOut/1MB" + kind, SubsetOut<Wide>, SubsetOut<Narrow>, script);
    Register("Load/10MB" + kind, Load<Wide>, Load<Narrow>, script);
  }
  Register("ReadLong/path", ReadLong<Wide>, ReadLong<Narrow>);
  Register("WriteLong/path", WriteLong<Wide>, WriteLong<Narrow>);
  Register("WalkChildren", WalkChildren<Wide>, WalkChildren<Narrow>);
  Register("SelectAll", SelectAll<Wide>, SelectAll<Narrow>);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
}

// Allocation-failure sweep over strings, narrow/wide conversion, exceptions, identifiers
// and the container templates.
#include <cctype>
#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <vorn/vorn.h>

#include "reliability/snapshot.h"
#include "reliability/sweep.h"
#include "support/wide.h"
#include "util/scoped_time_zone.h"

namespace {

using namespace vorn_sweep;
using vorn_test::W;

using Narrow = stringbase<char, astringfuncs>;
using Wide = stringbase<unsigned short, wstringfuncs>;

// One string operation on `result`, which must then hold `expected`. A failed buffer
// leaves the result without one; where an operation allocates twice, `partly` lists the
// text that the allocation still succeeding leaves behind.
template <class S, class Op>
void StringStep(Run& run, std::string const& label, S& result, Op op, Tokens const& expected,
                std::vector<Tokens> partly = {}) {
  Allow const allow = Allow().Malloc(kLostText | (partly.empty() ? 0u : kFailed));
  Outcome const o = run.Do(op);
  run.Check(label, o, allow, Snap(result), {expected, {}, std::move(partly)});
}

// Each step starts from a string set outside the counted operations, so that a failure
// in one step does not change what the next one must produce.
void Strings(Run& run) {
  std::optional<Narrow> built;
  Outcome o = run.Do([&] { built.emplace("field"); });
  run.Check("Narrow(text)", o, Allow().Malloc(kLostText), Snap(*built), {{"'field'"}});

  Narrow const source("crop");
  std::optional<Narrow> copy;
  o = run.Do([&] { copy.emplace(source); });
  run.Check("Narrow(Narrow)", o, Allow().Malloc(kLostText), Snap(*copy), {{"'crop'"}});

  Narrow s("old");
  StringStep(run, "Narrow = Narrow", s, [&] { s = source; }, {"'crop'"});
  s = "old";
  StringStep(run, "Narrow = text", s, [&] { s = "barley"; }, {"'barley'"});
  StringStep(run, "Narrow::copy(text, 4)", s, [&] { s.copy("oats and peas", 4); }, {"'oats'"});
  s = "oats";
  StringStep(run, "Narrow::append", s, [&] { s.append(" 2021"); }, {"'oats 2021'"});
  s = "oats";
  StringStep(run, "Narrow += Narrow", s, [&] { s += source; }, {"'oatscrop'"});
  // operator+ copies this string, then appends: when the copy fails, the result is the
  // appended text alone.
  Narrow sum;
  StringStep(run, "Narrow + text", sum, [&] { sum = Narrow("ab") + "cd"; }, {"'abcd'"},
             {{"'cd'"}});
  sum = "abcd";
  StringStep(run, "Narrow self-append", sum, [&] { sum += sum; }, {"'abcdabcd'"});

  std::optional<Wide> wide;
  o = run.Do([&] { wide.emplace(W(u"Zone \u00e9")); });
  run.Check("Wide(text)", o, Allow().Malloc(kLostText), Snap(*wide), {{"'Zone \\u00e9'"}});
  Wide const wideSource(W(u"Zone \u00e9"));
  Wide w;
  StringStep(run, "Wide = Wide", w, [&] { w = wideSource; }, {"'Zone \\u00e9'"});
  w = wideSource;
  StringStep(run, "Wide += text", w, [&] { w += W(u"!"); }, {"'Zone \\u00e9!'"});
}

TEST(AllocationFailureSweep, Strings) { Sweep("strings", Strings); }

void NarrowWide(Run& run) {
  char const narrow[] = "Gr\xc3\xbcn \xf0\x9f\x8c\xbe";  // a 2-byte and a 4-byte character
  Wide const wideText(W(u"Gr\u00fcn \U0001F33E"));
  Narrow const narrowText(narrow);
  Tokens const wideTokens = Snap(wideText);
  Tokens const narrowTokens = Snap(narrowText);
  // The conversions return a new string; Snap runs after the operation, outside counting,
  // on a string the operation filled in place.
  Wide w;
  Narrow n;
  auto wideResult = [&] { return Snap(w); };
  auto narrowResult = [&] { return Snap(n); };
  Outcome o = run.Do([&] { w = VornUtil::StringToWString(narrow); });
  run.Check("StringToWString(text)", o, Allow().Malloc(kLostText), wideResult(), {wideTokens});
  o = run.Do([&] { w = VornUtil::StringToWString(narrow, 6); });  // the pair does not fit
  run.Check("StringToWString(text, 6)", o, Allow().Malloc(kLostText), wideResult(),
            {Snap(Wide(W(u"Gr\u00fcn ")))});
  o = run.Do([&] { w = VornUtil::StringToWString(narrowText); });
  run.Check("StringToWString(Narrow)", o, Allow().Malloc(kLostText), wideResult(), {wideTokens});
  o = run.Do([&] { n = VornUtil::WStringToString(wideText.c_str()); });
  run.Check("WStringToString(text)", o, Allow().Malloc(kLostText), narrowResult(),
            {narrowTokens});
  o = run.Do([&] { n = VornUtil::WStringToString(wideText.c_str(), 5); });
  run.Check("WStringToString(text, 5)", o, Allow().Malloc(kLostText), narrowResult(),
            {Snap(Narrow("Gr\xc3\xbcn"))});
  o = run.Do([&] { n = VornUtil::WStringToString(wideText); });
  run.Check("WStringToString(Wide)", o, Allow().Malloc(kLostText), narrowResult(),
            {narrowTokens});
  char buffer[16];
  unsigned int written = 0;
  o = run.Do([&] { written = VornUtil::WStringToString(wideText, buffer, 15); });
  run.Check("WStringToString(Wide, buffer)", o, Allow(), {std::to_string(written), buffer},
            {{"10", narrow}});
}

TEST(AllocationFailureSweep, NarrowWideConversion) { Sweep("narrow/wide conversion", NarrowWide); }

// An exception's message is built with the string class: each failed buffer leaves that
// step's string empty and the next step starts from there.
void Exceptions(Run& run) {
  std::optional<VornException> e;
  auto message = [&] { return Tokens{e->Message(), std::to_string(e->ErrorCode())}; };
  Outcome o = run.Do([&] { e.emplace("Out of range", 5002); });
  run.Check("VornException(message, code)", o, Allow().Malloc(kFailed), message(),
            {{"Out of range", "5002"}, {}, {{"", "5002"}}});
  o = run.Do([&] { e.emplace("Out of range", 5002, "row 7"); });
  run.Check("VornException(message, code, detail)", o, Allow().Malloc(kFailed), message(),
            {{"Out of range : row 7", "5002"},
             {},
             {{" : row 7", "5002"}, {"row 7", "5002"}, {"", "5002"}}});
  o = run.Do([&] { e.emplace("Out of range", 5002, -1234567890123LL); });
  run.Check("VornException(message, code, long long)", o, Allow().Malloc(kFailed), message(),
            {{"Out of range : -1234567890123", "5002"},
             {},
             {{" : -1234567890123", "5002"}, {"-1234567890123", "5002"}, {"", "5002"}}});
  VornException const source("Index out of range", 5002);
  std::optional<VornException> copy;
  o = run.Do([&] { copy.emplace(source); });
  run.Check("VornException(VornException)", o, Allow().Malloc(kFailed),
            {copy->Message(), std::to_string(copy->ErrorCode())},
            {{"Index out of range", "5002"}, {}, {{"", "5002"}}});
  VornException assigned("old", 1);
  o = run.Do([&] { assigned = source; });
  run.Check("VornException = VornException", o, Allow().Malloc(kFailed),
            {assigned.Message(), std::to_string(assigned.ErrorCode())},
            {{"Index out of range", "5002"}, {}, {{"", "5002"}}});
}

TEST(AllocationFailureSweep, Exceptions) { Sweep("exceptions", Exceptions); }

std::string GuidShape(Narrow const& guid) {
  if (guid.empty()) return "~";
  std::string shape = "'";
  for (char c : std::string(guid.c_str())) {
    shape += c == '-' ? '-' : std::isxdigit(static_cast<unsigned char>(c)) ? 'h' : c;
  }
  return shape + "'";
}

void Identifiers(Run& run) {
  Narrow guid;
  Outcome const o = run.Do([&] { guid = VornUtil::GenerateGuid(); });
  run.Check("GenerateGuid()", o, Allow().Malloc(kLostText), {GuidShape(guid)},
            {{"'hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh'"}});
}

// With TZ set, the C runtime loads no zone data of its own inside the identifier's clock
// reading, so the string is the only allocation.
TEST(AllocationFailureSweep, Identifiers) {
  vorn_test::ScopedTimeZone utc(vorn_test::kUtc);
  Sweep("identifiers", Identifiers);
}

using AttributeVector = VornAttributeCollection::AttributeVector;
using WideList = Vorn::list<Wide>;

Tokens SnapVector(std::string const& result, AttributeVector const& v) {
  Tokens out{result, "[V"};
  for (VornAttribute const& a : v) Snap(out, a);
  out.push_back("]");
  return out;
}

Tokens SnapList(std::string const& result, WideList const& l) {
  Tokens out{result, "[W"};
  for (Wide const& text : l) out.push_back(Text(text));
  out.push_back("]");
  return out;
}

// A step on the attribute vector `v` that returns `result` ("-" when it throws). Without
// a failure the vector must hold `after` and the result be `ok`; a failed block must
// leave it unchanged with the result `failed`; a failed element copy loses a string (or,
// for the BLOB, throws "Out of Memory" with the vector unchanged).
template <class Op>
void VectorStep(Run& run, std::string const& label, AttributeVector& v, Op op, char const* ok,
                char const* failed, AttributeVector const& after, unsigned blockEffect = kFailed,
                unsigned blobEffect = 0) {
  char const* result = "-";  // not a std::string: nothing may allocate inside Do but v
  Tokens const before = SnapVector("-", v);
  Outcome const o = run.Do([&] { result = op(); });
  Tokens unchanged = before;
  unchanged[0] = failed;
  run.Check(label, o, Allow().New(blockEffect).Malloc(kLostText).NewArray(blobEffect),
            SnapVector(result, v), {SnapVector(ok, after), before, {unchanged}});
}

void Containers(Run& run) {
  AttributeVector v;
  for (int i = 0; i < 10; ++i) {  // the first append allocates a block of 10
    VornAttribute const item(W(u"Row"), W(i % 2 == 0 ? u"even" : u"odd"));
    // Built from the vector as it is now, since a failure in an earlier append changes
    // what this one must produce.
    AttributeVector after(v);
    after.push_back(item);
    VectorStep(run, "vector::push_back", v, [&] { return v.push_back(item) ? "true" : "false"; },
               "true", "false", after);
  }
  VornAttribute const head(W(u"Head"), 1);
  AttributeVector after(v);
  after.insert(after.begin(), head);
  VectorStep(run, "vector::insert(begin) growing", v,
             [&] { return v.insert(v.begin(), head) == v.begin() ? "begin" : "end"; }, "begin",
             "end", after);
  after = v;
  after.insert(after.begin() + 1, head);
  VectorStep(run, "vector::insert(begin + 1) in place", v,
             [&] { return v.insert(v.begin() + 1, head) == v.begin() + 1 ? "placed" : "end"; },
             "placed", "end", after, 0);
  after = v;
  after.erase(after.begin());
  VectorStep(run, "vector::erase(begin)", v, [&] { v.erase(v.begin()); return "erased"; },
             "erased", "-", after, 0);
  unsigned char const bytes[] = {1, 2, 3};
  VornAttribute const blob(W(u"Blob"), bytes, 3);
  after = v;
  after.push_back(blob);
  VectorStep(run, "vector::push_back(BLOB)", v,
             [&] { return v.push_back(blob) ? "true" : "false"; }, "true", "false", after, 0,
             kThrewMemory);
  after = v;
  VectorStep(run, "vector::reserve(40)", v, [&] { return v.reserve(40) ? "true" : "false"; },
             "true", "false", after, kFailed, kThrewMemory);
  AttributeVector target(3, head);
  after = v;
  VectorStep(run, "vector::assign", target, [&] { return target.assign(v) ? "true" : "false"; },
             "true", "false", after, kFailed, kThrewMemory);
  std::optional<AttributeVector> copy;
  Outcome o = run.Do([&] { copy.emplace(v); });
  // A copy whose block cannot be allocated is empty; one whose BLOB cannot be copied
  // is not made at all.
  run.Check("vector(vector)", o, Allow().New(kFailed).Malloc(kLostText).NewArray(kThrewMemory),
            copy ? SnapVector("-", *copy) : Tokens{"none"},
            {SnapVector("-", v), {"none"}, {SnapVector("-", AttributeVector())}});

  // The list of wide strings: nodes from operator new, texts from malloc.
  WideList list;
  Tokens before = SnapList("-", list);
  char const* result = "-";
  o = run.Do([&] { result = list.insert(list.end()) == list.end() ? "end" : "node"; });
  run.Check("list::insert(pos)", o, Allow().New(kFailed), SnapList(result, list),
            {{"node", "[W", "~", "]"}, before, {{"end", "[W", "]"}}});
  WideList source;
  for (char16_t const* text : {u"north", u"east", u"south"}) *source.insert(source.end()) = W(text);
  // A range insert stops at the first node it cannot allocate, keeping what it inserted.
  std::vector<Tokens> stopped;
  WideList partial(list);
  for (Wide const& text : source) {
    stopped.push_back(SnapList("false", partial));
    *partial.insert(partial.end()) = text;
  }
  before = SnapList("-", list);
  o = run.Do([&] {
    result = list.insert(list.end(), source.begin(), source.end()) ? "true" : "false";
  });
  run.Check("list::insert(pos, first, last)", o, Allow().New(kFailed).Malloc(kLostText),
            SnapList(result, list), {SnapList("true", partial), before, stopped});
  // The copy constructor keeps what it copied; assign is all or nothing.
  std::vector<Tokens> copied;
  WideList prefix;
  for (Wide const& text : list) {
    copied.push_back(SnapList("-", prefix));
    *prefix.insert(prefix.end()) = text;
  }
  std::optional<WideList> listCopy;
  o = run.Do([&] { listCopy.emplace(list); });
  run.Check("list(list)", o, Allow().New(kFailed).Malloc(kLostText), SnapList("-", *listCopy),
            {SnapList("-", list), {}, copied});
  WideList target2(source);
  before = SnapList("-", target2);
  o = run.Do([&] { result = target2.assign(list) ? "true" : "false"; });
  Tokens unchanged = before;
  unchanged[0] = "false";
  run.Check("list::assign", o, Allow().New(kFailed).Malloc(kLostText), SnapList(result, target2),
            {SnapList("true", list), before, {unchanged}});
}

TEST(AllocationFailureSweep, Containers) { Sweep("vector and list", Containers); }

}  // namespace

// The allocation-failure sweep: runs a scripted workload once for every allocation it
// makes, with exactly that allocation failing, and checks each operation's outcome.
//
// A workload is a function of a Run. It wraps each library operation it wants swept in
// run.Do(...) and then states, with run.Check(...), what the operation must produce
// without a failure (`expected`) and which effects a failure inside it may have on each
// channel (Allow). Only allocations made inside Do are counted and can fail; the
// workload's own bookkeeping (snapshots, expectations) allocates freely.
//
// Sweep(name, workload) runs the workload unarmed twice (a warm-up, then a run that
// counts the allocations per channel), then once per channel and failure point N with
// the N-th counted allocation failing. Every run must see the failure fire inside
// exactly one Do, the outcome of that operation must be one of the allowed effects, and
// every other operation must produce its expected state. Each allowed effect must
// occur at least once over the sweep, so an allowance cannot hide a dead branch. Every
// run destroys its objects before it returns, so under LeakSanitizer the leak checks
// between runs pin a leak to the failure points since the last check.
#ifndef VORN_TESTS_RELIABILITY_SWEEP_H
#define VORN_TESTS_RELIABILITY_SWEEP_H

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <vorn/vorn.h>

#include "reliability/snapshot.h"
#include "support/alloc_failure.h"

#if defined(__SANITIZE_ADDRESS__)
#define VORN_SWEEP_LEAK_CHECK 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VORN_SWEEP_LEAK_CHECK 1
#endif
#endif
#if defined(VORN_SWEEP_LEAK_CHECK)
#include <sanitizer/lsan_interface.h>
#endif

namespace vorn_sweep {

using vorn_test::Channel;

constexpr Channel kChannels[] = {Channel::Malloc, Channel::NothrowNew, Channel::ArrayNew};

// The channel's slot in the per-channel arrays below.
inline std::size_t Slot(Channel channel) { return static_cast<std::size_t>(channel); }

inline char const* ChannelName(Channel channel) {
  switch (channel) {
    case Channel::Malloc: return "malloc";
    case Channel::NothrowNew: return "operator new";
    case Channel::ArrayNew: return "operator new[]";
  }
  return "?";
}

// What a failed allocation did to one operation. An operation's own failure result (null,
// false, end(), a documented partial result) is kFailed; the others name a state. The
// three exceptions count only with the state unchanged or one of the failure results.
enum Effect : unsigned {
  kMismatch = 0,               // none of the below: never allowed
  kNone = 1u << 0,             // the state is as without the failure
  kFailed = 1u << 1,           // the operation's own failure result
  kUnchanged = 1u << 2,        // nothing changed, nothing thrown
  kLostText = 1u << 3,         // exactly one string of the result has no buffer
  kLostCoordinates = 1u << 4,  // exactly one coordinate vector of the result is empty
  kNullMember = 1u << 5,       // exactly one member of the result is null
  kNullRow = 1u << 6,          // exactly one row of an extended grid is null
  kThrewNull = 1u << 7,        // VornException("Parameter is NULL", 5003)
  kThrewMemory = 1u << 8,      // VornException("Out of Memory", 5005)
  kThrewGrid = 1u << 9,        // VornException("Unable to initialize Grid", 5004)
  kThrewPartial = 1u << 10,    // one of those part-way, the copies made so far kept
  kDroppedMember = 1u << 11,   // exactly one member of the result is missing
  kTruncated = 1u << 12,       // one collection of the result holds only its first members
};

inline std::string EffectNames(unsigned effects) {
  static char const* const names[] = {"none",        "failed",      "unchanged",
                                      "lost text",   "lost coords", "null member",
                                      "null row",    "threw 5003",  "threw 5005",
                                      "threw 5004",  "threw part-way", "dropped member",
                                      "truncated"};
  if (effects == kMismatch) return "mismatch";
  std::string out;
  for (unsigned bit = 0; bit < sizeof names / sizeof names[0]; ++bit) {
    if ((effects & (1u << bit)) == 0) continue;
    if (!out.empty()) out += ", ";
    out += names[bit];
  }
  return out;
}

// The effects a failure may have, per channel; a channel not named allows none, that is
// the operation must not allocate on it.
struct Allow {
  std::array<unsigned, 3> effects{};
  Allow& Malloc(unsigned e) { return Add(Channel::Malloc, e); }
  Allow& New(unsigned e) { return Add(Channel::NothrowNew, e); }
  Allow& NewArray(unsigned e) { return Add(Channel::ArrayNew, e); }
  Allow& Add(Channel channel, unsigned e) {
    effects[Slot(channel)] |= e;
    return *this;
  }
};

// What one Do saw.
struct Outcome {
  bool hit = false;  // the armed failure fired inside the operation
  bool threw = false;
  bool unexpected = false;  // an exception other than VornException
  std::string message;
  int code = 0;
};

// The states an operation's result is compared with.
struct Expectation {
  Expectation(Tokens expected_, Tokens before_ = {}, std::vector<Tokens> failed_ = {},
              std::function<bool(Tokens const&)> partial_ = {})
      : expected(std::move(expected_)),
        before(std::move(before_)),
        failed(std::move(failed_)),
        partial(std::move(partial_)) {}

  Tokens expected;                // without a failure
  Tokens before;                  // before the operation
  std::vector<Tokens> failed;     // the operation's own failure results
  // Accepts the state that an operation which throws part-way may leave.
  std::function<bool(Tokens const&)> partial;
};

// The index behind the object or collection that opens at tokens[i].
inline std::size_t SkipMember(Tokens const& tokens, std::size_t i) {
  int depth = 0;
  do {
    std::string const& t = tokens[i];
    if (t != "(null)" && (t[0] == '(' || t[0] == '[')) ++depth;
    if (t == ")" || t == "]") --depth;
    ++i;
  } while (depth > 0 && i < tokens.size());
  return i;
}

inline bool StartsWith(std::string const& text, char const* prefix) {
  return text.compare(0, std::strlen(prefix), prefix) == 0;
}

// Whether removing the one object or member that opens at or before `first` (the first
// position where the two differ) from `expected` gives `actual`.
inline bool DroppedOne(Tokens const& expected, Tokens const& actual, std::size_t first) {
  if (actual.size() >= expected.size()) return false;
  for (std::size_t k = first + 1; k-- > 0;) {
    if (expected[k][0] != '(') continue;
    std::size_t const end = SkipMember(expected, k);
    if (expected.size() - (end - k) != actual.size()) continue;
    if (std::equal(expected.begin() + static_cast<std::ptrdiff_t>(end), expected.end(),
                   actual.begin() + static_cast<std::ptrdiff_t>(k))) {
      return true;
    }
  }
  return false;
}

// Names the single loss that turns `expected` into `actual`: one string without a buffer,
// one empty coordinate vector, one null or missing member, one null row, or one
// collection cut short. Anything else, or more than one difference, is a mismatch.
inline unsigned OneLoss(Tokens const& expected, Tokens const& actual) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < expected.size() && j < actual.size() && expected[i] == actual[j]) ++i, ++j;
  std::size_t const first = i;
  unsigned effect = kMismatch;
  while (i < expected.size() && j < actual.size()) {
    std::string const& e = expected[i];
    std::string const& a = actual[j];
    if (e == a) {
      ++i;
      ++j;
      continue;
    }
    if (effect != kMismatch) break;
    if (e[0] == '\'' && a == "~") {
      effect = kLostText;
    } else if (e[0] == 'C' && !StartsWith(e, "C0:") && StartsWith(a, "C0:")) {
      effect = kLostCoordinates;
    } else if (StartsWith(e, "R:") && a == "R~") {
      effect = kNullRow;
    } else if (e[0] == '(' && a == "(null)") {
      effect = kNullMember;
      i = SkipMember(expected, i);
      ++j;
      continue;
    } else if (e[0] == '(' && a == "]") {
      effect = kTruncated;
      while (expected[i] != "]") i = SkipMember(expected, i);
      continue;
    } else {
      break;
    }
    ++i;
    ++j;
  }
  if (i == expected.size() && j == actual.size()) return effect;
  return DroppedOne(expected, actual, first) ? kDroppedMember : kMismatch;
}

// The members of a collection snapshot, each as its own token list.
inline std::vector<Tokens> Members(Tokens const& collection) {
  std::vector<Tokens> members;
  for (std::size_t i = 1; i + 1 < collection.size();) {
    std::size_t const end = SkipMember(collection, i);
    members.emplace_back(collection.begin() + static_cast<std::ptrdiff_t>(i),
                         collection.begin() + static_cast<std::ptrdiff_t>(end));
    i = end;
  }
  return members;
}

// `collection` with the first `count` of `members` appended.
inline Tokens WithMembers(Tokens collection, std::vector<Tokens> const& members,
                          std::size_t count) {
  for (std::size_t k = 0; k < count; ++k) collection = Appended(collection, members[k]);
  return collection;
}

// `tokens` behind the result of a bool operation.
inline Tokens WithResult(bool result, Tokens tokens) {
  tokens.insert(tokens.begin(), result ? "true" : "false");
  return tokens;
}

inline std::string Join(Tokens const& tokens) {
  std::string out;
  for (std::string const& t : tokens) out += t + " ";
  return out;
}

// Allowed and observed effects per step label and channel, over one workload's sweep.
struct Ledger {
  std::map<std::string, std::array<unsigned, 3>> allowed;
  std::map<std::string, std::array<unsigned, 3>> observed;
};

class Run {
public:
  Run(Ledger& ledger, bool armed, Channel channel)
      : ledger_(ledger), armed_(armed), channel_(channel) {}
  ~Run() { EXPECT_FALSE(pending_) << "the last operation was not checked"; }
  Run(Run const&) = delete;
  Run& operator=(Run const&) = delete;

  // Runs op with allocation counting on and records what happened.
  template <class Op>
  Outcome Do(Op&& op) {
    EXPECT_FALSE(pending_) << "an operation was not checked before the next one";
    pending_ = true;
    bool const firedBefore = vorn_test::Fired(channel_);
    Outcome outcome;
    vorn_test::SetCounting(true);
    try {
      op();
      vorn_test::SetCounting(false);
    } catch (VornException const& e) {
      vorn_test::SetCounting(false);
      outcome.threw = true;
      outcome.message = e.Message();
      outcome.code = e.ErrorCode();
    } catch (...) {
      vorn_test::SetCounting(false);
      outcome.unexpected = true;
    }
    outcome.hit = armed_ && !firedBefore && vorn_test::Fired(channel_);
    if (outcome.hit) ++hits_;
    return outcome;
  }

  // Checks the outcome of the last Do; `actual` is the state it left.
  void Check(std::string const& label, Outcome const& outcome, Allow const& allow,
             Tokens const& actual, Expectation const& e) {
    pending_ = false;
    std::size_t const channel = Slot(channel_);
    if (!armed_) {
      for (Channel c : kChannels) ledger_.allowed[label][Slot(c)] |= allow.effects[Slot(c)];
    }
    EXPECT_FALSE(outcome.unexpected) << label << ": an exception other than VornException";
    if (!outcome.hit) {
      EXPECT_FALSE(outcome.threw) << label << ": threw \"" << outcome.message << "\" ("
                                  << outcome.code << ") without a failure of its own";
      EXPECT_EQ(Join(actual), Join(e.expected)) << label << ": state without a failure";
      return;
    }
    unsigned const effect = Classify(outcome, actual, e);
    ledger_.observed[label][channel] |= effect;
    EXPECT_NE(allow.effects[channel] & effect, 0u)
        << label << ": a failed " << ChannelName(channel_) << " gave [" << EffectNames(effect)
        << "], allowed [" << EffectNames(allow.effects[channel]) << "]\n  thrown: "
        << (outcome.threw ? outcome.message + " (" + std::to_string(outcome.code) + ")" : "-")
        << "\n  actual:   " << Join(actual) << "\n  expected: " << Join(e.expected);
  }

  int hits() const { return hits_; }

private:
  static bool IsOneOf(Tokens const& actual, std::vector<Tokens> const& states) {
    for (Tokens const& state : states) {
      if (actual == state) return true;
    }
    return false;
  }

  static unsigned Classify(Outcome const& outcome, Tokens const& actual, Expectation const& e) {
    if (outcome.threw) {
      unsigned thrown = kMismatch;
      if (outcome.code == 5003 && outcome.message == "Parameter is NULL") thrown = kThrewNull;
      if (outcome.code == 5005 && outcome.message == "Out of Memory") thrown = kThrewMemory;
      if (outcome.code == 5004 && outcome.message == "Unable to initialize Grid") {
        thrown = kThrewGrid;
      }
      if (thrown == kMismatch) return kMismatch;
      if (actual == e.before || IsOneOf(actual, e.failed)) return thrown;
      // An operation that appends copies keeps those made before the failure: the result
      // is the expected one with one collection cut short.
      if ((e.partial && e.partial(actual)) || OneLoss(e.expected, actual) == kTruncated) {
        return kThrewPartial;
      }
      return kMismatch;
    }
    if (actual == e.expected) return kNone;
    if (IsOneOf(actual, e.failed)) return kFailed;
    if (!e.before.empty() && actual == e.before) return kUnchanged;
    return OneLoss(e.expected, actual);
  }

  Ledger& ledger_;
  bool armed_;
  Channel channel_;
  bool pending_ = false;
  int hits_ = 0;
};

// Failure points exercised per channel, by every sweep of this process.
struct Totals {
  std::array<unsigned long, 3> points{};
  int workloads = 0;
};

inline Totals& ProcessTotals() {
  static Totals totals;
  return totals;
}

// Prints the per-channel totals once every test of the process has run.
class Report : public ::testing::Environment {
public:
  void TearDown() override {
    Totals const& totals = ProcessTotals();
    if (totals.workloads == 0) return;
    for (Channel channel : kChannels) {
      std::printf("allocation-failure sweep: %-14s %6lu failure points in %d workloads\n",
                  ChannelName(channel), totals.points[Slot(channel)],
                  totals.workloads);
    }
  }
};

inline ::testing::Environment* const kReport =
    ::testing::AddGlobalTestEnvironment(new Report);

// Failure points between two leak checks: a check costs tens of milliseconds, so by
// default a leak is pinned to a run of 32 points, and the sanitizer's report names the
// allocation. VORN_SWEEP_LEAK_STRIDE=1 checks after every point.
inline unsigned long LeakCheckStride() {
  char const* text = std::getenv("VORN_SWEEP_LEAK_STRIDE");
  unsigned long const stride = text != nullptr ? std::strtoul(text, nullptr, 10) : 0;
  return stride != 0 ? stride : 32;
}

// Whether the blocks unreachable now include a leak. Leaked blocks stay unreachable, so
// after the first leak of the process every later check would report it again: checking
// stops there, and the test that found it fails.
inline bool LeakFound() {
#if defined(VORN_SWEEP_LEAK_CHECK)
  static bool leaked = false;
  if (leaked) return false;
  leaked = __lsan_do_recoverable_leak_check() != 0;
  return leaked;
#else
  return false;
#endif
}

template <class Workload>
void Sweep(char const* name, Workload workload) {
  vorn_test::ScopedCounting off(false);
  Ledger ledger;
  for (int pass = 0; pass < 2; ++pass) {  // a warm-up, then the counting run
    vorn_test::Reset();
    Run run(ledger, false, Channel::Malloc);
    workload(run);
  }
  std::array<unsigned long, 3> counts{};
  for (Channel channel : kChannels) counts[Slot(channel)] = vorn_test::Count(channel);
  ASSERT_FALSE(::testing::Test::HasFailure()) << name << ": the unarmed run failed";
  ASSERT_FALSE(LeakFound()) << name << ": the unarmed run leaked";

  unsigned long const stride = LeakCheckStride();
  for (Channel channel : kChannels) {
    unsigned long const count = counts[Slot(channel)];
    unsigned long checked = 0;
    for (unsigned long n = 1; n <= count; ++n) {
      SCOPED_TRACE(std::string(name) + ", failing " + ChannelName(channel) + " #" +
                   std::to_string(n));
      vorn_test::Reset();
      vorn_test::FailNth(channel, n);
      int hits = 0;
      {
        Run run(ledger, true, channel);
        workload(run);
        hits = run.hits();
      }
      bool const fired = vorn_test::Fired(channel);
      vorn_test::Reset();
      EXPECT_TRUE(fired) << "the allocation did not happen: the workload is not repeatable";
      EXPECT_EQ(hits, 1) << "the failure must land in exactly one checked operation";
      if (n % stride == 0 || n == count) {
        EXPECT_FALSE(LeakFound()) << "leak after one of the failure points " << checked + 1
                                  << " to " << n;
        checked = n;
      }
      if (::testing::Test::HasFailure()) return;
    }
  }

  for (auto const& [label, allowed] : ledger.allowed) {
    for (Channel channel : kChannels) {
      unsigned const missing = allowed[Slot(channel)] & ~ledger.observed[label][Slot(channel)];
      EXPECT_EQ(missing, 0u) << name << ": " << label << ": allowed on " << ChannelName(channel)
                             << " but never seen: " << EffectNames(missing);
    }
  }
  Totals& totals = ProcessTotals();
  ++totals.workloads;
  for (Channel channel : kChannels) totals.points[Slot(channel)] += counts[Slot(channel)];
  std::printf("sweep %-28s malloc %4lu, operator new %4lu, operator new[] %3lu failure points\n",
              name, counts[0], counts[1], counts[2]);
}

// Exercises an object after a run: the callback moves every coordinate.
inline void Shift(double x, double y, double* outX, double* outY, void*) {
  *outX = x + 0.5;
  *outY = y - 0.25;
}

}  // namespace vorn_sweep

#endif

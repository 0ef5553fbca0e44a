// fault_sweep calls | kills | prefixes | bytes | integers: runs ZORVIK under every trouble of the
// kind and prints what came of it. Fails when any fault was seen.
//   calls   the n-th call of each kind fails or falls short, once and for ever, n = 1, 2, 3 ..
//   kills   a signal just before and just after the n-th call that changes a file
//   prefixes, bytes   every file that is read ends early, at every byte, or has one changed, each
//   integers          each integer at a file's beginning has a hostile value
#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <set>
#include <string_view>

#include "faults/scenarios.h"

namespace zorvik::faults {
namespace {

constexpr int kLarge = 17000, kSmall = 3;       // values of the files' arrays; 8192 fill a buffer
constexpr int kInterruptions = 40;              // no signal interrupts for ever
constexpr std::size_t kPlacesSwept = 2000;      // of a longer file only so many places are damaged
constexpr std::size_t kPlacesOfIntegers = 256;  // the headers
#ifdef ZORVIK_SANITIZED
constexpr std::size_t kSweptEvery = 2;  // other places for other commands
#else
constexpr std::size_t kSweptEvery = 1;
#endif
constexpr long kMostMemory = 64 * 1024;  // kilobytes
constexpr int kFaultsShown = 40;         // of a kind

enum Count { kRuns, kCrash, kHang, kWrongEnd, kLoss, kMemory, kCounts };
constexpr const char* kCountNames[] = {"runs", "crash", "hang", "wrong end", "loss", "memory"};
int counts[kCounts] = {};

std::string content(const Files& files, const std::string& name) {
  const auto found = files.find(name);
  return found == files.end() ? std::string() : found->second;
}

bool keeps_cut(const Scenario& scenario, const Files& now) {
  const std::string cut = scenario.rewritten + ".cut";
  return scenario.rewrite == Rewrite::kCut && now.contains(cut) &&
         content(now, scenario.rewritten) + content(now, cut) ==
             scenario.files.at(scenario.rewritten);
}

// Was the file of a command that rewrites it kept from harm?
bool is_whole(const Scenario& scenario, const Files& now, const std::string& whole) {
  const std::string& old = scenario.files.at(scenario.rewritten);
  const std::string file = content(now, scenario.rewritten);
  if (file == old || file == whole) return true;
  switch (scenario.rewrite) {
    case Rewrite::kNone:
    case Rewrite::kReplaced:
      return false;
    case Rewrite::kCut: {
      // A damaged record may have swallowed others, and then is the longest one.
      const std::size_t records = file.size() - std::min(file.size(), scenario.header_bytes);
      return keeps_cut(scenario, now) ||
             (old.starts_with(file) &&
              old.size() - file.size() <= std::max(scenario.record_bytes, records));
    }
    case Rewrite::kLonger:
      return file.starts_with(old) && whole.starts_with(file);
  }
  return false;
}

bool lost_something(const Scenario& scenario, const Outcome& good, const Outcome& now) {
  for (const auto& [name, old] : scenario.files) {
    if (name != scenario.rewritten && content(now.files, name) != old) return true;
  }
  return scenario.rewrite != Rewrite::kNone &&
         !is_whole(scenario, now.files, content(good.files, scenario.rewritten));
}

// A file that the run makes is, after a bad end, absent or a beginning of what it would have been;
// one that a command makes is whole when the command was killed. The new one of a rewritten file
// may stand whole beside it, on its way to its place.
bool made_something_else(const Scenario& scenario, const Outcome& good, const Outcome& now,
                         bool killed) {
  for (const auto& [name, made] : now.files) {
    if (name == "zrvlis" || scenario.files.contains(name)) continue;
    if (name == scenario.rewritten + ".cut") continue;
    if (scenario.rewrite != Rewrite::kNone && made == content(good.files, scenario.rewritten)) {
      continue;
    }
    const std::string whole = content(good.files, name);
    if (!whole.starts_with(made) || (killed && scenario.name != "run" && made != whole))
      return true;
  }
  return false;
}

bool tells_why(const Outcome& now) {
  return (now.console + content(now.files, "zrvlis")).find('%') != std::string::npos;
}

void note(const Scenario& scenario, Count fault, const Outcome& now, const std::string& trouble) {
  if (++counts[fault] > kFaultsShown) return;
  std::cout << kCountNames[fault] << ": " << scenario.name << ", " << trouble << ": status "
            << now.status << '\n'
            << (fault == kCrash ? now.errors : "");
}

// `signal`: the one that was sent to the run, if any.
void judge_end(const Scenario& scenario, const Outcome& now, int signal,
               const std::string& trouble) {
  ++counts[kRuns];
  if (now.status == support::kHangs) {
    note(scenario, kHang, now, trouble);
  } else if (now.status != 0 && now.status != 1 && (signal == 0 || now.status != -signal)) {
    note(scenario, kCrash, now, trouble);
  }
#ifndef ZORVIK_SANITIZED
  if (now.memory > kMostMemory) note(scenario, kMemory, now, trouble);
#endif
}

constexpr unsigned kTransfers = 1U << kRead | 1U << kWrite | 1U << kCopy;

// Runs until no call meets the trouble any more.
void sweep(const Scenario& scenario, const Outcome& good, Trouble trouble,
           const std::string& name) {
  const bool sends =
      trouble.effect == Effect::kSignalBefore || trouble.effect == Effect::kSignalAfter;
  const bool silenced = trouble.calls == 1U << kWrite && trouble.times > 1;
  const bool resumed =  // what was interrupted or fell short is taken up again
      trouble.effect == Effect::kFallsShort ||
      (trouble.effect == Effect::kFails && trouble.value == EINTR && (trouble.calls & kTransfers));
  for (trouble.first = 1;; ++trouble.first) {
    const Outcome now = run(scenario.files, trouble);
    if (calls_met() == 0) return;
    const std::string what = name + ' ' + std::to_string(trouble.first);
    judge_end(scenario, now, sends ? trouble.value : 0, what);
    const bool complete = (now.console == good.console && now.files == good.files) ||
                          keeps_cut(scenario, now.files);  // a failed read is taken for damage
    const bool mute = now.status == 1 && !silenced && !tells_why(now);
    const bool deaf = sends && now.status == 1;
    if (((now.status == 0 || resumed) && !complete) || mute || deaf)
      note(scenario, kWrongEnd, now, what);
    const bool killed = sends && trouble.value == SIGKILL;
    // While a run writes its files its program can be read in the listing.
    const bool unlisted = now.files.contains("each") && content(now.files, "zrvlis").empty();
    if (lost_something(scenario, good, now) || (killed && unlisted) ||
        made_something_else(scenario, good, now, killed)) {
      note(scenario, kLoss, now, what);
    }
  }
}

Outcome undisturbed(const Scenario& scenario) {
  Outcome good = run(scenario.files);
  if (good.status != 0) {
    std::cout << scenario.name << " fails without trouble\n"
              << good.console << content(good.files, "zrvlis");
    std::exit(2);
  }
  return good;
}

void sweep_calls() {
  for (const Scenario& scenario : all_scenarios(Layout::kExtended, kLarge)) {
    const Outcome good = undisturbed(scenario);
    for (int call = 0; call < kCallKinds; ++call) {
      const unsigned bit = 1U << call;
      const auto fail = [&](const std::string& how, int times, Effect effect, int value) {
        sweep(scenario, good, {bit, 1, times, effect, value}, kCallNames[call] + how);
      };
      fail(" EIO once", 1, Effect::kFails, EIO);
      fail(" EIO for ever", INT_MAX, Effect::kFails, EIO);
      fail(" ENOSPC once", 1, Effect::kFails, ENOSPC);
      fail(" ENOSPC for ever", INT_MAX, Effect::kFails, ENOSPC);
      fail(" EINTR once", 1, Effect::kFails, EINTR);
      fail(" EINTR again and again", kInterruptions, Effect::kFails, EINTR);
      if ((bit & kTransfers) == 0) continue;
      fail(" short once", 1, Effect::kFallsShort, 0);
      fail(" short for ever", INT_MAX, Effect::kFallsShort, 0);
    }
  }
}

void sweep_kills() {
  for (const Scenario& scenario : all_scenarios(Layout::kExtended, kLarge)) {
    const Outcome good = undisturbed(scenario);
    for (const int signal : {SIGKILL, SIGTERM}) {
      const std::string name = signal == SIGKILL ? "kill" : "term";
      sweep(scenario, good, {kChanges, 1, 1, Effect::kSignalBefore, signal}, name + " before");
      sweep(scenario, good, {kChanges, 1, 1, Effect::kSignalAfter, signal}, name + " after");
    }
  }
}

// A run with one file damaged: the others, and what the command may not touch of it, stay.
void run_damaged(const Scenario& scenario, const std::string& what) {
  const Outcome now = run(scenario.files);
  judge_end(scenario, now, 0, what);
  const bool mute = now.status == 1 && !tells_why(now);
  if (mute || !now.errors.empty()) note(scenario, kWrongEnd, now, what);
  const bool may_differ = now.status == 0 && scenario.rewrite != Rewrite::kCut;
  if (lost_something(scenario, may_differ ? now : Outcome{}, now)) note(scenario, kLoss, now, what);
}

// The sweeps of damaged files: `damage` makes of a file, a place in it and the number of the sweep
// a damaged one; `most` places are damaged.
template <class Damage>
void sweep_files(Damage damage, std::size_t most = SIZE_MAX) {
  std::set<std::string> swept;  // a command and a file of it, each once
  for (const Layout layout : {Layout::kStandard, Layout::kCatalogue, Layout::kExtended}) {
    for (Scenario& scenario : all_scenarios(layout, kSmall)) {
      undisturbed(scenario);
      for (const std::string& name : scenario.swept) {
        const std::string whole = scenario.files[name];
        const std::size_t record = scenario.record_bytes, places = std::min(most, whole.size());
        if (!swept.insert(scenario.name + whole).second) continue;
        const std::size_t step = kSweptEvery * (1 + places / kPlacesSwept);
        for (std::size_t at = swept.size() % step; at < places; at += step) {
          scenario.files[name] = damage(whole, at, swept.size());
          // What is a record, a damaged header tells wrong.
          scenario.record_bytes = at < scenario.header_bytes ? whole.size() : record;
          run_damaged(scenario, name + " at " + std::to_string(at));
        }
        scenario.files[name] = whole;
        scenario.record_bytes = record;
      }
    }
  }
}

void sweep_prefixes() {
  sweep_files([](std::string file, std::size_t size, std::size_t) {
    file.resize(size);
    return file;
  });
}

void sweep_bytes() {
  sweep_files([](std::string file, std::size_t at, std::size_t sweep) {
    constexpr int kBits[] = {0xFF, 0x80, 0x01, 0x10, 0x7F};  // turned over
    file[at] = static_cast<char>(file[at] ^ kBits[(at + sweep) % std::size(kBits)]);
    return file;
  });
}

// Each integer's four bytes stand for the four values it gets.
void sweep_integers() {
  sweep_files(
      [](std::string file, std::size_t at, std::size_t) {
        constexpr std::int32_t kHostile[] = {-1, 0, INT32_MAX, INT32_MIN};
        if (at / 4 < file.size() / 4) std::memcpy(&file[at / 4 * 4], &kHostile[at % 4], 4);
        return file;
      },
      kPlacesOfIntegers);
}

// True when something was run and no fault was seen.
bool print_counts() {
  for (int k = 0; k < kCounts; ++k) std::cout << kCountNames[k] << ": " << counts[k] << "  ";
  std::cout << '\n';
  return counts[kRuns] > 0 && std::count(counts + 1, counts + kCounts, 0) == kCounts - 1;
}

}  // namespace
}  // namespace zorvik::faults

int main(int argc, char** argv) {
  using namespace zorvik::faults;
  const std::string_view kind = argc == 2 ? argv[1] : "";
  if (kind == "calls") sweep_calls();
  if (kind == "kills") sweep_kills();
  if (kind == "prefixes") sweep_prefixes();
  if (kind == "bytes") sweep_bytes();
  if (kind == "integers") sweep_integers();
  return print_counts() ? 0 : 1;
}

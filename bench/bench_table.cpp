// Prints what the benchmarks have measured as one Markdown table, with the machine under it.
//
// usage: bench_table [--quick] [--partial] FILE...
//   --quick    the sizes were small: the times mean nothing, and no target is looked at
//   --partial  what was not measured is left out, unless that is all; without it, it is an error
//   FILE       the benchmarks' results, JSON
//
// Exit status: 0 when everything was measured, 1 when a work failed or is missing. A target that is missed is no error.
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// What is told of a work: whole times, times of one item, or bytes of memory for one item.
enum class Figure { time, timeOfItem, bytesOfItem };

/// A line of the table: a work, with whom it is compared, and what "ours / theirs" may be at most. Of several peers the
/// fastest counts. Without a peer the figure itself is what may be so much at most.
struct Line {
  const char* work;   ///< In the names of the benchmarks.
  const char* title;  ///< For people; {} is the number of items.
  std::vector<std::string> peers;
  std::optional<double> target;  ///< None: only told.
  Figure figure = Figure::time;
};

const std::vector<Line>& Lines() {
  static const std::vector<std::string> images = {"cereal", "Boost.Serialization", "protobuf", "FlatBuffers"};
  static const std::vector<std::string> few = {"few nodes"};
  static const std::vector<Line> lines = {
      {"load_image", "load an image, {} nodes", images, 0.6},
      {"store_image", "store an image, {} nodes", images, 0.5},
      {"load_project", "load a project, {} nodes", {"libxml2"}, 0.6},
      {"load_project", "load a project, {} nodes", {"Expat"}, 1.5},
      {"load_project", "load a project, {} nodes", {"pugixml"}, std::nullopt},
      {"save_project", "save a project, {} nodes", {"pugixml"}, 1.0},
      {"compile_files_warm", "compile {} code files, warm cache", {"rcc"}, 0.8},
      {"compile_files_warm", "compile {} code files, warm cache", {"glib-compile-resources"}, 0.6},
      {"compile_files_warm", "compile {} code files, warm cache", {"tar"}, 1.3},
      {"compile_files_cold", "compile {} code files, cold cache", {"rcc"}, 0.8},
      {"compile_files_cold", "compile {} code files, cold cache", {"glib-compile-resources"}, 0.6},
      {"compile_files_cold", "compile {} code files, cold cache", {"tar"}, 1.3},
      {"compile_typical", "compile a typical definition, {} code files", {"rcc"}, 0.5},
      {"move_node_down", "`MoveNodeDown` among {} nodes", {"adding every node again"}, 0.05},
      {"icon_strips", "the two strips of {} icons", {"memcpy"}, 6.0},
      {"growth_load_image", "a node of an image loaded, of {}", few, 1.5, Figure::timeOfItem},
      {"growth_store_image", "a node of an image stored, of {}", few, 1.5, Figure::timeOfItem},
      {"growth_load_project", "a node of a project loaded, of {}", few, 1.5, Figure::timeOfItem},
      {"growth_save_project", "a node of a project saved, of {}", few, 1.5, Figure::timeOfItem},
      {"memory_load_image", "peak memory for a node of an image, of {}", {}, 600, Figure::bytesOfItem},
      {"memory_load_project", "peak memory for a node of a project, of {}", {}, 4'000, Figure::bytesOfItem},
  };
  return lines;
}

/// What the repetitions of one work by one of those who do it gave.
struct Result {
  double seconds = std::numeric_limits<double>::infinity();  ///< The quickest: what disturbs only makes slower.
  double items = 0;
  double bytesOfItem = 0;  ///< The largest.
};

/// Results by the first two parts of a benchmark's name, "WORK/WHO".
class Results {
 public:
  /// Adds those of a file, which is empty when no benchmark of a program was wanted.
  void Add(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    if (file.peek() == std::ifstream::traits_type::eof()) return;
    const nlohmann::json results = nlohmann::json::parse(file);
    for (const auto& benchmark : results.at("benchmarks")) {
      if (benchmark.at("run_type") == "iteration") Add(benchmark);
    }
  }

  const Result* Find(const std::string& work, const std::string& who) const {
    const auto result = m_results.find(work + '/' + who);
    return result == m_results.end() ? nullptr : &result->second;
  }

  bool HasFailed() const { return m_hasFailed; }

 private:
  void Add(const nlohmann::json& benchmark) {
    const std::string full = benchmark.at("name");
    const std::string name = full.substr(0, full.find('/', full.find('/') + 1));
    if (benchmark.value("error_occurred", false)) {
      m_hasFailed = true;
      std::fprintf(stderr, "%s: %s\n", name.c_str(), benchmark.at("error_message").get<std::string>().c_str());
      return;
    }
    constexpr double kSecond = 1'000;  // milliseconds
    Result& result = m_results[name];
    result.seconds = std::min(result.seconds, benchmark.at("real_time").get<double>() / kSecond);
    result.items = benchmark.at("items");
    result.bytesOfItem = std::max(result.bytesOfItem, benchmark.value("bytes_per_item", 0.0));
  }

  std::map<std::string, Result> m_results;
  bool m_hasFailed = false;
};

/// A number of three digits that count: "1.23", "12.3", "123".
std::string Rounded(double number) {
  const int digits = number >= 99.95 ? 0 : number >= 9.995 ? 1 : 2;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", digits, number);
  return text.data();
}

std::string Thousands(double number) {
  std::string digits = std::to_string(std::llround(number));
  for (std::size_t place = digits.size(); place > 3;) digits.insert(place -= 3, 1, ',');
  return digits;
}

std::string TimeText(double seconds) {
  constexpr double kThousand = 1'000;
  if (seconds >= 1) return Rounded(seconds) + " s";
  if (seconds * kThousand >= 1) return Rounded(seconds * kThousand) + " ms";
  return Rounded(seconds * kThousand * kThousand) + " µs";
}

double Value(const Result& result, Figure figure) {
  switch (figure) {
    case Figure::time:
      return result.seconds;
    case Figure::timeOfItem:
      return result.seconds / result.items;
    default:
      return result.bytesOfItem;
  }
}

std::string Text(const Result& result, Figure figure) {
  return figure == Figure::bytesOfItem ? Thousands(result.bytesOfItem) + " bytes" : TimeText(Value(result, figure));
}

std::string PeerText(const std::string& name, const Result& result, Figure figure) {
  if (figure == Figure::timeOfItem) return Text(result, figure) + " of " + Thousands(result.items);
  return name + ' ' + Text(result, figure);
}

/// One row of the table; nothing when what it compares was not measured.
std::optional<std::string> Row(const Line& line, const Results& results, bool isQuick) {
  const Result* const ours = results.Find(line.work, "ours");
  if (ours == nullptr) return std::nullopt;
  std::vector<std::pair<std::string, const Result*>> peers;
  for (const std::string& name : line.peers) {
    if (const Result* const peer = results.Find(line.work, name)) peers.emplace_back(name, peer);
  }
  if (peers.empty() && !line.peers.empty()) return std::nullopt;
  std::stable_sort(peers.begin(), peers.end(),
                   [](const auto& left, const auto& right) { return left.second->seconds < right.second->seconds; });

  std::string title = line.title;
  title.replace(title.find("{}"), 2, Thousands(ours->items));
  std::string names;
  for (const auto& [name, peer] : peers) names += (names.empty() ? "" : ", ") + PeerText(name, *peer, line.figure);
  double compared = Value(*ours, line.figure);
  if (!peers.empty()) compared /= Value(*peers.front().second, line.figure);
  const auto limitText = [&](double number) { return peers.empty() ? Thousands(number) : Rounded(number); };
  const char* const verdict = isQuick || !line.target ? "" : compared <= *line.target ? "yes" : "**no**";
  return "| " + title + " | " + Text(*ours, line.figure) + " | " + names + " | " +
         (peers.empty() ? "" : Rounded(compared)) + " | " + (line.target ? limitText(*line.target) : "told only") +
         " | " + verdict + " |";
}

/// The value of the first "NAME: value" or "NAME=value" in a file of the system.
std::string ValueIn(const char* path, std::string_view name) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(name)) continue;
    line.erase(0, line.find_first_of(":=") + 1);
    line.erase(std::remove(line.begin(), line.end(), '"'), line.end());
    line.erase(0, std::min(line.size(), line.find_first_not_of(" \t")));
    return line;
  }
  return "unknown";
}

std::string Machine() {
  utsname system{};
  uname(&system);
  return ValueIn("/proc/cpuinfo", "model name") + ", " + std::to_string(sysconf(_SC_NPROCESSORS_ONLN)) + " cores; " +
         ValueIn("/etc/os-release", "PRETTY_NAME") + ", " + system.sysname + ' ' + system.release + "; GCC " +
         __VERSION__ + ", -O3";
}

int Print(const std::vector<std::string>& files, bool isQuick, bool isPartial) {
  Results results;
  for (const std::string& file : files) results.Add(file);
  bool isComplete = true;
  bool isEmpty = true;
  std::puts("| work | ours | theirs | ours / theirs | at most | met |\n|---|---|---|---|---|---|");
  for (const Line& line : Lines()) {
    if (const auto row = Row(line, results, isQuick)) {
      std::puts(row->c_str());
      isEmpty = false;
    } else if (!isPartial) {
      isComplete = false;
      std::fprintf(stderr, "%s was not measured against all of its peers\n", line.work);
    }
  }
  if (isEmpty) std::fputs("nothing was measured that can be compared\n", stderr);
  std::printf("\n%s\n", Machine().c_str());
  return isComplete && !isEmpty && !results.HasFailed() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> files;
  bool isQuick = false;
  bool isPartial = false;
  for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
    if (argument == "--quick") {
      isQuick = true;
    } else if (argument == "--partial") {
      isPartial = true;
    } else {
      files.push_back(argument);
    }
  }
  try {
    return Print(files, isQuick, isPartial);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "bench_table: %s\n", fault.what());
    return 1;
  }
}

// The comparison of lines: what both texts have at their starts and ends is the same, and so are the lines between that
// stand once in each, as far as they come in the same order; what lies between two such lines is compared in the same
// way. A project's lines with cookies stand once, so large texts fall into small parts soon.
#include "edit/text_difference.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <vector>

#include <ondrel/platform/program.h>

#include "printable.h"

namespace ondrel::command {
namespace {

constexpr std::size_t kLinesAround = 3;
constexpr unsigned kMostLevels = 64;  // of comparisons within comparisons; what is left then counts as replaced
constexpr std::size_t kNoLine = static_cast<std::size_t>(-1);

struct TextLine {
  std::string_view text;   ///< Without its end.
  std::size_t number = 0;  ///< Lines of the same text have the same number.
};

/// A text's lines, and how they end.
struct LinesOfText {
  std::vector<TextLine> lines;
  bool hasBareLineFeeds = false;  ///< Not all lines end in CR LF.
  bool isUnended = false;         ///< The last line has no end.
};

LinesOfText SplitIntoLines(std::string_view text) {
  LinesOfText split;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end == std::string_view::npos) {
      split.isUnended = true;
    } else if (line.ends_with('\r')) {
      line.remove_suffix(1);
    } else {
      split.hasBareLineFeeds = true;
    }
    split.lines.push_back({line});
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return split;
}

/// Gives the lines of both texts their numbers; how many there are.
std::size_t NumberLines(LinesOfText& before, LinesOfText& after) {
  std::unordered_map<std::string_view, std::size_t> numbers;
  for (LinesOfText* const text : {&before, &after}) {
    for (TextLine& line : text->lines) line.number = numbers.try_emplace(line.text, numbers.size()).first->second;
  }
  std::size_t count = numbers.size();
  // A last line without an end is like no line that has one.
  if (before.isUnended) before.lines.back().number = count++;
  if (after.isUnended) {
    const bool isSame = before.isUnended && before.lines.back().text == after.lines.back().text;
    after.lines.back().number = isSame ? before.lines.back().number : count++;
  }
  return count;
}

/// Finds the lines that two texts have in common.
class LineMatcher {
 public:
  LineMatcher(const std::vector<TextLine>& before, const std::vector<TextLine>& after, std::size_t numbers)
      : m_before(before), m_after(after), m_keptBefore(before.size()), m_keptAfter(after.size()), m_places(numbers) {
    m_parts.push_back({0, before.size(), 0, after.size(), 0});
    while (!m_parts.empty()) {
      const Part part = m_parts.back();
      m_parts.pop_back();
      Match(part);
    }
  }

  /// Whether the other text has a line, too. Such lines come in the same order in both.
  bool IsKeptBefore(std::size_t line) const { return m_keptBefore[line]; }
  bool IsKeptAfter(std::size_t line) const { return m_keptAfter[line]; }

 private:
  /// Lines of either text, from one index to another, that are to be compared.
  struct Part {
    std::size_t before;
    std::size_t beforeEnd;
    std::size_t after;
    std::size_t afterEnd;
    unsigned level;
  };
  /// Where a line stands in a part.
  struct Place {
    std::size_t before = kNoLine;
    std::size_t after = kNoLine;
    bool isRepeated = false;
  };
  struct Pair {
    std::size_t before;
    std::size_t after;
    std::size_t previous;  ///< The index of the pair before it in the longest run that it ends.
  };

  void Keep(std::size_t before, std::size_t after) {
    m_keptBefore[before] = true;
    m_keptAfter[after] = true;
  }

  void Match(Part part) {
    const auto isSame = [this](std::size_t before, std::size_t after) {
      return m_before[before].number == m_after[after].number;
    };
    while (part.before < part.beforeEnd && part.after < part.afterEnd && isSame(part.before, part.after)) {
      Keep(part.before++, part.after++);
    }
    while (part.before < part.beforeEnd && part.after < part.afterEnd &&
           isSame(part.beforeEnd - 1, part.afterEnd - 1)) {
      Keep(--part.beforeEnd, --part.afterEnd);
    }
    if (part.before == part.beforeEnd || part.after == part.afterEnd || part.level == kMostLevels) return;
    const std::vector<Pair> anchors = Anchors(part);
    if (anchors.empty()) return;
    const unsigned level = part.level + 1;
    for (const Pair& anchor : anchors) {
      Keep(anchor.before, anchor.after);
      m_parts.push_back({part.before, anchor.before, part.after, anchor.after, level});
      part.before = anchor.before + 1;
      part.after = anchor.after + 1;
    }
    m_parts.push_back({part.before, part.beforeEnd, part.after, part.afterEnd, level});
  }

  /// The lines that stand once in either text of a part, in the order of the first text.
  std::vector<Pair> SingleLines(const Part& part) {
    for (std::size_t line = part.before; line < part.beforeEnd; ++line) {
      Place& place = m_places[m_before[line].number];
      place.isRepeated = place.isRepeated || place.before != kNoLine;
      place.before = line;
    }
    for (std::size_t line = part.after; line < part.afterEnd; ++line) {
      Place& place = m_places[m_after[line].number];
      place.isRepeated = place.isRepeated || place.after != kNoLine;
      place.after = line;
    }
    std::vector<Pair> pairs;
    for (std::size_t line = part.before; line < part.beforeEnd; ++line) {
      const Place& place = m_places[m_before[line].number];
      if (!place.isRepeated && place.after != kNoLine) pairs.push_back({line, place.after, kNoLine});
    }
    for (std::size_t line = part.before; line < part.beforeEnd; ++line) m_places[m_before[line].number] = {};
    for (std::size_t line = part.after; line < part.afterEnd; ++line) m_places[m_after[line].number] = {};
    return pairs;
  }

  /// The most of those lines that come in the same order in both texts.
  std::vector<Pair> Anchors(const Part& part) {
    std::vector<Pair> pairs = SingleLines(part);
    std::vector<std::size_t> runs;  // for each length, the pair that ends a run of it earliest in the second text
    for (std::size_t index = 0; index < pairs.size(); ++index) {
      const auto longer =
          std::lower_bound(runs.begin(), runs.end(), pairs[index].after,
                           [&pairs](std::size_t run, std::size_t after) { return pairs[run].after < after; });
      if (longer != runs.begin()) pairs[index].previous = *std::prev(longer);
      if (longer == runs.end()) {
        runs.push_back(index);
      } else {
        *longer = index;
      }
    }
    std::vector<Pair> anchors;
    for (std::size_t index = runs.empty() ? kNoLine : runs.back(); index != kNoLine; index = pairs[index].previous) {
      anchors.push_back(pairs[index]);
    }
    std::reverse(anchors.begin(), anchors.end());
    return anchors;
  }

  const std::vector<TextLine>& m_before;
  const std::vector<TextLine>& m_after;
  std::vector<bool> m_keptBefore;
  std::vector<bool> m_keptAfter;
  std::vector<Place> m_places;  ///< For each number; as new between two parts.
  std::vector<Part> m_parts;
};

/// Writes the changes with the lines around them, a group for all that lie close together.
class DifferenceWriter {
 public:
  DifferenceWriter(const LinesOfText& before, const LinesOfText& after, const LineMatcher& matcher)
      : m_before(before), m_after(after), m_matcher(matcher) {}

  std::string Text() {
    std::size_t before = 0;
    std::size_t after = 0;
    while (SkipKept(before, after)) {
      const std::size_t context = std::min(kLinesAround, before);
      WriteGroup(before - context, after - context, before, after);
    }
    return std::move(m_out);
  }

 private:
  bool IsRemoved(std::size_t before) const { return before < m_before.lines.size() && !m_matcher.IsKeptBefore(before); }
  bool IsAdded(std::size_t after) const { return after < m_after.lines.size() && !m_matcher.IsKeptAfter(after); }

  /// Moves to the next change; false when there is none.
  bool SkipKept(std::size_t& before, std::size_t& after) const {
    while (before < m_before.lines.size() && !IsRemoved(before) && !IsAdded(after)) {
      ++before;
      ++after;
    }
    return IsRemoved(before) || IsAdded(after);
  }

  /// Writes the group that begins at the lines `startBefore` and `startAfter` and has its first change at `before` and
  /// `after`, which move behind its last one.
  void WriteGroup(std::size_t startBefore, std::size_t startAfter, std::size_t& before, std::size_t& after) {
    std::string lines;
    for (std::size_t line = startBefore; line < before; ++line) AppendLine(lines, ' ', m_before, line);
    for (;;) {
      while (IsRemoved(before)) AppendLine(lines, '-', m_before, before++);
      while (IsAdded(after)) AppendLine(lines, '+', m_after, after++);
      std::size_t nextBefore = before;
      std::size_t nextAfter = after;
      const bool isMore = SkipKept(nextBefore, nextAfter);
      const bool isNear = isMore && nextBefore - before <= 2 * kLinesAround;
      const std::size_t end = isNear ? nextBefore : std::min(nextBefore, before + kLinesAround);
      for (; before < end; ++before, ++after) AppendLine(lines, ' ', m_before, before);
      if (!isNear) break;
    }
    m_out += "@@ -" + Span(startBefore, before) + " +" + Span(startAfter, after) + " @@\n" + lines;
  }

  /// "7,3": three lines from the seventh on. Of no lines, the one before them counts.
  static std::string Span(std::size_t start, std::size_t end) {
    return std::to_string(end > start ? start + 1 : start) + ',' + std::to_string(end - start);
  }

  static void AppendLine(std::string& out, char sign, const LinesOfText& text, std::size_t index) {
    const std::string_view line = text.lines[index].text;
    const std::size_t indentation = std::min(line.find_first_not_of("\t "), line.size());
    out += sign;
    out += line.substr(0, indentation);
    // The bytes of a project need not be UTF-8.
    out += Printable(platform::PathFromUtf8(std::string(line.substr(indentation))));
    out += '\n';
    if (text.isUnended && index + 1 == text.lines.size()) out += "\\ No newline at end of file\n";
  }

  const LinesOfText& m_before;
  const LinesOfText& m_after;
  const LineMatcher& m_matcher;
  std::string m_out;
};

}  // namespace

std::string UnifiedDifference(const std::string& name, std::string_view before, std::string_view after) {
  if (before == after) return {};
  LinesOfText linesBefore = SplitIntoLines(before);
  LinesOfText linesAfter = SplitIntoLines(after);
  const std::size_t numbers = NumberLines(linesBefore, linesAfter);
  const LineMatcher matcher(linesBefore.lines, linesAfter.lines, numbers);
  std::string text = "--- " + name + "\n+++ " + name + '\n';
  if (linesBefore.hasBareLineFeeds && !linesAfter.hasBareLineFeeds) text += "\\ All lines end in CR LF now\n";
  return text + DifferenceWriter(linesBefore, linesAfter, matcher).Text();
}

}  // namespace ondrel::command

// The match, step by step: for each step the places of the path that the pattern may have come to. It takes the product
// of both lengths at most, whatever the pattern.
#include "compile/glob.h"

#include <algorithm>

namespace ondrel::command {
namespace {

constexpr char32_t kPartSeparator = '/';

/// The characters, with one kind of separators and one case of letters.
std::u32string Comparable(const CString& text) {
  std::u32string characters;
  characters.reserve(static_cast<std::size_t>(text.GetLength()));
  for (const WCHAR unit : text.View()) {
    char32_t character = unit;
    if (character == '\\') character = kPartSeparator;
    if (character >= 'A' && character <= 'Z') character += 'a' - 'A';
    const bool isPair = character >= 0xDC00 && character <= 0xDFFF && !characters.empty() &&
                        characters.back() >= 0xD800 && characters.back() <= 0xDBFF;
    if (isPair) {
      characters.back() = 0x10000 + ((characters.back() - 0xD800) << 10) + (character - 0xDC00);
    } else {
      characters += character;
    }
  }
  return characters;
}

std::u32string_view LastPart(std::u32string_view path) {
  const std::size_t separator = path.rfind(kPartSeparator);
  return separator == std::u32string_view::npos ? path : path.substr(separator + 1);
}

}  // namespace

Glob::Glob(const CString& pattern) {
  const std::u32string text = Comparable(pattern);
  m_isOfLastPart = text.find(kPartSeparator) == std::u32string::npos;
  for (std::size_t index = 0; index < text.size();) {
    const bool beginsPart = index == 0 || text[index - 1] == kPartSeparator;
    const std::u32string_view rest = std::u32string_view(text).substr(index);
    if (rest.starts_with(U"**/") && beginsPart) {
      m_steps.push_back({Step::Kind::parts});
      index += 3;
    } else if (rest.starts_with(U"**")) {
      m_steps.push_back({Step::Kind::deepRun});
      index += 2;
    } else if (rest.front() == '*') {
      m_steps.push_back({Step::Kind::run});
      ++index;
    } else if (rest.front() == '?') {
      m_steps.push_back({Step::Kind::any});
      ++index;
    } else if (rest.front() == '[') {
      m_steps.push_back(TakeSet(text, index));
    } else {
      m_steps.push_back({Step::Kind::character, rest.front()});
      ++index;
    }
  }
}

Glob::Step Glob::TakeSet(std::u32string_view pattern, std::size_t& index) {
  Step set{Step::Kind::set};
  std::size_t next = index + 1;
  if (next < pattern.size() && (pattern[next] == '!' || pattern[next] == '^')) {
    set.isNegated = true;
    ++next;
  }
  // A closing bracket that stands first is one of the set.
  const std::size_t end = pattern.find(']', next + 1);
  if (end == std::u32string_view::npos) {
    ++index;
    return {Step::Kind::character, '['};
  }
  while (next < end) {
    const char32_t first = pattern[next];
    const bool isRange = next + 2 < end && pattern[next + 1] == '-';
    set.ranges.push_back({first, isRange ? pattern[next + 2] : first});
    next += isRange ? 3 : 1;
  }
  index = end + 1;
  return set;
}

bool Glob::MatchesOne(const Step& step, char32_t character) {
  if (step.kind == Step::Kind::character) return character == step.character;
  if (character == kPartSeparator) return false;
  if (step.kind == Step::Kind::any) return true;
  const bool isInSet = std::any_of(step.ranges.begin(), step.ranges.end(), [character](const Range& range) {
    return range.first <= character && character <= range.last;
  });
  return isInSet != step.isNegated;
}

bool Glob::Matches(const CString& path) const {
  const std::u32string whole = Comparable(path);
  const std::u32string_view text = m_isOfLastPart ? LastPart(whole) : std::u32string_view(whole);
  // Whether the steps so far may end before each character, and behind the last.
  std::vector<bool> ends(text.size() + 1, false);
  ends.front() = true;
  for (const Step& step : m_steps) {
    std::vector<bool> next(ends.size(), false);
    bool isReached = false;  // by a run of parts that is not at its end yet
    for (std::size_t index = 0; index < ends.size(); ++index) {
      const bool hasBefore = index > 0;
      switch (step.kind) {
        case Step::Kind::run:
          next[index] = ends[index] || (hasBefore && next[index - 1] && text[index - 1] != kPartSeparator);
          break;
        case Step::Kind::deepRun:
          next[index] = ends[index] || (hasBefore && next[index - 1]);
          break;
        case Step::Kind::parts:
          next[index] = ends[index] || (isReached && text[index - 1] == kPartSeparator);
          isReached = isReached || ends[index];
          break;
        default:
          next[index] = hasBefore && ends[index - 1] && MatchesOne(step, text[index - 1]);
          break;
      }
    }
    ends = std::move(next);
  }
  return ends.back();
}

}  // namespace ondrel::command

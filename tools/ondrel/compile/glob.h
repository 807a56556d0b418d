// Patterns of paths.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <ondrel/platform/framework/string.h>

namespace ondrel::command {

/// A pattern in which `?` stands for any character and `*` for any run of them within one part of a path, `**` for any
/// run, and `**/` where a part begins for any number of whole parts; [abc], [a-z] and [!a-z] are one character of a
/// set, or of none. "/" and "\" are the same, and so are the letters A to Z and a to z. A pattern without a separator
/// is compared with the last part of a path, any other with all of it.
class Glob {
 public:
  explicit Glob(const CString& pattern);

  bool Matches(const CString& path) const;

 private:
  struct Range {
    char32_t first;
    char32_t last;
  };
  struct Step {
    enum class Kind { character, any, run, deepRun, parts, set };
    Kind kind;
    char32_t character = 0;
    bool isNegated = false;
    std::vector<Range> ranges{};
  };

  /// The set that begins at `index`, on its bracket, behind which it moves; a plain bracket when it has no end.
  static Step TakeSet(std::u32string_view pattern, std::size_t& index);
  static bool MatchesOne(const Step& step, char32_t character);

  std::vector<Step> m_steps;
  bool m_isOfLastPart = true;
};

}  // namespace ondrel::command

// Pages in the format of man(7).
#include "usage/man_page.h"

#include <algorithm>
#include <string_view>

namespace ondrel::command {
namespace {

constexpr std::string_view kProgram = "ondrel";

/// Text in which nothing is taken for a request or an escape. Hyphens stay hyphens when they are copied from a page.
std::string Escaped(std::string_view text) {
  std::string escaped;
  bool atStart = true;
  for (const char unit : text) {
    if (atStart && (unit == '.' || unit == '\'')) escaped += "\\&";
    atStart = unit == '\n';
    if (unit == '\\') {
      escaped += "\\e";
    } else if (unit == '-') {
      escaped += "\\-";
    } else {
      escaped += unit;
    }
  }
  return escaped;
}

std::string Bold(std::string_view text) { return "\\fB" + Escaped(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Escaped(text) + "\\fR"; }

std::string Section(std::string_view title) { return ".SH " + std::string(title) + '\n'; }

/// Each but the first begins with the request for a paragraph: a section begins with one by itself.
std::string Paragraphs(std::string_view text) {
  std::string paragraphs;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find("\n\n"), text.size());
    if (!paragraphs.empty()) paragraphs += ".PP\n";
    paragraphs += Escaped(text.substr(0, end)) + '\n';
    text.remove_prefix(std::min(text.find_first_not_of('\n', end), text.size()));
  }
  return paragraphs;
}

std::string Literal(std::string_view lines) { return ".nf\n" + Escaped(lines) + ".fi\n"; }

std::string OptionEntry(const OptionFacts& option) {
  std::string names;
  for (const std::string& name : option.names) names += (names.empty() ? "" : ", ") + Bold(name);
  const bool isOperand = !option.names.front().starts_with('-');
  const bool isNamed = isOperand && option.value == option.names.front();
  if (!option.value.empty() && !isNamed) names += ' ' + Italic(option.value);
  return ".TP\n" + names + '\n' + Escaped(option.purpose) + '\n';
}

std::string Synopsis(const CommandFacts& command, bool hasCommandsBelow) {
  std::string line = Bold(command.name) + " [" + Italic("OPTIONS") + ']';
  if (hasCommandsBelow) line += ' ' + Italic("COMMAND") + " ...";
  for (const OptionFacts& operand : command.operands) line += ' ' + Italic(operand.names.front());
  return line + '\n';
}

std::string Options(const CommandFacts& command) {
  std::string entries;
  for (const OptionFacts& operand : command.operands) entries += OptionEntry(operand);
  for (const OptionFacts& option : command.options) entries += OptionEntry(option);
  return entries;
}

std::string Page(const CommandFacts& command) { return Bold(ManPageName(command)) + "(1)"; }

}  // namespace

std::string ManPageName(const CommandFacts& command) {
  std::string name = command.name;
  std::replace(name.begin(), name.end(), ' ', '-');
  return name;
}

std::vector<const CommandFacts*> CommandsWithPages(const std::vector<CommandFacts>& all) {
  std::vector<const CommandFacts*> pages = CommandsBelow(all, std::string(kProgram));
  pages.insert(pages.begin(), &all.front());
  return pages;
}

std::string ManPage(const std::vector<CommandFacts>& all, const CommandFacts& command) {
  const auto below = CommandsBelow(all, command.name);
  std::string name = ManPageName(command);
  std::string title = name;
  std::transform(title.begin(), title.end(), title.begin(),
                 [](char unit) { return unit >= 'a' && unit <= 'z' ? static_cast<char>(unit - 'a' + 'A') : unit; });
  std::string page = ".TH " + title + " 1 \"\" \"ondrel " ONDREL_VERSION "\" \"User Commands\"\n";
  page += Section("NAME") + Escaped(name) + " \\- " + Escaped(command.purpose) + '\n';
  page += Section("SYNOPSIS") + Synopsis(command, !below.empty());
  if (!command.remarks.empty()) page += Section("DESCRIPTION") + Paragraphs(command.remarks);
  page += Section("OPTIONS") + Options(command);
  const bool isProgram = command.parent.empty();
  if (!below.empty()) page += Section("COMMANDS");
  for (const CommandFacts* const part : below) {
    if (isProgram) {
      page += ".TP\n" + Page(*part) + '\n' + Escaped(part->purpose) + '\n';
    } else {
      page += ".SS " + Escaped(part->name) + '\n' + Escaped(part->purpose) + "\n.PP\n" + Synopsis(*part, false) +
              (part->remarks.empty() ? "" : ".PP\n" + Paragraphs(part->remarks)) + Options(*part);
    }
  }
  page += Section("EXAMPLES") + Literal(command.examples);
  page += Section("EXIT STATUS") + Escaped(command.exitCodes) + '\n';
  page += Section("SEE ALSO");
  std::string others;
  for (const CommandFacts* const other : CommandsWithPages(all)) {
    if (other != &command) others += (others.empty() ? "" : ",\n") + Page(*other);
  }
  return page + others + '\n';
}

}  // namespace ondrel::command

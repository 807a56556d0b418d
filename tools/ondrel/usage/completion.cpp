// Scripts of three shells. Those of bash and zsh walk over the words to find the command that is being typed, and then
// look it up in lists; the one of fish is a list of rules.
#include "usage/completion.h"

#include <algorithm>
#include <string_view>

namespace ondrel::command {
namespace {

/// Between single quotes, as bash and zsh read them.
std::string ShellQuoted(std::string_view text) {
  std::string quoted = "'";
  for (const char unit : text) {
    if (unit == '\'') {
      quoted += "'\\''";
    } else {
      quoted += unit;
    }
  }
  return quoted + '\'';
}

/// Between single quotes, as fish reads them.
std::string FishQuoted(std::string_view text) {
  std::string quoted = "'";
  for (const char unit : text) {
    if (unit == '\'' || unit == '\\') quoted += '\\';
    quoted += unit;
  }
  return quoted + '\'';
}

std::string Joined(const std::vector<std::string>& words, std::string_view separator) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : separator).append(word);
  return text;
}

std::string LastWord(const std::string& name) { return name.substr(name.rfind(' ') + 1); }

/// The operands' choices together: which of them is being typed does not matter to what a shell can offer.
ValueChoices OperandChoices(const CommandFacts& command) {
  ValueChoices all;
  for (const OptionFacts& operand : command.operands) {
    ValueChoices choices = ChoicesOf(operand);
    all.files = all.files || choices.files;
    all.folders = all.folders || choices.folders;
    all.words.insert(all.words.end(), choices.words.begin(), choices.words.end());
  }
  return all;
}

/// The case labels of each command below another: 'ondrel add node'|'ondrel show'
std::string CommandLabels(const std::vector<CommandFacts>& all) {
  std::vector<std::string> labels;
  for (const CommandFacts& command : all) {
    if (!command.parent.empty()) labels.push_back(ShellQuoted(command.name));
  }
  return Joined(labels, " | ");
}

/// The case labels of an option that takes a value: 'ondrel compile -o'|'ondrel compile --output'
std::string OptionLabels(const CommandFacts& command, const OptionFacts& option) {
  std::vector<std::string> labels;
  for (const std::string& name : option.names) labels.push_back(ShellQuoted(command.name + ' ' + name));
  return Joined(labels, " | ");
}

// bash

std::string BashOffer(const ValueChoices& choices) {
  std::string offer;
  if (!choices.words.empty()) offer += "_ondrel_words " + ShellQuoted(Joined(choices.words, " ")) + "; ";
  if (choices.files) offer += "_ondrel_paths -f; ";
  if (choices.folders) offer += "_ondrel_paths -d; ";
  return offer;
}

std::string BashScript(const std::vector<CommandFacts>& all) {
  std::string script = R"(# bash completion of ondrel; made by "ondrel completion bash".

_ondrel_words() {
  local -a found
  mapfile -t found < <(compgen -W "$1" -- "$current")
  COMPREPLY+=("${found[@]}")
}

_ondrel_paths() {
  local -a found
  mapfile -t found < <(compgen "$1" -- "$current")
  COMPREPLY+=("${found[@]}")
  compopt -o filenames 2>/dev/null
}

_ondrel() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=ondrel index
  COMPREPLY=()
  # A value behind "=" is a word of its own, and so is the "=".
  if [[ $current == = ]]; then
    current=
  elif [[ $previous == = && $COMP_CWORD -gt 1 ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  for ((index = 1; index < COMP_CWORD; ++index)); do
    case "$command ${COMP_WORDS[index]}" in
)";
  script += "      " + CommandLabels(all) + ") command+=\" ${COMP_WORDS[index]}\" ;;\n";
  script += R"(    esac
  done
  case "$command $previous" in
)";
  for (const CommandFacts& command : all) {
    for (const OptionFacts& option : command.options) {
      if (option.value.empty()) continue;
      script += "    " + OptionLabels(command, option) + ") " + BashOffer(ChoicesOf(option)) + "return ;;\n";
    }
  }
  script += R"(  esac
  case "$command" in
)";
  for (const CommandFacts& command : all) {
    std::vector<std::string> options;
    for (const OptionFacts& option : command.options) {
      options.insert(options.end(), option.names.begin(), option.names.end());
    }
    ValueChoices operands = OperandChoices(command);
    for (const CommandFacts* const below : CommandsBelow(all, command.name)) {
      operands.words.push_back(LastWord(below->name));
    }
    script += "    " + ShellQuoted(command.name) + ")\n";
    script += "      if [[ $current == -* ]]; then _ondrel_words " + ShellQuoted(Joined(options, " "));
    const std::string offer = BashOffer(operands);
    if (!offer.empty()) script += "; else " + offer.substr(0, offer.size() - 2);
    script += "; fi ;;\n";
  }
  return script + "  esac\n}\n\ncomplete -F _ondrel ondrel\n";
}

// zsh

/// An entry of _describe: the word, a colon, and what it is.
std::string ZshEntry(const std::string& word, const std::string& purpose) {
  std::string entry;
  for (const char unit : word) entry += unit == ':' ? std::string("\\:") : std::string(1, unit);
  return ShellQuoted(entry + ':' + purpose);
}

std::string ZshOffer(const ValueChoices& choices) {
  std::string offer;
  if (!choices.words.empty()) offer += "compadd -- " + Joined(choices.words, " ") + "; ";
  if (choices.files) offer += "_files; ";
  if (choices.folders) offer += "_files -/; ";
  return offer;
}

std::string ZshScript(const std::vector<CommandFacts>& all) {
  std::string script = R"(#compdef ondrel
# zsh completion of ondrel; made by "ondrel completion zsh".

_ondrel() {
  local command=ondrel word previous=${words[CURRENT - 1]}
  local -a entries
  for word in "${(@)words[2, CURRENT - 1]}"; do
    case "$command $word" in
)";
  // A list of labels ends at the first blank in zsh unless it is quoted, as it is here.
  script += "      " + CommandLabels(all) + ") command+=\" $word\" ;;\n";
  script += R"(    esac
  done
  if [[ ${words[CURRENT]} == --*=* ]]; then
    previous=${words[CURRENT]%%=*}
    compset -P '*='
  fi
  case "$command $previous" in
)";
  for (const CommandFacts& command : all) {
    for (const OptionFacts& option : command.options) {
      if (option.value.empty()) continue;
      script += "    " + OptionLabels(command, option) + ") " + ZshOffer(ChoicesOf(option)) + "return ;;\n";
    }
  }
  script += R"(  esac
  case "$command" in
)";
  for (const CommandFacts& command : all) {
    script +=
        "    " + ShellQuoted(command.name) + ")\n      if [[ ${words[CURRENT]} == -* ]]; then\n        entries=(\n";
    for (const OptionFacts& option : command.options) {
      for (const std::string& name : option.names) {
        script += "          " + ZshEntry(name, option.purpose) + '\n';
      }
    }
    script += "        )\n        _describe -o option entries\n";
    const auto below = CommandsBelow(all, command.name);
    const std::string offer = ZshOffer(OperandChoices(command));
    if (!below.empty()) {
      script += "      else\n        entries=(\n";
      for (const CommandFacts* const part : below) {
        script += "          " + ZshEntry(LastWord(part->name), part->purpose) + '\n';
      }
      script += "        )\n        _describe command entries\n";
    } else if (!offer.empty()) {
      script += "      else\n        " + offer.substr(0, offer.size() - 2) + '\n';
    }
    script += "      fi ;;\n";
  }
  return script + "  esac\n}\n\n_ondrel \"$@\"\n";
}

// fish

/// The condition under which a command's options and operands are offered.
std::string FishCondition(const std::vector<CommandFacts>& all, const CommandFacts& command) {
  if (command.parent.empty()) return "__fish_use_subcommand";
  std::string condition;
  for (const CommandFacts* level = &command; !level->parent.empty();) {
    condition =
        "__fish_seen_subcommand_from " + LastWord(level->name) + (condition.empty() ? "" : "; and ") + condition;
    level = &*std::find_if(all.begin(), all.end(), [&](const auto& facts) { return facts.name == level->parent; });
  }
  const auto below = CommandsBelow(all, command.name);
  if (below.empty()) return condition;
  condition += "; and not __fish_seen_subcommand_from";
  for (const CommandFacts* const part : below) condition += ' ' + LastWord(part->name);
  return condition;
}

/// What stands behind -a, or nothing; files are offered by a rule without -f.
std::string FishArguments(const ValueChoices& choices) {
  std::string words = Joined(choices.words, " ");
  if (choices.folders) words += std::string(words.empty() ? "" : " ") + "(__fish_complete_directories)";
  return words.empty() ? std::string() : " -a " + FishQuoted(words);
}

std::string FishScript(const std::vector<CommandFacts>& all) {
  std::string script = "# fish completion of ondrel; made by \"ondrel completion fish\".\n\ncomplete -c ondrel -f\n";
  for (const CommandFacts& command : all) {
    const std::string rule = "complete -c ondrel -n " + FishQuoted(FishCondition(all, command));
    for (const CommandFacts* const below : CommandsBelow(all, command.name)) {
      script += rule + " -a " + LastWord(below->name) + " -d " + FishQuoted(below->purpose) + '\n';
    }
    const ValueChoices operands = OperandChoices(command);
    if (operands.files) script += rule + " -F\n";
    if (!FishArguments(operands).empty()) script += rule + FishArguments(operands) + '\n';
    for (const OptionFacts& option : command.options) {
      script += rule;
      for (const std::string& name : option.names) {
        script += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
      }
      if (!option.value.empty()) {
        const ValueChoices choices = ChoicesOf(option);
        script += choices.files ? " -r -F" : " -x";
        script += FishArguments(choices);
      }
      script += " -d " + FishQuoted(option.purpose) + '\n';
    }
  }
  return script;
}

}  // namespace

std::string CompletionScript(Shell shell, const std::vector<CommandFacts>& all) {
  switch (shell) {
    case Shell::zsh:
      return ZshScript(all);
    case Shell::fish:
      return FishScript(all);
    case Shell::bash:
      break;
  }
  return BashScript(all);
}

}  // namespace ondrel::command

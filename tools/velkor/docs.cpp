#include "tools/velkor/docs.h"

#include <sstream>
#include <vector>

namespace velkor {

namespace {

// A command and the words that name it ("convert fiber-to-cable").
struct Command {
  const CLI::App* app;
  std::string path;
};

// Every command that runs something, in help order, nested ones after their parent.
void Collect(const CLI::App& app, const std::string& path, std::vector<Command>& out) {
  for (const CLI::App* sub : app.get_subcommands({})) {
    const std::string subPath = path.empty() ? sub->get_name() : path + " " + sub->get_name();
    out.push_back({sub, subPath});
    Collect(*sub, subPath, out);
  }
}

// Text for roff: backslashes and hyphens escaped, no line starting with a
// control character.
std::string Roff(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else {
      out += c;
    }
    if (c == '\n') out += "\\&";
  }
  return out;
}

std::string Positionals(const CLI::App& app) {
  std::string words;
  for (const CLI::Option* option : app.get_options({})) {
    if (!option->get_positional()) continue;
    words += option->get_required() ? " " + option->get_name(true) : " [" + option->get_name(true) + "]";
  }
  return words;
}

// The example line of a command's footer ("Example:\n  velkor ...").
std::string ExampleOf(const CLI::App& app) {
  const std::string footer = app.get_footer();
  const std::size_t line = footer.find("\n  ");
  if (line == std::string::npos) return "";
  const std::size_t end = footer.find('\n', line + 3);
  return footer.substr(line + 3, end == std::string::npos ? std::string::npos : end - line - 3);
}

void WriteOptions(std::ostream& os, const CLI::App& app) {
  for (const CLI::Option* option : app.get_options({})) {
    if (option->get_group().empty() || option->check_lname("help")) continue;  // hidden, or on every command
    os << ".TP\n\\fB" << Roff(option->get_positional() ? option->get_name(true) : option->get_name(false, true))
       << "\\fR\n" << Roff(option->get_description()) << "\n";
  }
}

std::string OptionWords(const CLI::App& app) {
  std::string words;
  for (const CLI::Option* option : app.get_options({})) {
    if (option->get_positional() || option->get_group().empty()) continue;
    for (const std::string& name : option->get_snames()) words += " -" + name;
    for (const std::string& name : option->get_lnames()) words += " --" + name;
  }
  return words;
}

}  // namespace

void WriteManPage(std::ostream& os, const CLI::App& app, const std::string& version) {
  std::vector<Command> commands;
  Collect(app, "", commands);
  os << ".TH VELKOR 1 \"\" \"velkor " << version << "\" \"User Commands\"\n"
     << ".SH NAME\nvelkor \\- " << Roff(app.get_description().substr(app.get_description().find(": ") + 2)) << "\n"
     << ".SH SYNOPSIS\n.B velkor\n[\\fIOPTIONS\\fR] \\fICOMMAND\\fR [\\fIARGUMENTS\\fR]\n"
     << ".SH DESCRIPTION\n" << Roff(app.get_description()) << "\n.PP\n"
     << "Errors are one line on standard error, \\fBvelkor: \\fIcommand\\fB: \\fIwhat\\fR; "
        "exit status 1 for bad input, 2 for bad usage.\n"
     << ".SH OPTIONS\n";
  WriteOptions(os, app);
  os << ".SH COMMANDS\n";
  for (const Command& command : commands) {
    os << ".SS \"velkor " << Roff(command.path + Positionals(*command.app)) << "\"\n"
       << Roff(command.app->get_description()) << "\n";
    WriteOptions(os, *command.app);
    const std::string example = ExampleOf(*command.app);
    if (!example.empty()) os << ".PP\nExample:\n.RS\n.nf\n" << Roff(example) << "\n.fi\n.RE\n";
  }
  os << ".SH SEE ALSO\n\\fBvelkor \\fIcommand\\fB \\-\\-help\\fR\n";
}

void WriteBashCompletion(std::ostream& os, const CLI::App& app) {
  std::vector<Command> commands;
  Collect(app, "", commands);
  std::ostringstream known;
  for (const Command& command : commands) known << " " << command.path;
  os << "# bash completion for velkor, made by velkor --bash-completion\n"
        "_velkor() {\n"
        "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} path='' word i words='' types=0\n"
        "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
        "    word=${COMP_WORDS[i]}\n"
        "    case \"|";
  for (const Command& command : commands) os << command.path << "|";
  os << "\" in *\"|${path:+$path }$word|\"*) path=\"${path:+$path }$word\" ;; esac\n"
        "  done\n"
        "  case \"$prev\" in -o|--output|--map) COMPREPLY=($(compgen -f -- \"$cur\")); return ;; esac\n"
        "  case \"$path\" in\n"
        "    '') words='";
  for (const CLI::App* sub : app.get_subcommands({})) os << sub->get_name() << " ";
  os << OptionWords(app).substr(1) << "' ;;\n";
  for (const Command& command : commands) {
    std::string words;
    for (const CLI::App* sub : command.app->get_subcommands({})) words += sub->get_name() + " ";
    words += OptionWords(*command.app).substr(1);
    const bool takesType = Positionals(*command.app).find("TYPE") != std::string::npos;
    os << "    '" << command.path << "') words='" << words << "'" << (takesType ? "; types=1" : "") << " ;;\n";
  }
  os << "  esac\n"
        "  if [[ $cur != -* && $types == 1 ]]; then\n"
        "    words+=\" $(velkor types 2>/dev/null | sed -n 's/^\\([A-Za-z0-9_]*\\) ::=.*/\\1/p')\"\n"
        "  fi\n"
        "  COMPREPLY=($(compgen -W \"$words\" -- \"$cur\"))\n"
        "  if [[ $cur != -* && -n $path && $path != convert ]]; then COMPREPLY+=($(compgen -f -- \"$cur\")); fi\n"
        "}\n"
        "complete -F _velkor velkor\n";
}

}  // namespace velkor

// velkor: the command-line tool of the conversion library. Each subcommand
// parses its arguments, calls the library and prints; see `velkor --help`.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "tn_platform/asn/csm_exception.h"
#include "tn_platform/trace/trace_sink.h"
#include "tn_velkor/version.h"
#include "tools/velkor/cli.h"
#include "tools/velkor/demo.h"
#include "tools/velkor/docs.h"
#include "tools/velkor/io.h"
#include "tools/velkor/modules.h"
#include "tools/velkor/output.h"
#include "tools/velkor/record_commands.h"
#include "tools/velkor/usage.h"
#include "tools/velkor/validators.h"

namespace {

using velkor::InputOutput;
using velkor::Runners;

void TraceToStandardError(const ns_utility::TraceLine& line) { std::cerr << ns_utility::FormatTraceLine(line) << '\n'; }

// Error messages are one line each.
std::string OneLine(std::string text) {
  for (char& c : text) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  return text;
}

int Report(const std::string& command, const std::string& what, int code) {
  std::cerr << "velkor: " << (command.empty() ? "" : command + ": ") << OneLine(what) << std::endl;
  return code;
}

// The subcommand the command line chose (the innermost one), and its name
// as the user wrote it ("convert fiber-to-cable"; "" for none).
const CLI::App* Chosen(const CLI::App& app, std::string& name) {
  const CLI::App* chosen = &app;
  while (!chosen->get_subcommands().empty()) {
    chosen = chosen->get_subcommands().front();
    name += (name.empty() ? "" : " ") + chosen->get_name();
  }
  return chosen;
}

// When `chosen` expects a subcommand: the word the user wrote in its place
// (the first argument after `chosen`'s own name that is no option), else "".
std::string UnknownSubcommand(const CLI::App& chosen, int argc, char** argv) {
  if (chosen.get_subcommands({}).empty()) return "";
  int first = 1;
  if (chosen.get_parent() != nullptr) {
    while (first < argc && argv[first] != chosen.get_name()) ++first;
    ++first;
  }
  for (int i = first; i < argc; ++i) {
    if (argv[i][0] != '-') return argv[i];
  }
  return "";
}

void AddInspectCommands(CLI::App& app, Runners& runners) {
  {
    auto only = std::make_shared<std::string>();
    auto json = std::make_shared<bool>(false);
    auto compact = std::make_shared<bool>(false);
    auto output = std::make_shared<std::string>();
    CLI::App* sub =
        velkor::AddSubcommand(app, "types", "List the record types with their members", "velkor types QAsnPortIndex");
    sub->add_option("TYPE", *only, "Show only this type")->check(velkor::RecordTypeName());
    sub->add_flag("--json", *json, "Write the list as JSON");
    sub->add_flag("--compact", *compact, "JSON Lines: one type per line (implies --json)");
    velkor::AddOutput(*sub, *output);
    runners[sub] = {"types", [=](std::ostream& out) { velkor::RunTypes(*only, *json, *compact, out); }, output};
  }
  {
    auto io = std::make_shared<InputOutput>();
    CLI::App* sub = velkor::AddSubcommand(app, "dump", "Show the tag-length-value structure of any BER bytes",
                                          "velkor dump --hex record.hex");
    velkor::AddBytesInputOptions(*sub, *io);
    runners[sub] = {"dump", [=](std::ostream& out) { velkor::RunDump(*io, out); },
                    std::shared_ptr<const std::string>(io, &io->output)};
  }
  {
    auto options = std::make_shared<velkor::DecodeOptions>();
    CLI::App* sub = velkor::AddSubcommand(app, "decode", "Decode a record and show it in value notation or JSON",
                                          "velkor decode QAsnFiberInfo fiber.ber --json");
    velkor::AddTypeArgument(*sub, options->type);
    velkor::AddBytesInputOptions(*sub, options->io);
    CLI::Option* all = sub->add_flag("--all", options->all, "Decode every record of the input, one after another");
    sub->add_flag("--json", options->json, "Write JSON instead of value notation");
    sub->add_flag("--compact", options->compact,
                  "JSON on one line per record (implies --json; with --all: JSON Lines)");
    sub->add_flag("--keep-going", options->keepGoing,
                  "With --all: report a broken record and go on with the next (exit 1 at the end)")
        ->needs(all);
    sub->add_flag("--jer", options->jer,
                  "Write JER, the JSON encoding rules of ASN.1 (X.697) that other ASN.1 tools read (implies --json)");
    sub->add_flag("--lines", options->lines,
                  "A list type: one element per line (JSON Lines; implies --json)");
    sub->add_flag("--accept-constraint-violations", options->acceptViolations,
                  "Take values outside their constraints, with a warning on stderr for each");
    runners[sub] = {"decode", [=](std::ostream& out) { velkor::RunDecode(*options, out); },
                    std::shared_ptr<const std::string>(options, &options->io.output)};
  }
  {
    auto io = std::make_shared<InputOutput>();
    auto type = std::make_shared<std::string>();
    auto all = std::make_shared<bool>(false);
    auto jer = std::make_shared<bool>(false);
    auto readable = std::make_shared<bool>(false);
    CLI::App* sub = velkor::AddSubcommand(app, "encode", "Encode a record given as JSON into BER",
                                          "velkor encode QAsnPortIndex port.json --hex");
    velkor::AddTypeArgument(*sub, *type);
    velkor::AddInputOutput(*sub, *io);
    sub->add_flag("--hex", io->hex, "Write the bytes as hex text");
    sub->add_flag("--all", *all,
                  "The input is a JSON array of records, or one record per line (JSON Lines); each is encoded, "
                  "one after another");
    CLI::Option* jerFlag =
        sub->add_flag("--jer", *jer, "The input is JER, the JSON encoding rules of ASN.1 (X.697) other ASN.1 tools write");
    sub->add_flag("--readable", *readable, "The input is the readable JSON that decode --json writes")->excludes(jerFlag);
    runners[sub] = {"encode",
                    [=](std::ostream& out) {
                      std::optional<AsnJsonForm> form;
                      if (*jer) form = AsnJsonForm::kJer;
                      if (*readable) form = AsnJsonForm::kReadable;
                      velkor::RunEncode(*type, *io, *all, form, out);
                    },
                    std::shared_ptr<const std::string>(io, &io->output)};
  }
  {
    auto type = std::make_shared<std::string>();
    auto compact = std::make_shared<bool>(false);
    auto jer = std::make_shared<bool>(false);
    auto output = std::make_shared<std::string>();
    CLI::App* sub = velkor::AddSubcommand(
        app, "template",
        "Print a JSON skeleton of a record, every member with a default value and the optional ones named under "
        "\"//\", to edit and encode",
        "velkor template QAsnPortIndex > port.json");
    velkor::AddTypeArgument(*sub, *type);
    sub->add_flag("--compact", *compact, "Write the JSON on one line");
    sub->add_flag("--jer", *jer, "Write JER (X.697), without the comments, for `encode --jer`");
    velkor::AddOutput(*sub, *output);
    runners[sub] = {"template", [=](std::ostream& out) { velkor::RunTemplate(*type, *compact, *jer, out); },
                    output};
  }
  {
    auto output = std::make_shared<std::string>();
    CLI::App* sub =
        velkor::AddSubcommand(app, "demo", "Walk a typical request step by step on built-in samples", "velkor demo");
    velkor::AddOutput(*sub, *output);
    runners[sub] = {"demo", [](std::ostream& out) { out << velkor::RunDemo(); }, output};
  }
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"velkor: converts Q-interface records (BER) and the server's model objects (JSON)", "velkor"};
  app.set_version_flag("--version", std::string("velkor ") + TN_VELKOR_VERSION);
  app.require_subcommand(1);
  app.fallthrough();  // --trace is accepted after the subcommand too
  bool trace = false;
  app.add_flag("--trace", trace, "Show the library's trace lines on standard error");
  std::vector<std::string> modules;  // loaded by LoadModules before parsing
  app.add_option("--module", modules,
                 "Load a shared library of interface modules of your own (built with tn_asn_module), so that its "
                 "record types can be named")
      ->type_name("LIB")
      ->allow_extra_args(false);
  app.footer("Example:\n  velkor demo\n\nRun velkor <command> --help for a command's options.\n");

  Runners runners;
  AddInspectCommands(app, runners);
  CLI::App* convert = velkor::AddSubcommand(app, "convert", "Run one conversion of the library",
                                            "velkor convert fiber-to-cable fiber.ber");
  convert->require_subcommand(1);
  velkor::AddConvertCommands(*convert, runners);

  // Build-time helpers: the man page and the completion, from the parser's
  // own description of the tool.
  if (argc == 2 && (std::string(argv[1]) == "--man" || std::string(argv[1]) == "--bash-completion")) {
    if (std::string(argv[1]) == "--man") {
      velkor::WriteManPage(std::cout, app, TN_VELKOR_VERSION);
    } else {
      velkor::WriteBashCompletion(std::cout, app);
    }
    return std::cout.flush() ? velkor::kExitOk : velkor::kExitBadInput;
  }

  try {
    velkor::LoadModules(argc, argv);
  } catch (const velkor::ToolError& error) {
    return Report("", error.what(), error.Code());
  }

  std::string name;
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app.exit(error);  // --help, --version
    if (argc == 1) return Report("", "a command is required (see velkor --help)", velkor::kExitBadUsage);
    const CLI::App* chosen = Chosen(app, name);
    if (chosen == &app && argv[1][0] == '-' &&
        app.get_option_no_throw(std::string(argv[1]).substr(0, std::string(argv[1]).find('='))) == nullptr) {
      // The parser reports a missing command before an option it does not know.
      return Report("", "unexpected argument \"" + std::string(argv[1]) + "\" (see velkor --help)",
                    velkor::kExitBadUsage);
    }
    const std::string unknown = UnknownSubcommand(*chosen, argc, argv);
    const std::string help = name.empty() ? "velkor --help" : "velkor " + name + " --help";
    if (!unknown.empty()) {
      std::vector<std::string> commands;
      for (const CLI::App* sub : chosen->get_subcommands({})) commands.push_back(sub->get_name());
      return Report(
          name, "unknown command \"" + unknown + "\"" + velkor::DidYouMean(unknown, commands) + " (see " + help + ")",
          velkor::kExitBadUsage);
    }
    return Report(name, velkor::UsageMessage(error) + " (see " + help + ")", velkor::kExitBadUsage);
  }
  const auto found = runners.find(Chosen(app, name));
  if (found == runners.end()) return Report(name, "no such command", velkor::kExitBadUsage);
  const velkor::Runner& runner = found->second;
  if (trace) ns_utility::SetTraceSink(&TraceToStandardError);

  // The output opens first: a command writes as it goes. What it wrote
  // before failing stays where it can be read at once (a dump up to the
  // break); an output file is left untouched instead.
  std::unique_ptr<velkor::Output> output;
  try {
    output = std::make_unique<velkor::Output>(*runner.output);
    runner.run(output->Stream());
    output->Commit();
    return velkor::kExitOk;
  } catch (const velkor::ToolError& error) {
    if (output) output->Abandon();
    return Report(runner.name, error.what(), error.Code());
  } catch (CSM_Exception* exception) {
    if (output) output->Abandon();
    const std::string message = exception->Message();
    delete exception;
    return Report(runner.name, message, velkor::kExitBadInput);
  } catch (const std::exception& exception) {
    if (output) output->Abandon();
    return Report(runner.name, exception.what(), velkor::kExitBadInput);
  }
}

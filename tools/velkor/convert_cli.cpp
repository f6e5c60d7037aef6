#include <memory>

#include "tools/velkor/cli.h"
#include "tools/velkor/convert_commands.h"
#include "tools/velkor/validators.h"

namespace velkor {

namespace {

// The positional argument a command takes instead of FILE.
void AddArgument(CLI::App& sub, const ConvertCommand& command, ConvertOptions& options) {
  CLI::Option* argument = nullptr;
  if (command.takes & kTakesText) {
    argument = sub.add_option(command.argumentName, options.text, command.argumentHelp);
  } else if (command.takes & kTakesUnsigned) {
    argument =
        IntegerOf<std::uint64_t>(sub.add_option(command.argumentName, options.unsignedNumber, command.argumentHelp));
  } else {
    argument = IntegerOf<int>(sub.add_option(command.argumentName, options.signedNumber, command.argumentHelp));
  }
  argument->required();
}

}  // namespace

void AddConvertCommands(CLI::App& convert, Runners& runners) {
  for (const ConvertCommand& command : ConvertCommands()) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* sub = AddSubcommand(convert, command.name, command.description, command.example);
    const unsigned takes = command.takes;
    if (takes & (kTakesText | kTakesUnsigned | kTakesSigned)) {
      AddArgument(*sub, command, *options);
      AddOutput(*sub, options->io.output);
    } else {
      AddInputOutput(*sub, options->io);
    }
    if (takes & kTakesFile) AddBytesInputFlags(*sub, options->io);
    if (takes & kTakesBytesOut) sub->add_flag("--hex", options->io.hex, "Write the record bytes as hex text");
    if (takes & kWritesJson) sub->add_flag("--compact", options->compact, "Write the JSON on one line");
    if (takes & kTakesMap) {
      sub->add_option("--map", options->mapFile, "Return-code map (JSON) to add to, instead of an empty one");
    }
    if (takes & kTakesFillAll) {
      sub->add_flag("--fill-all", options->fillAll,
                    "A failure without error list sets every entry of the map to the overall code");
    }
    if (takes & kTakesCodes) {
      IntegerOf<unsigned long>(
          sub->add_option("--code", options->code, "Overall return code (default: the input's \"result\")"));
      IntegerOf<unsigned long>(
          sub->add_option("--ignore", options->ignore, "Up to three tolerated codes, comma-separated"))
          ->delimiter(',')
          ->expected(1, 3);
    }
    if (takes & kTakesMask) {
      IntegerIn(sub->add_option("--mask", options->mask, "Use states to keep: bit n keeps state n (default 0x1F: all)"),
                0, 0xFFFF);
    }
    if (takes & kTakesLinkEnd) {
      sub->add_option("--moc", options->moc, "Node class the end may be (with --accept-node)");
      sub->add_flag("--accept-node", options->acceptNode, "Accept an end whose class is --moc as a node");
    }
    runners[sub] = {std::string("convert ") + command.name,
                    [options, run = command.run](std::ostream& out) { out << run(*options); },
                    std::shared_ptr<const std::string>(options, &options->io.output)};
  }
}

}  // namespace velkor

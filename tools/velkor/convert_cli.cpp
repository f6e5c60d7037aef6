#include <memory>

#include "tools/velkor/cli.h"
#include "tools/velkor/convert_commands.h"

namespace velkor {

void AddConvertCommands(CLI::App& convert, Runners& runners) {
  for (const ConvertCommand& command : ConvertCommands()) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* sub = AddSubcommand(convert, command.name, command.description, command.example);
    const unsigned takes = command.takes;
    if (takes & kTakesArgument) {
      sub->add_option(command.argumentName, options->argument, command.argumentHelp)->required();
      sub->add_option("-o,--output", options->io.output, "Output file (default: standard output)");
    } else {
      AddInputOutput(*sub, options->io);
    }
    if (takes & kTakesFile) AddBytesInputFlags(*sub, options->io);
    if (takes & kTakesBytesOut) sub->add_flag("--hex", options->io.hex, "Write the record bytes as hex text");
    if (takes & kTakesMap) {
      sub->add_option("--map", options->mapFile, "Return-code map (JSON) to add to, instead of an empty one");
    }
    if (takes & kTakesFillAll) {
      sub->add_flag("--fill-all", options->fillAll,
                    "A failure without error list sets every entry of the map to the overall code");
    }
    if (takes & kTakesCodes) {
      sub->add_option("--code", options->code, "Overall return code (default: the input's \"result\")");
      sub->add_option("--ignore", options->ignore, "Up to three tolerated codes, comma-separated")->delimiter(',');
    }
    if (takes & kTakesMask) {
      sub->add_option("--mask", options->mask, "Use states to keep: bit n keeps state n (default 0x1F: all)")
          ->check(CLI::Range(0u, 0xFFFFu));
    }
    if (takes & kTakesLinkEnd) {
      sub->add_option("--moc", options->moc, "Node class the end may be (with --accept-node)");
      sub->add_flag("--accept-node", options->acceptNode, "Accept an end whose class is --moc as a node");
    }
    runners[sub] = {std::string("convert ") + command.name, [options, run = command.run](std::ostream& out) { out << run(*options); },
                    std::shared_ptr<const std::string>(options, &options->io.output)};
  }
}

}  // namespace velkor

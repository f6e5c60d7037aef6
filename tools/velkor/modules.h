// Interface modules of a service's own, loaded into the tool: a shared
// library whose records were compiled with tn_asn_module adds its types to
// the catalogue when it is loaded, so every command knows them afterwards.
#pragma once

#include <string>

namespace velkor {

// Loads the library of every "--module PATH" (or "--module=PATH") of the
// command line, in order, before the command line is parsed (the parser
// checks type names against the catalogue). Throws ToolError naming a library
// that does not load.
void LoadModules(int argc, char** argv);

}  // namespace velkor

#include "tools/velkor/modules.h"

#include <dlfcn.h>

#include <string_view>

#include "tools/velkor/io.h"

namespace velkor {

void LoadModules(int argc, char** argv) {
  constexpr std::string_view kOption = "--module";
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    std::string path;
    if (argument == kOption && i + 1 < argc) {
      path = argv[++i];
    } else if (argument.substr(0, kOption.size() + 1) == "--module=") {
      path = std::string(argument.substr(kOption.size() + 1));
    } else {
      continue;
    }
    // Never unloaded: its types stay in the catalogue for the whole run.
    if (dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL) == nullptr) {
      ThrowBadUsage("cannot load module " + path + ": " + dlerror());
    }
  }
}

}  // namespace velkor

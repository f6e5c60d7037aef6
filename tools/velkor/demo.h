// `velkor demo`: the typical request of a service module, step by step, on
// built-in samples. Needs no input and no flags.
#pragma once

#include <string>

namespace velkor {

// The walk-through as text.
std::string RunDemo();

}  // namespace velkor

// Checks the command-line parser runs on arguments before any command starts,
// so that a mistyped number or type name is a usage mistake (exit 2) reported
// in the tool's own words, whatever the input holds.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

namespace velkor {

// Makes `option` take an integer within [min, max], given in decimal or as
// 0x hex, with an optional leading '-', and returns it. The text is
// rewritten to plain decimal before the parser converts it: the parser's own
// conversion would read a leading 0 as octal, wrap "-1" into an unsigned
// type and clamp what overflows. Messages: "\"x\" is not a number (decimal
// or 0x hex)", "\"70000\" is out of range (0 to 65535)".
CLI::Option* IntegerIn(CLI::Option* option, std::int64_t min, std::uint64_t max);

// IntegerIn over the whole range of T.
template <class T>
CLI::Option* IntegerOf(CLI::Option* option) {
  static_assert(std::is_integral_v<T> && sizeof(T) <= 8, "integers of up to 64 bits");
  return IntegerIn(option, static_cast<std::int64_t>(std::numeric_limits<T>::min()),
                   static_cast<std::uint64_t>(std::numeric_limits<T>::max()));
}

// A name of the type catalogue, as `types` shows it (bare or qualified with
// its module); an unknown one gets the closest name suggested.
CLI::Validator RecordTypeName();

}  // namespace velkor

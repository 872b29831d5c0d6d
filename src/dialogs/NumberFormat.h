#pragma once

#include <cstdint>
#include <string>

// Numbers as the information dialogs show them: thousands grouped with ","
// ("%d,%03d,%03d") and decimals with two places ("%d,%03d.%02d").
namespace numfmt {

std::string Grouped(std::int64_t value);
// Two decimals, rounded to the nearest hundredth, with the integer part grouped.
std::string GroupedDecimal2(double value);
// Bytes as kilobytes (bytes x 0.0009765625) with two decimals.
std::string Kilobytes(std::uint64_t bytes);

} // namespace numfmt

// Binary files that other programs wrote: streams of 4-byte integers and 8-byte reals without record marks,
// little-endian whatever this machine is. Read only; a short file ends the run in the I/O layer.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>

namespace tidearc {

inline constexpr int most_binary_files = 10;  ///< open at a time

/// Opens a file for reading; its number, 1 to most_binary_files, or 0 when it cannot be opened or the table is full.
int open_binary(const std::string& name);
/// Closes every file of the table.
void close_binary_files();
/// Name of an open file, empty when the number has none.
std::string file_of_binary(int number);

/// Fills `values` from byte `position` of a file on and moves the position behind them. A file that ends before that,
/// or cannot be read, ends the process in the I/O layer, with its name.
void read_binary(int number, std::int64_t& position, std::span<int> values);
void read_binary(int number, std::int64_t& position, std::span<double> values);

/// A number of the file's bytes on this machine.
template <class Number>
Number from_little_endian(const unsigned char* bytes) {
  using Bits = std::conditional_t<sizeof(Number) == 8, std::uint64_t, std::uint32_t>;
  static_assert(sizeof(Bits) == sizeof(Number));
  Bits bits = 0;
  for (std::size_t i = 0; i < sizeof(Bits); ++i) bits |= static_cast<Bits>(bytes[i]) << (8 * i);
  return std::bit_cast<Number>(bits);
}

}  // namespace tidearc

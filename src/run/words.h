// Words and constants: what every floor agrees on.
// The work array and all record files are made of 4-byte words; an integer takes one word, a real takes ITWO.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tidearc {

using Word = std::int32_t;

inline constexpr int ITWO = 2;  ///< words in one 64-bit real [-]
inline constexpr double ZERO = 0.0;
inline constexpr double ONE = 1.0;
inline constexpr double SMALL = 1.0E-10;

inline constexpr int MAXNOD = 63000;        ///< most nodes of a model [-]
inline constexpr int MAXDOF = 378000;       ///< most entries of an equation-length vector, NEQ + 1 [-]
inline constexpr int MAXPAT = 500;          ///< most static load patterns [-]
inline constexpr int MAXBLK = 20;           ///< most blocks of an out-of-core matrix [-]
inline constexpr int NDF = 6;               ///< degrees of freedom of a node [-]
inline constexpr int FREE_CODE = 0;         ///< ID while reading: a free component
inline constexpr int FIXED_CODE = 1000000;  ///< ID while reading: a constrained component; plus m: tied to node m

inline constexpr std::string_view VERSION = "P4.314";

/// Words that `bytes` bytes fill.
constexpr int words(std::size_t bytes) { return static_cast<int>(bytes / sizeof(Word)); }

/// Offset in bytes of word number `word` (0-based) of a record.
constexpr std::size_t bytes_of_words(int word) { return static_cast<std::size_t>(word) * sizeof(Word); }

}  // namespace tidearc

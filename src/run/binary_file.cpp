// The table of open binary files. Positions belong to the reader, so that a state that is taken back reads again what
// it read before.
#include "run/binary_file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "run/stops.h"

namespace tidearc {
namespace {

constexpr int unit_of_failures = 63;  ///< the unit number that messages give to these files

struct Closer {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

struct BinaryFile {
  std::string name;
  std::unique_ptr<std::FILE, Closer> stream;
};

/// The file layer's own state: written by the procedures of this file only.
struct BinaryTable {
  std::array<BinaryFile, most_binary_files> files;
};
BinaryTable table;

BinaryFile* find(int number) {
  if (number < 1 || number > most_binary_files) return nullptr;
  BinaryFile& file = table.files[static_cast<std::size_t>(number - 1)];
  return file.stream ? &file : nullptr;
}

[[noreturn]] void fail(const std::string& name, std::int64_t position, const std::string& cause) {
  io_failure(unit_of_failures, 0, name + ", byte " + std::to_string(position + 1) + ": " + cause);
}

/// The bytes of `count` numbers into their own place.
void read_bytes(int number, std::int64_t position, void* to, std::size_t count) {
  const BinaryFile* const file = find(number);
  if (file == nullptr) fail("binary file " + std::to_string(number), position, "the file is not open");
  if (std::fseek(file->stream.get(), static_cast<long>(position), SEEK_SET) != 0) {
    fail(file->name, position, std::string("the file cannot be positioned: ") + std::strerror(errno));
  }
  const std::size_t found = std::fread(to, 1, count, file->stream.get());
  if (found == count) return;
  if (std::ferror(file->stream.get()) != 0) {
    fail(file->name, position, std::string("the file cannot be read: ") + std::strerror(errno));
  }
  fail(file->name, position,
       "the file ends after " + std::to_string(found) + " of " + std::to_string(count) + " bytes that were asked for");
}

template <class Number>
void read_numbers(int number, std::int64_t& position, std::span<Number> values) {
  read_bytes(number, position, values.data(), values.size_bytes());
  position += static_cast<std::int64_t>(values.size_bytes());
  if constexpr (std::endian::native != std::endian::little) {
    for (Number& value : values) value = from_little_endian<Number>(reinterpret_cast<const unsigned char*>(&value));
  }
}

}  // namespace

int open_binary(const std::string& name) {
  for (int number = 1; number <= most_binary_files; ++number) {
    BinaryFile& file = table.files[static_cast<std::size_t>(number - 1)];
    if (file.stream) continue;
    std::error_code ignored;
    if (name.empty() || std::filesystem::is_directory(name, ignored)) return 0;
    file.stream.reset(std::fopen(name.c_str(), "rb"));
    file.name = name;
    return file.stream ? number : 0;
  }
  return 0;
}

void close_binary_files() {
  for (BinaryFile& file : table.files) file.stream.reset();
}

std::string file_of_binary(int number) {
  const BinaryFile* const file = find(number);
  return file == nullptr ? std::string() : file->name;
}

void read_binary(int number, std::int64_t& position, std::span<int> values) { read_numbers(number, position, values); }
void read_binary(int number, std::int64_t& position, std::span<double> values) {
  read_numbers(number, position, values);
}

}  // namespace tidearc

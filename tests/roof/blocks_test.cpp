// The table of shared blocks against the sources.
#include "roof/blocks.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "run/units.h"
#include "run/workpool.h"

namespace tidearc {
namespace {

namespace fs = std::filesystem;

/// Names of all block instances that the headers declare: "inline Something name;". What owns memory of its own cannot
/// be saved as plain words and is no block.
std::set<std::string> declared_blocks() {
  std::set<std::string> names;
  const fs::path sources = fs::path(__FILE__).parent_path() / "../../src";
  for (const auto& entry : fs::recursive_directory_iterator(sources)) {
    if (entry.path().extension() != ".h") continue;
    std::ifstream in(entry.path());
    for (std::string line; std::getline(in, line);) {
      std::istringstream words(line);
      std::string keyword, type, name;
      words >> keyword >> type >> name;
      const bool is_block =
          !type.empty() && type[0] >= 'A' && type[0] <= 'Z' && type != "WorkPool" && type != "PanelMemory";
      if (keyword == "inline" && is_block && name.ends_with(';')) names.insert(name.substr(0, name.size() - 1));
    }
  }
  return names;
}

TEST(SharedBlocks, AreAllInTheTableAndEachOnce) {
  const std::set<std::string> declared = declared_blocks();
  ASSERT_GT(declared.size(), 20U);
  std::set<std::string> listed;
  for (const SharedBlock& block : shared_blocks()) EXPECT_TRUE(listed.insert(std::string(block.name)).second);
  EXPECT_EQ(listed, declared);
}

TEST(SharedBlocks, DoNotOverlap) {
  const char* end = nullptr;
  std::set<std::pair<const char*, std::size_t>> places;
  for (const SharedBlock& block : shared_blocks()) places.insert({static_cast<const char*>(block.address), block.size});
  for (const auto& [address, size] : places) {
    EXPECT_GE(address, end);
    end = address + size;
  }
}

TEST(SharedBlocks, GoBackToTheirFirstState) {
  units.NT1 = 99;
  storage.NEXT = 55;
  reset_blocks();
  EXPECT_EQ(units.NT1, 1);
  EXPECT_EQ(storage.NEXT, 1);
}

}  // namespace
}  // namespace tidearc

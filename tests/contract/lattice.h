// A line of nodes along X for tests of the passes, with fake elements.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "run/words.h"
#include "support/scratch.h"

namespace tidearc::test {

/// Where element records live: in the pool; streaming through files, which may be in memory or in the folder.
enum class Scheme { core, stream, disk };

/// Tests that hold in every scheme; the lines of nodes that they make live in it.
class EveryScheme : public testing::TestWithParam<Scheme> {
 protected:
  void SetUp() override;
  void TearDown() override;
};
std::string scheme_name(const testing::TestParamInfo<Scheme>& info);
#define IN_EVERY_SCHEME(suite) \
  INSTANTIATE_TEST_SUITE_P(Schemes, suite, testing::Values(Scheme::core, Scheme::stream, Scheme::disk), scheme_name)

/// The records at hand, one after the other: LEI words each.
std::vector<std::vector<Word>> records_at_hand();

/// Nodes 1..n; node n is held, all others are free in X, Y and Z: equation 3*(node-1) + component. With `turned`, node
/// 1 has local axes turned by 90 degrees about Z: local 1 along Y, local 2 along -X.
class Line {
 public:
  Line(int node_count, const std::string& cards, int groups, bool turned = false, int pool_words = 100000);
  static inline Scheme scheme = Scheme::core;
  ~Line();
  void build();
  void lay_down_arrays();
  void displace(int node, int component, double value) const;
  double force(int node, int component) const;
  void update_state() const;
  std::string report() const { return scratch_.report(); }
  std::string errors() const { return scratch_.errors(); }
  const Scratch& scratch() const { return scratch_; }

 private:
  Scratch scratch_;
};

/// Header of a group with BETAO 0.5 and BETAT 0.25, or of one without damping.
std::string group_card(int ITYPE, int NUMEL, int NFIRST = 1, const std::string& title = "TITLE");
std::string undamped_group_card(int ITYPE, int NUMEL, int NFIRST = 1);
std::string node_card(int node);
std::string spring_card(int number, int I, int J, double stiffness = 100.0);

}  // namespace tidearc::test

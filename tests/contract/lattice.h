// A line of nodes along X for tests of the passes, with fake elements.
#pragma once

#include <string>
#include <vector>

#include "support/scratch.h"

namespace tidearc::test {

/// Nodes 1..n; node n is held, all others are free in X, Y and Z: equation 3*(node-1) + component. With `turned`, node
/// 1 has local axes turned by 90 degrees about Z: local 1 along Y, local 2 along -X.
class Line {
 public:
  Line(int node_count, const std::string& cards, int groups, bool turned = false, int pool_words = 100000);
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

std::string group_card(int ITYPE, int NUMEL, int NFIRST = 1, const std::string& title = "TITLE");
std::string spring_card(int number, int I, int J, double stiffness = 100.0);

}  // namespace tidearc::test

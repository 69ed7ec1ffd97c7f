// Lists of nodes for output: one per axis; a rotation uses the list of its axis.
#pragma once

#include <array>
#include <string_view>

namespace tidearc {

/// Texts of the six directions, in the order of the components.
inline constexpr std::array<std::string_view, 6> direction_text{" X", " Y", " Z", "XR", "YR", "ZR"};

/// The nodes of one axis. A length of -1 stands for all nodes and takes no room.
struct NodeList {
  int length = 0;  ///< nodes, -1 all, 0 none  [-]
  int index = 1;   ///< pool index of the node numbers

  int count() const;
  /// Node number i of the list, i from 1 to count().
  int node(int i) const;
};

/// The print list and the post-processing list of an axis, 1 to 3.
NodeList print_list(int axis);
NodeList post_list(int axis);

}  // namespace tidearc

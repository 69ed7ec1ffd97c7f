// Lines of TAModel.sac: loads along members and on joints, 80 columns each, in the layout of load cards.
#pragma once

#include <array>
#include <string_view>

#include "sea/members/wave_member.h"

namespace tidearc {

/// A number in seven columns: as many digits as they hold, cut, behind the rounding to seven digits. Numbers from 1e9
/// on are asterisks, numbers below 1e-10 zero.
std::array<char, 7> FMT7(double value);

/// A load that varies linearly along a segment of a member.
struct LineLoad {
  double start = 0.0;     ///< distance of the segment from node I                          [length]
  double length = 0.0;    ///< of the segment                                               [length]
  double at_start = 0.0;  ///< load there                                             [force/length]
  double at_end = 0.0;    ///< load at its end                                        [force/length]
};

/// @param axis   " X", " Y" or " Z"
/// @param frame  GLOB or MEMB
void write_member_line(std::string_view axis, std::string_view frame, int NODEI, int NODEJ, const LineLoad& line,
                       double time);
/// A force on a node in global axes; its moments are zero.
void write_joint_line(int node, const Point& force, double time);

}  // namespace tidearc

// Renumbering of the nodes for a shorter profile, between element input and the first load pattern.
#pragma once

namespace tidearc {

/// Orders the nodes by the method that sizes.IBANDW names (2 height, 3 and 4 Collins, any other value that is not 0
/// Sloan), gives equations new numbers in that order, and prints the table of them. ID, the mass vector, the
/// element-stage vector and the generated pattern vectors change to the new numbers; node numbers and element records
/// stay. Ends with the profile of the numbers that hold.
///
/// The numbers stay as they are when a node has more than most_neighbours neighbours (a warning), when Sloan's order
/// makes the nodal profile no smaller, and when data errors were found. Work arrays stand at NEXT and are given back;
/// no room for them is the storage check of phase 1.
void RENUMB();

}  // namespace tidearc

// Report pages of node and element results.
#pragma once

namespace tidearc {

/// Reads and echoes the displacement print lists (lengths in output.NPR; storage phase 8).
void PRLIST();
/// The same for the post-processing lists (output.NPS; storage phase 11).
void POLIST();

/// Displacements of the listed nodes, in node local axes.
void NODPRT();
/// Node envelopes, then the element envelopes of each group.
void NODENV();
/// Sets the node envelopes to zero (a macro starts) and updates them with the accepted displacements U (a step ends).
void clear_node_envelopes();
void update_node_envelopes();

/// A results report: node response, then the element results of all groups.
void print_results();

}  // namespace tidearc

// Reading a problem: the order of the deck, the control cards, and the laying out of the work pool.
#pragma once

#include <string_view>

namespace tidearc {

/// Reads one problem from its first card to the last card before its macros. Called once per problem by DRIVER; sets
/// RUNMOD (3 when the STOP card was read), all sizes and all pool indices.
void DATAIN();

/// The first card of a problem: searches START, CHECK or STOP, checks the version tag, writes the run header.
void FIRSTC();
/// Whether this command, of columns 2 to 5, makes a line a first card.
bool is_first_card(std::string_view command);

/// The control cards in the order of the deck; each reads and echoes one card.
void read_data_file_card();
void read_post_processor_card();
void read_storage_card();
void read_size_card();
void read_static_load_card();
void read_response_card();
void read_post_output_card();

}  // namespace tidearc

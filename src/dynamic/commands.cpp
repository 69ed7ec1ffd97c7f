// The commands of a dynamic macro: ground acceleration, forces, imposed displacements. What they load and impose at a
// time stands in command_loads.cpp.
#include "dynamic/commands.h"

#include <string>
#include <string_view>

#include "dynamic/command_marks.h"
#include "model/control.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/records.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

// --- ground acceleration --------------------------------------------------------------------------------------------

/// Prints the row of one direction; a wrong record number takes the record away.
void print_ground_row(std::string_view direction, GroundCommand& command, int column, bool& marked) {
  const bool wrong = command.record != 0 && !record_exists(RecordKind::ground, command.record);
  write(units.NDOUT, "5X,A4,7X,A2,I6,3X,2E12.3", direction, wrong ? record_mark : no_mark, command.record, command.time,
        command.scale);
  if (!wrong) return;
  note_mark({column, column + 4}, "there is no ground acceleration record " + std::to_string(command.record));
  command = {};
  marked = true;
}

void read_ground_command() {
  auto& [x, y, z] = commands.ground;
  read(units.NDIN, "3(I5,2F10.0)", x.record, x.time, x.scale, y.record, y.time, y.scale, z.record, z.time, z.scale);
  write(units.NDOUT,
        "/,5X,'GRD. ACC.',2X,'ACC. REC',7X,'TIME  IN',6X,' SCALE',/,5X,'DIRECTION',2X,'  NUMBER',7X,'RECORD  ',6X,"
        "'FACTOR',/");
  constexpr int card_part = 25;  // columns of one direction
  bool marked = false;
  print_ground_row(" X  ", x, 1, marked);
  print_ground_row(" Y  ", y, card_part + 1, marked);
  print_ground_row(" Z  ", z, 2 * card_part + 1, marked);
  if (marked) print_mark_table();
}

void ground_section(int code) {
  put_text(units.NDOUT, "1\n GROUND ACCELERATION SPECIFICATION COMMANDS\n");
  if (code != 0) {
    read_ground_command();
  } else {
    write(units.NDOUT, "/,' (NONE)'");
  }
}

/// Lists the translational equations with mass, each once, with the axis by which its first node holds it: 3 times the
/// number of its local system (0 master) plus the direction 1 to 3.
void list_ground_loads() {
  const ConstReals AMASS = pool.reals(masses.AMASS, NEQ1());
  const Reals listed = pool.reals(arrays.WORK, NEQ1());
  const Integers equations = pool.integers(load_records.ground_equation, sizes.NEQ);
  const Integers axes = pool.integers(load_records.ground_axis, sizes.NEQ);
  const IntegerTable ID = node_ID();
  for (double& mark : listed) mark = 0.0;
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    for (int k = 1; k <= 3; ++k) {
      const int e = ID(node, k);
      if (e > sizes.NEQ || !(AMASS(e) > 0.0) || listed(e) != 0.0) continue;
      listed(e) = 1.0;
      ++commands.ground_loads;
      equations(commands.ground_loads) = e;
      axes(commands.ground_loads) = 3 * system_of(node) + k;
    }
  }
}

bool ground_moves() {
  for (const GroundCommand& command : commands.ground) {
    if (command.record != 0) return true;
  }
  return false;
}

// --- forces and imposed displacements -------------------------------------------------------------------------------

/// What differs between the two lists.
struct ListRules {
  RecordKind kind;
  const CommandMap& map;
  std::string_view record_name;
  std::string_view limit_text;
};

constexpr int most_nodes = 10;  ///< of a command
struct Command {
  int record = 0;
  int component = 0;
  double time = 0.0;
  double scale = 0.0;
  std::array<int, most_nodes> nodes{};
};

Command read_command() {
  Command command;
  read(units.NDIN, "2I5,2F10.0,10I5", command.record, command.component, command.time, command.scale, command.nodes);
  return command;
}

/// Reads one list of commands, prints a line for each of their nodes, and stores the entries that act.
class ListReader {
 public:
  ListReader(const ListRules& rules, CommandList& list) : rules_(rules), list_(list) {
    list_ = {0, rules.map.time, rules.map.scale, rules.map.equation, rules.map.record};
  }

  void read_all(int count) {
    if (count < 1) {
      write(units.NDOUT, "/,' (NONE)'");
      return;
    }
    write(units.NDOUT,
          "/,5X,'NODE',5X,'DOF',5X,'RECORD',7X,'TIME  IN',6X,' SCALE',/,22X,'NUMBER',7X,'RECORD  ',6X,'FACTOR',/");
    for (int i = 1; i <= count; ++i) follow(read_command());
    if (entries_ > rules_.map.entries) tell_limit();
    if (marked_) print_mark_table();
  }

 private:
  void follow(Command command) {
    const bool component_good = command.component >= 1 && command.component <= 6;
    const bool record_good = record_exists(rules_.kind, command.record);
    if (!component_good) {
      mark({6, 10}, "there is no component " + std::to_string(command.component));
      command.component = no_component;
    }
    if (!record_good) {
      mark({1, 5}, "there is no " + std::string(rules_.record_name) + " record " + std::to_string(command.record));
    }
    for (std::size_t i = 0; i < command.nodes.size() && command.nodes[i] >= 1; ++i) {
      entry(command, command.nodes[i], static_cast<int>(i), component_good, record_good);
    }
  }

  /// One node, the `i`-th (from 0) of its command.
  void entry(const Command& command, int node, int i, bool component_good, bool record_good) {
    const bool node_good = node <= sizes.NUMNP;
    const int e = node_good && component_good ? equation_of(node, command.component) : NEQ1();
    const bool constrained = node_good && component_good && e > sizes.NEQ;
    write(units.NDOUT, "2X,A2,I5,3X,A2,A3,3X,A2,I6,3X,2E12.3", node_good ? no_mark : node_mark, node,
          !component_good ? component_mark
          : constrained   ? constrained_mark
                          : no_mark,
          direction_of(command.component), record_good ? no_mark : record_mark, command.record, command.time,
          command.scale);
    ++entries_;
    if (!node_good) mark({31 + 5 * i, 35 + 5 * i}, "there is no node " + std::to_string(node));
    if (e <= sizes.NEQ && record_good && entries_ <= rules_.map.entries) store(command, e);
  }

  void store(const Command& command, int e) {
    const int n = ++list_.count;
    pool.reals(list_.time, rules_.map.entries)(n) = command.time;
    pool.reals(list_.scale, rules_.map.entries)(n) = command.scale;
    pool.integers(list_.equation, rules_.map.entries)(n) = e;
    pool.integers(list_.record, rules_.map.entries)(n) = command.record;
  }

  void mark(Columns where, const std::string& words) {
    note_mark(where, words);
    marked_ = true;
  }

  void tell_limit() {
    put_text(units.NDOUT, "\n     ****  DATA ERROR  ****     " + std::string(rules_.limit_text) +
                              format("I5", rules_.map.entries) + "\n");
    note_mark(not_on_deck, std::to_string(entries_) + " entries in the commands before deck line " +
                               std::to_string(deck_line() + 1) + ", at most " + std::to_string(rules_.map.entries) +
                               " are allowed");
  }

  const ListRules& rules_;
  CommandList& list_;
  int entries_ = 0;  ///< of all commands, those with marks included
  bool marked_ = false;
};

void force_section(int count) {
  write_framed(" DYNAMIC LOAD SPECIFICATION COMMANDS", '*', 36);
  const ListRules rules{RecordKind::force, load_records.forces, "dynamic force",
                        "NUMBER OF NODES WITH DYNAMIC FORCE APPLICATION EXCEED LIMIT OF"};
  ListReader(rules, commands.forces).read_all(count);
}

void displacement_section(int count) {
  put_text(units.NDOUT, "\n IMPOSED DISPLACEMENT SPECIFICATION COMMANDS\n");
  const ListRules rules{RecordKind::displacement, load_records.displacements, "imposed displacement",
                        "NUMBER OF NODES WITH IMPOSED DISPLACEMENTS EXCEED LIMIT OF"};
  ListReader(rules, commands.displacements).read_all(count);
}

}  // namespace

void DYNCMD(int ground_code, int force_commands, int displacement_commands) {
  commands = {};
  ground_section(ground_code);
  put_text(units.NDOUT, "\n");
  force_section(force_commands);
  displacement_section(displacement_commands);
  if (executing() && ground_moves()) list_ground_loads();
}

}  // namespace tidearc

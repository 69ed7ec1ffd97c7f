// A model of nodes with masses and records for the tests of commands and initial conditions: no elements.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "../model/record_deck.h"
#include "dynamic/commands.h"
#include "solve/arrays.h"

namespace tidearc::test {

/// Records by kind, each of points one second apart from time 0 on.
struct Records {
  std::vector<std::vector<double>> ground, force, displacement;
};

inline std::string record_cards(RecordKind kind, const std::vector<std::vector<double>>& records) {
  std::string deck;
  for (const std::vector<double>& values : records) {
    deck += kind_card(kind) + heading("(8F10.0)") +
            Control{.points = static_cast<int>(values.size()), .interval = "1.0"}.card();
    for (const double value : values) deck += right(std::to_string(value), 10);
    deck += "\n";
  }
  return deck;
}

/// Nodes in a row, all components free until fix(), tie() or turn(); after ready() the macro's cards are next.
class CommandModel : public LoadModel {
 public:
  CommandModel(int nodes_in_row, const Records& records, const std::string& cards, int most_entries = 20)
      : LoadModel(record_cards(RecordKind::ground, records.ground) + record_cards(RecordKind::force, records.force) +
                      record_cards(RecordKind::displacement, records.displacement) + cards,
                  row_of_nodes(nodes_in_row)),
        records_(records),
        most_entries_(most_entries) {}
  ~CommandModel() {
    dynamic_loads = {};
    load_records = {};
    commands = {};
    arrays = {};
    run = {};
  }

  CommandModel& ready() {
    number();
    for (double& mass : vector(masses.AMASS)) mass = 0.0;
    dynamic_loads.NGACC = static_cast<int>(records_.ground.size());
    dynamic_loads.NDFRC = static_cast<int>(records_.force.size());
    dynamic_loads.NIDSP = static_cast<int>(records_.displacement.size());
    dynamic_loads.NDFND = dynamic_loads.NIDND = most_entries_;
    dynamic_loads.MXPNT = 8;
    RECRIN();
    carve_analysis_arrays();
    report_before_ = trimmed(scratch.report()).size();
    return *this;
  }
  CommandModel& mass(int node, int component, double value) {
    vector(masses.AMASS)(equation_of(node, component)) = value;
    return *this;
  }

  /// The report behind the record sections.
  std::string report() const { return trimmed(scratch.report()).substr(report_before_); }
  bool reports(const std::string& text) const { return count_of_text(report(), text) > 0; }
  bool complains(const std::string& text) const { return count_of_text(scratch.errors(), text) > 0; }

  /// Loads of the records at a time since the macro's start.
  Reals loads(double elapsed, double level = 1.0) const {
    for (double& load : vector(arrays.P)) load = 0.0;
    add_record_loads(elapsed, level, vector(arrays.P));
    return vector(arrays.P);
  }
  Reals imposed(double elapsed) const {
    form_imposed(elapsed, vector(arrays.XI));
    return vector(arrays.XI);
  }

 private:
  Records records_;
  int most_entries_;
  std::size_t report_before_ = 0;
};

/// A force or displacement command.
inline std::string command(int record, int component, const std::string& time, const std::string& scale,
                           const std::vector<int>& nodes) {
  std::string card =
      right(std::to_string(record), 5) + right(std::to_string(component), 5) + right(time, 10) + right(scale, 10);
  for (const int node : nodes) card += right(std::to_string(node), 5);
  return card + "\n";
}

}  // namespace tidearc::test

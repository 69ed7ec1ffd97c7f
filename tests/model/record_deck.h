// Cards of dynamic load records for tests.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "load_model.h"
#include "model/records.h"

namespace tidearc::test {

inline std::string right(const std::string& text, std::size_t width) {
  return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}
inline std::string left(const std::string& text, std::size_t width) {
  return text + std::string(width > text.size() ? width - text.size() : 0, ' ');
}

/// Heading card: title in 60 columns, read layout in 20.
inline std::string heading(const std::string& layout, const std::string& title = "A RECORD") {
  return left(title, 60) + layout + "\n";
}

/// What a control card says.
struct Control {
  int points = 0;
  int print = 0;
  std::string interval = "";
  std::string scale = "";
  int flag = 0;
  std::string file = "";
  std::string further = "";

  std::string card() const {
    return right(std::to_string(points), 5) + right(std::to_string(print), 5) + right(interval, 10) + right(scale, 10) +
           "     " + right(std::to_string(flag), 5) + left(file, 40) + right(further, 5) + "\n";
  }
};

/// A model whose deck has the record sections, for `n` records of a kind and at most `points` points.
class RecordModel : public LoadModel {
 public:
  RecordModel(RecordKind wanted, const std::string& deck, int points, int n = 1)
      : LoadModel(deck, row_of_nodes(1)), kind(wanted) {
    (kind == RecordKind::ground  ? dynamic_loads.NGACC
     : kind == RecordKind::force ? dynamic_loads.NDFRC
                                 : dynamic_loads.NIDSP) = n;
    dynamic_loads.MXPNT = points;
  }
  ~RecordModel() { dynamic_loads = {}; }

  double at(double t, int number = 1) const { return record_value(kind, number, t); }
  std::string report() const { return trimmed(scratch.report()); }
  bool reports(const std::string& text) const { return count_of_text(report(), text) > 0; }
  bool complains(const std::string& text) const { return count_of_text(scratch.errors(), text) > 0; }

  RecordKind kind;
};

inline constexpr std::array<RecordKind, 3> all_kinds{RecordKind::ground, RecordKind::force, RecordKind::displacement};
/// The kind card that tables and ground acceleration records have.
inline std::string kind_card(RecordKind kind) { return kind == RecordKind::ground ? "" : "    1\n"; }

}  // namespace tidearc::test

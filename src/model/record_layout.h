// Read layouts of dynamic load records, which stand in the deck and are interpreted when the record is read.
//
// A layout stands in brackets: number fields Iw, Fw.d, Ew.d, Dw.d, Gw.d with a repeat count before them, nX (columns
// passed over), "/" (next line), kP (scale of the fields that follow), and groups r(...) within each other. Blanks mean
// nothing, letters are of any case, commas may stand between items. All number fields read alike: blanks in them are
// ignored, an empty one is zero, no point is implied by d. Behind the last item the reading goes back to the last group
// that stands directly within the layout's own brackets (to the front when there is none), with its count, on a new
// line.
//
// Cards and report lines have layouts of their own, which the compiler checks: run/layout.h.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tidearc {

inline constexpr int most_layout_repeats = 9999;   ///< of a count
inline constexpr int most_layout_groups = 8;       ///< groups within each other
inline constexpr int most_record_fields = 100000;  ///< number fields, skips and scale factors of one line

/// A layout taken apart.
class RecordLayout {
 public:
  explicit RecordLayout(std::string_view text);
  /// What is wrong with the layout, empty when it is sound.
  std::string_view error() const { return error_; }

  struct Step {
    enum class Kind { field, skip, scale, new_line, open, close };
    Kind kind = Kind::skip;
    int count = 1;            ///< how often; columns of a skip; power of ten of a scale
    int width = 0;            ///< columns of a field
    int decimals = 0;         ///< of a field
    bool real = true;         ///< F, E, D or G
    std::size_t partner = 0;  ///< of a closing bracket, the step of its opening one
  };
  const std::vector<Step>& steps() const { return steps_; }
  /// The step to which the reading goes back.
  std::size_t start_again() const { return start_again_; }
  /// False when there is no number field from there on: then the layout serves no more numbers than its fields.
  bool can_start_again() const;

 private:
  friend class LayoutParser;
  std::vector<Step> steps_;
  std::size_t start_again_ = 0;
  std::string_view error_ = {};
};

/// Gives the next line of a file; false at its end. The view is valid until the next call.
using NextLine = std::function<bool(std::string_view&)>;

/// Where a reading came to its end.
struct FieldPlace {
  std::size_t column = 0;  ///< 0-based
  std::size_t width = 0;
  std::string text = {};  ///< characters of the field
};

/// Reads the numbers of one record one by one. The record begins with a new line.
class RecordReader {
 public:
  enum class Outcome { number, end_of_file, bad_field, no_field, line_too_long };

  /// `layout` must be sound and stay.
  RecordReader(const RecordLayout& layout, NextLine next_line);
  /// The next number; anything but `number` ends the record, and `value` is then undefined.
  Outcome next(double& value);
  /// Behind the last number: takes what the layout still says up to its next number field, which may be lines to pass
  /// over. The end of the file is none of its concern.
  void finish();

  /// Columns and text of a field that could not be read.
  const FieldPlace& place() const { return place_; }
  /// True when a field without a point was read under a d above 0.
  bool missed_point() const { return missed_point_; }

 private:
  using Step = RecordLayout::Step;
  Outcome field(double& value);
  /// Carries out the steps up to the next number field.
  Outcome go_to_field();
  /// Carries out one step; false at the end of the file.
  bool take_step();
  bool new_line();

  const RecordLayout& layout_;
  NextLine next_line_;
  std::string_view line_ = {};
  std::size_t column_ = 0;
  std::size_t at_ = 0;
  std::array<int, most_layout_groups> left_{};  ///< passes left of the groups that are open
  std::size_t depth_ = 0;
  const Step* repeated_ = nullptr;  ///< field that is due
  int pending_ = 0;                 ///< times
  int scale_ = 0;
  bool started_ = false;
  bool missed_point_ = false;
  FieldPlace place_;
};

}  // namespace tidearc

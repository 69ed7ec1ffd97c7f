// Read layouts of dynamic load records: taking a layout apart, and reading numbers under it.
#include "model/record_layout.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "run/layout_numbers.h"
#include "run/units.h"

namespace tidearc {

namespace {

/// How many fields a stretch of a layout asks for on its lines: on the first, on the last, and the most on one of those
/// between. Without a line end the first is the last.
struct LineFields {
  std::int64_t first = 0;
  std::int64_t last = 0;
  std::int64_t between = 0;
  bool ends_line = false;
};

constexpr std::int64_t countless = std::int64_t{1} << 40;  ///< times the largest repeat count still an integer

LineFields joined(const LineFields& a, const LineFields& b) {
  LineFields sum = a;
  if (!a.ends_line && !b.ends_line) {
    sum.first = sum.last = std::min(a.first + b.first, countless);
  } else if (!b.ends_line) {
    sum.last = std::min(a.last + b.first, countless);
  } else {
    if (!a.ends_line) sum.first = std::min(a.first + b.first, countless);
    sum.between = std::max(a.between, b.between);
    if (a.ends_line) sum.between = std::max(sum.between, std::min(a.last + b.first, countless));
    sum.last = b.last;
    sum.ends_line = true;
  }
  return sum;
}

LineFields repeated(LineFields part, int count) {
  if (!part.ends_line) {
    part.first = part.last = std::min(part.first * count, countless);
  } else if (count > 1) {
    part.between = std::max(part.between, std::min(part.last + part.first, countless));
  }
  return part;
}

std::int64_t most_on_a_line(const LineFields& all) { return std::max({all.first, all.last, all.between}); }

/// The characters that mean something, in capitals.
std::string bare(std::string_view text) {
  std::string kept;
  for (const char c : text) {
    if (c != ' ') kept += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return kept;
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

/// Takes a layout apart, from front to back.
class LayoutParser {
 public:
  LayoutParser(std::string_view text, RecordLayout& layout) : text_(bare(text)), layout_(layout) {}

  std::string_view run() {
    if (!take('(')) return "it does not begin with a bracket";
    while (error_.empty()) {
      if (at_ >= text_.size()) return "a bracket is not closed";
      if (take(',')) continue;
      if (take(')')) {
        if (depth_ == 0) break;
        close_group();
      } else {
        item();
      }
    }
    if (!error_.empty()) return error_;
    if (at_ < text_.size()) return "something stands behind its closing bracket";
    if (!has_field_) return "it has no number field";
    if (most_on_a_line(lines_[0]) > most_record_fields) return "more than 100000 fields on a line";
    return {};
  }

 private:
  using Step = RecordLayout::Step;

  bool take(char c) {
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }

  /// Digits, if any; a number beyond `largest` is an error.
  int number(bool& found, int largest) {
    int value = 0;
    found = false;
    for (; at_ < text_.size() && is_digit(text_[at_]); ++at_) {
      found = true;
      if (value <= largest) value = value * 10 + (text_[at_] - '0');
    }
    if (value > largest) error_ = "a number is too large";
    return value;
  }

  void put(const Step& step, std::int64_t fields) {
    layout_.steps_.push_back(step);
    LineFields own{fields, fields, 0, false};
    if (step.kind == Step::Kind::new_line) own = repeated({0, 0, 0, true}, step.count);
    lines_[depth_] = joined(lines_[depth_], own);
  }

  void item() {
    const bool negative = take('-');
    const bool has_sign = negative || take('+');
    bool has_count = false;
    const int count = number(has_count, most_layout_repeats);
    if (!error_.empty()) return;
    if (take('P')) return scale(has_count, negative ? -count : count);
    if (has_sign) {
      error_ = "a sign stands before something that is no scale factor";
    } else if (has_count && count == 0) {
      error_ = "a count is zero";
    } else {
      counted_item(has_count ? count : 1);
    }
  }

  void counted_item(int count) {
    if (take('(')) return open_group(count);
    if (take('X')) return put({Step::Kind::skip, count}, 1);
    if (take('/')) return put({Step::Kind::new_line, count}, 0);
    field(count);
  }

  void scale(bool has_power, int power) {
    if (!has_power) error_ = "P stands without a number";
    if (power > largest_scale || power < -largest_scale) error_ = "a scale factor is too large";
    put({Step::Kind::scale, power}, 1);
  }

  void open_group(int count) {
    if (depth_ >= most_layout_groups) {
      error_ = "groups are nested too deep";
      return;
    }
    if (depth_ == 0) layout_.start_again_ = layout_.steps_.size();
    opened_[depth_] = layout_.steps_.size();
    layout_.steps_.push_back({Step::Kind::open, count});
    lines_[++depth_] = {};
  }

  void close_group() {
    const std::size_t partner = opened_[--depth_];
    if (partner + 1 == layout_.steps_.size()) {
      error_ = "a group is empty";
      return;
    }
    Step close{Step::Kind::close};
    close.partner = partner;
    const int count = layout_.steps_[partner].count;
    layout_.steps_.push_back(close);
    lines_[depth_] = joined(lines_[depth_], repeated(lines_[depth_ + 1], count));
  }

  void field(int count) {
    Step step{Step::Kind::field, count};
    step.real = !take('I');
    if (step.real && !take('F') && !take('E') && !take('D') && !take('G')) {
      error_ = at_ < text_.size() ? "an unknown letter" : "a bracket is not closed";
      return;
    }
    bool found = false;
    step.width = number(found, most_layout_repeats);
    if (!found || step.width == 0) error_ = "a field has no width";
    if (step.width > widest_number_field) error_ = "a field is too wide";
    if (step.real) {
      const bool point = take('.');
      step.decimals = number(found, most_layout_repeats);
      if (!point || !found) error_ = "a real field has no decimals";
    }
    has_field_ = true;
    put(step, count);
  }

  std::string text_;
  RecordLayout& layout_;
  std::size_t at_ = 0;
  std::size_t depth_ = 0;
  std::array<std::size_t, most_layout_groups> opened_{};
  std::array<LineFields, most_layout_groups + 1> lines_{};
  bool has_field_ = false;
  std::string_view error_ = {};
};

RecordLayout::RecordLayout(std::string_view text) { error_ = LayoutParser(text, *this).run(); }

bool RecordLayout::can_start_again() const {
  const auto first = steps_.begin() + static_cast<std::ptrdiff_t>(start_again_);
  return std::any_of(first, steps_.end(), [](const Step& step) { return step.kind == Step::Kind::field; });
}

RecordReader::RecordReader(const RecordLayout& layout, NextLine next_line)
    : layout_(layout), next_line_(std::move(next_line)) {}

bool RecordReader::new_line() {
  column_ = 0;
  line_ = {};
  return next_line_(line_);
}

bool RecordReader::take_step() {
  const Step& step = layout_.steps()[at_++];
  switch (step.kind) {
    case Step::Kind::field:
      repeated_ = &step;
      pending_ = step.count;
      break;
    case Step::Kind::skip:
      column_ += static_cast<std::size_t>(step.count);
      break;
    case Step::Kind::scale:
      scale_ = step.count;
      break;
    case Step::Kind::new_line:
      for (int i = 0; i < step.count; ++i) {
        if (!new_line()) return false;
      }
      break;
    case Step::Kind::open:
      left_[depth_++] = step.count;
      break;
    case Step::Kind::close:
      if (--left_[depth_ - 1] > 0) {
        at_ = step.partner + 1;
      } else {
        --depth_;
      }
      break;
  }
  return true;
}

RecordReader::Outcome RecordReader::go_to_field() {
  if (!started_ && !new_line()) return Outcome::end_of_file;
  started_ = true;
  while (pending_ == 0) {
    if (at_ < layout_.steps().size()) {
      if (!take_step()) return Outcome::end_of_file;
    } else if (layout_.can_start_again()) {
      at_ = layout_.start_again();
      if (!new_line()) return Outcome::end_of_file;
    } else {
      return Outcome::no_field;
    }
  }
  return Outcome::number;
}

RecordReader::Outcome RecordReader::field(double& value) {
  const std::size_t width = static_cast<std::size_t>(repeated_->width);
  const std::string_view text = line_.substr(std::min(column_, line_.size()), width);
  place_.column = column_;
  place_.width = width;
  const bool cut = line_.size() == static_cast<std::size_t>(longest_line) && column_ + width > line_.size();
  const bool good = !cut && get_real(text, repeated_->real ? scale_ : 0, value);
  if (!good) {
    place_.text = text;
    return cut ? Outcome::line_too_long : Outcome::bad_field;
  }
  const bool empty = text.find_first_not_of(' ') == std::string_view::npos;
  if (repeated_->decimals > 0 && !empty && text.find('.') == std::string_view::npos) missed_point_ = true;
  column_ += width;
  --pending_;
  return Outcome::number;
}

RecordReader::Outcome RecordReader::next(double& value) {
  const Outcome outcome = go_to_field();
  return outcome == Outcome::number ? field(value) : outcome;
}

void RecordReader::finish() {
  while (started_ && pending_ == 0 && at_ < layout_.steps().size() && take_step()) {
  }
}

}  // namespace tidearc

// Reading under a layout: the walk of a layout and its items side by side over records. A record is as wide as a field
// asks: behind its last character there are blanks.
#include <algorithm>
#include <string>

#include "run/layout.h"
#include "run/layout_items.h"
#include "run/layout_numbers.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {
namespace {

/// What stopped a reading, with the place for the message.
struct Trouble {
  enum class Kind { none, end_of_file, bad_integer, bad_real, bad_layout };
  Kind kind = Kind::none;
  std::size_t column = 0;  ///< 0-based
  std::size_t width = 0;
  int item = 0;                 ///< 1-based
  std::string_view field = {};  ///< characters of the field; words of a layout's error
};

/// Records of a unit.
class UnitRecords {
 public:
  explicit UnitRecords(int unit) : unit_(unit) {}
  bool next(std::string_view& record) { return next_line(unit_, record); }

 private:
  int unit_;
};

/// Records of a text, separated by line ends.
class TextRecords {
 public:
  explicit TextRecords(std::string_view text) : rest_(text) {}
  bool next(std::string_view& record) {
    if (at_end_) return false;
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    record = rest_.substr(0, end);
    at_end_ = end >= rest_.size();
    rest_.remove_prefix(at_end_ ? end : end + 1);
    return true;
  }

 private:
  std::string_view rest_;
  bool at_end_ = false;
};

using InList = ItemWalk<InItem>;

void get_text(std::string_view field, std::span<char> text) {
  const std::size_t length = std::min(field.size(), text.size());
  std::copy_n(field.begin(), length, text.begin());
  std::ranges::fill(text.subspan(length), ' ');
}

Trouble::Kind get_item(std::string_view field, int scale, const InList& list) {
  const InItem& item = list.item();
  if (item.kind == ItemKind::integer) {
    return get_integer(field, item.integers[list.index()]) ? Trouble::Kind::none : Trouble::Kind::bad_integer;
  }
  if (item.kind == ItemKind::real) {
    return get_real(field, scale, item.reals[list.index()]) ? Trouble::Kind::none : Trouble::Kind::bad_real;
  }
  get_text(field, item.text);
  return Trouble::Kind::none;
}

Trouble layout_trouble(std::string_view words) { return {Trouble::Kind::bad_layout, 0, 0, 0, words}; }

template <class Records>
class Reading {
 public:
  Reading(Records records, std::string_view layout, std::span<const InItem> items)
      : records_(records), cursor_(layout), list_(items) {}

  Trouble run() {
    if (!next_record()) return end_of_file();
    while (true) {
      const Edit edit = cursor_.next();
      if (is_data(edit.type)) {
        if (list_.done()) return {};
        const Trouble trouble = field(edit);
        if (trouble.kind != Trouble::Kind::none) return trouble;
        continue;
      }
      switch (edit.type) {
        case Edit::Type::skip:
          column_ += static_cast<std::size_t>(edit.width);
          break;
        case Edit::Type::tab:
          column_ = static_cast<std::size_t>(edit.width - 1);
          break;
        case Edit::Type::quote:
          column_ += edit.text.size();
          break;
        case Edit::Type::scale:
          scale_ = edit.width;
          break;
        case Edit::Type::new_record:
          if (!next_record()) return end_of_file();
          break;
        case Edit::Type::end:
          if (list_.done()) return {};
          if (!had_field_) return layout_trouble("no field for an item");
          if (!next_record()) return end_of_file();
          cursor_.revert();
          had_field_ = false;
          break;
        default:
          return layout_trouble(edit.text);
      }
    }
  }

 private:
  Trouble end_of_file() const { return {Trouble::Kind::end_of_file, 0, 0, list_.number(), {}}; }

  bool next_record() {
    column_ = 0;
    return records_.next(record_);
  }

  Trouble field(const Edit& edit) {
    if (!fits(edit.type, list_.item().kind)) return layout_trouble("a field does not fit its item");
    const std::size_t width = static_cast<std::size_t>(edit.width);
    const std::size_t from = std::min(column_, record_.size());
    const std::string_view characters = record_.substr(from, width);
    const Trouble::Kind kind = get_item(characters, scale_, list_);
    if (kind != Trouble::Kind::none) return {kind, column_, width, list_.number(), characters};
    column_ += width;
    had_field_ = true;
    list_.advance();
    return {};
  }

  Records records_;
  LayoutCursor cursor_;
  InList list_;
  std::string_view record_ = {};
  std::size_t column_ = 0;
  int scale_ = 0;
  bool had_field_ = true;  ///< since the start of the layout or the last return to a group
};

/// "columns 6-15: '12X4' is not a real number (item 2, layout I5,3F10.0)"
std::string cause_of(const Trouble& trouble, std::string_view layout) {
  const std::string item = "item " + std::to_string(trouble.item) + ", layout " + std::string(layout);
  switch (trouble.kind) {
    case Trouble::Kind::end_of_file:
      return "end of file where a record was expected (" + item + ")";
    case Trouble::Kind::bad_layout:
      return "layout " + std::string(layout) + ": " + std::string(trouble.field);
    case Trouble::Kind::none:
    case Trouble::Kind::bad_integer:
    case Trouble::Kind::bad_real:
      break;
  }
  const bool integer = trouble.kind == Trouble::Kind::bad_integer;
  return "columns " + std::to_string(trouble.column + 1) + "-" + std::to_string(trouble.column + trouble.width) +
         ": '" + std::string(trouble.field) + "' is not " + (integer ? "an integer" : "a real number") + " (" + item +
         ")";
}

}  // namespace

void read_items(int unit, std::string_view layout, std::span<const InItem> items) {
  const Trouble trouble = Reading(UnitRecords(unit), layout, items).run();
  if (trouble.kind == Trouble::Kind::none) return;
  const bool past_end = trouble.kind == Trouble::Kind::end_of_file;
  io_failure(unit, record_of_unit(unit) + (past_end ? 1 : 0), cause_of(trouble, layout));
}

bool scan_items(std::string_view record, std::string_view layout, std::span<const InItem> items) {
  return Reading(TextRecords(record), layout, items).run().kind == Trouble::Kind::none;
}

}  // namespace tidearc

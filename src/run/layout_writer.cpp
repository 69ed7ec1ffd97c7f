// Writing under a layout: the walk of a layout and its items side by side, onto the end of a text. Also list-directed
// records, which have no layout.
#include <algorithm>
#include <charconv>
#include <string>

#include "run/layout.h"
#include "run/layout_items.h"
#include "run/layout_numbers.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {
namespace {

/// The record being formed at the end of a text, and the column (0-based) at which the next field starts.
class RecordWriter {
 public:
  explicit RecordWriter(std::string& text) : text_(text), start_(text.size()) {}

  /// The next `width` columns. Columns between the end of the record and here become blanks.
  std::span<char> field(std::size_t width) {
    const std::size_t at = start_ + column_;
    if (text_.size() < at + width) text_.resize(at + width, ' ');
    column_ += width;
    return {text_.data() + at, width};
  }
  void skip(int columns) { column_ += static_cast<std::size_t>(columns); }
  void tab(int column) { column_ = static_cast<std::size_t>(column - 1); }
  void next_record() {
    text_ += '\n';
    start_ = text_.size();
    column_ = 0;
    ++records_;
  }
  int records() const { return records_; }

 private:
  std::string& text_;
  std::size_t start_;
  std::size_t column_ = 0;
  int records_ = 0;
};

void put_quote(RecordWriter& record, const Edit& edit) {
  bool second = false;  // of a doubled mark
  for (const char c : edit.text) {
    second = c == edit.quote && !second;
    if (!second) record.field(1)[0] = c;
  }
}

void put_characters(std::span<char> field, std::string_view text) {
  const std::size_t length = std::min(field.size(), text.size());
  std::copy_n(text.begin(), length, field.begin());
  std::ranges::fill(field.subspan(length), ' ');
}

using OutList = ItemWalk<OutItem>;

void put_item(RecordWriter& record, const Edit& edit, int scale, const OutList& list) {
  const OutItem& item = list.item();
  const std::span<char> field = record.field(static_cast<std::size_t>(edit.width));
  if (item.kind == ItemKind::integer) {
    put_integer(field, item.integers[list.index()]);
  } else if (item.kind == ItemKind::real) {
    put_real(field, edit, scale, item.reals[list.index()]);
  } else {
    put_characters(field, item.text);
  }
}

/// Forms the records of one write. Returns what is wrong when the layout does not go with the items, else nothing.
std::string_view form_records(RecordWriter& record, std::string_view layout, std::span<const OutItem> items) {
  LayoutCursor cursor(layout);
  OutList list(items);
  int scale = 0;
  bool had_field = true;  // since the start of the layout or the last return to a group
  while (true) {
    const Edit edit = cursor.next();
    if (is_data(edit.type)) {
      if (list.done()) return {};
      if (!fits(edit.type, list.item().kind)) return "a field does not fit its item";
      put_item(record, edit, scale, list);
      list.advance();
      had_field = true;
      continue;
    }
    switch (edit.type) {
      case Edit::Type::skip:
        record.skip(edit.width);
        break;
      case Edit::Type::tab:
        record.tab(edit.width);
        break;
      case Edit::Type::quote:
        put_quote(record, edit);
        break;
      case Edit::Type::new_record:
        record.next_record();
        break;
      case Edit::Type::scale:
        scale = edit.width;
        break;
      case Edit::Type::end:
        if (list.done()) return {};
        if (!had_field) return "no field for an item";
        record.next_record();
        cursor.revert();
        had_field = false;
        break;
      default:
        return edit.text;
    }
  }
}

std::string layout_trouble(std::string_view layout, std::string_view trouble) {
  return "layout " + std::string(layout) + ": " + std::string(trouble);
}

void put_list_item(std::string& text, const OutItem& item) {
  for (int i = 0; i < item.count; ++i) {
    text += ' ';
    if (item.kind == ItemKind::integer) {
      char room[12];
      text.append(room, std::to_chars(room, room + sizeof(room), item.integers[i]).ptr);
    } else if (item.kind == ItemKind::real) {
      char room[list_real_columns];
      text += list_real(room, item.reals[i]);
    } else {
      text += item.text;
    }
  }
}

}  // namespace

void write_items(int unit, std::string_view layout, std::span<const OutItem> items) {
  RecordWriter record(begin_output(unit));
  const std::string_view trouble = form_records(record, layout, items);
  if (!trouble.empty()) io_failure(unit, record_of_unit(unit) + 1, layout_trouble(layout, trouble));
  record.next_record();
  end_output(unit, record.records());
}

std::string format_items(std::string_view layout, std::span<const OutItem> items) {
  std::string text;
  RecordWriter record(text);
  const std::string_view trouble = form_records(record, layout, items);
  if (!trouble.empty()) io_failure(units.NDOUT, record_of_unit(units.NDOUT), layout_trouble(layout, trouble));
  return text;
}

void write_list_items(int unit, std::span<const OutItem> items) {
  std::string& text = begin_output(unit);
  for (const OutItem& item : items) put_list_item(text, item);
  text += '\n';
  end_output(unit, 1);
}

}  // namespace tidearc

// The parser of record layouts, usable by the compiler and at run time, and the check of a layout against its items.
#pragma once

#include <span>
#include <string_view>
#include <type_traits>

#include "run/views.h"

namespace tidearc {

enum class ItemKind { integer, real, text };

/// One step of a layout.
struct Edit {
  enum class Type {
    integer,
    fixed,
    exponent,
    d_exponent,
    general,
    text,
    skip,
    tab,
    quote,
    new_record,
    scale,
    end,
    error
  };
  Type type = Type::end;
  int width = 0;  ///< columns; for skip and tab the count; for scale the power of ten
  int decimals = 0;
  std::string_view text{};  ///< of a quote, its characters as they stand, with doubled marks; of an error, its words
  char quote = '\'';
};

/// Limits of a layout, far above what cards and report lines need: they bound what a layout in a deck can ask for.
inline constexpr int widest_number_field = 256;  ///< columns of one I, F, E, D or G field
inline constexpr int widest_record = 100000;     ///< columns of one record
inline constexpr int largest_scale = 99;         ///< of nP, either sign

constexpr bool is_data(Edit::Type type) {
  return type == Edit::Type::integer || type == Edit::Type::fixed || type == Edit::Type::exponent ||
         type == Edit::Type::d_exponent || type == Edit::Type::general || type == Edit::Type::text;
}

constexpr bool fits(Edit::Type type, ItemKind kind) {
  if (type == Edit::Type::integer) return kind == ItemKind::integer;
  if (type == Edit::Type::text) return kind == ItemKind::text;
  return is_data(type) && kind == ItemKind::real;
}

/// Walks through a layout edit by edit. `next()` at the end of the layout returns `end`; `revert()` then goes back to
/// the last group on the outer level (or the start of the layout) for the items that are left.
class LayoutCursor {
 public:
  explicit constexpr LayoutCursor(std::string_view layout) : layout_(layout) {}

  constexpr Edit next() {
    if (pending_ > 0) {
      --pending_;
      return repeated_;
    }
    while (true) {
      skip_separators();
      if (at_ >= layout_.size()) return depth_ == 0 ? Edit{} : error("a group is not closed");
      const char c = layout_[at_];
      if (c == ')') {
        if (!close_group()) return error("a closing bracket too many");
        continue;
      }
      if (c == '/') {
        ++at_;
        return Edit{Edit::Type::new_record};
      }
      if (c == '\'' || c == '"') return quote(c);
      int sign = 1;
      if (c == '-' || c == '+') {
        sign = c == '-' ? -1 : 1;
        ++at_;
      }
      bool has_count = false;
      const int count = number(has_count);
      if (count < 0) return error("a count is too large");
      if (at_ >= layout_.size()) return error("a field letter is missing");
      const char letter = upper(layout_[at_]);
      if (letter == '(') {
        if (sign < 0) return error("a count is negative");
        if (has_count && count == 0) return error("a count is zero");
        if (!open_group(has_count ? count : 1)) return error("groups are nested too deep");
        continue;
      }
      ++at_;
      if (letter == 'P') {
        if (!has_count) return error("P without a number");
        if (count > largest_scale) return error("a scale factor is too large");
        return Edit{Edit::Type::scale, sign * count};
      }
      if (c == '-' || c == '+') return error("a sign before a field");
      if (letter == 'X') return Edit{Edit::Type::skip, has_count ? count : 1};
      if (letter == 'T') {
        bool has_column = false;
        const int column = number(has_column);
        if (!has_column || column < 1) return error("T without a column");
        return Edit{Edit::Type::tab, column};
      }
      return field(letter, has_count ? count : 1);
    }
  }

  constexpr bool revert() {
    at_ = revert_at_;
    depth_ = 0;
    pending_ = 0;
    return true;
  }

 private:
  struct Group {
    std::size_t start = 0;
    int left = 0;
  };
  static constexpr int deepest = 8;
  static constexpr int largest = 1000000;

  static constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
  static constexpr Edit error(std::string_view words) { return Edit{Edit::Type::error, 0, 0, words}; }

  constexpr void skip_separators() {
    while (at_ < layout_.size() && (layout_[at_] == ',' || layout_[at_] == ' ')) ++at_;
  }

  constexpr int number(bool& found) {
    int value = 0;
    found = false;
    while (at_ < layout_.size() && layout_[at_] >= '0' && layout_[at_] <= '9') {
      found = true;
      value = value * 10 + (layout_[at_] - '0');
      if (value > largest) return -1;
      ++at_;
    }
    return value;
  }

  constexpr bool open_group(int count) {
    if (depth_ >= deepest) return false;
    // The count that stands before the bracket belongs to the place that the layout goes back to.
    if (depth_ == 0) {
      std::size_t start = at_;
      while (start > 0 && layout_[start - 1] >= '0' && layout_[start - 1] <= '9') --start;
      revert_at_ = start;
    }
    ++at_;
    groups_[depth_++] = Group{at_, count};
    return true;
  }

  constexpr bool close_group() {
    if (depth_ == 0) return false;
    Group& innermost = groups_[depth_ - 1];
    if (--innermost.left > 0 && !empty_group(innermost.start)) {
      at_ = innermost.start;
    } else {
      --depth_;
      ++at_;
    }
    return true;
  }

  /// A group without any edit is passed once, whatever its count: going round in it would bring nothing forth.
  constexpr bool empty_group(std::size_t start) const {
    return layout_.substr(start, at_ - start).find_first_not_of("(), 0123456789") == std::string_view::npos;
  }

  constexpr Edit quote(char mark) {
    const std::size_t start = ++at_;
    while (at_ < layout_.size()) {
      if (layout_[at_] != mark) {
        ++at_;
      } else if (at_ + 1 < layout_.size() && layout_[at_ + 1] == mark) {
        at_ += 2;
      } else {
        ++at_;
        return Edit{Edit::Type::quote, 0, 0, layout_.substr(start, at_ - 1 - start), mark};
      }
    }
    return error("a text is not closed");
  }

  constexpr Edit field(char letter, int count) {
    Edit edit;
    switch (letter) {
      case 'I':
        edit.type = Edit::Type::integer;
        break;
      case 'F':
        edit.type = Edit::Type::fixed;
        break;
      case 'E':
        edit.type = Edit::Type::exponent;
        break;
      case 'D':
        edit.type = Edit::Type::d_exponent;
        break;
      case 'G':
        edit.type = Edit::Type::general;
        break;
      case 'A':
        edit.type = Edit::Type::text;
        break;
      default:
        return error("an unknown field letter");
    }
    bool found = false;
    edit.width = number(found);
    if (!found || edit.width == 0) return error("a field without a width");
    if (edit.width < 0) return error("a field is too wide");
    const bool needs_decimals = edit.type != Edit::Type::integer && edit.type != Edit::Type::text;
    if (needs_decimals) {
      if (at_ >= layout_.size() || layout_[at_] != '.') return error("a real field without decimals");
      ++at_;
      edit.decimals = number(found);
      if (!found || edit.decimals < 0) return error("a real field without decimals");
    }
    if (count < 1) return error("a count is zero");
    if (edit.type == Edit::Type::text) {
      if (edit.width > widest_record / count) return error("a field is too wide");
      edit.width *= count;  // 18A4 is one text of 72 columns
    } else {
      if (edit.width > widest_number_field) return error("a field is too wide");
      pending_ = count - 1;
      repeated_ = edit;
    }
    return edit;
  }

  std::string_view layout_;
  std::size_t at_ = 0;
  std::size_t revert_at_ = 0;
  Group groups_[deepest]{};
  int depth_ = 0;
  int pending_ = 0;
  Edit repeated_{};
};

/// The words of the first error in a layout, empty when it is sound.
constexpr std::string_view layout_error(std::string_view layout) {
  LayoutCursor cursor(layout);
  int columns = 0;
  for (int steps = 0; steps < 100000; ++steps) {
    const Edit edit = cursor.next();
    if (edit.type == Edit::Type::end) return {};
    if (edit.type == Edit::Type::error) return edit.text;
    if (edit.type == Edit::Type::new_record) columns = 0;
    if (edit.type == Edit::Type::tab) columns = edit.width;
    if (edit.type == Edit::Type::skip || is_data(edit.type)) columns += edit.width;
    if (columns > widest_record) return "a record is too wide";
  }
  return "the layout is too long";
}

namespace layout_check {

template <class T>
using Bare = std::remove_cv_t<std::remove_reference_t<T>>;

/// How a C++ type fills fields: its kind and how many (0: as many as there are, known when the program runs).
struct Shape {
  ItemKind kind;
  int count;
};

template <class T>
struct ShapeOf {
  static_assert(std::is_same_v<T, int> || std::is_same_v<T, double> || std::is_convertible_v<T, std::string_view>,
                "an item is an int, a double, a text, or a view of ints or doubles");
  static constexpr Shape shape = std::is_same_v<T, int>      ? Shape{ItemKind::integer, 1}
                                 : std::is_same_v<T, double> ? Shape{ItemKind::real, 1}
                                                             : Shape{ItemKind::text, 1};
};
template <std::size_t N>
struct ShapeOf<std::array<char, N>> {
  static constexpr Shape shape{ItemKind::text, 1};
};
template <class T, std::size_t E>
struct ShapeOf<std::span<T, E>> {
  static constexpr Shape shape = std::is_same_v<std::remove_const_t<T>, char>  ? Shape{ItemKind::text, 1}
                                 : std::is_same_v<std::remove_const_t<T>, int> ? Shape{ItemKind::integer, 0}
                                                                               : Shape{ItemKind::real, 0};
};
template <class T>
struct ShapeOf<Vector<T>> {
  static constexpr Shape shape =
      std::is_same_v<std::remove_const_t<T>, int> ? Shape{ItemKind::integer, 0} : Shape{ItemKind::real, 0};
};
template <std::size_t N>
struct ShapeOf<std::array<int, N>> {
  static constexpr Shape shape{ItemKind::integer, static_cast<int>(N)};
};
template <std::size_t N>
struct ShapeOf<std::array<double, N>> {
  static constexpr Shape shape{ItemKind::real, static_cast<int>(N)};
};

/// Not constexpr on purpose: a call of it in a constant expression is the compiler's error message.
inline void layout_does_not_fit_its_items() {}

/// The next data field, going back for more when the layout is used up.
constexpr Edit next_field(LayoutCursor& cursor) {
  for (int reversions = 0; reversions < 2;) {
    const Edit edit = cursor.next();
    if (is_data(edit.type) || edit.type == Edit::Type::error) return edit;
    if (edit.type == Edit::Type::end) {
      cursor.revert();
      ++reversions;
    }
  }
  return Edit{Edit::Type::error, 0, 0, "no field for an item"};
}

/// True when a layout is sound and its fields go with items of these types. Behind an item whose count is known only
/// when the program runs the kinds are checked there.
template <class... Items>
constexpr bool layout_fits(std::string_view layout) {
  if (!layout_error(layout).empty()) return false;
  constexpr std::size_t n = sizeof...(Items);
  if constexpr (n > 0) {
    constexpr Shape shapes[] = {ShapeOf<Bare<Items>>::shape...};
    LayoutCursor cursor(layout);
    for (std::size_t i = 0; i < n; ++i) {
      const bool counted = shapes[i].count > 0;
      for (int k = 0; k < (counted ? shapes[i].count : 1); ++k) {
        if (!fits(next_field(cursor).type, shapes[i].kind)) return false;
      }
      if (!counted) return true;
    }
  }
  return true;
}

}  // namespace layout_check

/// A layout literal that the compiler has checked against the types of its items.
template <class... Items>
struct CheckedLayout {
  std::string_view text;

  template <class Text>
  requires std::is_convertible_v<const Text&, std::string_view>
  consteval CheckedLayout(const Text& layout) : text(layout) {
    if (!layout_check::layout_fits<Items...>(text)) layout_check::layout_does_not_fit_its_items();
  }
};

}  // namespace tidearc

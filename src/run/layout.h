// Record layouts: the deck's own field notation, read and written, checked against the variables by the compiler.
//
//   read(NDIN, "I5,3F10.0", node, x, y, z);
//   write(NDOUT, "I10,3F14.3,7X,3A4", node, x, y, z, word);
//
// Fields: Iw, Fw.d, Ew.d, Dw.d, Gw.d, Aw, nX, Tn, 'text', "/" (next record), nP (scale), r(...) groups. One repeated
// text field such as 18A4 is one item of 72 columns. A layout that is used up before its items goes back to its last
// group on the outer level and starts a new record. A layout literal that does not fit its variables does not compile;
// a layout that stands in a deck goes through the same parser when it is read (layout_error).
//
// Items: int; double; text (std::string_view to write, std::span<char> or char[n] to read, filled with blanks behind);
// 1-based views and spans of int or double, which stand for as many items as they have entries.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "run/layout_parse.h"
#include "run/views.h"

namespace tidearc {

/// One argument of a write: a number of equal items that somebody else owns, or one text.
struct OutItem {
  ItemKind kind;
  int count;  ///< items; 1 for a text
  const int* integers = nullptr;
  const double* reals = nullptr;
  std::string_view text = {};

  OutItem(const int& value) : kind(ItemKind::integer), count(1), integers(&value) {}
  OutItem(const double& value) : kind(ItemKind::real), count(1), reals(&value) {}
  OutItem(std::string_view value) : kind(ItemKind::text), count(1), text(value) {}
  OutItem(const char* value) : OutItem(std::string_view(value)) {}
  OutItem(const std::string& value) : OutItem(std::string_view(value)) {}
  template <std::size_t N>
  OutItem(const std::array<char, N>& value) : OutItem(std::string_view(value.data(), N)) {}
  template <std::size_t N>
  OutItem(const std::array<int, N>& v) : kind(ItemKind::integer), count(static_cast<int>(N)), integers(v.data()) {}
  template <std::size_t N>
  OutItem(const std::array<double, N>& v) : kind(ItemKind::real), count(static_cast<int>(N)), reals(v.data()) {}
  OutItem(std::span<const int> v) : kind(ItemKind::integer), count(static_cast<int>(v.size())), integers(v.data()) {}
  OutItem(std::span<const double> v) : kind(ItemKind::real), count(static_cast<int>(v.size())), reals(v.data()) {}
  OutItem(std::span<int> v) : OutItem(std::span<const int>(v)) {}
  OutItem(std::span<double> v) : OutItem(std::span<const double>(v)) {}
  OutItem(const Vector<int>& v) : OutItem(std::span<const int>(v.span())) {}
  OutItem(const Vector<double>& v) : OutItem(std::span<const double>(v.span())) {}
  OutItem(const Vector<const int>& v) : OutItem(v.span()) {}
  OutItem(const Vector<const double>& v) : OutItem(v.span()) {}
};

/// One argument of a read.
struct InItem {
  ItemKind kind;
  int count;
  int* integers = nullptr;
  double* reals = nullptr;
  std::span<char> text = {};

  InItem(int& value) : kind(ItemKind::integer), count(1), integers(&value) {}
  InItem(double& value) : kind(ItemKind::real), count(1), reals(&value) {}
  InItem(std::span<char> value) : kind(ItemKind::text), count(1), text(value) {}
  template <std::size_t N>
  InItem(std::array<char, N>& value) : InItem(std::span<char>(value)) {}
  template <std::size_t N>
  InItem(std::array<int, N>& v) : kind(ItemKind::integer), count(static_cast<int>(N)), integers(v.data()) {}
  template <std::size_t N>
  InItem(std::array<double, N>& v) : kind(ItemKind::real), count(static_cast<int>(N)), reals(v.data()) {}
  InItem(std::span<int> v) : kind(ItemKind::integer), count(static_cast<int>(v.size())), integers(v.data()) {}
  InItem(std::span<double> v) : kind(ItemKind::real), count(static_cast<int>(v.size())), reals(v.data()) {}
  InItem(const Vector<int>& v) : InItem(v.span()) {}
  InItem(const Vector<double>& v) : InItem(v.span()) {}
};

/// Writes the items under a layout on a formatted unit. The record is complete when the call returns.
void write_items(int unit, std::string_view layout, std::span<const OutItem> items);
/// The same as a string, records separated by line ends (none behind the last).
std::string format_items(std::string_view layout, std::span<const OutItem> items);
/// Reads the next record (and those that the layout asks for) of a formatted unit. A field that cannot be read, or a
/// missing record, ends the process in the I/O layer (stops.h).
void read_items(int unit, std::string_view layout, std::span<const InItem> items);
/// As read_items, but from text that has been read before; false when a field cannot be read (items are then
/// undefined).
bool scan_items(std::string_view record, std::string_view layout, std::span<const InItem> items);
/// List-directed record: one blank, items with one blank between, integers in their least width, reals as 1P,E23.15
/// without leading blanks.
void write_list_items(int unit, std::span<const OutItem> items);

template <class... Items>
using Layout = CheckedLayout<std::type_identity_t<Items>...>;

template <class... Items>
void write(int unit, Layout<Items...> layout, const Items&... items) {
  const std::array<OutItem, sizeof...(Items) + 1> list{OutItem(items)..., OutItem(std::string_view())};
  write_items(unit, layout.text, std::span(list).first(sizeof...(Items)));
}

template <class... Items>
std::string format(Layout<Items...> layout, const Items&... items) {
  const std::array<OutItem, sizeof...(Items) + 1> list{OutItem(items)..., OutItem(std::string_view())};
  return format_items(layout.text, std::span(list).first(sizeof...(Items)));
}

template <class... Items>
void read(int unit, Layout<Items...> layout, Items&&... items) {
  int unused = 0;
  const std::array<InItem, sizeof...(Items) + 1> list{InItem(items)..., InItem(unused)};
  read_items(unit, layout.text, std::span(list).first(sizeof...(Items)));
}

template <class... Items>
bool scan(std::string_view record, Layout<Items...> layout, Items&&... items) {
  int unused = 0;
  const std::array<InItem, sizeof...(Items) + 1> list{InItem(items)..., InItem(unused)};
  return scan_items(record, layout.text, std::span(list).first(sizeof...(Items)));
}

template <class... Items>
void write_list(int unit, const Items&... items) {
  const std::array<OutItem, sizeof...(Items) + 1> list{OutItem(items)..., OutItem(std::string_view())};
  write_list_items(unit, std::span(list).first(sizeof...(Items)));
}

}  // namespace tidearc

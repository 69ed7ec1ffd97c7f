// The items of a read or a write one by one, in the order in which a layout's fields take them.
#pragma once

#include <cstddef>
#include <span>

namespace tidearc {

/// A walk over the arguments of a read (InItem) or a write (OutItem) and over the items that each stands for. An
/// argument without items is passed over.
template <class Argument>
class ItemWalk {
 public:
  explicit ItemWalk(std::span<const Argument> arguments) : arguments_(arguments) { pass_empty(); }
  bool done() const { return arguments_.empty(); }
  /// The argument of the current item, and the item's 0-based place in it.
  const Argument& item() const { return arguments_.front(); }
  std::size_t index() const { return index_; }
  /// 1-based number of the current item among all.
  int number() const { return number_; }
  void advance() {
    ++number_;
    if (++index_ < static_cast<std::size_t>(arguments_.front().count)) return;
    arguments_ = arguments_.subspan(1);
    index_ = 0;
    pass_empty();
  }

 private:
  void pass_empty() {
    while (!arguments_.empty() && arguments_.front().count <= 0) arguments_ = arguments_.subspan(1);
  }
  std::span<const Argument> arguments_;
  std::size_t index_ = 0;
  int number_ = 1;
};

}  // namespace tidearc

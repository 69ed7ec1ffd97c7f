// 1-based, column-major views over arrays that somebody else owns, so that formulas read as in the book.
// A debug build checks every index; a release build compiles to the bare load.
#pragma once

#include <cstddef>
#include <span>
#include <type_traits>

#ifdef TIDEARC_CHECK_INDEX
#include <cstdio>
#include <cstdlib>
#endif

namespace tidearc {

#ifdef TIDEARC_CHECK_INDEX
inline void check_index(long long index, long long size) {
  if (index < 1 || index > size) {
    std::fprintf(stderr, "index %lld outside 1..%lld\n", index, size);
    std::abort();
  }
}
#else
inline void check_index(long long, long long) {}
#endif

/// A vector v(1) .. v(n).
template <class T>
class Vector {
 public:
  Vector() = default;
  Vector(T* first, int n) : data_(first), size_(n) {}
  /// A view of constants from a view of variables.
  operator Vector<const T>() const requires(!std::is_const_v<T>) { return {data_, size_}; }

  T& operator()(int i) const {
    check_index(i, size_);
    return data_[i - 1];
  }
  T* data() const { return data_; }
  int size() const { return size_; }
  T* begin() const { return data_; }
  T* end() const { return data_ + size_; }
  std::span<T> span() const { return {data_, static_cast<std::size_t>(size_)}; }

 private:
  T* data_ = nullptr;
  int size_ = 0;
};

/// A table t(1,1) .. t(rows,columns), column by column.
template <class T>
class Matrix {
 public:
  Matrix() = default;
  Matrix(T* first, int rows, int columns) : data_(first), rows_(rows), columns_(columns) {}
  operator Matrix<const T>() const requires(!std::is_const_v<T>) { return {data_, rows_, columns_}; }

  T& operator()(int i, int j) const {
    check_index(i, rows_);
    check_index(j, columns_);
    return data_[(i - 1) + static_cast<std::ptrdiff_t>(j - 1) * rows_];
  }
  Vector<T> column(int j) const {
    check_index(j, columns_);
    return {data_ + static_cast<std::ptrdiff_t>(j - 1) * rows_, rows_};
  }
  T* data() const { return data_; }
  int rows() const { return rows_; }
  int columns() const { return columns_; }

 private:
  T* data_ = nullptr;
  int rows_ = 0;
  int columns_ = 0;
};

using Reals = Vector<double>;
using Integers = Vector<int>;
using RealTable = Matrix<double>;
using IntegerTable = Matrix<int>;
using ConstReals = Vector<const double>;
using ConstIntegers = Vector<const int>;

}  // namespace tidearc

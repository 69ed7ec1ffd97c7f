// Nodes among the columns of a profile: adjacent free columns that start at one row, six of them in a frame. To be
// included by solve/kernels_*.cpp alone.

struct Node {
  const double* column[strip_rows];  // column[n][k] is L(k, first + n); the last one again where there are fewer
  long first;
  long top;  // first row of all of them
  int count;
};

long height_of(const ProfileColumns& K, long c) { return K.IDIAG[c] - (c == K.first ? 0 : K.IDIAG[c - 1]); }

// The columns from c on, the first of which has this height: adjacent columns that start at one row grow by one.
void place_node(Node& node, const ProfileColumns& K, long c, long height, int count) {
  node.first = c;
  node.top = c - height + 1;
  node.count = count;
  const double* const column = K.values + (K.IDIAG[c] - c);
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) {
    const int i = n < count ? n : count - 1;
    node.column[n] = column + i * height + i * (i - 1) / 2;
  }
}

// Whether column c and the five behind it start at one row.
bool are_six(const ProfileColumns& K, long c, long height) {
  const int* const IDIAG = K.IDIAG + c;
  long odd = 0;
#pragma GCC unroll 8
  for (int n = 1; n < strip_rows; ++n) odd |= (IDIAG[n] - IDIAG[n - 1]) ^ (height + n);
  return odd == 0;
}

// The longest one that begins with column c, none behind `last`.
[[gnu::always_inline]] inline void node_from(Node& node, const ProfileColumns& K, long c, long last) {
  const long height = height_of(K, c);
  if (c + strip_rows <= last + 1 && are_six(K, c, height)) return place_node(node, K, c, height, strip_rows);
  int count = 1;
  while (count < strip_rows && c + count <= last && height_of(K, c + count) == height + count) ++count;
  place_node(node, K, c, height, count);
}

// The longest one that ends with column c, none before `first`.
[[gnu::always_inline]] inline void node_to(Node& node, const ProfileColumns& K, long c, long first) {
  const long begin = c - strip_rows + 1;
  const long height = begin >= first ? height_of(K, begin) : 0;
  if (begin >= first && are_six(K, begin, height)) return place_node(node, K, begin, height, strip_rows);
  long b = c;
  while (b > first && b > begin && height_of(K, b) == height_of(K, b - 1) + 1) --b;
  place_node(node, K, b, height_of(K, b), static_cast<int>(c - b + 1));
}

// No prescribed row among those that the node's columns reach.
bool all_free(const ProfileColumns& K, const Node& node) { return -K.MSTAT[node.top] >= node.first; }

// Calls act(lo, hi) for each stretch of free rows in r1..r2, in rising order.
template <class Act>
void for_free_rows(const ProfileColumns& K, long r1, long r2, Act&& act) {
  for (long i = r1; i <= r2;) {
    const long link = K.MSTAT[i];
    if (link < 1) act(static_cast<int>(i), static_cast<int>(-link < r2 ? -link : r2));
    i = link < 1 ? -link + 1 : link;
  }
}

// Values that the way through the profile will come to, up (way 1) or down (-1). They are fetched into the first-level
// cache: two transfers of one line, memory to second level and second to first, would share its few fill buffers with
// the loads of the columns at work. Memory is quicker with several pages at a time than with one after the other, so
// lines are fetched from each of a few adjacent pages in turn.
template <int way>
struct Ahead {
  static constexpr std::intptr_t line = 64, page = 4096, pages = 3;
  static constexpr std::intptr_t reach = 6 * page;     // behind the columns at work; half of a first-level cache
  static constexpr std::intptr_t cached = 256 * page;  // stays in a second-level cache from pass to pass
  std::intptr_t next;  // line of the first of the pages; those of the others stand whole pages on
  std::intptr_t stop;
  bool worth;

  Ahead(const double* from, const double* to)
      : next(page_of(from)), stop(next), worth(8 * way * (to - from) > cached) {}
  // The work is on the values from one place to another.
  void now_at(const double* from, const double* to) {
    if (!worth) return;
    const std::intptr_t first = reinterpret_cast<std::intptr_t>(from);
    if (way * (next + way * pages * page - first) < 0) next = page_of(from);
    stop = reinterpret_cast<std::intptr_t>(to) + way * reach;
  }
  // The next lines of all pages, `times` of each.
  template <int times = 1>
  [[gnu::always_inline]] void fetch() {
    if (way * (stop - next) <= 0) return;
#pragma GCC unroll 4
    for (int i = 0; i < times; ++i) {
#pragma GCC unroll 4
      for (int k = 0; k < pages; ++k) __builtin_prefetch(reinterpret_cast<const void*>(next + way * k * page), 0, 3);
      next += way * line;
      const bool done = ((way > 0 ? next : next + line) & (page - 1)) == 0;
      if (done) next += way * (pages - 1) * page;
    }
  }

 private:
  // The first line, in the sense of the way, of the page of a value.
  static std::intptr_t page_of(const double* p) {
    const std::intptr_t begin = reinterpret_cast<std::intptr_t>(p) & -page;
    return way > 0 ? begin : begin + page - line;
  }
};

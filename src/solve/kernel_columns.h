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

// Values that the way through the profile will come to, up (way 1) or down (-1). Memory is quicker with several pages
// at a time than with one after the other, so lines are fetched from each page of a window in turn while the window
// before it is at work.
template <int way>
struct Ahead {
  static constexpr long page = 4096, pages = 4, window = page * pages, reach = 2 * window, line = 64;
  static constexpr long cached = 1 << 20;  // bytes that stay in a second-level cache from pass to pass
  const double* begin;
  long length;       // bytes of the whole way
  long fetched = 0;  // bytes of it, counted window by window
  long limit = 0;

  Ahead(const double* from, const double* to) : begin(from), length(8 * way * (to - from)) {}
  // The work is on the values from one place to another.
  void now_at(const double* from, const double* to) {
    const long done = 8 * way * (from - begin), next = 8 * way * (to - begin) + reach;
    if (length > cached) limit = next < length ? next : length;
    if (fetched < done) fetched = done & -window;
  }
  [[gnu::always_inline]] void fetch() {
    if (fetched >= limit) return;
    const long offset = (fetched & -window) + ((fetched & (window - 1)) / pages & -line);
#pragma GCC unroll 4
    for (long k = 0; k < pages; ++k) __builtin_prefetch(begin + way * (offset + k * page) / 8, 0, 2);
    fetched += pages * line;
  }
};

#include "independent_frame.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace tidearc::test {

namespace {

using Matrix = std::vector<std::vector<double>>;

Matrix zeros(std::size_t rows, std::size_t columns) { return Matrix(rows, std::vector<double>(columns, 0.0)); }

Matrix product(const Matrix& A, const Matrix& B) {
  Matrix C = zeros(A.size(), B[0].size());
  for (std::size_t i = 0; i < A.size(); ++i) {
    for (std::size_t k = 0; k < B.size(); ++k) {
      for (std::size_t j = 0; j < B[0].size(); ++j) C[i][j] += A[i][k] * B[k][j];
    }
  }
  return C;
}

Matrix transposed(const Matrix& A) {
  Matrix T = zeros(A[0].size(), A.size());
  for (std::size_t i = 0; i < A.size(); ++i) {
    for (std::size_t j = 0; j < A[0].size(); ++j) T[j][i] = A[i][j];
  }
  return T;
}

/// A^-1 B by elimination with row exchanges.
Matrix solved(Matrix A, Matrix B) {
  const std::size_t n = A.size();
  for (std::size_t p = 0; p < n; ++p) {
    std::size_t best = p;
    for (std::size_t i = p + 1; i < n; ++i) {
      if (std::abs(A[i][p]) > std::abs(A[best][p])) best = i;
    }
    std::swap(A[p], A[best]);
    std::swap(B[p], B[best]);
    for (std::size_t i = 0; i < n; ++i) {
      if (i == p || A[i][p] == 0.0) continue;
      const double factor = A[i][p] / A[p][p];
      for (std::size_t j = p; j < n; ++j) A[i][j] -= factor * A[p][j];
      for (std::size_t j = 0; j < B[i].size(); ++j) B[i][j] -= factor * B[p][j];
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    for (double& value : B[i]) value /= A[i][i];
  }
  return B;
}

double length_of(const Vector3& a) { return std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]); }

/// Displacements of end J, held at I, of unit forces (three) and moments (three) there, in local axes.
Matrix cantilever_flexibility(const FrameMember& m, double L) {
  Matrix f = zeros(6, 6);
  f[0][0] = L / m.EA;
  f[1][1] = L * L * L / (3 * m.EI3) + (m.GA2 == 0 ? 0 : L / m.GA2);
  f[2][2] = L * L * L / (3 * m.EI2) + (m.GA3 == 0 ? 0 : L / m.GA3);
  f[3][3] = L / m.GJ;
  f[4][4] = L / m.EI2;
  f[5][5] = L / m.EI3;
  f[1][5] = f[5][1] = L * L / (2 * m.EI3);
  f[2][4] = f[4][2] = -L * L / (2 * m.EI2);
  return f;
}

/// Forces that end I must bear of forces on end J, an arm r away: F and M + r x F.
Matrix moved_forces(const Vector3& r) {
  Matrix H = zeros(6, 6);
  for (std::size_t i = 0; i < 6; ++i) H[i][i] = 1;
  for (std::size_t j = 0; j < 3; ++j) {
    Vector3 F{};
    F[j] = 1;
    const Vector3 M = cross(r, F);
    for (std::size_t i = 0; i < 3; ++i) H[3 + i][j] = M[i];
  }
  return H;
}

/// Forces on end J of its displacements, end I held, with all hinges: k = f^-1, and of that what leaves the forces of
/// the hinges zero: k - k A (A^T k A)^-1 A^T k, the columns of A being what the hinges' openings move end J by.
Matrix tip_stiffness(const FrameMember& m, double L, const Matrix& to_I) {
  Matrix unit_forces = zeros(6, 6), openings;
  for (std::size_t i = 0; i < 6; ++i) {
    unit_forces[i][i] = 1;
    std::vector<double> at_J(6, 0.0);
    at_J[i] = 1;
    if (m.releasedJ[i]) openings.push_back(at_J);
    if (m.releasedI[i]) openings.push_back(to_I[i]);
  }
  Matrix k = solved(cantilever_flexibility(m, L), unit_forces);
  if (openings.empty()) return k;
  const Matrix A = transposed(openings);
  const Matrix kA = product(k, A);
  const Matrix lost = product(kA, solved(product(openings, kA), transposed(kA)));
  for (std::size_t i = 0; i < 6; ++i) {
    for (std::size_t j = 0; j < 6; ++j) k[i][j] -= lost[i][j];
  }
  return k;
}

/// The 12 by 12 matrix of a member between its nodes: B k B^T, B what forces on end J mean for both nodes.
Matrix member_matrix(const FrameMember& m, const Vector3& nodeI, const Vector3& nodeJ) {
  Vector3 d;
  for (std::size_t i = 0; i < 3; ++i) d[i] = nodeJ[i] + m.eJ[i] - nodeI[i] - m.eI[i];
  const double L = length_of(d);
  const Vector3 x = unit(d), z = unit(cross(x, m.y)), y = cross(z, x);

  const Matrix to_I = moved_forces({L, 0, 0});
  const Matrix k = tip_stiffness(m, L, to_I);

  Matrix R = zeros(6, 6);  // local to master components
  for (std::size_t i = 0; i < 3; ++i) {
    R[i][0] = R[3 + i][3] = x[i];
    R[i][1] = R[3 + i][4] = y[i];
    R[i][2] = R[3 + i][5] = z[i];
  }
  const Matrix onto_J = product(moved_forces(m.eJ), R);
  const Matrix onto_I = product(moved_forces(m.eI), product(R, to_I));
  Matrix B = zeros(12, 6);
  for (std::size_t i = 0; i < 6; ++i) {
    for (std::size_t j = 0; j < 6; ++j) {
      B[i][j] = -onto_I[i][j];
      B[i + 6][j] = onto_J[i][j];
    }
  }
  return product(B, product(k, transposed(B)));
}

}  // namespace

Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector3 unit(const Vector3& a) {
  const double size = length_of(a);
  return {a[0] / size, a[1] / size, a[2] / size};
}

std::vector<Load6> IndependentFrame::displacements() const {
  const std::size_t n = 6 * nodes.size();
  Matrix K = zeros(n, n), P = zeros(n, 1);
  for (const FrameMember& m : members) {
    const Matrix k = member_matrix(m, nodes[m.I], nodes[m.J]);
    const auto place = [&](std::size_t i) { return i < 6 ? 6 * m.I + i : 6 * m.J + i - 6; };
    for (std::size_t i = 0; i < 12; ++i) {
      for (std::size_t j = 0; j < 12; ++j) K[place(i)][place(j)] += k[i][j];
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    P[i][0] = loads[i / 6][i % 6];
    if (!held[i / 6]) continue;
    P[i][0] = 0;
    for (std::size_t j = 0; j < n; ++j) K[i][j] = K[j][i] = i == j ? 1 : 0;
  }
  const Matrix u = solved(K, P);
  std::vector<Load6> found(nodes.size());
  for (std::size_t i = 0; i < n; ++i) found[i / 6][i % 6] = u[i][0];
  return found;
}

}  // namespace tidearc::test

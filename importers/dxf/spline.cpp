// Splines, made into points.

#include <algorithm>
#include <array>

#include "importers/dxf/curves.h"

namespace importers::dxf {

namespace {

constexpr int highest_degree = 15;
constexpr int steps_of_span = 24;

/// A point in homogeneous coordinates.
struct Weighted {
  double x;
  double y;
  double w;
};

Weighted mixed(const Weighted& a, const Weighted& b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.w + (b.w - a.w) * t};
}

bool has_usable_knots(const Spline& spline, std::size_t degree) {
  const std::vector<double>& knots = spline.knots;
  return knots.size() == spline.control.size() + degree + 1 &&
         std::is_sorted(knots.begin(), knots.end()) && knots[degree] < knots[spline.control.size()];
}

/// Knots of a curve that starts and ends in its first and last control points.
std::vector<double> clamped_knots(std::size_t controls, std::size_t degree) {
  std::vector<double> knots;
  for (std::size_t i = 0; i < controls + degree + 1; ++i) {
    const std::size_t inner = std::clamp(i, degree, controls);
    knots.push_back(static_cast<double>(inner - degree));
  }
  return knots;
}

class BSpline {
 public:
  explicit BSpline(const Spline& spline)
      : m_degree(std::min<std::size_t>(static_cast<std::size_t>(spline.degree),
                                       spline.control.size() - 1)) {
    m_knots = has_usable_knots(spline, m_degree) ? spline.knots
                                                 : clamped_knots(spline.control.size(), m_degree);
    const bool weighted =
        spline.weights.size() == spline.control.size() &&
        std::all_of(spline.weights.begin(), spline.weights.end(), [](double w) { return w > 0; });
    for (std::size_t i = 0; i < spline.control.size(); ++i) {
      const double w = weighted ? spline.weights[i] : 1.0;
      m_control.push_back({spline.control[i].x * w, spline.control[i].y * w, w});
    }
  }

  [[nodiscard]] std::vector<Vertex> points() const {
    std::vector<Vertex> result;
    const int steps = m_degree == 1 ? 1 : steps_of_span;
    for (std::size_t span = m_degree; span < m_control.size(); ++span) {
      const double width = m_knots[span + 1] - m_knots[span];
      if (width <= 0) continue;
      for (int i = result.empty() ? 0 : 1; i <= steps; ++i) {
        result.push_back(at(span, m_knots[span] + width * i / steps));
      }
    }
    return result;
  }

 private:
  /// By de Boor's scheme, within a span of knots.
  [[nodiscard]] Vertex at(std::size_t span, double t) const {
    std::array<Weighted, highest_degree + 1> d{};
    for (std::size_t i = 0; i <= m_degree; ++i) d[i] = m_control[span - m_degree + i];
    for (std::size_t level = 1; level <= m_degree; ++level) {
      for (std::size_t i = m_degree; i >= level; --i) {
        const double low = m_knots[span - m_degree + i];
        const double width = m_knots[span + 1 + i - level] - low;
        d[i] = mixed(d[i - 1], d[i], width > 0 ? (t - low) / width : 0.0);
      }
    }
    const Weighted& result = d[m_degree];
    return {result.x / result.w, result.y / result.w};
  }

  std::size_t m_degree;
  std::vector<double> m_knots;
  std::vector<Weighted> m_control;
};

/// The tangents at points of a curve with continuous curvature, straight at
/// its ends, whose parameter runs from each to the next over `steps`.
std::vector<Vertex> natural_tangents(const std::vector<Vertex>& points,
                                     const std::vector<double>& steps) {
  const std::size_t n = points.size();
  // A tridiagonal system, solved forward and backward.
  std::vector<double> upper(n);
  std::vector<Vertex> tangents(n);
  for (std::size_t i = 0; i < n; ++i) {
    const double before = i > 0 ? 1 / steps[i - 1] : 0.0;
    const double after = i + 1 < n ? 1 / steps[i] : 0.0;
    Vertex right{0, 0};
    if (i > 0) right = right + 3 * before * before * (points[i] - points[i - 1]);
    if (i + 1 < n) right = right + 3 * after * after * (points[i + 1] - points[i]);
    double diagonal = 2 * (before + after);
    if (i > 0) {
      diagonal -= before * upper[i - 1];
      right = right - before * tangents[i - 1];
    }
    upper[i] = after / diagonal;
    tangents[i] = 1 / diagonal * right;
  }
  for (std::size_t i = n - 1; i-- > 0;) tangents[i] = tangents[i] - upper[i] * tangents[i + 1];
  return tangents;
}

std::vector<Vertex> through(std::vector<Vertex> fit) {
  fit.erase(std::unique(fit.begin(), fit.end()), fit.end());
  if (fit.size() < 3) return fit;
  std::vector<double> steps;
  for (std::size_t i = 1; i < fit.size(); ++i) steps.push_back(length(fit[i] - fit[i - 1]));
  const std::vector<Vertex> tangents = natural_tangents(fit, steps);
  std::vector<Vertex> points{fit.front()};
  for (std::size_t i = 0; i + 1 < fit.size(); ++i) {
    for (int k = 1; k <= steps_of_span; ++k) {
      const double t = static_cast<double>(k) / steps_of_span;
      const double s = 1 - t;
      points.push_back((1 + 2 * t) * s * s * fit[i] + t * t * (3 - 2 * t) * fit[i + 1] +
                       steps[i] * t * s * (s * tangents[i] - t * tangents[i + 1]));
    }
  }
  return points;
}

}  // namespace

std::vector<Vertex> flattened(const Spline& spline) {
  if (spline.control.size() >= 2) {
    if (spline.degree < 1 || spline.degree > highest_degree) return spline.control;
    return BSpline(spline).points();
  }
  std::vector<Vertex> fit = spline.fit;
  if (spline.is_closed && fit.size() > 2) fit.push_back(fit.front());
  return through(std::move(fit));
}

}  // namespace importers::dxf
